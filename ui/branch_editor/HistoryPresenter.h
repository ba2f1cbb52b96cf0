// What the caption shows of the scene's history: whether the scene is saved, and what Undo and Redo
// would do. Used by the branch editor.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/SavedState.h"

namespace ui {

class BranchPresenter;
class ChosenActions;

/// UI thread only.
class HistoryPresenter {
public:
    /// `folder` is the scene's, ending in "\"; empty when the working directory is unknown. All
    /// else outlives the presenter.
    HistoryPresenter(Controls controls, scene::SceneSession& session, const std::string& folder,
                     BranchPresenter& branches, ChosenActions& actions);

    // Both show the branch and the actions that changed.
    void undo() { show(m_session.undo()); }
    void redo() { show(m_session.redo()); }
    [[nodiscard]] bool canUndo() const { return m_session.history().canUndo(); }
    [[nodiscard]] bool canRedo() const { return m_session.history().canRedo(); }
    /// The names of the steps.
    [[nodiscard]] std::u16string undoName() const {
        return nameOf(m_session.history().undoLabel());
    }
    [[nodiscard]] std::u16string redoName() const {
        return nameOf(m_session.history().redoLabel());
    }

private:
    void show(const std::optional<scene::SceneLabel>& place);
    void showState();
    [[nodiscard]] static std::u16string nameOf(const scene::SceneLabel* label);

    scene::SceneSession& m_session;
    BranchPresenter& m_branches;
    ChosenActions& m_actions;
    SavedState m_state;
    std::optional<std::int64_t> m_savedAt;
    edit::Subscription m_changes;
    edit::Subscription m_saves;
};

} // namespace ui
