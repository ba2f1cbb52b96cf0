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
};

struct Case {
    const char* what;
    std::function<void(test::WindowDriver&)> act;
    Notes notes;
};

} // namespace

TEST_F(Notifications, TellWhatAPersonDoes) {
    const auto combo = [](test::WindowDriver& d) -> toolkit::CComboUI& {
        return d.get<toolkit::CComboUI>(u"Combo");
    };
    const std::vector<Case> cases{
        {"a click on a button", [](auto& d) { d.click(u"Go"); }, {"click Go"}},
        {"a double click is two clicks",
         [](auto& d) {
             d.doubleClick({20, 20});
         },
         {"click Go", "click Go"}},
        {"released outside",
         [](auto& d) {
             d.drag({{20, 20}, {300, 20}});
         },
         {}},
        {"out and in again",
         [](auto& d) {
             d.drag({{20, 20}, {300, 20}, {30, 20}});
         },
         {"click Go"}},
        {"pressed outside, released inside",
         [](auto& d) {
             d.drag({{300, 20}, {20, 20}});
         },
         {}},
        {"a disabled button", [](auto& d) { d.click(u"Off"); }, {}},
        {"Space on a focused button",
         [](auto& d) {
             d.manager().SetFocus(&d.get(u"Go"));
             d.press(Key::space);
         },
         {"click Go"}},
        {"Enter on a focused button", [](auto& d) { d.press(Key::enter); }, {"click Go"}},
        {"Control+Enter is no press", [](auto& d) { d.press(Key::enter, kControl); }, {}},
        {"a check box: state, change, click",
         [](auto& d) { d.click(u"Check"); },
         {"selectchanged Check", "click Check"}},
        {"Space clears it again",
         [](auto& d) { d.press(Key::space); },
         {"selectchanged Check", "click Check"}},
        {"the chosen one of a group", [](auto& d) { d.click(u"One"); }, {"click One"}},
        {"another one of the group: only it tells",
         [](auto& d) { d.click(u"Two"); },
         {"selectchanged Two", "click Two"}},
        {"an arrow key moves the choice",
         [](auto& d) { d.press(Key::left); },
         {"selectchanged One", "click One"}},
        {"typing",
         [](auto& d) {
             d.click(u"Edit");
             d.type(u"xy");
         },
         {"textchanged Edit", "textchanged Edit"}},
        {"Enter commits and presses nothing",
         [](auto& d) { d.press(Key::enter); },
         {"killfocus Edit"}},
        {"keys that change nothing",
         [](auto& d) {
             d.click(u"Edit");
             d.press(Key::end);
             d.press(Key::del);
             d.press(Key::escape);
         },
         {}},
        {"the killed focus comes before the click",
         [](auto& d) { d.click(u"Go"); },
         {"killfocus Edit", "click Go"}},
        {"a press on a blank area takes the focus of an edit",
         [](auto& d) {
             d.click(u"Edit");
             d.click(Point{390, 290});
         },
         {"killfocus Edit"}},
        {"a press on a disabled button too",
         [](auto& d) {
             d.click(u"Edit");
             d.click(u"Off");
         },
         {"killfocus Edit"}},
        {"Tab too",
         [](auto& d) {
             d.click(u"Edit");
             d.press(Key::tab);
         },
         {"killfocus Edit"}},
        {"typing into a read-only edit",
         [](auto& d) {
             d.click(u"Fixed");
             d.type(u"no");
             d.press(Key::backspace);
             d.click(u"Edit");
             d.press(Key::enter);
         },
         {"killfocus Fixed", "killfocus Edit"}},
        {"a pick from the drop list",
         [&](auto& d) { d.pick(combo(d), 1); },
         {"itemselect Combo 1"}},
        {"the item already shown picked again",
         [&](auto& d) { d.pick(combo(d), 1); },
         {"itemselect Combo 1"}},
        {"Esc closes without a pick",
         [&](auto& d) {
             d.openDropList(combo(d));
             d.press(Key::down);
             d.press(Key::escape);
         },
         {}},
        {"a press outside closes without a pick",
         [&](auto& d) {
             d.openDropList(combo(d));
             d.click(Point{390, 290});
         },
         {}},
        {"Enter picks",
         [&](auto& d) {
             d.openDropList(combo(d));
             d.press(Key::down);
             d.press(Key::enter);
         },
         {"itemselect Combo 2"}},
        {"Up on the closed combo picks", [](auto& d) { d.press(Key::up); }, {"itemselect Combo 1"}},
        {"the wheel over the closed combo, both ways",
         [&](auto& d) {
             d.wheel({20, 140}, -1);
             d.wheel({20, 140}, 1);
         },
         {}},
        {"Up at the first item picks nothing",
         [](auto& d) {
             d.press(Key::up);
             d.press(Key::up);
         },
         {"itemselect Combo 0"}},
        {"a letter picks", [](auto& d) { d.type(u"g"); }, {"itemselect Combo 2"}},
        {"an empty combo", [](auto& d) { d.click(u"Empty"); }, {}},
        {"a press on a row", [](auto& d) { d.click(u"Row1"); }, {"itemselect List 1"}},
        {"on the same row again", [](auto& d) { d.click(u"Row1"); }, {"itemselect List 1"}},
        {"Up moves it", [](auto& d) { d.press(Key::up); }, {"itemselect List 0"}},
        {"Up at the first row", [](auto& d) { d.press(Key::up); }, {}},
        {"a double click on a row means two presses",
         [](auto& d) {
             d.doubleClick({20, 180});
         },
         {"itemselect List 0", "itemselect List 0"}},
    };
    test::WindowDriver d = driver();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.act(d);
        EXPECT_EQ(window().take(), c.notes);
    }
}

TEST_F(Notifications, TellOfAProgramOnlyWhatItSelects) {
    auto& combo = get<toolkit::CComboUI>(u"Combo");
    auto& list = get<toolkit::CListUI>(u"List");
    auto& option = get<toolkit::COptionUI>(u"Check");
    const std::vector<std::pair<std::function<void()>, Notes>> cases{
        {[&] { EXPECT_TRUE(combo.SelectItem(1)); }, {"itemselect Combo 1"}},
        {[&] { EXPECT_TRUE(combo.SelectItem(1)); }, {}},
        {[&] { EXPECT_TRUE(combo.SelectItem(-1)); }, {}},
        {[&] { EXPECT_FALSE(combo.SelectItem(3)); }, {}},
        {[&] { EXPECT_FALSE(combo.SelectItem(-2)); }, {}},
        {[&] { EXPECT_TRUE(combo.SelectItem(2)); }, {"itemselect Combo 2"}},
        {[&] { EXPECT_TRUE(combo.RemoveAt(0)); }, {}},
        {[&] { combo.RemoveAll(); }, {}},
        {[&] { EXPECT_TRUE(list.SelectItem(1)); }, {"itemselect List 1"}},
        {[&] { EXPECT_TRUE(list.SelectItem(1)); }, {}},
        {[&] { EXPECT_TRUE(list.SelectItem(-1)); }, {}},
        {[&] { EXPECT_FALSE(list.SelectItem(2)); }, {}},
        {[&] { list.RemoveAll(); }, {}},
        {[&] { option.Selected(true); }, {}},
        {[&] { get<toolkit::COptionUI>(u"Two").Selected(true); }, {}},
        {[&] { get<toolkit::CEditUI>(u"Edit").SetText(u"new"); }, {}},
    };
    int number = 0;
    for (const auto& [act, notes] : cases) {
        SCOPED_TRACE(number++);
        act();
        EXPECT_EQ(window().take(), notes);
    }
    EXPECT_EQ(combo.GetCurSel(), -1);
    EXPECT_EQ(combo.GetText(), u"");
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_TRUE(option.IsSelected());
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
    auto& combo = get<toolkit::CComboUI>(u"Combo");
    std::u16string shown;
    window().reactions["itemselect Combo 2"] = [&](toolkit::CControlUI& sender) {
        shown = sender.GetText();
    };
    EXPECT_TRUE(combo.SelectItem(2));
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
    EXPECT_EQ(window().take(), (Notes{"killfocus Edit"}));
    other.Close(1);
    driver().show();
    EXPECT_EQ(driver().focusName(), u"Edit") << "the keyboard comes back to where it was";

    window().Close(1);
    test::pump();
    EXPECT_EQ(window().GetNative(), nullptr);
    EXPECT_TRUE(window().take().empty());
    test::gui().loop().run(); // takes the quits that the closed windows posted
    test::gui().loop().processEvents(false);
}
