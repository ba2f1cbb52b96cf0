// Who tells the window what, in which order, and what is never told.
#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/CEditUI.h"
#include "toolkit/CListUI.h"
#include "toolkit/COptionUI.h"

using namespace toolkit_test;
using platform::Key;
using platform::Point;

namespace {

constexpr const char* kControls = R"(
    <Button name="Go" pos="10,10,80,25" text="Go"/>
    <Button name="Off" pos="100,10,80,25" text="Off" enabled="false"/>
    <Option name="Check" pos="10,50,80,25"/>
    <Option name="One" pos="100,50,40,25" group="g" selected="true"/>
    <Option name="Two" pos="150,50,40,25" group="g"/>
    <Edit name="Edit" pos="10,90,120,25" text="abc"/>
    <Edit name="Fixed" pos="140,90,120,25" text="fix" readonly="true"/>
    <Combo name="Combo" pos="10,130,120,25" dropboxsize="0,200">
        <ListLabelElement text="Alpha"/><ListLabelElement text="Beta"/><ListLabelElement text="Gamma"/>
    </Combo>
    <Combo name="Empty" pos="140,130,120,25"/>
    <List name="List" pos="10,170,200,100" itemheight="20">
        <ListLabelElement name="Row0" text="Zero"/><ListLabelElement name="Row1" text="One"/>
    </List>)";

class Notifications : public ToolkitTest {
protected:
    void SetUp() override { open(kControls); }

    toolkit::CComboUI& combo() { return get<toolkit::CComboUI>(u"Combo"); }
};

} // namespace

TEST_F(Notifications, ButtonsTellOfAPressAndReleaseInside) {
    driver().click(u"Go");
    expectNotes("a click", {"click Go"});
    driver().doubleClick({20, 20});
    expectNotes("a double click is two clicks", {"click Go", "click Go"});
    driver().drag({{20, 20}, {300, 20}});
    expectNotes("released outside", {});
    driver().drag({{20, 20}, {300, 20}, {30, 20}});
    expectNotes("out and in again", {"click Go"});
    driver().drag({{300, 20}, {20, 20}});
    expectNotes("pressed outside, released inside", {});
    driver().click(u"Off");
    expectNotes("a disabled button", {});
    driver().manager().SetFocus(&driver().get(u"Go"));
    driver().press(Key::space);
    expectNotes("Space on a focused button", {"click Go"});
    driver().press(Key::enter);
    expectNotes("Enter on a focused button", {"click Go"});
    driver().press(Key::enter, kControl);
    expectNotes("Control+Enter is no press", {});
}

TEST_F(Notifications, OptionsTellOfTheirChangeBeforeTheClick) {
    driver().click(u"Check");
    expectNotes("checked", {"selectchanged Check", "click Check"});
    driver().press(Key::space);
    expectNotes("Space clears it again", {"selectchanged Check", "click Check"});
    driver().click(u"One");
    expectNotes("the chosen one of a group", {"click One"});
    driver().click(u"Two");
    expectNotes("another one of the group: only it tells", {"selectchanged Two", "click Two"});
    driver().press(Key::left);
    expectNotes("an arrow key moves the choice", {"selectchanged One", "click One"});
}

TEST_F(Notifications, EditsTellOfTypingAndOfTheKilledFocus) {
    driver().click(u"Edit");
    driver().type(u"xy");
    expectNotes("typing", {"textchanged Edit", "textchanged Edit"});
    driver().press(Key::enter);
    expectNotes("Enter commits and presses nothing", {"killfocus Edit"});
    driver().click(u"Edit");
    driver().press(Key::end);
    driver().press(Key::del);
    driver().press(Key::escape);
    expectNotes("keys that change nothing", {});
    driver().click(u"Go");
    expectNotes("the killed focus comes before the click", {"killfocus Edit", "click Go"});
    driver().click(u"Edit");
    driver().click(Point{390, 290});
    expectNotes("a press on a blank area", {"killfocus Edit"});
    driver().click(u"Edit");
    driver().click(u"Off");
    expectNotes("a press on a disabled button", {"killfocus Edit"});
    driver().click(u"Edit");
    driver().press(Key::tab);
    expectNotes("Tab", {"killfocus Edit"});
    driver().click(u"Fixed");
    driver().type(u"no");
    driver().press(Key::backspace);
    driver().click(u"Edit");
    driver().press(Key::enter);
    expectNotes("typing into a read-only edit", {"killfocus Fixed", "killfocus Edit"});
}

TEST_F(Notifications, CombosTellOfEveryPickOfAPerson) {
    driver().pick(combo(), 1);
    expectNotes("a pick", {"itemselect Combo 1"});
    driver().pick(combo(), 1);
    expectNotes("of the item already shown", {"itemselect Combo 1"});
    driver().openDropList(combo());
    driver().press(Key::down);
    driver().press(Key::escape);
    expectNotes("Esc closes without a pick", {});
    driver().openDropList(combo());
    driver().click(Point{390, 290});
    expectNotes("a press outside closes without a pick", {});
    driver().openDropList(combo());
    driver().press(Key::down);
    driver().press(Key::enter);
    expectNotes("Enter picks", {"itemselect Combo 2"});
    driver().press(Key::up);
    expectNotes("Up on the closed combo", {"itemselect Combo 1"});
    driver().wheel({20, 140}, -1);
    driver().wheel({20, 140}, 1);
    expectNotes("the wheel over the closed combo", {});
    driver().press(Key::up);
    driver().press(Key::up);
    expectNotes("Up at the first item picks nothing", {"itemselect Combo 0"});
    driver().type(u"g");
    expectNotes("a letter", {"itemselect Combo 2"});
    driver().click(u"Empty");
    expectNotes("an empty combo", {});
}

TEST_F(Notifications, ListsTellOfEveryPressOnARow) {
    driver().click(u"Row1");
    expectNotes("a press", {"itemselect List 1"});
    driver().click(u"Row1");
    expectNotes("on the same row again", {"itemselect List 1"});
    driver().press(Key::up);
    expectNotes("Up moves it", {"itemselect List 0"});
    driver().press(Key::up);
    expectNotes("Up at the first row", {});
    driver().doubleClick({20, 180});
    expectNotes("a double click means two presses", {"itemselect List 0", "itemselect List 0"});
}

TEST_F(Notifications, TellOfAProgramOnlyWhatItSelects) {
    auto& list = get<toolkit::CListUI>(u"List");
    for (const auto& [index, notes] : {std::pair(1, Notes{"itemselect Combo 1"}),
                                       {1, {}},
                                       {-1, {}},
                                       {2, {"itemselect Combo 2"}}}) {
        EXPECT_TRUE(combo().SelectItem(index));
        expectNotes("a combo", notes);
    }
    EXPECT_FALSE(combo().SelectItem(3) || combo().SelectItem(-2) || list.SelectItem(2));
    EXPECT_TRUE(combo().RemoveAt(0));
    combo().RemoveAll();
    expectNotes("no such item, and items that go", {});
    EXPECT_EQ(combo().GetCurSel(), -1);
    EXPECT_EQ(combo().GetText(), u"");
    for (const auto& [index, notes] :
         {std::pair(1, Notes{"itemselect List 1"}), {1, {}}, {-1, {}}}) {
        EXPECT_TRUE(list.SelectItem(index));
        expectNotes("a list", notes);
    }
    EXPECT_TRUE(list.SelectItem(0));
    list.RemoveAll();
    EXPECT_EQ(list.GetCurSel(), -1);
    get<toolkit::COptionUI>(u"Check").Selected(true);
    get<toolkit::COptionUI>(u"Two").Selected(true);
    get<toolkit::CEditUI>(u"Edit").SetText(u"new");
    expectNotes("nothing else", {"itemselect List 0"});
    EXPECT_TRUE(get<toolkit::COptionUI>(u"Check").IsSelected());
    EXPECT_FALSE(get<toolkit::COptionUI>(u"One").IsSelected());
}

TEST_F(Notifications, AreSilentForControlsInNoWindow) {
    toolkit::CComboUI combo;
    combo.AddNew<toolkit::CListLabelElementUI>()->SetText(u"only");
    EXPECT_TRUE(combo.SelectItem(0));
    EXPECT_EQ(combo.GetText(), u"only");
    toolkit::CListUI list;
    list.AddNew<toolkit::CListLabelElementUI>();
    EXPECT_TRUE(list.SelectItem(0));
    EXPECT_TRUE(window().take().empty());
}

TEST_F(Notifications, AreDeliveredInTheCallThatCausesThem) {
    std::u16string shown;
    window().reactions["itemselect Combo 2"] = [&](auto& sender) { shown = sender.GetText(); };
    EXPECT_TRUE(combo().SelectItem(2));
    EXPECT_EQ(shown, u"Gamma");
    auto& check = get<toolkit::COptionUI>(u"Check");
    bool checked = false;
    window().reactions["selectchanged Check"] = [&](auto&) { checked = check.IsSelected(); };
    driver().click(u"Check");
    EXPECT_TRUE(checked);
}

TEST_F(Notifications, LeavingTheWindowCommitsAnEditButClosingItDoesNot) {
    driver().click(u"Edit");
    RecordingWindow other(test::gui());
    ASSERT_TRUE(other.Create(nullptr, u"Other", 0, 0));
    test::WindowDriver(other).show();
    expectNotes("another window", {"killfocus Edit"});
    other.Close(1);
    driver().show();
    EXPECT_EQ(driver().focusName(), u"Edit") << "the keyboard comes back to where it was";

    window().Close(1);
    test::pump();
    EXPECT_EQ(window().GetNative(), nullptr);
    expectNotes("the end", {});
    test::gui().loop().run(); // takes the quits that the closed windows posted
    test::gui().loop().processEvents(false);
}
