// The label in an editor's caption that says whether the work is saved. Both editors have one: each
// tells it what it knows after every change and save. UI thread only.
//
//   m_state.show({.isModified = session.isModified(), .savedAt = m_savedAt});
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ui/Controls.h"

namespace ui {

/// What there is to know about what an editor edits.
struct SavedFacts {
    bool isModified = false;               ///< a save would write something else
    bool saveFailed = false;               ///< the last one did
    bool hasContents = true;               ///< there is something to save
    std::optional<std::int64_t> savedAt{}; ///< empty: it has no file yet
};

/// "Saved 15:07", or the date when that is not today; empty when there is nothing to say.
[[nodiscard]] std::u16string savedStateText(const SavedFacts& facts);

/// When the file was written last; empty when there is none.
[[nodiscard]] std::optional<std::int64_t> fileTime(const std::string& path);

class SavedState {
public:
    /// The window of `controls` may lack the label.
    explicit SavedState(Controls controls) : m_controls(controls) {}

    void show(const SavedFacts& facts);
    /// The label's tool tip while unsaved work cannot be written aside; empty when it can.
    void showDraftProblem(const std::u16string& text);

private:
    Controls m_controls;
};

} // namespace ui
