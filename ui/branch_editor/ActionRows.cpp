#include "ui/branch_editor/ActionRows.h"

#include <string>
#include <utility>

#include "core/Text.h"
#include "core/Texts.h"
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
constexpr int kCheckSide = 18;

std::unique_ptr<CComboUI> makeCombo(std::u16string_view name, core::Text toolTip, int dropHeight,
                                    const NameList& items) {
    auto combo = std::make_unique<CComboUI>();
    combo->SetName(name);
    combo->SetToolTip(core::tr(toolTip));
    StyleCombo(*combo, dropHeight);
    combo->SetItemTexts(items.shown);
    return combo;
}

std::unique_ptr<CControlUI> makeImmediate() {
    auto check = std::make_unique<toolkit::COptionUI>();
    check->SetName(kImmediateCheck);
    check->SetToolTip(core::tr("Activate immediately"_tr));
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
    item->Add(
        makeCombo(kConditionCombo, "Action condition"_tr, kConditionDrop, choices.conditions));
    item->Add(makeCombo(kParameterCombo, "Action parameter"_tr, kLongDrop, {}));
    auto targets = makeCombo(kTargetCombo, "Branch to activate"_tr, kLongDrop, choices.branches);
    targets->SetAttribute(u"bordercolor", u"danger");
    targets->SetAttribute(u"bkradius", u"3");
    item->Add(std::move(targets));
    item->Add(makeImmediate());
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetName(kRow);
    row->SetFixedHeight(kActionRowHeight);
    row->Add(std::move(item));
    numberRow(*row, number);
    showAction(*row, action, choices);
    return row;
}

void numberRow(const CControlUI& row, int number) {
    row.FindSubControl(kRowItem)->SetUserData(core::displayText(std::to_string(number)));
}

void showAction(const CControlUI& row, const scene::Action& action, const RowChoices& choices) {
    rowCombo(row, kConditionCombo)->SelectItem(action.Type());
    CComboUI& parameters = *rowCombo(row, kParameterCombo);
    fillParameters(parameters, action.Type(), choices);
    parameters.SelectItem(
        indexOfText(choices.parameters(action.Type()).stored, action.Parameter()));
    rowCombo(row, kTargetCombo)
        ->SelectItem(indexOfText(choices.branches.stored, action.BranchID()));
    markTarget(row, action, choices);
    toolkit::controlCast<toolkit::COptionUI>(row.FindSubControl(kImmediateCheck))
        ->Selected(action.Immediate());
}

void markTarget(const CControlUI& row, const scene::Action& action, const RowChoices& choices) {
    const std::string& target = action.BranchID();
    const bool isMissing = !target.empty() && indexOfText(choices.branches.stored, target) < 0;
    const int width = isMissing ? 2 : 0;
    rowCombo(row, kTargetCombo)->SetBorderSize({width, width, width, width});
}

void showNoParameter(const CControlUI& row) {
    rowCombo(row, kParameterCombo)->SelectItem(-1);
}

void fillParameters(CComboUI& combo, int condition, const RowChoices& choices) {
    combo.SetItemTexts(choices.parameters(condition).shown);
    const ParameterKind kind = parameterKind(condition);
    if (kind != ParameterKind::unknown) {
        combo.SetEnabled(kind != ParameterKind::none);
    }
    combo.Invalidate();
}

CComboUI* rowCombo(const CControlUI& row, std::u16string_view name) {
    return toolkit::controlCast<CComboUI>(row.FindSubControl(name));
}

int rowNumber(const CControlUI& control) {
    const CControlUI* item = control.GetParent();
    return item != nullptr ? actionNumber(item->GetUserData()) : -1;
}

} // namespace ui
