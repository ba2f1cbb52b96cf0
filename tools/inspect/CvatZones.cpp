#include <algorithm>
#include <cstdint>
#include <memory>
#include <ostream>
#include <set>

#include <tinyxml2.h>

#include "core/Text.h"
#include "tools/inspect/Cvat.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneShape.h"

namespace inspect {
namespace {

void writeText(tinyxml2::XMLPrinter& xml, const char* name, const std::string& text) {
    xml.OpenElement(name);
    xml.PushText(text.c_str());
    xml.CloseElement();
}

/// XML has no control characters and no bytes that are no text, and line ends in attributes become
/// spaces.
std::string plainName(const std::string& name) {
    std::string plain = core::validUtf8(name);
    std::ranges::replace_if(
        plain, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return plain;
}

void writeMeta(tinyxml2::XMLPrinter& xml, const zone::ZoneManager& zones, const CvatClip& clip) {
    xml.OpenElement("meta");
    xml.OpenElement("task");
    writeText(xml, "size", std::to_string(clip.frameCount));
    writeText(xml, "mode", "interpolation");
    writeText(xml, "start_frame", "0");
    writeText(xml, "stop_frame", std::to_string(std::max(0, clip.frameCount - 1)));
    xml.OpenElement("labels");
    std::set<std::string> names; // each once
    for (int i = 0; i < zones.zoneCount(); ++i) {
        const std::string name = plainName(zones.getZoneName(i));
        if (names.insert(name).second) {
            xml.OpenElement("label");
            writeText(xml, "name", name);
            xml.CloseElement();
        }
    }
    xml.CloseElement();
    xml.OpenElement("original_size");
    writeText(xml, "width", std::to_string(clip.size.width));
    writeText(xml, "height", std::to_string(clip.size.height));
    xml.CloseElement();
    xml.CloseElement();
    xml.CloseElement();
}

/// Points outside of the picture come to its edge.
void writePolygon(tinyxml2::XMLPrinter& xml, int frame, const zone::ZoneShape& shape,
                  platform::Size size) {
    std::string points;
    for (const platform::Point& point : shape.points) {
        points += (points.empty() ? "" : ";") + std::to_string(std::clamp(point.x, 0, size.width)) +
                  "," + std::to_string(std::clamp(point.y, 0, size.height));
    }
    xml.OpenElement("polygon");
    xml.PushAttribute("frame", frame);
    xml.PushAttribute("points", points.c_str());
    xml.PushAttribute("outside", shape.active ? "0" : "1");
    xml.PushAttribute("occluded", "0");
    xml.PushAttribute("keyframe", "1");
    xml.PushAttribute("z_order", "0");
    xml.CloseElement();
}

/// What of a zone gets lost.
struct Losses {
    int smallShapes = 0;   ///< frames
    int outsidePoints = 0; ///< frames
};

bool isInside(const zone::ZoneShape& shape, platform::Size size) {
    return std::ranges::all_of(shape.points, [size](platform::Point p) {
        return p.x >= 0 && p.y >= 0 && p.x <= size.width && p.y <= size.height;
    });
}

Losses writeTrack(tinyxml2::XMLPrinter& xml, int id, const zone::Zone& zone, const CvatClip& clip) {
    xml.OpenElement("track");
    xml.PushAttribute("id", id);
    xml.PushAttribute("label", plainName(zone.name()).c_str());
    xml.PushAttribute("source", "manual");
    Losses losses;
    std::optional<zone::ZoneShape> last; // the one written before
    const int count = std::min(zone.frameCount(), clip.frameCount);
    for (int frame = 0; frame < count;) {
        const int end = std::min(count, zone.sameUntil(frame));
        std::optional<zone::ZoneShape> shape = zone.shape(frame);
        if (!shape || shape->points.size() < kLeastCvatPoints) {
            // In front of the first polygon nothing is nothing; behind it, the last one goes away.
            const bool isLost = last || (shape && (!shape->points.empty() || !shape->active));
            losses.smallShapes += isLost ? end - frame : 0;
            shape = last;
            if (shape) {
                shape->active = false;
            }
        }
        if (shape) {
            losses.outsidePoints += isInside(*shape, clip.size) ? 0 : end - frame;
            writePolygon(xml, frame, *shape, clip.size);
            if (end - frame > 1) { // so that nothing moves before the next one
                writePolygon(xml, end - 1, *shape, clip.size);
            }
            last = shape;
        }
        frame = end;
    }
    xml.CloseElement();
    return losses;
}

std::string frames(int count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

void putU32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

/// The zone's record as the binary file would hold it.
std::vector<std::uint8_t> recordOf(const CvatTrack& track, const CvatClip& clip) {
    const std::string name = zone::Zone::storedName(track.label);
    std::vector<std::uint8_t> bytes;
    putU32(bytes, static_cast<std::uint32_t>(name.size() + 1));
    bytes.insert(bytes.end(), name.begin(), name.end());
    bytes.push_back(0);
    putU32(bytes, static_cast<std::uint32_t>(clip.frameCount));
    CvatCourse course(track);
    for (int frame = 0; frame < clip.frameCount; ++frame) {
        const std::optional<CvatPolygon> shape = course.next();
        const std::size_t count = shape ? shape->points.size() : 0;
        putU32(bytes, static_cast<std::uint32_t>(8 + 8 * count));
        putU32(bytes, shape && shape->isOutside ? 0 : 1);
        for (std::size_t i = 0; i < count; ++i) {
            putU32(bytes, static_cast<std::uint32_t>(shape->points[i].x));
            putU32(bytes, static_cast<std::uint32_t>(shape->points[i].y));
        }
    }
    return bytes;
}

} // namespace

std::vector<std::string> writeCvat(std::ostream& out, const zone::ZoneManager& zones,
                                   const CvatClip& clip) {
    std::vector<std::string> lost;
    tinyxml2::XMLPrinter xml;
    xml.PushHeader(false, true);
    xml.OpenElement("annotations");
    writeText(xml, "version", "1.1");
    writeMeta(xml, zones, clip);
    for (int i = 0; i < zones.zoneCount(); ++i) {
        const zone::Zone& zone = *zones.zone(i);
        const Losses losses = writeTrack(xml, i, zone, clip);
        const std::string plain = plainName(zone.name());
        const std::string name = "zone \"" + plain + "\": ";
        if (plain != zone.name()) {
            lost.push_back(name + "characters of the name that are no text");
        }
        if (losses.smallShapes > 0) {
            lost.push_back(name + frames(losses.smallShapes) + " with fewer than three points");
        }
        if (losses.outsidePoints > 0) {
            lost.push_back(name + frames(losses.outsidePoints) +
                           " with points outside of the picture");
        }
        if (zone.frameCount() > clip.frameCount) {
            lost.push_back(name + frames(zone.frameCount() - clip.frameCount) +
                           " behind the end of the clip");
        }
    }
    xml.CloseElement();
    out.write(xml.CStr(), xml.CStrSize() - 1);
    return lost;
}

void addZones(zone::ZoneManager& zones, const std::vector<CvatTrack>& tracks,
              const CvatClip& clip) {
    for (const CvatTrack& track : tracks) {
        const std::shared_ptr<zone::Zone> zone = zone::Zone::create(0);
        const std::vector<std::uint8_t> record = recordOf(track, clip);
        (void)zone->read(record, record.size(), clip.frameCount, zone::Scale{});
        zones.addZone(zone);
    }
}

} // namespace inspect
