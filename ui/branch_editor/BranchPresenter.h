// The branch card: which branch is on show, its name, and whether the scene starts with it. What
// the card shows comes from the session; what it changes goes there. Used by the branch editor.
#pragma once

#include <string>

#include "edit/Observers.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/NameList.h"

namespace ui {

/// UI thread only.
class BranchPresenter {
public:
    /// Whoever shows the rest of a branch. It outlives the presenter.
    class Listener {
    public:
        virtual ~Listener() = default;
        /// `branch` is on show now, -1 for none. `again`: it was before, and something that all
        /// branches have to do with has changed.
        virtual void branchShown(int branch, bool again) = 0;
        /// `branch`, which was named `oldName`, has its new name.
        virtual void branchRenamed(int branch, const std::string& oldName) = 0;
        virtual void nameRefused(const std::u16string& name) = 0;
    };

    /// The session outlives it.
    BranchPresenter(Controls controls, scene::SceneSession& session, Listener& listener);

    /// Lists the branches and shows the first.
    void fill();
    /// The number of the branch on show, -1 when there is none.
    [[nodiscard]] int shown() const;
    /// Of all branches.
    [[nodiscard]] const NameList& names() const { return m_names; }

    /// Shows `branch`, or the last one when there are not as many.
    void show(int branch);
    /// Adds a branch and shows it.
    void add();
    // Edits of the branch on show.
    /// Shows the copy.
    void duplicate();
    /// Shows the one that takes its place.
    void remove();
    [[nodiscard]] bool canMove(int by) const;
    void move(int by);
    /// Another branch was selected in the list, or the same one again.
    void showSelected();
    /// The name's edit was left: renames the branch, unless another one has that name.
    void takeName();
    /// Whether the name's edit has the keyboard and another text than the branch's name.
    [[nodiscard]] bool isNameTyped() const;
    /// Gives the edit its text back.
    void dropTypedName();
    void chooseFirst();

private:
    void changed(const scene::SceneSession::Changes& changes);
    /// Lists the branches anew and shows `branch`, or the last one when there are not as many.
    void listAgain(int branch);
    void showFirst();

    Controls m_controls;
    scene::SceneSession& m_session;
    Listener& m_listener;
    NameList m_names;
    int m_place = -1;                         ///< of the branch on show, and
    scene::SceneSession::BranchToken m_token; ///< which one it is, as edits may move it
    std::u16string m_shownName;               ///< what the program last put into the name's edit
    int m_next = -1;                          ///< where the branch being added will be
    bool m_again = false; ///< the program selects the branch that was on show before
    edit::Subscription m_subscription;
};

} // namespace ui
