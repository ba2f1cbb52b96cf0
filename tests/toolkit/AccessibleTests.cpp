// What assistive technology hears of the controls.
#include <functional>
#include <string>
#include <string_view>
#include <tuple>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CEditUI.h"

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
    const platform::Accessible& root() { return *window().GetPaintManager().GetRoot(); }
};

} // namespace

TEST_F(Accessibility, TellsRoleNameIdAndValue) {
    const std::tuple<std::u16string_view, AccessibleRole, std::u16string_view, std::u16string_view>
        cases[] = {
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
    for (const auto& [id, role, name, value] : cases) {
        const platform::Accessible& node = driver().get(id);
        EXPECT_EQ(node.accessibleRole(), role) << std::string(id.begin(), id.end());
        EXPECT_EQ(node.accessibleName(), name);
        EXPECT_EQ(node.accessibleId(), id);
        EXPECT_EQ(node.accessibleValue(), value);
        EXPECT_EQ(node.accessibleRect(), driver().get(id).GetPos());
    }
    EXPECT_EQ(root().accessibleRole(), AccessibleRole::window);
    EXPECT_EQ(root().accessibleName(), u"Test") << "the window's title";
}

TEST_F(Accessibility, TellsWhatCanBeDone) {
    const auto state = [&](std::u16string_view name) {
        return static_cast<const platform::Accessible&>(driver().get(name)).accessibleState();
    };
    EXPECT_TRUE(state(u"Check").checkable);
    EXPECT_FALSE(state(u"Tool").enabled || state(u"Tool").focusable);
    EXPECT_TRUE(state(u"Row").selectable && state(u"Row").visible);
    driver().get(u"List").SetVisible(false);
    EXPECT_FALSE(state(u"Row").visible);
}

TEST_F(Accessibility, LeadsToEveryControlAndBack) {
    int count = 0;
    const std::function<void(const platform::Accessible&)> visit = [&](const auto& node) {
        ++count;
        for (int i = 0; i < node.accessibleChildCount(); ++i) {
            EXPECT_EQ(node.accessibleChild(i)->accessibleParent(), &node);
            visit(*node.accessibleChild(i));
        }
    };
    visit(root());
    EXPECT_EQ(count, 1 + 10 + 2 + 2 + 1) << "controls, items, row and cell, scroll bar";
    EXPECT_TRUE(root().accessibleChild(99) == nullptr && root().accessibleChild(-1) == nullptr);
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
    combo.SetEnabled(false);
    combo.accessibleChild(1)->accessiblePress();
    driver().get(u"Go").SetVisible(false);
    driver().get(u"Go").accessiblePress();
    driver().get(u"Tool").accessibleFocus();
    EXPECT_EQ(driver().focusName(), u"Edit") << "a disabled control takes no keyboard";
    expectNotes("what the enabled ones did",
                {"click Go", "selectchanged Check", "click Check", "itemselect List 0",
                 "itemselect Combo 0", "textchanged Edit"});
}
