// The chosen rows of the action list and what is done to them: adding, copying, moving, removing.
// Used by the branch editor.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scene/SceneSession.h"
#include "ui/Controls.h"

namespace toolkit {
class CListUI;
}

namespace ui {

class BranchPresenter;

/// UI thread only.
class ChosenActions {
public:
    /// Both outlive it. The rows must show the session's actions by the time an edit returns.
    ChosenActions(Controls controls, scene::SceneSession& session, const BranchPresenter& branches);

    /// The selected rows, ascending.
    [[nodiscard]] std::vector<int> selected() const;
    /// The rows that commands act on: the selected ones, unless the focus is in another row.
    [[nodiscard]] std::vector<int> rows() const;
    /// Whether rows() can all go `by` places.
    [[nodiscard]] bool canMove(int by) const;

    /// Selects the new row and puts the focus into its first field.
    void add();
    /// The copies are selected then.
    void duplicate();
    /// The rows stay selected, and the focus in its field.
    void move(int by);
    void remove();
    /// Scrolls to an action and selects it; or to the last one when there are not as many. -1:
    /// nothing happens.
    void go(int action) { go(std::vector{action}); }
    /// The same for several, ascending.
    void go(const std::vector<int>& actions);

private:
    /// A control in a row.
    struct Field {
        int row;
        std::u16string name;
    };

    [[nodiscard]] toolkit::CListUI* list() const;
    [[nodiscard]] std::optional<Field> focused() const;
    void focus(const Field& field);
    void select(const std::vector<int>& rows);
    /// Scrolls to a row, the last one for a number beyond.
    void reveal(int row);

    Controls m_controls;
    scene::SceneSession& m_session;
    const BranchPresenter& m_branches;
};

} // namespace ui
