// What assistive technology is told of the controls.
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CEditUI.h"
#include "toolkit/CListUI.h"
#include "toolkit/COptionUI.h"

using namespace toolkit_test;
using platform::AccessibleRole;

namespace {

class Accessibility : public ToolkitTest {
protected:
    void SetUp() override {
        open(R"(<Label name="Caption" pos="0,0,80,20" text="Zone"/>
            <Button name="Go" pos="0,20,80,20" text="Go on" tooltip="tip"/>
            <Button name="Icon" pos="0,40,80,20" tooltip="Add a zone"/>
            <Option name="Check" pos="0,60,80,20" text="Active" selected="true"/>
            <Option name="Tool" pos="0,80,80,20" text="Move" group="g" enabled="false"/>
            <Edit name="Edit" pos="0,100,80,20" label="Name" text="abc"/>
            <Combo name="Combo" pos="0,120,80,20" label="Kind">
                <ListLabelElement text="one"/><ListLabelElement text="two"/></Combo>
            <Control name="Line" pos="0,250,80,1"/>
            <Control name="Sign" pos="0,260,32,32" label="A question"/>
            <List name="List" pos="0,140,80,100" label="Rows">
                <ListContainerElement name="Row" height="20"><Label pos="0,0,40,20" text="cell"/>
                </ListContainerElement></List>)");
    }
};

} // namespace

TEST_F(Accessibility, TellsRoleNameIdAndValue) {
    const struct {
        std::u16string_view id;
        AccessibleRole role;
        std::u16string_view name;
        std::u16string_view value;
    } cases[] = {
        {u"Caption", AccessibleRole::label, u"Zone", u""},
        {u"Go", AccessibleRole::button, u"Go on", u""},
        {u"Icon", AccessibleRole::button, u"Add a zone", u""},
        {u"Check", AccessibleRole::checkBox, u"Active", u""},
        {u"Tool", AccessibleRole::radioButton, u"Move", u""},
        {u"Edit", AccessibleRole::edit, u"Name", u"abc"},
        {u"Combo", AccessibleRole::comboBox, u"Kind", u"two"},
        {u"List", AccessibleRole::list, u"Rows", u""},
        {u"Row", AccessibleRole::listItem, u"cell", u""},
        {u"Line", AccessibleRole::group, u"", u""},
        {u"Sign", AccessibleRole::picture, u"A question", u""},
    };
    EXPECT_TRUE(get<toolkit::CComboUI>(u"Combo").SelectItem(1));
    for (const auto& c : cases) {
        const platform::Accessible& node = driver().get(c.id);
        EXPECT_EQ(node.accessibleRole(), c.role) << std::string(c.id.begin(), c.id.end());
        EXPECT_EQ(node.accessibleName(), c.name);
        EXPECT_EQ(node.accessibleId(), c.id);
        EXPECT_EQ(node.accessibleValue(), c.value);
        EXPECT_EQ(node.accessibleRect(), driver().get(c.id).GetPos());
    }
    const platform::Accessible& root = *window().GetPaintManager().GetRoot();
    EXPECT_EQ(root.accessibleRole(), AccessibleRole::window);
    EXPECT_EQ(root.accessibleName(), u"Test") << "the window's title";
}

TEST_F(Accessibility, TellsTheState) {
    const auto state = [&](std::u16string_view name) {
        return static_cast<const platform::Accessible&>(driver().get(name)).accessibleState();
    };
    EXPECT_TRUE(state(u"Check").checkable && state(u"Check").checked);
    EXPECT_FALSE(state(u"Tool").enabled || state(u"Tool").focusable);
    EXPECT_FALSE(state(u"Row").selected);
    EXPECT_TRUE(state(u"Row").selectable);
    driver().click(u"Row");
    EXPECT_TRUE(state(u"Row").selected);
    EXPECT_TRUE(state(u"List").focused);
    get<toolkit::CEditUI>(u"Edit").SetReadOnly(true);
    EXPECT_TRUE(state(u"Edit").readOnly);
    EXPECT_FALSE(state(u"Combo").expanded);
    driver().click(u"Combo");
    EXPECT_TRUE(state(u"Combo").expandable && state(u"Combo").expanded);
    driver().get(u"List").SetVisible(false);
    EXPECT_FALSE(state(u"Row").visible);
}

TEST_F(Accessibility, LeadsToEveryControlAndBack) {
    const platform::Accessible* root = window().GetPaintManager().GetRoot();
    int nodes = 0;
    const std::function<void(const platform::Accessible&)> walk = [&](const auto& node) {
        ++nodes;
        for (int i = 0; i < node.accessibleChildCount(); ++i) {
            const platform::Accessible* child = node.accessibleChild(i);
            ASSERT_NE(child, nullptr);
            EXPECT_EQ(child->accessibleParent(), &node);
            walk(*child);
        }
    };
    walk(*root);
    EXPECT_EQ(nodes, 1 + 10 + 2 + 2 + 1) << "controls, combo items, row and cell, scroll bar";
    EXPECT_EQ(root->accessibleChild(99), nullptr);
    EXPECT_EQ(root->accessibleChild(-1), nullptr);
}

TEST_F(Accessibility, ActsAsTheMouseDoes) {
    driver().get(u"Icon").SetEnabled(false);
    for (const char16_t* name : {u"Go", u"Icon", u"Check", u"Row", u"Tool"}) {
        driver().get(name).accessiblePress();
    }
    auto& combo = get<toolkit::CComboUI>(u"Combo");
    combo.accessiblePress();
    EXPECT_TRUE(combo.IsDropped());
    combo.accessibleChild(0)->accessiblePress();
    driver().get(u"Edit").accessibleFocus();
    EXPECT_EQ(driver().focusName(), u"Edit");
    driver().get(u"Edit").accessibleSetValue(u"typed");
    EXPECT_EQ(get<toolkit::CEditUI>(u"Edit").GetText(), u"typed");
    EXPECT_EQ(driver().get(u"Edit").accessibleCaret(), 5);
    driver().get(u"Tool").accessibleFocus();
    EXPECT_EQ(driver().focusName(), u"Edit") << "a disabled control takes no keyboard";
    EXPECT_EQ(window().take(),
              (Notes{"click Go", "selectchanged Check", "click Check", "itemselect List 0",
                     "itemselect Combo 0", "textchanged Edit"}));
}
