// What is wrong with a scene, as values: where, how bad, and what its text needs. Windows, the map
// and quorvel-inspect show the same findings each in their own way.
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
    int last = 0; ///< included

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

/// Parts that do not apply are -1 or empty.
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

/// As quorvel-inspect prints it: "unreadable-name".
[[nodiscard]] std::string_view kindName(Kind kind);
/// What the author reads: one English sentence.
[[nodiscard]] std::string findingText(const Finding& finding);

} // namespace check
