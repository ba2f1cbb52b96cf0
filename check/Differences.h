// How an earlier version of a scene, or of a video's zones, differs from what is edited now, and
// what a version holds: as values, and as lines for the author. Any thread may call these
// with contents that nobody changes meanwhile.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/Finding.h"

namespace scene {
class SceneManager;
}
namespace zone {
class ZoneManager;
}

namespace check {

/// What the version has, lacks or has otherwise. Names in the order of their lists, numbers from 0.
struct SceneDifferences {
    struct Actions {
        std::string branch;
        std::vector<int> numbers; ///< in the version or now, whichever has more

        friend bool operator==(const Actions&, const Actions&) = default;
    };

    std::vector<std::string> with;    ///< branches that are not there now
    std::vector<std::string> without; ///< branches that are
    int videosMore = 0;
    int videosFewer = 0;
    std::vector<Actions> actions;           ///< of branches that both have
    std::vector<std::string> otherVideos;   ///< branches of both
    std::optional<std::string> firstBranch; ///< the version's, when it is another
    bool isOtherOrder = false;

    friend bool operator==(const SceneDifferences&, const SceneDifferences&) = default;
};

struct ZoneDifferences {
    struct Frames {
        std::string zone;
        FrameRange frames; ///< from the first to the last that differs

        friend bool operator==(const Frames&, const Frames&) = default;
    };

    std::vector<std::string> with;
    std::vector<std::string> without;
    std::vector<Frames> frames; ///< of zones that both have
    bool isOtherOrder = false;

    friend bool operator==(const ZoneDifferences&, const ZoneDifferences&) = default;
};

[[nodiscard]] SceneDifferences differencesOf(const scene::SceneManager& version,
                                             const scene::SceneManager& now);
/// Both with the scale of `now`.
[[nodiscard]] ZoneDifferences differencesOf(const zone::ZoneManager& version,
                                            const zone::ZoneManager& now);

/// "2 branches more, 1 action changed"; "as now".
[[nodiscard]] std::string summaryOf(const SceneDifferences& differences);
/// "zone Exit: frames 50 to 120"; "as now".
[[nodiscard]] std::string summaryOf(const ZoneDifferences& differences);

/// A line of a list.
struct Line {
    enum class Kind { with, without, other, heading, plain };

    Kind kind = Kind::plain;
    std::string text;

    friend bool operator==(const Line&, const Line&) = default;
};

/// 'With "Exit"', 'Without "Debriefing"', 'Other actions: "Alarm sounds" 3 and 4'.
[[nodiscard]] std::vector<Line> linesOf(const SceneDifferences& differences);
[[nodiscard]] std::vector<Line> linesOf(const ZoneDifferences& differences);

/// The branches, each with its actions: "1  Key L, to Use the lift, immediate". The names of the
/// conditions are given, by the numbers of their types.
[[nodiscard]] std::vector<Line> contentsOf(const scene::SceneManager& scene,
                                           const std::vector<std::string>& conditions);
/// The zones, each with its frames: "100 frames, active on 0 to 49".
[[nodiscard]] std::vector<Line> contentsOf(const zone::ZoneManager& zones);

} // namespace check
