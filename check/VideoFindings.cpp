#include "check/VideoFindings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include "check/Names.h"

namespace check {
namespace {

constexpr double kSlowSeconds = 5.0;

class Builder {
public:
    Builder(const std::string& video, const VideoFacts& facts, const std::vector<bool>& isZoneUsed)
        : m_video(video), m_facts(facts), m_isZoneUsed(isZoneUsed) {}

    std::vector<Finding> build() {
        aboutFile();
        for (std::size_t zone = 0; zone < m_facts.zones.size(); ++zone) {
            aboutName(static_cast<int>(zone));
            aboutShapes(static_cast<int>(zone));
        }
        return std::move(m_found);
    }

private:
    Finding& add(Kind kind, std::vector<std::string> arguments, int variant = 0) {
        m_found.push_back(finding(kind, std::move(arguments), variant));
        m_found.back().video = m_video;
        return m_found.back();
    }

    void addOfZone(Kind kind, int zone, std::vector<std::string> arguments, int variant = 0) {
        Finding& found = add(kind, std::move(arguments), variant);
        found.zone = m_facts.zones[static_cast<std::size_t>(zone)].name;
        found.zoneNumber = zone;
    }

    void aboutFile() {
        using State = VideoFacts::State;
        if (const std::optional<NameFault> fault = faultOf(m_video)) {
            add(Kind::unreadableName, {m_video}, static_cast<int>(*fault));
        } else if (m_facts.state == State::missing) {
            add(Kind::videoMissing, {m_video});
        }
        if (m_facts.state == State::unreadable) {
            add(Kind::videoUnreadable, {m_video});
        }
        if (m_facts.state != State::good) {
            return;
        }
        if (m_facts.width * 3 % 4 != 0) { // rows of the picture are packed
            add(Kind::sheared, {m_video, std::to_string(m_facts.width)});
        }
        if (m_facts.keyFrameSeconds > kSlowSeconds) {
            const auto seconds = std::llround(std::min(m_facts.keyFrameSeconds, 1e9));
            add(Kind::slowSeeks, {m_video, std::to_string(seconds)});
        }
        const auto other =
            std::find_if(m_facts.zones.begin(), m_facts.zones.end(), [&](const ZoneFacts& zone) {
                return zone.hasShapes && zone.storedFrames != m_facts.frameCount;
            });
        if (m_facts.frameCount >= 0 && other != m_facts.zones.end()) {
            add(Kind::zoneFrames,
                {m_video, std::to_string(other->storedFrames), std::to_string(m_facts.frameCount)});
        }
    }

    void aboutName(int zone) {
        const std::string& name = m_facts.zones[static_cast<std::size_t>(zone)].name;
        if (name.empty()) {
            addOfZone(Kind::zoneNoName, zone, {m_video});
            return;
        }
        const int others = m_namesSeen[name]++;
        if (others == 1) {
            addOfZone(Kind::zoneNameTwice, zone, {m_video, name});
        }
        if (others > 0) {
            return;
        }
        if (const std::optional<NameFault> fault = faultOf(name)) {
            addOfZone(Kind::unreadableName, zone, {name}, static_cast<int>(*fault));
        }
        if (!m_isZoneUsed[static_cast<std::size_t>(zone)]) {
            addOfZone(Kind::zoneUnused, zone, {name, m_video});
        }
    }

    void aboutShapes(int number) {
        const ZoneFacts& zone = m_facts.zones[static_cast<std::size_t>(number)];
        const bool hasFrames = zone.hasShapes && (zone.storedFrames > 0 || m_facts.frameCount > 0);
        if (hasFrames && zone.activeFrames == 0) {
            addOfZone(Kind::zoneNeverActive, number, {zone.name});
        }
        for (const auto& [kind, tally] : {std::pair(Kind::zoneFewPoints, &zone.fewPoints),
                                          {Kind::zoneOutside, &zone.outside}}) {
            if (tally->count > 0) {
                addOfZone(kind, number, {zone.name, std::to_string(tally->count)},
                          tally->count == 1 ? 1 : 0);
                m_found.back().frames = tally->range;
            }
        }
    }

    const std::string& m_video;
    const VideoFacts& m_facts;
    const std::vector<bool>& m_isZoneUsed;
    std::vector<Finding> m_found;
    std::map<std::string, int> m_namesSeen;
};

} // namespace

std::vector<Finding> findingsOf(const std::string& video, const VideoFacts& facts,
                                const std::vector<bool>& isZoneUsed) {
    return Builder(video, facts, isZoneUsed).build();
}

} // namespace check
