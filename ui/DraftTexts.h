// What windows say about unsaved work that was kept.
#pragma once

#include <cstdint>
#include <string>

namespace core {
struct FileError;
}

namespace ui {

/// `name` is that of the scene or video; `time` as Clock::now().
[[nodiscard]] std::u16string draftText(const std::string& name, std::int64_t time,
                                       bool isSavedSince);
/// For the tool tip of the saved state; empty if `failure` is.
[[nodiscard]] std::u16string draftProblemText(const core::FileError& failure);

} // namespace ui
