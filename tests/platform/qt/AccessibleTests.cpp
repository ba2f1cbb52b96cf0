// What Qt, and with it every bridge, gets to see of a window's accessibility tree. Names, roles and
// places of all controls are compared by tests/app, through the bridge itself.
#include <QAccessible>
#include <cstddef>
#include <string_view>

#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtWindow.h"
#include "tests/support/gui/TestWindow.h"
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListUI.h"

using platform::qt::QtAccessibleNodes;
using toolkit_test::Notes;

namespace {

class AccessibleTest : public toolkit_test::ToolkitTest {
protected:
    AccessibleTest() {
        open(R"(<Label name="Caption" pos="5,5,90,20" text="Name"/>
            <Button name="Go" pos="10,30,50,20" text="Yes"/>
            <Edit name="Edit" pos="70,30,80,20" text="Starté"/>
            <Combo name="Combo" pos="70,55,80,20"/>
            <List name="List" pos="5,80,190,98"><ListContainerElement name="Row" height="20"/></List>)");
        m_window->notes.clear();
    }

    [[nodiscard]] platform::qt::QtSurface& surface() {
        return static_cast<platform::qt::QtWindow&>(*m_window->GetNative()).surface();
    }
    [[nodiscard]] QAccessibleInterface* root() { return QtAccessibleNodes::root(surface()); }
    [[nodiscard]] QAccessibleInterface* node(std::u16string_view name) {
        return QtAccessibleNodes::of(surface(), driver().get(name));
    }
};

} // namespace

TEST_F(AccessibleTest, LeadsToEveryNodeAndBack) {
    ASSERT_EQ(root()->childCount(), 5);
    for (int index = 0; index < 5; ++index) {
        EXPECT_EQ(root()->child(index)->parent(), root());
        EXPECT_EQ(root()->indexOfChild(root()->child(index)), index);
    }
    EXPECT_EQ(root()->child(1), node(u"Go")) << "the same interface each time";
    EXPECT_EQ(root()->child(-1), nullptr);
    EXPECT_EQ(root()->child(5), nullptr);
    const platform::Point corner = window().GetNative()->geometry().topLeft();
    EXPECT_EQ(node(u"Go")->rect(), QRect(corner.x + 10, corner.y + 30, 50, 20));
    EXPECT_EQ(root()->childAt(corner.x + 12, corner.y + 32), node(u"Go"));
    EXPECT_EQ(node(u"Row")->parent(), node(u"List"));
    EXPECT_EQ(node(u"Edit")->text(QAccessible::Value), QString("Starté"));
}

TEST_F(AccessibleTest, TellsStates) {
    driver().get(u"Go").SetEnabled(false);
    driver().get(u"Edit").accessibleFocus();
    driver().get(u"Combo").SetVisible(false);
    EXPECT_TRUE(node(u"Go")->state().disabled);
    EXPECT_FALSE(node(u"Go")->state().checkable);
    EXPECT_TRUE(node(u"Edit")->state().focused && node(u"Edit")->state().editable);
    EXPECT_TRUE(node(u"Combo")->state().invisible && node(u"Combo")->state().collapsed);
    EXPECT_EQ(root()->focusChild(), node(u"Edit"));
    get<toolkit::CEditUI>(u"Edit").SetReadOnly(true);
    EXPECT_TRUE(node(u"Edit")->state().readOnly);
    EXPECT_EQ(node(u"Edit")->editableTextInterface(), nullptr);
}

TEST_F(AccessibleTest, ActsAsTheControlAllows) {
    QAccessibleActionInterface* button = node(u"Go")->actionInterface();
    ASSERT_NE(button, nullptr);
    const auto press = [&](const char* what, const Notes& expected) {
        button->doAction(QAccessibleActionInterface::pressAction());
        button->doAction("no such action");
        expectNotes("the asker gets its answer first", {});
        test::pump();
        expectNotes(what, expected);
    };
    press("pressed", {"click Go"});
    button->doAction(QAccessibleActionInterface::setFocusAction());
    test::pump();
    EXPECT_EQ(driver().focusName(), u"Go");
    window().notes.clear();
    window().GetNative()->setEnabled(false);
    press("a window that waits for its dialog", {});
    window().GetNative()->setEnabled(true);
    driver().get(u"Go").SetEnabled(false);
    press("disabled", {});
    EXPECT_EQ(node(u"Caption")->actionInterface(), nullptr);
}

TEST_F(AccessibleTest, SelectsSeveralRows) {
    auto& list = get<toolkit::CListUI>(u"List");
    EXPECT_FALSE(node(u"List")->state().multiSelectable);
    list.SetAttribute(u"multiselect", u"true");
    list.AddNew<toolkit::CListContainerElementUI>()->SetName(u"Second");
    EXPECT_TRUE(node(u"List")->state().multiSelectable);
    for (const char16_t* row : {u"Row", u"Second"}) {
        node(row)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        test::pump();
        EXPECT_TRUE(node(row)->state().selected);
    }
    EXPECT_EQ(list.selectedRows().size(), 2U);
}

TEST_F(AccessibleTest, ReadsAndReplacesTheTextOfAnEdit) {
    QAccessibleTextInterface* text = node(u"Edit")->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), 6);
    EXPECT_EQ(text->text(1, 3), QString("ta"));
    EXPECT_EQ(text->text(-5, 99), QString("Starté"));
    EXPECT_EQ(text->text(4, 2), QString());
    QAccessibleEditableTextInterface* editable = node(u"Edit")->editableTextInterface();
    ASSERT_NE(editable, nullptr);
    editable->replaceText(0, 5, "Caf");
    EXPECT_EQ(text->cursorPosition(), 4);
    editable->insertText(99, "!");
    editable->deleteText(-3, 1);
    EXPECT_EQ(driver().textOf(u"Edit"), u"afé!");
    EXPECT_EQ(node(u"Go")->textInterface(), nullptr);
    window().GetNative()->setEnabled(false);
    editable->insertText(0, "x");
    node(u"Edit")->setText(QAccessible::Value, "x");
    EXPECT_EQ(driver().textOf(u"Edit"), u"afé!") << "not behind a question";
}

TEST_F(AccessibleTest, ForgetsNodesAndWindowsThatAreGone) {
    const QAccessible::Id row = QAccessible::uniqueId(node(u"Row"));
    QAccessibleInterface* button = node(u"Go");
    const std::size_t before = QtAccessibleNodes::count();
    get<toolkit::CListUI>(u"List").RemoveAll();
    test::pump();
    EXPECT_LT(QtAccessibleNodes::count(), before);
    EXPECT_EQ(QAccessible::accessibleInterface(row), nullptr);
    m_window.reset();
    EXPECT_FALSE(button->isValid());
    EXPECT_EQ(button->rect(), QRect());
    EXPECT_EQ(button->text(QAccessible::Name), QString());
    EXPECT_TRUE(button->state().invalid);
    EXPECT_EQ(button->parent(), nullptr);
    EXPECT_EQ(button->child(0), nullptr);
    test::TestWindow bare;
    auto& native = static_cast<platform::qt::QtWindow&>(bare.native());
    EXPECT_FALSE(QtAccessibleNodes::root(native.surface())->isValid()) << "no controls, no tree";
}
