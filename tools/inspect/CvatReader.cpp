#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include <tinyxml2.h>

#include "core/Numbers.h"
#include "core/Text.h"
#include "core/XmlTags.h"
#include "tools/inspect/Cvat.h"

namespace inspect {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{256} * 1024 * 1024; ///< of the pair

/// Reads one file; throws the first problem, inside this source only.
class Reader {
public:
    explicit Reader(const CvatClip& clip) : m_clip(clip) {}

    std::vector<CvatTrack> read(std::string_view text) {
        tinyxml2::XMLDocument document;
        if (text.size() > kMaxCvatBytes) {
            throw CvatProblem{0, kCvatTooLarge};
        }
        if (!core::areTagsModest(text)) {
            throw CvatProblem{0, "a tag has too many attributes"};
        }
        if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
            throw CvatProblem{document.ErrorLineNum(), "this is no well-formed XML"};
        }
        const tinyxml2::XMLElement* root = document.RootElement();
        if (root == nullptr || std::string_view(root->Name()) != "annotations") {
            throw CvatProblem{root ? root->GetLineNum() : 0, "<annotations> is missing"};
        }
        if (const auto* second = root->NextSiblingElement()) {
            fail(*second, "<" + std::string(second->Name()) + "> stands behind <annotations>");
        }
        std::vector<CvatTrack> tracks;
        for (const auto* child = root->FirstChildElement(); child != nullptr;
             child = child->NextSiblingElement()) {
            const std::string_view name = child->Name();
            if (name == "meta") {
                checkMeta(*child);
            } else if (name == "track") {
                tracks.push_back(readTrack(*child));
            } else if (name != "version") {
                fail(*child, "<" + std::string(name) + "> cannot be read, only tracks of polygons");
            }
        }
        return tracks;
    }

private:
    [[noreturn]] static void fail(const tinyxml2::XMLElement& element, std::string text) {
        throw CvatProblem{element.GetLineNum(), std::move(text)};
    }

    static const char* attribute(const tinyxml2::XMLElement& element, const char* name) {
        const char* value = element.Attribute(name);
        if (value == nullptr) {
            fail(element, std::string("the attribute \"") + name + "\" is missing");
        }
        return value;
    }

    static int number(const tinyxml2::XMLElement& element, std::string_view text) {
        const std::optional<int> value = core::parseNumber<int>(text);
        if (!value) {
            fail(element, "\"" + std::string(text) + "\" is no whole number");
        }
        return *value;
    }

    static void checkNumber(const tinyxml2::XMLElement* element, int expected, const char* what) {
        if (element != nullptr && element->GetText() != nullptr &&
            number(*element, element->GetText()) != expected) {
            fail(*element, std::string(what) + " is " + element->GetText() + ", the clip's " +
                               std::to_string(expected));
        }
    }

    /// What it says about the clip must be so; what it does not say is not missed.
    void checkMeta(const tinyxml2::XMLElement& meta) const {
        const tinyxml2::XMLElement* task = meta.FirstChildElement("task");
        if (task == nullptr) {
            task = meta.FirstChildElement("job");
        }
        if (const auto* project = meta.FirstChildElement("project")) {
            task = taskOf(*project);
        }
        if (task != nullptr) {
            checkNumber(task->FirstChildElement("size"), m_clip.frameCount, "the number of frames");
        }
        const tinyxml2::XMLElement* size = meta.FirstChildElement("original_size");
        if (size == nullptr && task != nullptr) {
            size = task->FirstChildElement("original_size");
        }
        if (size != nullptr) {
            checkNumber(size->FirstChildElement("width"), m_clip.size.width, "the width");
            checkNumber(size->FirstChildElement("height"), m_clip.size.height, "the height");
        }
    }

    /// Its only task; those of several would be of several clips.
    static const tinyxml2::XMLElement* taskOf(const tinyxml2::XMLElement& project) {
        const tinyxml2::XMLElement* tasks = project.FirstChildElement("tasks");
        const tinyxml2::XMLElement* task = tasks ? tasks->FirstChildElement("task") : nullptr;
        if (task != nullptr && task->NextSiblingElement("task") != nullptr) {
            fail(*task->NextSiblingElement("task"), "a project of several tasks cannot be read");
        }
        return task;
    }

    CvatTrack readTrack(const tinyxml2::XMLElement& element) {
        CvatTrack track;
        track.label = attribute(element, "label");
        if (track.label != core::validUtf8(track.label)) {
            fail(element, "the label is no UTF-8 text");
        }
        // Even a zone without a shape takes a record for each frame.
        m_bytes += 8 * static_cast<std::uint64_t>(m_clip.frameCount);
        for (const auto* child = element.FirstChildElement(); child != nullptr;
             child = child->NextSiblingElement()) {
            if (std::string_view(child->Name()) != "polygon") {
                fail(*child, "<" + std::string(child->Name()) + "> in a track is no polygon");
            }
            CvatPolygon polygon = readPolygon(*child);
            const int before = track.polygons.empty() ? -1 : track.polygons.back().frame;
            if (polygon.frame <= before) {
                fail(*child, "frame " + std::to_string(polygon.frame) + " does not follow frame " +
                                 std::to_string(before));
            }
            countShapes(*child, track, polygon.frame);
            track.polygons.push_back(std::move(polygon));
        }
        countShapes(element, track, m_clip.frameCount);
        return track;
    }

    /// Those of the last polygon of the track up to `end`.
    void countShapes(const tinyxml2::XMLElement& element, const CvatTrack& track, int end) {
        if (!track.polygons.empty()) {
            const CvatPolygon& last = track.polygons.back();
            m_bytes += 8 * last.points.size() * static_cast<std::uint64_t>(end - last.frame);
        }
        if (m_bytes > kMostBytes) {
            fail(element, "there are too many points for a clip of " +
                              std::to_string(m_clip.frameCount) + " frames");
        }
    }

    CvatPolygon readPolygon(const tinyxml2::XMLElement& element) const {
        CvatPolygon polygon;
        polygon.frame = number(element, attribute(element, "frame"));
        if (polygon.frame < 0 || polygon.frame >= m_clip.frameCount) {
            fail(element, "frame " + std::to_string(polygon.frame) + " is none of the clip's " +
                              std::to_string(m_clip.frameCount));
        }
        const char* outside = element.Attribute("outside");
        const std::string_view flag = outside != nullptr ? outside : "0";
        if (flag != "0" && flag != "1") {
            fail(element, "\"outside\" is neither 0 nor 1");
        }
        polygon.isOutside = flag == "1";
        readPoints(element, polygon);
        return polygon;
    }

    /// "x,y;x,y;x,y"
    void readPoints(const tinyxml2::XMLElement& element, CvatPolygon& polygon) const {
        std::string_view rest = attribute(element, "points");
        while (!rest.empty()) {
            const std::string_view pair = rest.substr(0, rest.find(';'));
            rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
            const std::size_t comma = pair.find(',');
            if (comma == std::string_view::npos) {
                fail(element, "\"" + std::string(pair) + "\" is no point");
            }
            polygon.points.push_back(
                {coordinate(element, pair.substr(0, comma), m_clip.size.width),
                 coordinate(element, pair.substr(comma + 1), m_clip.size.height)});
        }
        if (polygon.points.size() < kLeastCvatPoints) {
            fail(element, "a polygon has at least three points");
        }
    }

    static int coordinate(const tinyxml2::XMLElement& element, std::string_view text, int most) {
        const std::optional<double> value = core::parseNumber<double>(text);
        if (!value || !std::isfinite(*value)) {
            fail(element, "\"" + std::string(text) + "\" is no coordinate");
        }
        if (*value <= -0.5 || *value >= most + 0.5) {
            fail(element, "the coordinate " + std::string(text) + " lies outside of the picture");
        }
        return static_cast<int>(std::lround(*value));
    }

    CvatClip m_clip;
    std::uint64_t m_bytes = 0;
};

} // namespace

std::variant<std::vector<CvatTrack>, CvatProblem> readCvat(std::string_view text,
                                                           const CvatClip& clip) {
    try {
        return Reader(clip).read(text);
    } catch (const CvatProblem& problem) {
        return problem;
    }
}

std::optional<CvatPolygon> CvatCourse::next() {
    const int frame = m_frame++;
    const std::vector<CvatPolygon>& polygons = m_track.polygons;
    while (m_behind < polygons.size() && polygons[m_behind].frame <= frame) {
        ++m_behind;
    }
    if (m_behind == 0) {
        return std::nullopt;
    }
    CvatPolygon shape = polygons[m_behind - 1];
    if (m_behind < polygons.size() && shape.frame < frame) {
        const CvatPolygon& after = polygons[m_behind];
        if (!shape.isOutside && !after.isOutside && shape.points.size() == after.points.size()) {
            const double share =
                static_cast<double>(frame - shape.frame) / (after.frame - shape.frame);
            for (std::size_t i = 0; i < shape.points.size(); ++i) {
                platform::Point& p = shape.points[i];
                p.x = static_cast<int>(std::lround(std::lerp(p.x, after.points[i].x, share)));
                p.y = static_cast<int>(std::lround(std::lerp(p.y, after.points[i].y, share)));
            }
        }
    }
    shape.frame = frame;
    return shape;
}

} // namespace inspect
