// A window's accessibility tree as a screen reader gets it through MSAA.
#include <gtest/gtest.h>

#include "platform/win32/Win32Window.h"
#include "tests/platform/win32/ScreenReader.h"
#include "tests/support/gui/TestControl.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using test::numbered;
using test::taken;
using test::TestControl;

namespace {

class AccessibleTest : public testing::Test {
protected:
    AccessibleTest() {
        std::uint32_t error = 0; // the program does it before its first window
        EXPECT_TRUE(test::gui().components().initialize(error));
        m_window.accessible = m_root.get();
        m_window.native().setGeometry({100, 200, 300, 300});
        m_window.show();
        m_client = test::clientOf(handle());
    }

    ~AccessibleTest() override {
        m_client.reset();
        m_window.destroy();
        test::gui().components().uninitialize();
    }

    void SetUp() override { ASSERT_NE(m_client, nullptr); }

    [[nodiscard]] HWND handle() {
        return static_cast<platform::win32::Win32Window&>(m_window.native()).handle();
    }
    [[nodiscard]] TestControl& control(int index) {
        return static_cast<TestControl&>(*m_root->accessibleChild(index));
    }
    [[nodiscard]] static test::AccessibleObject childOf(IAccessible& parent, long id) {
        IDispatch* found = nullptr;
        parent.get_accChild(numbered(id), &found);
        return test::AccessibleObject(static_cast<IAccessible*>(found));
    }

    std::unique_ptr<TestControl> m_root = test::makeTestDialog();
    test::TestWindow m_window;
    test::AccessibleObject m_client;
};

} // namespace

TEST_F(AccessibleTest, DescribesEveryControlByItsNumber) {
    control(1).state.enabled = false;
    control(3).state.expanded = true;
    test::TreeReader reader(handle());
    for (int i = 0; i < m_root->accessibleChildCount(); ++i) {
        reader.read(*m_client, numbered(i + 1), control(i));
    }
    BSTR none = nullptr;
    EXPECT_EQ(m_client->get_accName(numbered(7), &none), E_INVALIDARG);
    EXPECT_EQ(m_client->get_accName(numbered(-99), &none), E_INVALIDARG);
}

TEST_F(AccessibleTest, TellsWhatIsAtAPointAndHasTheFocus) {
    VARIANT hit{};
    EXPECT_EQ(m_client->accHitTest(112, 232, &hit), S_OK);
    ASSERT_EQ(hit.vt, VT_DISPATCH);
    const test::AccessibleObject button(static_cast<IAccessible*>(hit.pdispVal));
    BSTR name = nullptr;
    button->get_accName(numbered(CHILDID_SELF), &name);
    EXPECT_EQ(taken(name), u"Yes");

    VARIANT focus{};
    EXPECT_EQ(m_client->get_accFocus(&focus), S_FALSE);
    control(2).state.focused = true;
    EXPECT_EQ(m_client->get_accFocus(&focus), S_OK);
    ASSERT_EQ(focus.vt, VT_DISPATCH);
    focus.pdispVal->Release();
}

TEST_F(AccessibleTest, ActsAsTheControlAllows) {
    EXPECT_EQ(m_client->accDoDefaultAction(numbered(2)), S_OK);
    EXPECT_EQ(m_client->accSelect(SELFLAG_TAKEFOCUS, numbered(2)), S_OK);
    test::pump();
    EXPECT_EQ(control(1).presses, 1);
    EXPECT_EQ(control(1).focuses, 1);
    EXPECT_EQ(m_client->accDoDefaultAction(numbered(1)), DISP_E_MEMBERNOTFOUND);
    control(1).state.enabled = false;
    EXPECT_EQ(m_client->accDoDefaultAction(numbered(2)), DISP_E_MEMBERNOTFOUND);
    test::pump();
    EXPECT_EQ(control(1).presses, 1);

    BSTR text = SysAllocString(L"Caf\u00e9");
    EXPECT_EQ(m_client->put_accValue(numbered(3), text), S_OK);
    EXPECT_EQ(m_client->put_accValue(numbered(2), text), DISP_E_MEMBERNOTFOUND);
    SysFreeString(text);
    EXPECT_EQ(control(2).value, u"Caf\u00e9");
}

TEST_F(AccessibleTest, ForgetsNodesAndWindowsThatAreGone) {
    const auto list = childOf(*m_client, 6);
    ASSERT_NE(list, nullptr);
    const auto row = childOf(*list, 2);
    ASSERT_NE(row, nullptr);
    BSTR name = nullptr;
    EXPECT_EQ(row->get_accName(numbered(CHILDID_SELF), &name), S_OK);
    EXPECT_EQ(taken(name), u"Row 2");
    control(5).removeChildren();
    EXPECT_EQ(row->get_accName(numbered(CHILDID_SELF), &name), E_INVALIDARG);
    IDispatch* parent = nullptr;
    EXPECT_EQ(row->get_accParent(&parent), CO_E_OBJNOTCONNECTED);
    m_window.destroy();
    long count = 9;
    EXPECT_EQ(m_client->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(count, 0);
}
