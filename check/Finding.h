// Problems of a scene as values: where, how severe, and the arguments of the text. Windows and
// other programs can show the same findings in their own way.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace check {

enum class Severity { error, warning, note };

enum class Kind {
    unreadableName, ///< a name that keeps the scene's file from being read again
};

struct FrameRange {
    int first = 0;
    int last = 0; ///< inclusive

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

/// Fields that do not apply are -1 or empty.
struct Finding {
    Severity severity = Severity::error;
    Kind kind = Kind::unreadableName;
    int branch = -1;
    int action = -1; ///< of the branch
    std::string video{};
    int zone = -1; ///< of the video
    std::optional<FrameRange> frames{};
    std::vector<std::string> arguments{}; ///< names and numbers, in the order of the text

    friend bool operator==(const Finding&, const Finding&) = default;
};

/// The name used by programs: "unreadable-name".
[[nodiscard]] std::string_view kindName(Kind kind);
/// One English sentence for the author.
[[nodiscard]] std::string findingText(const Finding& finding);

} // namespace check
