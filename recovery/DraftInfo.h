// What a draft says about itself: a small text file beside its content. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace recovery {

struct DraftInfo {
    std::string scene{};      ///< by the name that a save of it uses
    std::string listedAs{};   ///< its name in the list of scenes when it was opened
    std::string video{};      ///< file name of the video whose zones these are; empty: the scene
    std::string base{};       ///< what it was changed from, by savedState()
    std::int64_t time = 0;    ///< of the last change, as Clock::now()
    std::uint32_t number = 0; ///< which of its writings; part of its files' names
    std::vector<std::uint64_t> sizes{}; ///< of its files

    bool operator==(const DraftInfo&) const = default;
};

[[nodiscard]] std::string toText(const DraftInfo& info);
/// Empty for anything that toText() does not make.
[[nodiscard]] std::optional<DraftInfo> draftInfo(std::string_view text);

/// Distinguishes the saved states of these files, by their sizes and times.
[[nodiscard]] std::string savedState(const std::vector<std::string>& paths);
/// Whether the files are as they were when savedState() gave `state`. Older drafts have times
/// without fractions of seconds.
[[nodiscard]] bool isSavedState(const std::vector<std::string>& paths, const std::string& state);

} // namespace recovery
