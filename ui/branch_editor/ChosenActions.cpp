#include "ui/branch_editor/ChosenActions.h"

#include <algorithm>
#include <numeric>

#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/branch_editor/ActionRows.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;
using toolkit::CControlUI;
using toolkit::CListUI;

ChosenActions::ChosenActions(Controls controls, scene::SceneSession& session,
                             const BranchPresenter& branches)
    : m_controls(controls), m_session(session), m_branches(branches) {}

CListUI* ChosenActions::list() const {
    return m_controls.find<CListUI>(kActionList);
}

std::vector<int> ChosenActions::selected() const {
    const CListUI* list = this->list();
    return list != nullptr && m_branches.shown() >= 0 ? list->selectedRows() : std::vector<int>();
}

std::vector<int> ChosenActions::rows() const {
    std::vector<int> rows = selected();
    const std::optional<Field> field = focused();
    if (field && std::find(rows.begin(), rows.end(), field->row) == rows.end()) {
        rows = {field->row};
    }
    return rows;
}

bool ChosenActions::canMove(int by) const {
    const std::vector<int> rows = this->rows();
    return !rows.empty() && rows.front() + by >= 0 && rows.back() + by < list()->GetCount();
}

std::optional<ChosenActions::Field> ChosenActions::focused() const {
    const CControlUI* focus = m_controls.manager().GetFocus();
    const CListUI* list = this->list();
    if (focus == nullptr || list == nullptr || focus == list || !focus->isInside(list)) {
        return {};
    }
    const int row = rowNumber(*focus);
    return row >= 0 ? std::optional<Field>({row, focus->GetName()}) : std::nullopt;
}

void ChosenActions::focus(const Field& field) {
    if (const CControlUI* row = list()->GetItemAt(field.row)) {
        m_controls.manager().SetFocus(row->FindSubControl(field.name));
    }
}

void ChosenActions::select(const std::vector<int>& rows) {
    if (CListUI* list = this->list()) {
        list->SelectItems(rows);
    }
}

void ChosenActions::reveal(int row) {
    if (CListUI* list = this->list()) {
        list->revealRow(std::min(row, list->GetCount() - 1));
    }
}

void ChosenActions::go(const std::vector<int>& actions) {
    if (!actions.empty() && actions.front() >= 0) {
        select(actions); // those that are there
        reveal(actions.back());
        reveal(actions.front());
    }
}

void ChosenActions::add() {
    const int branch = m_branches.shown();
    if (branch >= 0 && m_session.addAction(branch)) {
        const int row = m_session.actionCount(branch) - 1;
        go(row);
        focus({row, std::u16string(kConditionCombo)});
    }
}

void ChosenActions::duplicate() {
    const std::vector<int> rows = this->rows();
    const std::optional<Field> field = focused();
    if (!m_session.duplicateActions(m_branches.shown(), rows)) {
        return;
    }
    std::vector<int> copies(rows.size());
    std::iota(copies.begin(), copies.end(), rows.back() + 1);
    select(copies);
    if (field) {
        focus({copies.front(), field->name});
    }
    reveal(copies.back());
}

void ChosenActions::move(int by) {
    std::vector<int> rows = this->rows();
    const std::optional<Field> field = focused();
    if (!m_session.shiftActions(m_branches.shown(), rows, by)) {
        return;
    }
    for (int& row : rows) {
        row += by;
    }
    select(rows);
    if (field) {
        focus({field->row + by, field->name});
    }
    reveal(by < 0 ? rows.front() : rows.back());
}

void ChosenActions::remove() {
    const std::vector<int> rows = this->rows();
    if (m_session.removeActions(m_branches.shown(), rows)) {
        select({});
        reveal(rows.front());
    }
}

} // namespace ui
