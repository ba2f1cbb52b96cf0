// What controls report to the window, in which order, and what never.
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"

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

    struct Act {
        const char* what;
        std::function<void()> act;
        Notes notes;
    };
    void expectNotesAfter(const std::vector<Act>& acts) {
        for (const auto& [what, act, notes] : acts) {
            act();
            expectNotes(what, notes);
        }
    }
    toolkit::CComboUI& combo() { return get<toolkit::CComboUI>(u"Combo"); }
};

} // namespace

TEST_F(Notifications, ButtonsTellOfAPressAndReleaseInside) {
    expectNotesAfter({
        {"a click", [&] { driver().click(u"Go"); }, {"click Go"}},
        {"a double click",
         [&] {
             driver().doubleClick({20, 20});
         },
         {"click Go", "click Go"}},
        {"released outside",
         [&] {
             driver().drag({{20, 20}, {300, 20}});
         },
         {}},
        {"out and in",
         [&] {
             driver().drag({{20, 20}, {300, 20}, {30, 20}});
         },
         {"click Go"}},
        {"pressed outside",
         [&] {
             driver().drag({{300, 20}, {20, 20}});
         },
         {}},
        {"disabled", [&] { driver().click(u"Off"); }, {}},
        {"the keyboard", [&] { driver().manager().SetFocus(&driver().get(u"Go")); }, {}},
        {"Space", [&] { driver().press(Key::space); }, {"click Go"}},
        {"Enter", [&] { driver().press(Key::enter); }, {"click Go"}},
        {"Control+Enter is no press", [&] { driver().press(Key::enter, kControl); }, {}},
        {"Space let go with Control held",
         [&] {
             using platform::EventKind;
             test::input().key(driver().native(), EventKind::keyDown, Key::space, u" ");
             test::input().key(driver().native(), EventKind::keyUp, Key::space, {}, kControl);
             test::pump();
         },
         {"click Go"}},
    });
}

TEST_F(Notifications, OptionsTellOfTheirChangeBeforeTheClick) {
    const Notes check{"selectchanged Check", "click Check"};
    const Notes two{"selectchanged Two", "click Two"};
    expectNotesAfter({
        {"checked", [&] { driver().click(u"Check"); }, check},
        {"Space clears it again", [&] { driver().press(Key::space); }, check},
        {"the chosen one of a group", [&] { driver().click(u"One"); }, {"click One"}},
        {"another one: only it tells", [&] { driver().click(u"Two"); }, two},
        {"an arrow", [&] { driver().press(Key::left); }, {"selectchanged One", "click One"}},
    });
}

TEST_F(Notifications, EditsTellOfTypingAndOfTheKilledFocus) {
    const auto leaveBy = [this](std::u16string_view button) {
        driver().click(u"Edit");
        driver().click(button);
    };
    const Notes killed{"killfocus Edit"};
    driver().click(u"Edit");
    driver().type(u"xy");
    expectNotes("typing", {"textchanged Edit", "textchanged Edit"});
    driver().press(Key::enter);
    expectNotes("Enter commits and presses nothing", killed);
    driver().click(u"Edit");
    for (const Key key : {Key::end, Key::del, Key::escape}) {
        driver().press(key);
    }
    expectNotes("keys that change nothing", {});
    driver().press(Key::tab);
    expectNotes("Tab", killed);
    leaveBy(u"Go");
    expectNotes("the killed focus comes before the click", {"killfocus Edit", "click Go"});
    leaveBy(u"Row1");
    expectNotes("and before a press chooses a row", {"killfocus Edit", "itemselect List 1"});
    leaveBy(u"Off");
    expectNotes("a press on a disabled button", killed);
    driver().click(u"Edit");
    driver().click(Point{390, 290});
    expectNotes("a press on a blank area", killed);
}

TEST_F(Notifications, CombosTellOfEveryPickOfAPerson) {
    const auto pressOpen = [this](Key key) {
        driver().openDropList(combo());
        driver().press(Key::down);
        driver().press(key);
    };
    const auto turnWheel = [this] {
        driver().wheel({20, 140}, -1);
        driver().wheel({20, 140}, 1);
    };
    const auto pressOutside = [this] {
        driver().openDropList(combo());
        driver().click(Point{390, 290});
    };
    expectNotesAfter({
        {"a pick", [&] { driver().pick(combo(), 1); }, {"itemselect Combo 1"}},
        {"of the item on show", [&] { driver().pick(combo(), 1); }, {"itemselect Combo 1"}},
        {"Esc closes without a pick", [&] { pressOpen(Key::escape); }, {}},
        {"a press outside closes without a pick", pressOutside, {}},
        {"Enter picks", [&] { pressOpen(Key::enter); }, {"itemselect Combo 2"}},
        {"Up, closed", [&] { driver().press(Key::up); }, {"itemselect Combo 1"}},
        {"the wheel over the closed combo", turnWheel, {}},
        {"Up", [&] { driver().press(Key::up); }, {"itemselect Combo 0"}},
        {"Up at the first item", [&] { driver().press(Key::up); }, {}},
        {"a letter", [&] { driver().type(u"g"); }, {"itemselect Combo 2"}},
        {"an empty combo", [&] { driver().click(u"Empty"); }, {}},
    });
}

TEST_F(Notifications, ListsTellOfEveryPressOnARow) {
    const Notes twice{"itemselect List 0", "itemselect List 0", "itemactivate List"};
    expectNotesAfter({
        {"a press", [&] { driver().click(u"Row1"); }, {"itemselect List 1"}},
        {"on the same row", [&] { driver().click(u"Row1"); }, {"itemselect List 1"}},
        {"Up moves it", [&] { driver().press(Key::up); }, {"itemselect List 0"}},
        {"Up at the first row", [&] { driver().press(Key::up); }, {}},
        {"Enter", [&] { driver().press(Key::enter); }, {"itemactivate List"}},
        {"a double click is two presses",
         [&] {
             driver().doubleClick({20, 180});
         },
         twice},
    });
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
    window().reactions["killfocus Edit"] = [&](auto&) { combo().RemoveAll(); };
    combo().AddNew<toolkit::CListLabelElementUI>();
    driver().click(u"Edit");
    EXPECT_TRUE(combo().SelectItem(0, true));
    expectNotes("an item that went when the edit lost the keyboard", {"killfocus Edit"});
    EXPECT_TRUE(get<toolkit::COptionUI>(u"Check").IsSelected());
    EXPECT_FALSE(get<toolkit::COptionUI>(u"One").IsSelected());
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
