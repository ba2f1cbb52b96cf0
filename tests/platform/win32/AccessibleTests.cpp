// A window's accessibility tree as a screen reader gets it through MSAA.
#include <array>
#include <memory>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>
#include <oleacc.h>

#include "platform/win32/Win32Window.h"
#include "tests/support/gui/TestControl.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using test::TestControl;

namespace {

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Object = std::unique_ptr<IAccessible, Release>;

VARIANT childId(long id) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = id;
    return child;
}

std::wstring taken(BSTR text) {
    const std::wstring result(text != nullptr ? text : L"", SysStringLen(text));
    SysFreeString(text);
    return result;
}

class AccessibleTest : public testing::Test {
protected:
    AccessibleTest() {
        std::uint32_t error = 0; // the program does it before its first window
        EXPECT_TRUE(test::gui().components().initialize(error));
        m_window.accessible = m_root.get();
        m_window.native().setGeometry({100, 200, 300, 300});
        m_window.show();
        void* found = nullptr;
        AccessibleObjectFromWindow(
            static_cast<platform::win32::Win32Window&>(m_window.native()).handle(),
            static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &found);
        m_client.reset(static_cast<IAccessible*>(found));
    }

    ~AccessibleTest() override {
        m_client.reset();
        m_window.destroy();
        test::gui().components().uninitialize();
    }

    void SetUp() override { ASSERT_NE(m_client, nullptr); }

    [[nodiscard]] TestControl& control(int index) {
        return static_cast<TestControl&>(*m_root->accessibleChild(index));
    }
    [[nodiscard]] static Object childOf(IAccessible& parent, long id) {
        IDispatch* found = nullptr;
        parent.get_accChild(childId(id), &found);
        return Object(static_cast<IAccessible*>(found));
    }

    std::unique_ptr<TestControl> m_root = test::makeTestDialog();
    test::TestWindow m_window;
    Object m_client;
    VARIANT m_self = childId(CHILDID_SELF);
};

} // namespace

TEST_F(AccessibleTest, DescribesEveryControl) {
    const struct {
        long id;
        long role;
        const wchar_t* name;
        const wchar_t* description;
        const wchar_t* value;
    } cases[] = {
        {CHILDID_SELF, ROLE_SYSTEM_DIALOG, L"Exit", L"Confirmation", L""},
        {1, ROLE_SYSTEM_STATICTEXT, L"Save first?", L"Question", L""},
        {2, ROLE_SYSTEM_PUSHBUTTON, L"Yes", L"ButtonYes", L""},
        {3, ROLE_SYSTEM_TEXT, L"Branch name", L"EditBranchName", L"Start\u00e9"},
        {4, ROLE_SYSTEM_COMBOBOX, L"Zone", L"ComboZone", L"Door"},
        {5, ROLE_SYSTEM_RADIOBUTTON, L"Move point", L"OptionMovePoint", L""},
        {6, ROLE_SYSTEM_LIST, L"Actions", L"ListAction", L""},
    };
    long count = 0;
    EXPECT_EQ(m_client->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 6);
    for (const auto& c : cases) {
        BSTR text = nullptr;
        VARIANT role{};
        EXPECT_EQ(m_client->get_accRole(childId(c.id), &role), S_OK);
        EXPECT_EQ(role.lVal, c.role) << c.id;
        m_client->get_accName(childId(c.id), &text);
        EXPECT_EQ(taken(text), c.name);
        m_client->get_accDescription(childId(c.id), &text);
        EXPECT_EQ(taken(text), c.description);
        m_client->get_accValue(childId(c.id), &text);
        EXPECT_EQ(taken(text), c.value);
    }
    BSTR none = nullptr;
    EXPECT_EQ(m_client->get_accName(childId(7), &none), E_INVALIDARG);
    EXPECT_EQ(m_client->get_accName(childId(-99), &none), E_INVALIDARG);
}

TEST_F(AccessibleTest, TellsPlacesStatesAndTheFocus) {
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    EXPECT_EQ(m_client->accLocation(&left, &top, &width, &height, childId(2)), S_OK);
    EXPECT_EQ((std::array{left, top, width, height}), (std::array{110L, 230L, 50L, 20L}));
    VARIANT hit{};
    EXPECT_EQ(m_client->accHitTest(112, 232, &hit), S_OK);
    ASSERT_EQ(hit.vt, VT_DISPATCH);
    const Object button(static_cast<IAccessible*>(hit.pdispVal));
    BSTR name = nullptr;
    button->get_accName(m_self, &name);
    EXPECT_EQ(taken(name), L"Yes");

    VARIANT focus{};
    EXPECT_EQ(m_client->get_accFocus(&focus), S_FALSE);
    control(1).state.enabled = false;
    control(2).state.focused = true;
    VARIANT state{};
    m_client->get_accState(childId(2), &state);
    EXPECT_EQ(state.lVal, STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_FOCUSABLE);
    m_client->get_accState(childId(5), &state);
    EXPECT_EQ(state.lVal, STATE_SYSTEM_CHECKED | STATE_SYSTEM_FOCUSABLE);
    EXPECT_EQ(m_client->get_accFocus(&focus), S_OK);
    ASSERT_EQ(focus.vt, VT_DISPATCH);
    focus.pdispVal->Release();
}

TEST_F(AccessibleTest, ActsAsTheControlAllows) {
    EXPECT_EQ(m_client->accDoDefaultAction(childId(2)), S_OK);
    EXPECT_EQ(m_client->accSelect(SELFLAG_TAKEFOCUS, childId(2)), S_OK);
    test::pump();
    EXPECT_EQ(control(1).presses, 1);
    EXPECT_EQ(control(1).focuses, 1);
    EXPECT_EQ(m_client->accDoDefaultAction(childId(1)), DISP_E_MEMBERNOTFOUND);
    control(1).state.enabled = false;
    EXPECT_EQ(m_client->accDoDefaultAction(childId(2)), DISP_E_MEMBERNOTFOUND);
    test::pump();
    EXPECT_EQ(control(1).presses, 1);

    BSTR text = SysAllocString(L"Caf\u00e9");
    EXPECT_EQ(m_client->put_accValue(childId(3), text), S_OK);
    EXPECT_EQ(m_client->put_accValue(childId(2), text), DISP_E_MEMBERNOTFOUND);
    SysFreeString(text);
    EXPECT_EQ(control(2).value, u"Caf\u00e9");
}

TEST_F(AccessibleTest, ForgetsNodesAndWindowsThatAreGone) {
    const Object list = childOf(*m_client, 6);
    ASSERT_NE(list, nullptr);
    const Object row = childOf(*list, 2);
    ASSERT_NE(row, nullptr);
    BSTR name = nullptr;
    EXPECT_EQ(row->get_accName(m_self, &name), S_OK);
    EXPECT_EQ(taken(name), L"Row 2");
    control(5).removeChildren();
    EXPECT_EQ(row->get_accName(m_self, &name), E_INVALIDARG);
    IDispatch* parent = nullptr;
    EXPECT_EQ(row->get_accParent(&parent), CO_E_OBJNOTCONNECTED);
    m_window.destroy();
    long count = 9;
    EXPECT_EQ(m_client->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(count, 0);
}
