#include "ui/branch_editor/StyleCombo.h"

#include <string_view>
#include <utility>

#include "toolkit/controls/CComboUI.h"

namespace ui {

namespace {

constexpr std::pair<std::u16string_view, std::u16string_view> kComboLook[] = {
    {u"itembkimage", u"file='ComboItemNormal.png' corner='1,1,1,1'"},
    {u"itemselectedimage", u"file='ComboItemSelected.png' corner='1,1,1,1'"},
    {u"itemhotimage", u"file='ComboItemHover.png' corner='1,1,1,1'"},
    {u"normalimage", u"file='ComboNormal.png' corner='5,4,28,4'"},
    {u"hotimage", u"file='ComboHover.png' corner='5,4,28,4'"},
    {u"pushedimage", u"file='ComboClick.png' corner='5,4,28,4'"},
    {u"disabledimage", u"file='ComboInactive.png' corner='5,4,28,4'"},
    {u"itemtextcolor", u"value"},
    {u"itemselectedtextcolor", u"value"},
    {u"itemselectedbkcolor", u"selected"},
    {u"itemhottextcolor", u"value"},
    {u"itemhotbkcolor", u"hot"},
    {u"itemdisabledtextcolor", u"itemoff"},
    {u"itemdisabledbkcolor", u"surface"},
    {u"itemtextpadding", u"5,1,5,1"},
    {u"itemfont", u"0"},
};

} // namespace

void StyleCombo(toolkit::CComboUI& combo, int dropHeight) {
    for (const auto& [name, value] : kComboLook) {
        combo.SetAttribute(name, value);
    }
    combo.SetFixedWidth(200);
    combo.SetDropBoxSize({0, dropHeight});
    combo.SetPadding({5, 1, 5, 1});
}

} // namespace ui
