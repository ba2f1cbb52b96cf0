// What Qt, and with it every bridge, gets to see of a window's accessibility tree.
#include <QAccessible>
#include <memory>
#include <tuple>

#include <gtest/gtest.h>

#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtWindow.h"
#include "tests/support/gui/TestControl.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::AccessibleChange;
using platform::qt::QtAccessibleNodes;
using test::TestControl;
using test::TestWindow;

namespace {

constexpr const char* kValue = "Start\u00e9";

class AccessibleTest : public testing::Test {
protected:
    AccessibleTest() {
        m_window.accessible = m_root.get();
        m_window.native().setGeometry({100, 200, 300, 300});
        m_window.show();
    }

    [[nodiscard]] platform::qt::QtSurface& surface() {
        return static_cast<platform::qt::QtWindow&>(m_window.native()).surface();
    }
    [[nodiscard]] QAccessibleInterface* root() { return QtAccessibleNodes::root(surface()); }
    [[nodiscard]] TestControl& control(int index) {
        return static_cast<TestControl&>(*m_root->accessibleChild(index));
    }

    std::unique_ptr<TestControl> m_root = test::makeTestDialog();
    TestWindow m_window;
};

} // namespace

TEST_F(AccessibleTest, DescribesEveryControl) {
    const std::tuple<QAccessible::Role, const char*, const char*, const char*, QRect> cases[] = {
        {QAccessible::StaticText, "Save first?", "Question", "", {105, 205, 90, 20}},
        {QAccessible::Button, "Yes", "ButtonYes", "", {110, 230, 50, 20}},
        {QAccessible::EditableText, "Branch name", "EditBranchName", kValue, {170, 230, 80, 20}},
        {QAccessible::ComboBox, "Zone", "ComboZone", "Door", {170, 255, 80, 20}},
        {QAccessible::RadioButton, "Move point", "OptionMovePoint", "", {255, 230, 40, 20}},
        {QAccessible::List, "Actions", "ListAction", "", {105, 280, 190, 18}},
    };
    EXPECT_EQ(root()->role(), QAccessible::Dialog);
    EXPECT_EQ(root()->text(QAccessible::Name), QString("Exit"));
    ASSERT_EQ(root()->childCount(), 6);
    int index = 0;
    for (const auto& [role, name, id, value, rect] : cases) {
        QAccessibleInterface* child = root()->child(index);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->role(), role) << id;
        EXPECT_EQ(child->text(QAccessible::Name), QString(name));
        EXPECT_EQ(child->text(QAccessible::Description), QString(id));
        EXPECT_EQ(child->text(QAccessible::Value), QString(value));
        EXPECT_EQ(child->rect(), rect) << id;
        EXPECT_EQ(child->parent(), root());
        EXPECT_EQ(root()->indexOfChild(child), index);
        EXPECT_EQ(root()->child(index++), child) << "the same interface each time";
    }
    EXPECT_EQ(root()->child(-1), nullptr);
    EXPECT_EQ(root()->child(6), nullptr);
    EXPECT_EQ(root()->childAt(112, 232), root()->child(1));
    QAccessibleInterface* row = root()->child(5)->child(1);
    EXPECT_EQ(row->parent(), root()->child(5));
    EXPECT_TRUE(row->state().selected);
}

TEST_F(AccessibleTest, TellsStates) {
    control(1).state.enabled = false;
    control(2).state.focused = true;
    control(3).state.visible = false;
    EXPECT_TRUE(root()->child(1)->state().disabled);
    EXPECT_TRUE(root()->child(2)->state().focused);
    EXPECT_TRUE(root()->child(2)->state().editable);
    EXPECT_TRUE(root()->child(3)->state().invisible);
    EXPECT_TRUE(root()->child(3)->state().collapsed);
    EXPECT_TRUE(root()->child(4)->state().checked);
    EXPECT_FALSE(root()->child(1)->state().checkable);
    EXPECT_EQ(root()->focusChild(), root()->child(2));
    control(2).state.readOnly = true;
    EXPECT_TRUE(root()->child(2)->state().readOnly);
    EXPECT_EQ(root()->child(2)->editableTextInterface(), nullptr);
}

TEST_F(AccessibleTest, ActsAsTheControlAllows) {
    QAccessibleActionInterface* button = root()->child(1)->actionInterface();
    ASSERT_NE(button, nullptr);
    button->doAction(QAccessibleActionInterface::pressAction());
    button->doAction(QAccessibleActionInterface::setFocusAction());
    button->doAction("no such action");
    EXPECT_EQ(control(1).presses, 0) << "the asker gets its answer first";
    test::pump();
    EXPECT_EQ(control(1).presses, 1);
    EXPECT_EQ(control(1).focuses, 1);
    m_window.native().setEnabled(false);
    button->doAction(QAccessibleActionInterface::pressAction());
    test::pump();
    EXPECT_EQ(control(1).presses, 1) << "a window that waits for its dialog";
    m_window.native().setEnabled(true);
    control(1).state.enabled = false;
    button->doAction(QAccessibleActionInterface::pressAction());
    test::pump();
    EXPECT_EQ(control(1).presses, 1);
    EXPECT_EQ(root()->child(0)->actionInterface(), nullptr);
}

TEST_F(AccessibleTest, ReadsAndReplacesTheTextOfAnEdit) {
    QAccessibleTextInterface* text = root()->child(2)->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), 6);
    EXPECT_EQ(text->cursorPosition(), 3);
    EXPECT_EQ(text->text(1, 3), QString("ta"));
    EXPECT_EQ(text->text(-5, 99), QString(kValue));
    EXPECT_EQ(text->text(4, 2), QString());
    QAccessibleEditableTextInterface* editable = root()->child(2)->editableTextInterface();
    ASSERT_NE(editable, nullptr);
    editable->replaceText(0, 5, "Caf");
    EXPECT_EQ(control(2).value, u"Caf\u00e9");
    editable->insertText(99, "!");
    editable->deleteText(-3, 1);
    EXPECT_EQ(control(2).value, u"af\u00e9!");
    EXPECT_EQ(root()->child(1)->textInterface(), nullptr);
}

TEST_F(AccessibleTest, ForgetsNodesThatAreGone) {
    QAccessibleInterface* list = root()->child(5);
    QAccessibleInterface* row = list->child(0);
    const QAccessible::Id rowId = QAccessible::uniqueId(row);
    EXPECT_TRUE(row->isValid());
    const std::size_t before = QtAccessibleNodes::count();
    control(5).removeChildren();
    EXPECT_FALSE(row->isValid());
    EXPECT_EQ(row->text(QAccessible::Name), QString());
    EXPECT_EQ(row->parent(), nullptr);
    EXPECT_EQ(row->childCount(), 0);
    EXPECT_TRUE(row->state().invalid);
    EXPECT_EQ(list->childCount(), 0);
    m_window.native().accessibleChanged(control(5), AccessibleChange::children);
    EXPECT_LT(QtAccessibleNodes::count(), before);
    EXPECT_EQ(QAccessible::accessibleInterface(rowId), nullptr);
}

TEST_F(AccessibleTest, OutlivesItsWindowAndItsTree) {
    QAccessibleInterface* button = root()->child(1);
    m_window.destroy();
    EXPECT_FALSE(button->isValid());
    EXPECT_EQ(button->rect(), QRect());
    EXPECT_EQ(button->child(0), nullptr);
    TestWindow bare;
    bare.show();
    auto& native = static_cast<platform::qt::QtWindow&>(bare.native());
    EXPECT_FALSE(QtAccessibleNodes::root(native.surface())->isValid());
}
