// A window's accessibility tree as a screen reader gets it through MSAA. What it hears of every
// control of the editor's own windows stands in EditorWindowTests.cpp.
#include <vector>

#include "platform/win32/AccessibleNode.h"
#include "platform/win32/Win32Window.h"
#include "tests/platform/win32/ScreenReader.h"
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"

using test::numbered;
using test::taken;

namespace {

class AccessibleTest : public toolkit_test::ToolkitTest {
protected:
    void SetUp() override {
        open(R"(<Label name="Caption" pos="5,5,90,20" text="Name"/>
            <Button name="Go" pos="10,30,50,20" text="Yes"/>
            <Edit name="Edit" pos="70,30,80,20" text="Start"/>
            <List name="List" pos="5,80,190,98">
                <ListContainerElement name="Row" height="20"><Label text="Row 1"/>
                </ListContainerElement></List>)");
        m_window->notes.clear();
        m_client = test::clientOf(handle());
        ASSERT_NE(m_client, nullptr);
    }

    [[nodiscard]] HWND handle() {
        return static_cast<platform::win32::Win32Window&>(*m_window->GetNative()).handle();
    }
    [[nodiscard]] static test::AccessibleObject childOf(IAccessible& parent, long id) {
        IDispatch* found = nullptr;
        parent.get_accChild(numbered(id), &found);
        return test::AccessibleObject(static_cast<IAccessible*>(found));
    }

    test::AccessibleObject m_client;
};

} // namespace

TEST_F(AccessibleTest, DescribesEveryControlByItsNumber) {
    driver().get(u"Go").SetEnabled(false);
    test::TreeReader reader(handle());
    const platform::Accessible& root = *window().GetPaintManager().GetRoot();
    for (int i = 0; i < root.accessibleChildCount(); ++i) {
        reader.read(*m_client, numbered(i + 1), *root.accessibleChild(i));
    }
    BSTR none = nullptr;
    EXPECT_EQ(m_client->get_accName(numbered(5), &none), E_INVALIDARG);
    EXPECT_EQ(m_client->get_accName(numbered(-99), &none), E_INVALIDARG);
}

TEST_F(AccessibleTest, TellsWhatIsAtAPointAndHasTheFocus) {
    VARIANT found{};
    const auto nameOfFound = [&] {
        EXPECT_EQ(found.vt, VT_DISPATCH);
        const test::AccessibleObject object(static_cast<IAccessible*>(found.pdispVal));
        BSTR name = nullptr;
        object->get_accName(numbered(CHILDID_SELF), &name);
        return taken(name);
    };
    const platform::Point corner = window().GetNative()->geometry().topLeft();
    EXPECT_EQ(m_client->accHitTest(corner.x + 12, corner.y + 32, &found), S_OK);
    EXPECT_EQ(nameOfFound(), u"Yes");
    EXPECT_EQ(m_client->get_accFocus(&found), S_FALSE);
    driver().get(u"Go").accessibleFocus();
    EXPECT_EQ(m_client->get_accFocus(&found), S_OK);
    EXPECT_EQ(nameOfFound(), u"Yes");
}

TEST_F(AccessibleTest, ActsAsTheControlAllows) {
    const auto press = [&](const char* what, const toolkit_test::Notes& expected) {
        // As listeners hear of it: by its number in the window.
        const long number = platform::win32::AccessibleNode::numberOf(driver().get(u"Go"));
        EXPECT_EQ(m_client->accDoDefaultAction(numbered(number)), S_OK);
        expectNotes("the asker is answered first", {});
        test::pump();
        expectNotes(what, expected);
    };
    press("pressed", {"click Go"});
    window().GetNative()->setEnabled(false);
    press("behind a question", {});
    BSTR text = SysAllocString(L"Caf\u00e9");
    EXPECT_EQ(m_client->put_accValue(numbered(3), text), E_ACCESSDENIED);
    EXPECT_EQ(m_client->accSelect(SELFLAG_TAKEFOCUS, numbered(2)), E_ACCESSDENIED);
    window().GetNative()->setEnabled(true);
    EXPECT_EQ(m_client->accSelect(SELFLAG_TAKEFOCUS, numbered(2)), S_OK);
    test::pump();
    EXPECT_EQ(driver().focusName(), u"Go");
    EXPECT_EQ(m_client->accDoDefaultAction(numbered(1)), DISP_E_MEMBERNOTFOUND);
    driver().get(u"Go").SetEnabled(false);
    EXPECT_EQ(m_client->accDoDefaultAction(numbered(2)), DISP_E_MEMBERNOTFOUND);

    EXPECT_EQ(m_client->put_accValue(numbered(3), text), S_OK);
    EXPECT_EQ(m_client->put_accValue(numbered(2), text), DISP_E_MEMBERNOTFOUND);
    SysFreeString(text);
    EXPECT_EQ(driver().textOf(u"Edit"), u"Caf\u00e9");
}

TEST_F(AccessibleTest, SelectsSeveralRows) {
    auto& rows = get<toolkit::CListUI>(u"List");
    rows.SetAttribute(u"multiselect", u"true");
    rows.AddNew<toolkit::CListContainerElementUI>();
    const auto list = childOf(*m_client, 4);
    VARIANT found{};
    EXPECT_EQ(list->get_accState(numbered(CHILDID_SELF), &found), S_OK);
    EXPECT_NE(found.lVal & STATE_SYSTEM_MULTISELECTABLE, 0);
    EXPECT_EQ(list->get_accSelection(&found), S_FALSE);
    EXPECT_EQ(list->accSelect(SELFLAG_ADDSELECTION, numbered(1)), S_OK);
    EXPECT_EQ(list->accSelect(SELFLAG_ADDSELECTION, numbered(2)), S_OK);
    ASSERT_EQ(list->get_accSelection(&found), S_OK);
    ASSERT_EQ(found.vt, VT_UNKNOWN);
    VARIANT selected[3]{};
    ULONG count = 0;
    EXPECT_EQ(static_cast<IEnumVARIANT*>(found.punkVal)->Next(3, selected, &count), S_FALSE);
    EXPECT_EQ(count, 2U);
    for (ULONG i = 0; i < count; ++i) {
        VariantClear(&selected[i]);
    }
    VariantClear(&found);
    EXPECT_EQ(list->accSelect(SELFLAG_REMOVESELECTION, numbered(1)), S_OK);
    EXPECT_EQ(rows.selectedRows(), std::vector{1});
}

TEST_F(AccessibleTest, ForgetsNodesAndWindowsThatAreGone) {
    const auto row = childOf(*childOf(*m_client, 4), 1);
    ASSERT_NE(row, nullptr);
    BSTR name = nullptr;
    EXPECT_EQ(row->get_accName(numbered(CHILDID_SELF), &name), S_OK);
    EXPECT_EQ(taken(name), u"Row 1");
    get<toolkit::CListUI>(u"List").RemoveAll();
    test::pump();
    EXPECT_EQ(row->get_accName(numbered(CHILDID_SELF), &name), E_INVALIDARG);
    IDispatch* parent = nullptr;
    EXPECT_EQ(row->get_accParent(&parent), CO_E_OBJNOTCONNECTED);
    m_window.reset();
    long count = 9;
    EXPECT_EQ(m_client->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(count, 0);
}
