#include "ui/branch_editor/ActionRows.h"

#include <string>
#include <utility>

#include "core/Text.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/StyleCombo.h"

namespace ui {

using namespace branch_list;
using toolkit::CComboUI;
using toolkit::CControlUI;

namespace {

constexpr int kConditionDrop = 120;
constexpr int kLongDrop = 540;
constexpr int kRowHeight = 33;
constexpr int kCheckSide = 18;

std::unique_ptr<CComboUI> makeCombo(std::u16string_view name, std::u16string_view toolTip,
                                    int dropHeight) {
    auto combo = std::make_unique<CComboUI>();
    combo->SetName(name);
    combo->SetToolTip(toolTip);
    StyleCombo(*combo, dropHeight);
    return combo;
}

std::unique_ptr<CControlUI> makeConditions(const scene::Action& action, const RowChoices& choices) {
    auto combo = makeCombo(kConditionCombo, u"Action condition", kConditionDrop);
    combo->SetItemTexts(choices.conditions.shown);
    combo->SelectItem(action.Type());
    return combo;
}

std::unique_ptr<CControlUI> makeParameters(const scene::Action& action, const RowChoices& choices) {
    auto combo = makeCombo(kParameterCombo, u"Action parameter", kLongDrop);
    fillParameters(*combo, action.Type(), choices);
    combo->SelectItem(indexOfText(choices.parameters(action.Type()).stored, action.Parameter()));
    return combo;
}

std::unique_ptr<CControlUI> makeTargets(const scene::Action& action, const RowChoices& choices) {
    auto combo = makeCombo(kTargetCombo, u"Branch to activate", kLongDrop);
    combo->SetItemTexts(choices.branches.shown);
    combo->SelectItem(indexOfText(choices.branches.stored, action.BranchID()));
    return combo;
}

std::unique_ptr<CControlUI> makeImmediate(bool immediate) {
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

} // namespace

const NameList& RowChoices::parameters(int condition) const {
    static const NameList kNone;
    switch (parameterKind(condition)) {
    case ParameterKind::letters:
        return letters;
    case ParameterKind::zones:
        return zones;
    default:
        return kNone;
    }
}

std::unique_ptr<CControlUI> makeActionRow(int number, const scene::Action& action,
                                          const RowChoices& choices) {
    auto item = std::make_unique<toolkit::CHorizontalLayoutUI>();
    item->SetName(kRowItem);
    item->SetUserData(core::displayText(std::to_string(number)));
    item->Add(makeConditions(action, choices));
    item->Add(makeParameters(action, choices));
    item->Add(makeTargets(action, choices));
    item->Add(makeImmediate(action.Immediate()));
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetName(kRow);
    row->SetFixedHeight(kRowHeight);
    row->Add(std::move(item));
    return row;
}

void fillParameters(CComboUI& combo, int condition, const RowChoices& choices) {
    combo.SetItemTexts(choices.parameters(condition).shown);
    const ParameterKind kind = parameterKind(condition);
    if (kind != ParameterKind::unknown) {
        combo.SetEnabled(kind != ParameterKind::none);
    }
    combo.Invalidate();
}

CComboUI* rowCombo(const toolkit::CListUI& list, int index, std::u16string_view name) {
    const auto* row = toolkit::controlCast<toolkit::CContainerUI>(list.GetItemAt(index));
    return row != nullptr ? toolkit::controlCast<CComboUI>(row->FindSubControl(name)) : nullptr;
}

int rowNumber(const CControlUI& control) {
    const CControlUI* item = control.GetParent();
    return item != nullptr ? actionNumber(item->GetUserData()) : -1;
}

} // namespace ui
