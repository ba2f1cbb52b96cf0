#include <algorithm>
#include <limits>
#include <utility>

#include "core/Text.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "ui/ActionRow.h"
#include "ui/BranchList.h"
#include "ui/BranchListControls.h"
#include "ui/Confirmation.h"
#include "ui/StyleCombo.h"
#include "zone/ZoneManager.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr int kConditionDrop = 120;
constexpr int kLongDrop = 540;
constexpr int kRowHeight = 33;
constexpr int kCheckSide = 18;
constexpr int kLastAction = std::numeric_limits<int>::max();

std::unique_ptr<toolkit::CComboUI> makeCombo(std::u16string_view name, std::u16string_view toolTip,
                                             int dropHeight) {
    auto combo = std::make_unique<toolkit::CComboUI>();
    combo->SetName(name);
    combo->SetToolTip(toolTip);
    StyleCombo(*combo, dropHeight);
    return combo;
}

std::unique_ptr<toolkit::CControlUI> makeImmediate(bool immediate) {
    auto check = std::make_unique<toolkit::COptionUI>();
    check->SetName(kImmediateCheck);
    check->SetToolTip(u"Activate immediately");
    check->SetPadding({94, 8, 0, 0});
    check->SetFixedWidth(kCheckSide);
    check->SetFixedHeight(kCheckSide);
    check->SetMinWidth(kCheckSide);
    check->SetMinHeight(kCheckSide);
    check->SetMaxWidth(kCheckSide);
    check->SetMaxHeight(kCheckSide);
    check->SetAttribute(u"normalimage", u"file='OptionNormal.png'");
    check->SetAttribute(u"hotimage", u"file='OptionHover.png'");
    check->SetAttribute(u"selectedimage", u"file='OptionClick.png'");
    check->SetAttribute(u"disabledimage", u"file='OptionInactive.png'");
    check->Selected(immediate);
    return check;
}

/// The combo `name` in the row at `index` of the list; null when there is none.
toolkit::CComboUI* rowCombo(const toolkit::CListUI& list, int index, std::u16string_view name) {
    const auto* row = toolkit::controlCast<toolkit::CContainerUI>(list.GetItemAt(index));
    return row != nullptr ? toolkit::controlCast<toolkit::CComboUI>(row->FindSubControl(name))
                          : nullptr;
}

} // namespace

void BranchList::rebuildActions() {
    auto* list = find<toolkit::CListUI>(kActionList);
    if (list == nullptr) {
        return;
    }
    list->RemoveAll();
    const int branch = selectedBranch();
    if (branch < 0) {
        return;
    }
    readShownZones();
    std::vector<std::shared_ptr<scene::Action>> actions;
    scene()->branchActions(branch, actions);
    int number = 0;
    for (const auto& action : actions) {
        list->Add(makeRow(number++, *action));
    }
}

int BranchList::actionsOffset() {
    auto* list = find<toolkit::CListUI>(kActionList);
    return list != nullptr ? list->GetScrollBar().model().offset() : 0;
}

void BranchList::scrollActions(int offset) {
    if (auto* list = find<toolkit::CListUI>(kActionList)) {
        list->GetScrollBar().model().setOffset(offset);
        list->NeedUpdate();
    }
}

void BranchList::revealAction(int number) {
    auto* list = find<toolkit::CListUI>(kActionList);
    if (list != nullptr && list->GetCount() > 0) {
        list->reveal(*list->GetItemAt(std::min(number, list->GetCount() - 1)));
    }
}

std::unique_ptr<toolkit::CControlUI> BranchList::makeRow(int number, const scene::Action& action) {
    auto item = std::make_unique<toolkit::CHorizontalLayoutUI>();
    item->SetName(kRowItem);
    item->SetUserData(core::displayText(std::to_string(number)));
    item->Add(makeConditions(action));
    item->Add(makeParameters(action));
    item->Add(makeTargets(action));
    item->Add(makeImmediate(action.Immediate()));
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetName(kRow);
    row->SetFixedHeight(kRowHeight);
    row->Add(std::move(item));
    return row;
}

std::unique_ptr<toolkit::CControlUI> BranchList::makeConditions(const scene::Action& action) const {
    auto combo = makeCombo(kConditionCombo, u"Action condition", kConditionDrop);
    combo->SetItemTexts(m_conditions.shown);
    combo->SelectItem(action.Type());
    return combo;
}

std::unique_ptr<toolkit::CControlUI> BranchList::makeParameters(const scene::Action& action) {
    auto combo = makeCombo(kParameterCombo, u"Action parameter", kLongDrop);
    fillParameters(*combo, action.Type());
    combo->SelectItem(indexOfText(parametersOf(action.Type()).stored, action.Parameter()));
    return combo;
}

std::unique_ptr<toolkit::CControlUI> BranchList::makeTargets(const scene::Action& action) const {
    auto combo = makeCombo(kTargetCombo, u"Branch to activate", kLongDrop);
    combo->SetItemTexts(m_branches.shown);
    combo->SelectItem(indexOfText(m_branches.stored, action.BranchID()));
    return combo;
}

const NameList& BranchList::parametersOf(int condition) {
    static const NameList kNone;
    switch (parameterKind(condition)) {
    case ParameterKind::letters:
        return m_letters;
    case ParameterKind::zones:
        return m_shownZones;
    default:
        return kNone;
    }
}

void BranchList::fillParameters(toolkit::CComboUI& combo, int condition) {
    combo.SetItemTexts(parametersOf(condition).shown);
    const ParameterKind kind = parameterKind(condition);
    if (kind != ParameterKind::unknown) {
        combo.SetEnabled(kind != ParameterKind::none);
    }
    combo.Invalidate();
}

std::shared_ptr<scene::Action> BranchList::actionOf(const Control& control) {
    const Control* item = control.GetParent();
    const int number = item != nullptr ? actionNumber(item->GetUserData()) : -1;
    const int branch = selectedBranch();
    return number >= 0 && branch >= 0 ? scene()->action(branch, number) : nullptr;
}

void BranchList::refreshTargets() {
    const auto* list = find<toolkit::CListUI>(kActionList);
    if (list == nullptr) {
        return;
    }
    for (int index = 0; index < list->GetCount(); ++index) {
        // Nothing is selected afterwards, although the actions keep their targets. Intended.
        if (toolkit::CComboUI* combo = rowCombo(*list, index, kTargetCombo)) {
            combo->SetItemTexts(m_branches.shown);
        }
    }
}

void BranchList::refreshZoneParameters() {
    readShownZones();
    const auto* list = find<toolkit::CListUI>(kActionList);
    if (list == nullptr) {
        return;
    }
    for (int index = 0; index < list->GetCount(); ++index) {
        const toolkit::CComboUI* condition = rowCombo(*list, index, kConditionCombo);
        toolkit::CComboUI* parameter = rowCombo(*list, index, kParameterCombo);
        if (condition != nullptr && parameter != nullptr &&
            condition->GetCurSel() == kConditionZone) {
            fillParameters(*parameter, kConditionZone);
        }
    }
}

void BranchList::chooseCondition(Control& sender) {
    const auto* combo = toolkit::controlCast<toolkit::CComboUI>(&sender);
    const auto action = actionOf(sender);
    if (combo == nullptr || !action) {
        return;
    }
    const int condition = combo->GetCurSel();
    const auto* row = toolkit::controlCast<toolkit::CContainerUI>(sender.GetParent());
    auto* parameter = toolkit::controlCast<toolkit::CComboUI>(row->FindSubControl(kParameterCombo));
    if (parameter != nullptr) {
        fillParameters(*parameter, condition < 0 ? kConditionDefault : condition);
    }
    if (condition >= 0 && condition != action->Type()) {
        // The parameter stays until another one is picked. Intended.
        action->SetType(condition);
        changed();
    }
}

void BranchList::chooseParameter(Control& sender) {
    const auto* combo = toolkit::controlCast<toolkit::CComboUI>(&sender);
    const auto action = actionOf(sender);
    if (combo != nullptr && action) {
        const NameList& names = parametersOf(action->Type());
        const std::string name = storedChoice(names.stored, combo->GetCurSel(), combo->GetText());
        if (name != action->Parameter()) {
            action->SetParameter(name);
            changed();
        }
    }
}

void BranchList::chooseTarget(Control& sender) {
    const auto* combo = toolkit::controlCast<toolkit::CComboUI>(&sender);
    const auto action = actionOf(sender);
    if (combo != nullptr && action && !combo->GetText().empty()) {
        const std::string name =
            storedChoice(m_branches.stored, combo->GetCurSel(), combo->GetText());
        if (name != action->BranchID()) {
            action->SetBranchID(name);
            changed();
        }
    }
}

void BranchList::changeImmediate(Control& sender) {
    const auto* check = toolkit::controlCast<toolkit::COptionUI>(&sender);
    const auto action = actionOf(sender);
    if (check != nullptr && action) {
        action->SetImmediate(check->IsSelected());
        changed();
    }
}

void BranchList::addAction() {
    const int branch = selectedBranch();
    if (branch < 0) {
        return;
    }
    scene()->addAction(branch, scene::Action::create());
    changed();
    rebuildActions();
    revealAction(kLastAction);
}

void BranchList::removeAction() {
    const auto* list = find<toolkit::CListUI>(kActionList);
    const int branch = selectedBranch();
    if (list == nullptr || branch < 0 || list->GetCurSel() < 0) {
        return;
    }
    // A dismissed question keeps the action: the opposite of the exit question. Intended.
    SetAnswer(kNo);
    Confirmation::ask(context(), *this, "Remove Action?",
                      "Are you sure you want to remove the action?");
    if (answer() == kYes) {
        const int number = list->GetCurSel();
        const int offset = actionsOffset();
        scene()->removeAction(branch, number);
        changed();
        rebuildActions();
        scrollActions(offset);
        revealAction(number);
    }
}

} // namespace ui
