#include "ui/importing/ImportRow.h"

#include <cstddef>
#include <string>
#include <utility>

#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "ui/Fonts.h"
#include "ui/importing/ImportTexts.h"

namespace ui {
namespace {

using imports::ImportItem;
using imports::ImportState;
using toolkit::CControlUI;

constexpr std::u16string_view kName = u"LabelRowName";
constexpr std::u16string_view kFacts = u"LabelRowFacts";
constexpr std::u16string_view kSign = u"SignRow";
constexpr std::u16string_view kFirst = u"LabelRowState";
constexpr std::u16string_view kSecond = u"LabelRowReason";
constexpr std::u16string_view kBar = u"ProgressRow";
/// A longer reason takes the place of the facts as well, and some of the name's.
constexpr std::size_t kShortReason = 26;

struct StateLook {
    std::u16string_view color;
    std::u16string_view icon{};
    std::u16string_view tint{};
};

StateLook lookOf(ImportState state) {
    switch (state) {
    case ImportState::done:
        return {u"good", u"Check", u"good"};
    case ImportState::failed:
        return {u"danger", u"Error", u"danger"};
    case ImportState::converting:
        return {u"ink"};
    default:
        return {u"hint"};
    }
}

void place(CControlUI& control, const std::u16string& where) {
    control.SetAttribute(u"pos", where);
}

template <class Control>
Control& add(toolkit::CContainerUI& row, std::u16string_view name, const std::u16string& where) {
    auto control = std::make_unique<Control>();
    Control& added = *control;
    control->SetName(name);
    place(added, where);
    row.Add(std::move(control));
    return added;
}

toolkit::CLabelUI& addLabel(toolkit::CContainerUI& row, std::u16string_view name,
                            const std::u16string& where, int font) {
    auto& label = add<toolkit::CLabelUI>(row, name, where);
    label.SetFont(font);
    label.SetAttribute(u"textcolor", u"muted");
    label.SetAttribute(u"endellipsis", u"true");
    return label;
}

toolkit::CButtonUI& addButton(toolkit::CContainerUI& row, std::u16string_view name,
                              const std::u16string& where, bool isFlat) {
    auto& button = add<toolkit::CButtonUI>(row, name, where);
    button.SetAttribute(u"normalimage", isFlat ? u"" : u"file='ButtonNormal.png' corner='4,4,4,4'");
    button.SetAttribute(u"hotimage", u"file='ButtonHover.png' corner='4,4,4,4'");
    button.SetAttribute(u"pushedimage", u"file='ButtonClick.png' corner='4,4,4,4'");
    button.SetAttribute(u"align", u"center");
    button.SetAttribute(u"textcolor", u"ink");
    return button;
}

template <class Control = CControlUI>
Control& part(CControlUI& row, std::u16string_view name) {
    return *toolkit::controlCast<Control>(row.FindSubControl(name));
}

/// The sign and the lines behind it: in the column of states, or from the end of a short name on.
void placeState(CControlUI& row, bool isWide, bool hasRemedy, bool hasSign, bool isTwoLines) {
    const std::u16string left = isWide ? u"212" : hasSign ? u"445" : u"423";
    const std::u16string width = hasRemedy ? u"283" : isWide ? u"395" : hasSign ? u"164" : u"184";
    place(part(row, kName), isWide ? u"35,0,149,39" : u"35,0,230,39");
    place(part(row, kSign), isWide ? u"190,12,16,16" : u"423,12,16,16");
    place(part(row, kFirst),
          left + (isTwoLines ? u",5," : u",0,") + width + (isTwoLines ? u",15" : u",39"));
    place(part(row, kSecond), left + u",19," + width + u",15");
}

} // namespace

std::unique_ptr<CControlUI> makeImportRow(const ImportItem& item) {
    auto row = std::make_unique<toolkit::CListContainerElementUI>();
    row->SetFixedHeight(40);
    row->SetAttribute(u"size", u"646,40");
    row->SetAttribute(u"bordercolor", u"rowline");
    row->SetAttribute(u"bordersize", u"0,0,0,1");
    auto& icon = add<CControlUI>(*row, {}, u"11,12,16,16");
    icon.SetAttribute(u"icon", u"Video");
    icon.SetAttribute(u"icontint", u"muted");
    auto& name = addLabel(*row, kName, u"35,0,230,39", font::kBody);
    name.SetText(core::displayText(core::fileName(item.source)));
    name.SetAttribute(u"textcolor", u"ink");
    addLabel(*row, kFacts, u"273,0,146,39", font::kSmall);
    add<CControlUI>(*row, kSign, u"423,12,16,16");
    addLabel(*row, kFirst, u"445,0,164,39", font::kSmall);
    addLabel(*row, kSecond, u"445,19,164,15", font::kSmall);
    auto& bar = add<toolkit::CProgressUI>(*row, kBar, u"423,26,170,5");
    bar.SetAttribute(u"trackcolor", u"rest");
    bar.SetAttribute(u"barcolor", u"primary");
    bar.SetLabel(core::tr("Progress"_tr));
    addButton(*row, kRowRemedy, u"503,7,104,25", false).SetAttribute(u"anchor", u"top,right");
    auto& end = addButton(*row, kRowEnd, u"611,7,28,25", true);
    end.SetAttribute(u"anchor", u"top,right");
    showImport(*row, item);
    return row;
}

void showImport(CControlUI& row, const ImportItem& item) {
    const ImportStateText text = importStateText(item);
    const bool isFailed = item.state == ImportState::failed;
    const bool isConverting = item.state == ImportState::converting;
    const std::u16string remedy = isFailed ? importRemedyText(item.failure) : std::u16string();
    const bool isWide = !remedy.empty() || text.second.size() > kShortReason;
    const StateLook look = lookOf(item.state);
    placeState(row, isWide, !remedy.empty(), !look.icon.empty(), isFailed || isConverting);

    auto& facts = part<toolkit::CLabelUI>(row, kFacts);
    facts.SetText(importFactsText(item));
    facts.SetVisible(!isWide);
    auto& sign = part(row, kSign);
    sign.SetAttribute(u"icon", look.icon);
    sign.SetAttribute(u"icontint", look.tint);
    sign.SetVisible(!look.icon.empty());
    auto& first = part<toolkit::CLabelUI>(row, kFirst);
    auto& second = part<toolkit::CLabelUI>(row, kSecond);
    first.SetText(text.first);
    second.SetText(text.second);
    second.SetVisible(!text.second.empty());
    for (toolkit::CLabelUI* label : {&first, &second}) {
        label->SetAttribute(u"textcolor", look.color);
    }
    auto& bar = part<toolkit::CProgressUI>(row, kBar);
    bar.SetPercent(item.percent);
    bar.SetVisible(isConverting);
    auto& act = part(row, kRowRemedy);
    act.SetText(remedy);
    act.SetToolTip(importRemedyToolTip(item.failure));
    act.SetVisible(!remedy.empty());
    const bool isDone = item.state == ImportState::done;
    auto& end = part(row, kRowEnd);
    end.SetAttribute(u"icon", isDone ? u"More" : u"Close");
    const bool isOver = !imports::isUnderWay(item.state);
    const std::u16string what = core::tr(isDone   ? "More"_tr
                                         : isOver ? "Remove from the list"_tr
                                                  : "Cancel"_tr);
    end.SetToolTip(what);
    end.SetLabel(what + u": " + core::displayText(core::fileName(item.source)));
    const std::u16string known = importFactsText(item);
    row.SetText(core::displayText(core::fileName(item.source)) +
                (known.empty() ? u"" : u", " + known) + u", " + text.whole());
}

} // namespace ui
