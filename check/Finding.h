// Problems of a scene as values: where, how severe, and the arguments of the text. Windows and
// other programs can show the same findings in their own way.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Texts.h"

namespace check {

enum class Severity { error, warning, note };

/// In the order in which findings of one place are listed.
enum class Kind {
    unreadableName, ///< a name that keeps the scene's file from being read again
    noFirstBranch,
    duplicateBranch,
    noVideo,
    videoMissing,
    videoUnreadable,
    missingTarget,
    zoneMissing,
    unreached,
    noWayOut,
    keyTwice,
    defaultTwice,
    neverFires,
    similarNames,
    zoneNeverActive,
    zoneFewPoints,
    zoneOutside,
    zoneNameTwice,
    zoneNoName,
    zoneFrames,
    sheared,
    slowSeeks,
    zoneUnused,
    videoUnused,
    waits,
};

/// Everything there is about a kind.
struct KindInfo {
    Kind kind;
    const char* name; ///< as programs use it: "unreadable-name"
    Severity severity;
    /// The sentence in each of its variants; its places are the arguments.
    std::array<core::Text, 3> texts;
};
/// In the order of the enumeration.
[[nodiscard]] std::span<const KindInfo> kinds();

struct FrameRange {
    int first = 0;
    int last = 0; ///< inclusive

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

/// Fields that do not apply are -1 or empty.
struct Finding {
    Severity severity = Severity::error;
    Kind kind = Kind::unreadableName;
    int branch = -1; ///< of a video: the first branch that uses it
    int action = -1; ///< of the branch
    std::string video{};
    std::string zone{};
    int zoneNumber = -1; ///< of the video
    std::optional<FrameRange> frames{};
    int variant = 0;                      ///< of the text
    std::vector<std::string> arguments{}; ///< names and numbers, in the order of the text

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// Of its kind's severity.
[[nodiscard]] Finding finding(Kind kind, std::vector<std::string> arguments, int variant = 0);

/// The name used by programs: "unreadable-name".
[[nodiscard]] std::string_view kindName(Kind kind);
/// "error", "warning" or "note".
[[nodiscard]] std::string_view severityName(Severity severity);
/// One sentence for the author.
[[nodiscard]] std::string findingText(const Finding& finding);

} // namespace check
