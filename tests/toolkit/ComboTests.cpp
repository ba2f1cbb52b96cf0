// Combos and their drop lists under real events.
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/DropListWindow.h"

using namespace toolkit_test;
using platform::Key;
using toolkit::CComboUI;

namespace {

class Combos : public ToolkitTest {
protected:
    /// A combo with items "Item 0" to "Item n-1".
    CComboUI& openCombo(int items, const std::string& attributes = "dropboxsize=\"0,127\"") {
        std::string children;
        for (int i = 0; i < items; ++i) {
            children += "<ListLabelElement text=\"Item " + std::to_string(i) + "\"/>";
        }
        open("<Combo name=\"Combo\" pos=\"20,20,150,25\" " + attributes + ">" + children +
             "</Combo><Button name=\"Go\" pos=\"200,200,80,25\"/>");
        return get<CComboUI>(u"Combo");
    }
    [[nodiscard]] toolkit::DropListWindow& list() {
        return toolkit::DropListWindow::of(window().GetPaintManager());
    }
};

} // namespace

TEST_F(Combos, OpenAndCloseByTheirKeysAndByPresses) {
    CComboUI& combo = openCombo(3);
    window().GetPaintManager().SetFocus(&combo);
    const std::pair<Key, platform::Modifiers> keys[] = {
        {Key::space, {}}, {Key::down, kAlt}, {Key::up, kAlt}, {Key::f4, {}}};
    for (const auto& [key, modifiers] : keys) {
        driver().press(key, modifiers);
        EXPECT_TRUE(combo.IsDropped()) << static_cast<int>(key);
        driver().press(Key::escape);
        EXPECT_FALSE(combo.IsDropped());
    }
    driver().press(Key::f4);
    driver().press(Key::f4);
    EXPECT_FALSE(combo.IsDropped());
    driver().press(Key::f4);
    driver().press(Key::tab);
    EXPECT_FALSE(combo.IsDropped());
    EXPECT_EQ(driver().focusName(), u"Go");
    driver().openDropList(combo);
    driver().click(combo);
    EXPECT_FALSE(combo.IsDropped()) << "a press on the box itself only closes";
    driver().openDropList(combo);
    driver().click(u"Go");
    EXPECT_FALSE(combo.IsDropped());
    expectNotes("a press outside reaches what is there", {"click Go"});
    driver().openDropList(combo);
    test::input().key(driver().native(), platform::EventKind::keyDown, Key::f4, {}, kAlt);
    test::pump();
    ASSERT_TRUE(window().IsClosing()) << "Alt+F4 is the window's, whatever is open";
    test::gui().loop().run(); // takes the quit that the window posted
}

TEST_F(Combos, TheDropListIsAsHighAsItsItemsAndScrollsBeyondItsLimit) {
    CComboUI& three = openCombo(3);
    driver().openDropList(three);
    const platform::Rect window0 = driver().native().geometry();
    EXPECT_EQ(list().geometry(), platform::Rect::at(window0.left + 20, window0.top + 45, 150, 77));
    CComboUI& many = openCombo(30);
    EXPECT_TRUE(many.SelectItem(20));
    driver().openDropList(many);
    EXPECT_EQ(list().geometry().height(), 127);
    EXPECT_GE(list().itemRect(20).top, 0) << "the chosen item is in view";
    EXPECT_LE(list().itemRect(20).bottom, 127);
    const int before = list().itemRect(20).top;
    driver().wheel({30, 30}, 1);
    EXPECT_EQ(list().itemRect(20).top, before + 75) << "the wheel anywhere scrolls the open list";
    driver().press(Key::end);
    EXPECT_EQ(list().highlighted(), 29);
    driver().press(Key::pageUp);
    EXPECT_EQ(list().highlighted(), 24);
    driver().press(Key::home);
    EXPECT_EQ(list().itemRect(0).top, 1);
    driver().press(Key::pageDown);
    driver().press(Key::enter);
    EXPECT_EQ(many.GetCurSel(), 5);
}

TEST_F(Combos, TheThumbOfALongListDrags) {
    CComboUI& combo = openCombo(30);
    driver().openDropList(combo);
    platform::NativeWindow& popup = *list().native();
    test::drag(popup, {{143, 5}, {143, 60}, {143, 400}});
    EXPECT_TRUE(combo.IsDropped());
    EXPECT_EQ(list().itemRect(29).bottom, 126);
    test::click(popup, {143, 3});
    EXPECT_EQ(list().itemRect(29).bottom, 126 + 125) << "a press above the thumb: a page up";
    EXPECT_TRUE(window().take().empty());
}

TEST_F(Combos, AnItemIsPickedByReleaseInsideTheList) {
    CComboUI& combo = openCombo(4);
    driver().openDropList(combo);
    test::drag(*list().native(), {{10, 10}, {10, 60}});
    EXPECT_EQ(combo.GetCurSel(), 2);
    driver().openDropList(combo);
    test::drag(*list().native(), {{10, 10}, {500, 10}});
    EXPECT_EQ(combo.GetCurSel(), 2) << "released outside: nothing";
    EXPECT_TRUE(combo.IsDropped());
    driver().press(Key::escape);
    driver().drag({{30, 30}, {30, 60}});
    EXPECT_EQ(combo.GetCurSel(), 0) << "one drag from the box into the list";
    expectNotes("two picks", {"itemselect Combo 2", "itemselect Combo 0"});
}

TEST_F(Combos, LeaveDisabledItemsAlone) {
    CComboUI& combo = openCombo(4);
    combo.GetItemAt(1)->SetEnabled(false);
    combo.GetItemAt(3)->SetEnabled(false);
    EXPECT_TRUE(combo.SelectItem(0, true));
    driver().press(Key::down);
    EXPECT_EQ(combo.GetCurSel(), 2) << "the arrow passes over it";
    driver().press(Key::end);
    EXPECT_EQ(combo.GetCurSel(), 2);
    driver().openDropList(combo);
    driver().clickDropList({10, 35});
    EXPECT_TRUE(combo.IsDropped());
    EXPECT_EQ(combo.GetCurSel(), 2);
}

TEST_F(Combos, ALetterGoesRoundTheItems) {
    open(R"(<Combo name="Combo" pos="20,20,150,25"><ListLabelElement text="Adam"/>
        <ListLabelElement text="berta"/><ListLabelElement text="Anna"/>
        <ListLabelElement text="&#xC4;rger"/></Combo>)");
    auto& combo = get<CComboUI>(u"Combo");
    EXPECT_TRUE(combo.SelectItem(0, true));
    const std::pair<std::u16string, int> typed[] = {
        {u"a", 2}, {u"a", 0}, {u"B", 1}, {u"q", 1}, {u"\u00e4", 3}, {u"a", 0}, {u"\u00c4", 3}};
    for (const auto& [letter, index] : typed) {
        driver().type(letter);
        EXPECT_EQ(combo.GetCurSel(), index);
    }
    driver().press(Key::f4);
    driver().type(u"b");
    EXPECT_EQ(list().highlighted(), 1);
    EXPECT_EQ(combo.GetCurSel(), 3) << "an open list only moves its highlight";
}

TEST_F(Combos, ASharedListAnswersAsItemsOfItsOwn) {
    CComboUI& combo = openCombo(0);
    auto texts = std::make_shared<CComboUI::Texts>();
    for (int i = 0; i < 1000; ++i) {
        texts->push_back(u"Zone " + std::u16string(1, static_cast<char16_t>(u'A' + i % 26)));
    }
    combo.SetItemTexts(texts);
    EXPECT_EQ(combo.GetCount(), 1000);
    EXPECT_EQ(combo.GetCurSel(), -1);
    EXPECT_EQ(combo.FindItemText(u"Zone C"), 2);
    EXPECT_EQ(combo.FindItemText(u"Zone c"), -1);
    toolkit::CControlUI* item = combo.GetItemAt(2);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->GetText(), u"Zone C");
    EXPECT_EQ(combo.GetItemIndex(item), 2);
    EXPECT_EQ(item->GetParent(), &combo);
    EXPECT_EQ(combo.GetItemAt(1000), nullptr);
    driver().pick(combo, 998);
    EXPECT_EQ(combo.GetText(), u"Zone K");

    combo.AddNew<toolkit::CListLabelElementUI>()->SetText(u"own");
    EXPECT_EQ(combo.GetItemAt(2), item) << "the same control when asked again";
    EXPECT_EQ(combo.GetItemText(1000), u"own");
    EXPECT_TRUE(combo.RemoveAt(0));
    EXPECT_EQ(combo.GetCurSel(), 997) << "the selection stays with its item";
    EXPECT_NE(combo.AddAt(std::make_unique<toolkit::CListLabelElementUI>(), 997), nullptr);
    EXPECT_TRUE(combo.RemoveAt(999));
    EXPECT_EQ(combo.GetText(), u"Zone K");
    EXPECT_EQ(texts->size(), 1000U);
    EXPECT_TRUE(combo.RemoveAt(998));
    EXPECT_EQ(combo.GetCurSel(), -1);
    EXPECT_FALSE(combo.RemoveAt(combo.GetCount()) || combo.RemoveAt(-1));
    EXPECT_EQ(combo.Add(std::make_unique<toolkit::CContainerUI>()), nullptr) << "no item";
}

TEST_F(Combos, AListThatChangesWhileOpenCloses) {
    CComboUI& combo = openCombo(3);
    const std::function<void()> changes[] = {
        [&] { combo.RemoveAt(0); },
        [&] { combo.AddNew<toolkit::CListLabelElementUI>(); },
        [&] { combo.SetEnabled(false); },
        [&] { combo.SetVisible(false); },
        [&] { combo.GetParent()->SetEnabled(false); },
        [&] { window().GetPaintManager().SetFocus(nullptr); },
        [&] { combo.RemoveAll(); },
    };
    for (const auto& change : changes) {
        driver().openDropList(combo);
        change();
        EXPECT_FALSE(combo.IsDropped());
        combo.SetEnabled(true);
        combo.SetVisible(true);
        combo.GetParent()->SetEnabled(true);
    }
    driver().click(u"Go");
    expectNotes("nothing was picked", {"click Go"});
}
