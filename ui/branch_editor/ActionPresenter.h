// The action list: the actions of the branch on show, a row each. A row's change goes to the
// session at once. Used by the branch editor.
#pragma once

#include <memory>
#include <vector>

#include "edit/Observers.h"
#include "scene/Action.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/branch_editor/ActionRows.h"

namespace ui {

/// UI thread only.
class ActionPresenter {
public:
    /// `choices`: their names are kept up to date by others. The session outlives the presenter.
    ActionPresenter(Controls controls, scene::SceneSession& session, const RowChoices& choices);

    ~ActionPresenter();
    ActionPresenter(const ActionPresenter&) = delete;
    ActionPresenter& operator=(const ActionPresenter&) = delete;

    /// Shows the actions of `branch`, none for -1. A list that is shown `again` stays scrolled to
    /// where it was: the press that ended the typing of a name may be on its way to one of its
    /// rows.
    void show(int branch, bool again);
    /// The rows that wait for a zone offer those of another video, and show none. Intended.
    void offerOtherZones();
    /// Whether an action of the branch on show waits for a zone.
    [[nodiscard]] bool waitsForZone() const;

    /// Opens the list of branches that the action may lead to.
    void chooseTargetOf(int action);
    [[nodiscard]] int offset() const; ///< how far the list is scrolled, in pixels
    void scrollTo(int offset);

    // The author's changes in a row; the sender is the row's control.
    void chooseCondition(toolkit::CControlUI& sender);
    void chooseParameter(toolkit::CControlUI& sender);
    void chooseTarget(toolkit::CControlUI& sender);
    void changeImmediate(toolkit::CControlUI& sender);

private:
    struct Shown {
        scene::Action action;
        bool showsParameter = true; ///< false: nothing is chosen there, whatever the action has
    };
    void changed(const scene::SceneSession::Changes& changes);
    void build();
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int row) const;
    /// Changes the rows that differ from the actions, and leaves the others and the focus alone.
    void refresh();
    /// Adds or removes rows where the numbers of rows and actions differ.
    void matchRows(const std::vector<scene::Action>& actions);
    /// The row shows what the author has made of its action.
    void edited(int action);
    void showEmptyText();
    /// The combo `sender` and the action of its row; a null combo when there is no such action.
    struct RowEdit {
        toolkit::CComboUI* combo;
        int action;
    };
    [[nodiscard]] RowEdit rowEdit(toolkit::CControlUI& sender) const;

    Controls m_controls;
    scene::SceneSession& m_session;
    RowChoices m_choices;
    int m_branch = -1;           ///< on show
    bool m_isRowEdit = false;    ///< the change being announced was made in a row, which shows it
    bool m_isRefreshing = false; ///< what the rows report is not the author's doing
    std::vector<Shown> m_shown;  ///< by the rows, made or not
    edit::Subscription m_subscription;
};

} // namespace ui
