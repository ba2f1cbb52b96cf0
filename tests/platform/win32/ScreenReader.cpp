#include "tests/platform/win32/ScreenReader.h"

#include <map>

#include <gtest/gtest.h>

#include "platform/Geometry.h"

namespace test {
namespace {

using platform::Accessible;
using platform::AccessibleRole;

/// The system's number and its own word for what a press does.
struct SystemRole {
    long number;
    const char16_t* action = u"";
    const char16_t* actionWhenOn = u""; ///< checked or expanded
};

const std::map<AccessibleRole, SystemRole> kRoles{
    {AccessibleRole::window, {ROLE_SYSTEM_CLIENT}},
    {AccessibleRole::dialog, {ROLE_SYSTEM_DIALOG}},
    {AccessibleRole::group, {ROLE_SYSTEM_GROUPING}},
    {AccessibleRole::label, {ROLE_SYSTEM_STATICTEXT}},
    {AccessibleRole::button, {ROLE_SYSTEM_PUSHBUTTON, u"Press"}},
    {AccessibleRole::checkBox, {ROLE_SYSTEM_CHECKBUTTON, u"Check", u"Uncheck"}},
    {AccessibleRole::radioButton, {ROLE_SYSTEM_RADIOBUTTON, u"Check", u"Check"}},
    {AccessibleRole::comboBox, {ROLE_SYSTEM_COMBOBOX, u"Open", u"Close"}},
    {AccessibleRole::edit, {ROLE_SYSTEM_TEXT}},
    {AccessibleRole::list, {ROLE_SYSTEM_LIST}},
    {AccessibleRole::listItem, {ROLE_SYSTEM_LISTITEM, u"Select"}},
    {AccessibleRole::menu, {ROLE_SYSTEM_MENUPOPUP}},
    {AccessibleRole::menuItem, {ROLE_SYSTEM_MENUITEM, u"Execute"}},
    {AccessibleRole::picture, {ROLE_SYSTEM_GRAPHIC}},
    {AccessibleRole::separator, {ROLE_SYSTEM_SEPARATOR}},
    {AccessibleRole::progressBar, {ROLE_SYSTEM_PROGRESSBAR}},
    {AccessibleRole::slider, {ROLE_SYSTEM_SLIDER}},
    {AccessibleRole::tree, {ROLE_SYSTEM_OUTLINE}},
    {AccessibleRole::treeItem, {ROLE_SYSTEM_OUTLINEITEM, u"Select"}},
};

} // namespace

AccessibleObject clientOf(HWND window) {
    void* found = nullptr;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               &found);
    return AccessibleObject(static_cast<IAccessible*>(found));
}

VARIANT numbered(long id) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = id;
    return child;
}

std::u16string taken(BSTR text) {
    std::u16string result(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
    SysFreeString(text);
    return result;
}

void TreeReader::readTree(IAccessible& object, const Accessible& node) const {
    read(object, numbered(CHILDID_SELF), node);
    long count = -1;
    EXPECT_EQ(object.get_accChildCount(&count), S_OK);
    ASSERT_EQ(count, node.accessibleChildCount());
    for (long i = 1; i <= count; ++i) {
        IDispatch* child = nullptr;
        ASSERT_EQ(object.get_accChild(numbered(i), &child), S_OK);
        const AccessibleObject below(static_cast<IAccessible*>(child));
        readTree(*below, *node.accessibleChild(static_cast<int>(i - 1)));
    }
}

void TreeReader::read(IAccessible& object, const VARIANT& id, const Accessible& node) const {
    SCOPED_TRACE(testing::PrintToString(node.accessibleId()));
    BSTR text = nullptr;
    object.get_accName(id, &text);
    EXPECT_EQ(taken(text), node.accessibleName());
    object.get_accDescription(id, &text);
    EXPECT_EQ(taken(text), node.accessibleId());
    object.get_accValue(id, &text);
    EXPECT_EQ(taken(text), node.accessibleValue());
    VARIANT role{};
    EXPECT_EQ(object.get_accRole(id, &role), S_OK);
    const SystemRole& expected = kRoles.at(node.accessibleRole());
    EXPECT_EQ(role.lVal, expected.number);
    const platform::AccessibleState state = node.accessibleState();
    object.get_accDefaultAction(id, &text);
    EXPECT_EQ(taken(text),
              state.checked || state.expanded ? expected.actionWhenOn : expected.action);
    readPlaceAndState(object, id, node);
}

void TreeReader::readPlaceAndState(IAccessible& object, const VARIANT& id,
                                   const Accessible& node) const {
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    EXPECT_EQ(object.accLocation(&left, &top, &width, &height, id), S_OK);
    POINT origin{};
    ClientToScreen(m_window, &origin);
    EXPECT_EQ(platform::Rect::at(left, top, width, height),
              node.accessibleRect().translated(origin.x, origin.y));

    const platform::AccessibleState state = node.accessibleState();
    VARIANT bits{};
    EXPECT_EQ(object.get_accState(id, &bits), S_OK);
    const auto has = [&](long bit) { return (bits.lVal & bit) != 0; };
    EXPECT_EQ(has(STATE_SYSTEM_UNAVAILABLE), !state.enabled);
    EXPECT_EQ(has(STATE_SYSTEM_INVISIBLE), !state.visible);
    EXPECT_EQ(has(STATE_SYSTEM_FOCUSABLE), state.focusable);
    EXPECT_EQ(has(STATE_SYSTEM_FOCUSED), state.focused);
    EXPECT_EQ(has(STATE_SYSTEM_CHECKED), state.checkable && state.checked);
    EXPECT_EQ(has(STATE_SYSTEM_SELECTED), state.selected);
    EXPECT_EQ(has(STATE_SYSTEM_EXPANDED), state.expandable && state.expanded);
    EXPECT_EQ(has(STATE_SYSTEM_COLLAPSED), state.expandable && !state.expanded);
    EXPECT_EQ(has(STATE_SYSTEM_READONLY), state.readOnly);
}

} // namespace test
