#include "ui/branch_editor/ActionPresenter.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "scene/Action.h"
#include "scene/SceneChange.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "ui/NameList.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/FlagScope.h"

namespace ui {

using namespace branch_list;
using toolkit::CComboUI;
using toolkit::CControlUI;
using toolkit::CListUI;

namespace {

constexpr int kLastAction = std::numeric_limits<int>::max();

} // namespace

ActionPresenter::ActionPresenter(Controls controls, scene::SceneSession& session,
                                 const RowChoices& choices)
    : m_controls(controls), m_session(session), m_choices(choices),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {}

void ActionPresenter::show(int branch, bool again) {
    const int before = again ? offset() : 0;
    m_branch = branch;
    build();
    scrollTo(before);
}

void ActionPresenter::build() {
    auto* list = m_controls.find<CListUI>(kActionList);
    m_types.clear();
    if (list == nullptr) {
        return;
    }
    list->RemoveAll();
    if (m_branch >= 0) {
        int number = 0;
        for (const scene::Action& action : m_session.actions(m_branch)) {
            list->Add(makeActionRow(number++, action, m_choices));
            m_types.push_back(action.Type());
        }
    }
    showEmptyText();
}

void ActionPresenter::showEmptyText() {
    const bool hasBranches = m_session.branchCount() > 0;
    const bool empty = m_types.empty();
    if (empty) {
        m_controls.setText(kEmptyHeading, hasBranches ? u"No actions yet" : u"No branches yet");
        m_controls.setText(kEmptyLine, hasBranches
                                           ? u"Press Add Action to say which branch plays next."
                                           : u"Press Add Branch to start the scene.");
    }
    m_controls.setVisible(kEmptyHeading, empty);
    m_controls.setVisible(kEmptyLine, empty);
}

void ActionPresenter::changed(const scene::SceneSession::Changes& changes) {
    const scene::SceneChange ours{scene::SceneChange::Part::actions, m_branch};
    if (!m_isRowEdit && std::find(changes.begin(), changes.end(), ours) != changes.end()) {
        show(m_branch, true);
    }
}

void ActionPresenter::offerOtherZones() {
    const auto* list = m_controls.find<CListUI>(kActionList);
    for (std::size_t row = 0; list != nullptr && row < m_types.size(); ++row) {
        CComboUI* combo = rowCombo(*list, static_cast<int>(row), kParameterCombo);
        if (combo != nullptr && m_types[row] == kConditionZone) {
            fillParameters(*combo, kConditionZone, m_choices);
        }
    }
}

bool ActionPresenter::waitsForZone() const {
    return std::find(m_types.begin(), m_types.end(), kConditionZone) != m_types.end();
}

void ActionPresenter::add() {
    if (m_branch >= 0) {
        m_session.addAction(m_branch);
        reveal(kLastAction);
    }
}

bool ActionPresenter::canRemove() const {
    const auto* list = m_controls.find<CListUI>(kActionList);
    return list != nullptr && m_branch >= 0 && list->GetCurSel() >= 0;
}

void ActionPresenter::removeSelected() {
    if (canRemove()) {
        const int number = m_controls.find<CListUI>(kActionList)->GetCurSel();
        m_session.removeAction(m_branch, number);
        reveal(number);
    }
}

ActionPresenter::RowEdit ActionPresenter::rowEdit(CControlUI& sender) const {
    const int number = rowNumber(sender);
    const bool isRow =
        m_branch >= 0 && number >= 0 && static_cast<std::size_t>(number) < m_types.size();
    return {isRow ? toolkit::controlCast<CComboUI>(&sender) : nullptr, number};
}

void ActionPresenter::chooseCondition(CControlUI& sender) {
    const RowEdit edit = rowEdit(sender);
    if (edit.combo == nullptr) {
        return;
    }
    const int condition = edit.combo->GetCurSel();
    const auto* row = toolkit::controlCast<toolkit::CContainerUI>(sender.GetParent());
    auto* parameter = toolkit::controlCast<CComboUI>(row->FindSubControl(kParameterCombo));
    if (parameter != nullptr) {
        fillParameters(*parameter, condition < 0 ? kConditionDefault : condition, m_choices);
    }
    if (condition >= 0) {
        // The parameter stays until another one is picked. Intended.
        m_types[static_cast<std::size_t>(edit.action)] = condition;
        const FlagScope own(m_isRowEdit);
        m_session.setType(m_branch, edit.action, condition);
    }
}

void ActionPresenter::chooseParameter(CControlUI& sender) {
    const RowEdit edit = rowEdit(sender);
    if (edit.combo != nullptr) {
        const NameList& names =
            m_choices.parameters(m_types[static_cast<std::size_t>(edit.action)]);
        const FlagScope own(m_isRowEdit);
        m_session.setParameter(
            m_branch, edit.action,
            storedChoice(names.stored, edit.combo->GetCurSel(), edit.combo->GetText()));
    }
}

void ActionPresenter::chooseTarget(CControlUI& sender) {
    const RowEdit edit = rowEdit(sender);
    if (edit.combo != nullptr && !edit.combo->GetText().empty()) {
        const FlagScope own(m_isRowEdit);
        m_session.setTarget(m_branch, edit.action,
                            storedChoice(m_choices.branches.stored, edit.combo->GetCurSel(),
                                         edit.combo->GetText()));
    }
}

void ActionPresenter::changeImmediate(CControlUI& sender) {
    const auto* check = toolkit::controlCast<toolkit::COptionUI>(&sender);
    const int number = rowNumber(sender);
    if (check != nullptr && number >= 0 && m_branch >= 0) {
        const FlagScope own(m_isRowEdit);
        m_session.setImmediate(m_branch, number, check->IsSelected());
    }
}

int ActionPresenter::offset() const {
    auto* list = m_controls.find<CListUI>(kActionList);
    return list != nullptr ? list->GetScrollBar().model().offset() : 0;
}

void ActionPresenter::scrollTo(int offset) {
    if (auto* list = m_controls.find<CListUI>(kActionList)) {
        list->GetScrollBar().model().setOffset(offset);
        list->NeedUpdate();
    }
}

void ActionPresenter::reveal(int number) {
    auto* list = m_controls.find<CListUI>(kActionList);
    if (list != nullptr && list->GetCount() > 0) {
        list->reveal(*list->GetItemAt(std::min(number, list->GetCount() - 1)));
    }
}

} // namespace ui
