#include "ui/branch_editor/ActionPresenter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "core/Texts.h"
#include "scene/Action.h"
#include "scene/SceneChange.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FlagScope.h"
#include "ui/NameList.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;
using toolkit::CComboUI;
using toolkit::CControlUI;
using toolkit::CListUI;

namespace {

/// More rows than these are made anew rather than changed one by one.
constexpr std::size_t kFewRows = 10;

} // namespace

ActionPresenter::ActionPresenter(Controls controls, scene::SceneSession& session,
                                 const RowChoices& choices)
    : m_controls(controls), m_session(session), m_choices(choices),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {}

ActionPresenter::~ActionPresenter() {
    if (auto* list = m_controls.find<CListUI>(kActionList)) {
        list->SetRows(0, {}); // the list may outlive what makes its rows
    }
}

void ActionPresenter::show(int branch, bool again) {
    const int before = again ? offset() : 0;
    m_branch = branch;
    build();
    scrollTo(before);
}

void ActionPresenter::build() {
    auto* list = m_controls.find<CListUI>(kActionList);
    m_shown.clear();
    if (list == nullptr) {
        return;
    }
    if (m_branch >= 0) {
        for (scene::Action& action : m_session.actions(m_branch)) {
            m_shown.push_back({std::move(action)});
        }
    }
    list->SetRows(static_cast<int>(m_shown.size()),
                  {.make = [this](int row) { return makeRow(row); },
                   .height = kActionRowHeight,
                   .takesFocus = true});
    showEmptyText();
}

std::unique_ptr<CControlUI> ActionPresenter::makeRow(int row) const {
    const Shown& shown = m_shown[static_cast<std::size_t>(row)];
    auto made = makeActionRow(row, shown.action, m_choices);
    if (!shown.showsParameter) {
        showNoParameter(*made);
    }
    return made;
}

void ActionPresenter::showEmptyText() {
    const bool hasBranches = m_session.branchCount() > 0;
    const bool empty = m_shown.empty();
    if (empty) {
        m_controls.setText(kEmptyHeading,
                           core::tr(hasBranches ? "No actions yet"_tr : "No branches yet"_tr));
        m_controls.setText(
            kEmptyLine, core::tr(hasBranches ? "Press Add Action to say which branch plays next."_tr
                                             : "Press Add Branch to start the scene."_tr));
    }
    m_controls.setVisible(kEmptyHeading, empty);
    m_controls.setVisible(kEmptyLine, empty);
}

void ActionPresenter::changed(const scene::SceneSession::Changes& changes) {
    const bool concerned = std::any_of(changes.begin(), changes.end(), [&](const auto& change) {
        return change.part == scene::SceneChange::Part::actions &&
               (change.branch == m_branch || change.branch < 0);
    });
    if (concerned && !m_isRowEdit && m_branch >= 0) {
        refresh();
    }
}

void ActionPresenter::refresh() {
    auto* list = m_controls.find<CListUI>(kActionList);
    const std::vector<scene::Action> actions = m_session.actions(m_branch);
    if (list == nullptr) {
        return;
    }
    if (std::max(actions.size(), m_shown.size()) <=
        std::min(actions.size(), m_shown.size()) + kFewRows) {
        matchRows(actions);
    }
    std::vector<int> different;
    for (std::size_t row = 0; row < std::min(m_shown.size(), actions.size()); ++row) {
        if (m_shown[row].action != actions[row]) {
            different.push_back(static_cast<int>(row));
        }
    }
    if (actions.size() != m_shown.size() || different.size() > kFewRows) {
        show(m_branch, true); // faster
        return;
    }
    const FlagScope refreshing(m_isRefreshing);
    for (const int row : different) {
        const scene::Action& action = actions[static_cast<std::size_t>(row)];
        m_shown[static_cast<std::size_t>(row)] = {action};
        if (const CControlUI* made = list->madeRow(row)) {
            showAction(*made, action, m_choices);
        }
    }
}

void ActionPresenter::matchRows(const std::vector<scene::Action>& actions) {
    auto& list = *m_controls.find<CListUI>(kActionList);
    const auto [shownEnd, actionsEnd] = std::mismatch(
        m_shown.begin(), m_shown.end(), actions.begin(), actions.end(),
        [](const Shown& shown, const auto& action) { return shown.action == action; });
    const std::ptrdiff_t first = shownEnd - m_shown.begin();
    const std::ptrdiff_t more = std::ssize(actions) - std::ssize(m_shown);
    for (std::ptrdiff_t removed = more; removed < 0; ++removed) {
        list.RemoveAt(static_cast<int>(first));
        m_shown.erase(m_shown.begin() + first);
    }
    for (std::ptrdiff_t row = first; row < first + more; ++row) {
        m_shown.insert(m_shown.begin() + row, {actions[static_cast<std::size_t>(row)]});
        list.AnnounceAt(static_cast<int>(row));
    }
    for (int row = static_cast<int>(first); row < list.GetCount(); ++row) {
        if (const CControlUI* made = list.madeRow(row)) {
            numberRow(*made, row);
        }
    }
    showEmptyText();
}

void ActionPresenter::offerOtherZones() {
    const auto* list = m_controls.find<CListUI>(kActionList);
    for (std::size_t row = 0; list != nullptr && row < m_shown.size(); ++row) {
        if (m_shown[row].action.Type() != kConditionZone) {
            continue;
        }
        m_shown[row].showsParameter = false;
        if (const CControlUI* made = list->madeRow(static_cast<int>(row))) {
            fillParameters(*rowCombo(*made, kParameterCombo), kConditionZone, m_choices);
        }
    }
}

bool ActionPresenter::waitsForZone() const {
    return std::any_of(m_shown.begin(), m_shown.end(),
                       [](const Shown& shown) { return shown.action.Type() == kConditionZone; });
}

ActionPresenter::RowEdit ActionPresenter::rowEdit(CControlUI& sender) const {
    const int number = rowNumber(sender);
    const bool isRow =
        m_branch >= 0 && number >= 0 && static_cast<std::size_t>(number) < m_shown.size();
    return {isRow && !m_isRefreshing ? toolkit::controlCast<CComboUI>(&sender) : nullptr, number};
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
        const FlagScope own(m_isRowEdit);
        m_session.setType(m_branch, edit.action, condition);
        edited(edit.action);
        m_shown[static_cast<std::size_t>(edit.action)].showsParameter = false;
    }
}

void ActionPresenter::chooseParameter(CControlUI& sender) {
    const RowEdit edit = rowEdit(sender);
    if (edit.combo != nullptr) {
        const NameList& names =
            m_choices.parameters(m_shown[static_cast<std::size_t>(edit.action)].action.Type());
        const FlagScope own(m_isRowEdit);
        m_session.setParameter(
            m_branch, edit.action,
            storedChoice(names.stored, edit.combo->GetCurSel(), edit.combo->GetText()));
        edited(edit.action);
        m_shown[static_cast<std::size_t>(edit.action)].showsParameter = true;
    }
}

void ActionPresenter::chooseTarget(CControlUI& sender) {
    const RowEdit edit = rowEdit(sender);
    if (edit.combo != nullptr && !edit.combo->GetText().empty()) {
        const FlagScope own(m_isRowEdit);
        m_session.setTarget(m_branch, edit.action,
                            storedChoice(m_choices.branches.stored, edit.combo->GetCurSel(),
                                         edit.combo->GetText()));
        edited(edit.action);
        markTarget(*sender.GetParent(), m_shown[static_cast<std::size_t>(edit.action)].action,
                   m_choices);
    }
}

void ActionPresenter::changeImmediate(CControlUI& sender) {
    const auto* check = toolkit::controlCast<toolkit::COptionUI>(&sender);
    const int number = rowNumber(sender);
    if (check != nullptr && number >= 0 && m_branch >= 0) {
        const FlagScope own(m_isRowEdit);
        m_session.setImmediate(m_branch, number, check->IsSelected());
        edited(number);
    }
}

void ActionPresenter::edited(int action) {
    m_shown[static_cast<std::size_t>(action)].action = m_session.action(m_branch, action);
}

int ActionPresenter::offset() const {
    auto* list = m_controls.find<CListUI>(kActionList);
    return list != nullptr ? list->GetScrollBar().model().offset() : 0;
}

void ActionPresenter::chooseTargetOf(int action) {
    auto* list = m_controls.find<CListUI>(kActionList);
    if (list == nullptr || action < 0 || action >= list->GetCount()) {
        return;
    }
    list->revealRow(action);
    if (toolkit::CComboUI* combo = rowCombo(*list->GetItemAt(action), kTargetCombo)) {
        m_controls.manager().SetFocus(combo);
        combo->Drop();
    }
}

void ActionPresenter::scrollTo(int offset) {
    if (auto* list = m_controls.find<CListUI>(kActionList)) {
        list->GetScrollBar().model().setOffset(offset);
        list->NeedUpdate();
    }
}

} // namespace ui
