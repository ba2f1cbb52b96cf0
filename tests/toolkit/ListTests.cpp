// Lists: rows, scrolling, selection.
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/input/TEventUI.h"

using namespace toolkit_test;
using platform::Key;
using platform::Rect;
using toolkit::CListUI;
using toolkit::ScrollModel;

namespace {

class CountedRow : public toolkit::CListContainerElementUI {
public:
    explicit CountedRow(int& layouts) : m_layouts(layouts) {}
    void SetPos(const Rect& pos) override {
        ++m_layouts;
        CListContainerElementUI::SetPos(pos);
    }

private:
    int& m_layouts;
};

class Lists : public ToolkitTest {
protected:
    CListUI& openList(int rows, const std::string& inside = {}) {
        std::string children = inside;
        for (int i = 0; i < rows; ++i) {
            children += "<ListLabelElement name=\"Row" + std::to_string(i) + "\"/>";
        }
        open("<List name=\"List\" pos=\"10,10,200,102\" inset=\"1,1,1,1\" itemheight=\"20\">" +
             children + "</List>");
        return get<CListUI>(u"List");
    }
    Rect row(int index) {
        window().GetPaintManager().UpdateLayout();
        return get<CListUI>(u"List").GetItemAt(index)->GetPos();
    }
};

} // namespace

TEST_F(Lists, ShowAScrollBarOnlyWhenTheRowsDoNotFit) {
    CListUI& list = openList(5);
    EXPECT_EQ(row(4), Rect::at(11, 91, 198, 20));
    list.AddNew<toolkit::CListLabelElementUI>();
    EXPECT_EQ(row(5), Rect::at(11, 111, 184, 20));
    EXPECT_EQ(list.GetScrollBar().GetPos(), Rect::at(195, 11, 14, 100));
    EXPECT_TRUE(list.RemoveAt(0));
    EXPECT_EQ(row(4).width(), 198);
}

TEST_F(Lists, KeepTheirHeaderAboveTheRows) {
    CListUI& list = openList(
        10, R"(<ListHeader height="30"><Label name="Head" pos="5,0,50,30"/></ListHeader>)");
    EXPECT_EQ(list.GetCount(), 10) << "the header is no row";
    EXPECT_EQ(list.GetHeader()->GetPos(), Rect::at(11, 11, 198, 30));
    EXPECT_EQ(row(0).top, 41);
    driver().wheel({50, 80}, -1);
    EXPECT_EQ(row(0).top, 41 - 60);
    EXPECT_EQ(driver().get(u"Head").GetPos(), Rect::at(16, 11, 50, 30));
    driver().click(platform::Point{30, 25});
    EXPECT_EQ(list.GetCurSel(), -1) << "rows under the header are not pressed";
}

TEST_F(Lists, ScrollByWheelThumbAndKeys) {
    CListUI& list = openList(20);
    driver().wheel({50, 50}, -1);
    EXPECT_EQ(row(0).top, 11 - 60);
    driver().wheel({50, 50}, 5);
    EXPECT_EQ(row(0).top, 11);
    driver().drag({{202, 13}, {202, 40}, {202, 500}});
    EXPECT_EQ(row(19).bottom, 111);
    driver().drag({{202, 100}, {202, -500}});
    EXPECT_EQ(row(0).top, 11);
    driver().click(platform::Point{202, 100});
    EXPECT_EQ(row(0).top, 11 - 100) << "below the thumb: a page";
    EXPECT_EQ(list.GetCurSel(), -1);

    driver().click(u"Row6");
    const std::pair<Key, int> keys[] = {{Key::down, 7},     {Key::up, 6},      {Key::home, 0},
                                        {Key::pageDown, 5}, {Key::pageUp, 0},  {Key::end, 19},
                                        {Key::down, 19},    {Key::pageUp, 14}, {Key::pageDown, 19}};
    for (const auto& [key, index] : keys) {
        driver().press(key);
        EXPECT_EQ(list.GetCurSel(), index);
        EXPECT_GE(row(index).top, 11);
        EXPECT_LE(row(index).bottom, 111);
    }
    EXPECT_TRUE(list.SelectItem(2));
    EXPECT_EQ(row(2).top, 11) << "what a program selects comes into view";
    window().reactions["itemselect List 18"] = [&](auto&) { list.RemoveAt(0); };
    EXPECT_TRUE(list.SelectItem(18));
    EXPECT_EQ(row(17).bottom, 111) << "also when its number changes before the layout";
    list.GetItemAt(16)->SetEnabled(false);
    list.GetItemAt(15)->SetVisible(false);
    driver().press(Key::up);
    EXPECT_EQ(list.GetCurSel(), 14) << "the keys pass over what nobody can press";
}

TEST_F(Lists, TheSelectionStaysWithItsRowWhenOthersComeAndGo) {
    CListUI& list = openList(4);
    EXPECT_TRUE(list.SelectItem(2));
    EXPECT_TRUE(list.RemoveAt(0));
    EXPECT_EQ(list.GetCurSel(), 1);
    EXPECT_NE(list.AddAt(std::make_unique<toolkit::CListLabelElementUI>(), 1), nullptr);
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_TRUE(list.RemoveAt(3));
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_TRUE(list.RemoveAt(2));
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_FALSE(list.RemoveAt(2));
    EXPECT_FALSE(list.RemoveAt(-1));
}

TEST_F(Lists, APressInARowSelectsItFirstAndDoesNotMoveIt) {
    open(R"(<List name="List" pos="0,0,300,100">
        <ListContainerElement height="60"><Label name="Text" pos="80,0,60,25" text="x"/>
        <Combo name="Off" pos="150,0,60,25" enabled="false"/></ListContainerElement>
        <ListContainerElement height="60"><Button name="Half" pos="0,0,60,60"/></ListContainerElement>
        </List>)");
    driver().click(platform::Point{30, 80});
    expectNotes("a button", {"itemselect List 1", "click Half"});
    EXPECT_EQ(driver().get(u"Half").GetPos().top, 60);
    driver().click(u"Off");
    expectNotes("a disabled control", {"itemselect List 0"});
    driver().click(u"Text");
    driver().press(Key::down);
    expectNotes("a text, and the next row", {"itemselect List 0", "itemselect List 1"});
    EXPECT_EQ(driver().get(u"Half").GetPos().bottom, 100) << "the keyboard brings it into view";
}

TEST_F(Lists, RowsLikeButtonsAreActivatedByOnePress) {
    CListUI& list = openList(3);
    list.GetItemAt(0)->accessiblePress();
    expectNotes("a row is only selected", {"itemselect List 0"});
    list.SetAttribute(u"pressactivates", u"true");
    driver().click(u"Row1");
    expectNotes("a press", {"itemselect List 1", "itemactivate List"});
    driver().doubleClick(list.GetItemAt(0)->GetPos().topLeft());
    expectNotes("two quick presses",
                {"itemselect List 0", "itemactivate List", "itemselect List 0"});
    list.GetItemAt(2)->accessiblePress();
    expectNotes("of assistive technology", {"itemselect List 2", "itemactivate List"});
    list.GetItemAt(0)->accessibleSelect(true);
    expectNotes("no more than selected by it", {"itemselect List 0"});
    toolkit::TEventUI rightPress;
    rightPress.native.button = platform::MouseButton::right;
    list.pressRow(*list.GetItemAt(1), rightPress);
    expectNotes("by the right button", {"itemselect List 1"});
    driver().press(Key::down);
    expectNotes("by a key", {"itemselect List 2"});
    list.GetItemAt(2)->SetEnabled(false);
    driver().click(u"Row2");
    expectNotes("disabled", {});
}

TEST_F(Lists, MakeAnnouncedRowsOnlyWhereTheyAreNeeded) {
    CListUI& list = openList(0);
    int made = 0;
    int layouts = 0;
    const auto cell = [&] { return window().GetPaintManager().GetFocus()->GetUserData(); };
    list.SetRows(10'000, {.make =
                              [&](int number) {
                                  ++made;
                                  auto row = std::make_unique<CountedRow>(layouts);
                                  auto* button = row->AddNew<toolkit::CButtonUI>();
                                  button->SetName(u"Cell");
                                  button->SetUserData(std::u16string(1, char16_t(number)));
                                  return row;
                              },
                          .height = 20,
                          .takesFocus = true});
    driver().click(platform::Point{50, 60});
    expectNotes("the row and its cell", {"itemselect List 2", "click Cell"});
    layouts = 0;
    EXPECT_EQ(row(2).top, 51);
    EXPECT_EQ(layouts, 0) << "the look-up of a row that stands there";
    list.NeedUpdate();
    EXPECT_EQ(row(2).top, 51);
    EXPECT_LE(layouts, list.childCount() - 1) << "each once, the focused one too";
    window().GetPaintManager().SetFocus(&list);
    driver().press(Key::end);
    EXPECT_EQ(list.GetCurSel(), 9'999);
    EXPECT_EQ(row(9'999).bottom, 111);
    driver().press(Key::tab, kShift);
    EXPECT_EQ(cell()[0], 9'999) << "round at the ends: the last row's cell";
    driver().wheel({50, 50}, 100);
    EXPECT_GT(list.accessibleFocused()->accessibleRect().top, 6'000);
    driver().press(Key::tab, kShift);
    EXPECT_EQ(cell()[0], 9'998) << "goes on from a row that was scrolled far away";
    EXPECT_EQ(list.accessibleIndexOf(*list.accessibleChild(5'000)), 5'000);
    EXPECT_TRUE(list.RemoveAt(4'999));
    list.AnnounceAt(0);
    EXPECT_EQ(list.GetItemAt(5'000)->FindSubControl(u"Cell")->GetUserData()[0], 5'000);
    EXPECT_EQ(list.GetCurSel(), 9'999) << "one came and one went above it";
    driver().press(Key::tab, kShift);
    for (int notch = 0; notch < 40; ++notch) {
        driver().wheel({50, 50}, notch < 20 ? 50 : -50);
    }
    auto* last = toolkit::controlCast<toolkit::CListContainerElementUI>(list.GetItemAt(9'999));
    EXPECT_TRUE(last->IsSelected()) << "also when it was made again";
    EXPECT_LT(made, 900);
    EXPECT_LT(list.childCount(), 70);
}

TEST_F(Lists, SelectSeveralRowsWhereTheLayoutAllows) {
    CListUI& list = openList(8);
    const auto press = [&](Key key, platform::Modifiers held) {
        return [this, key, held] { driver().press(key, held); };
    };
    const auto click = [&](int index, platform::Modifiers held) {
        return [this, index, held] { driver().click(platform::Point{50, 20 + 20 * index}, held); };
    };
    constexpr platform::Modifiers kBoth{true, true, false};
    driver().click(platform::Point{50, 20}, kControl);
    driver().click(platform::Point{50, 60}, kShift);
    expectNotes("one row unless the layout asks", {"itemselect List 0", "itemselect List 2"});
    EXPECT_EQ(list.selectedRows(), std::vector{2});
    list.SetAttribute(u"multiselect", u"true");
    list.GetItemAt(3)->SetEnabled(false);
    const struct {
        const char* what;
        std::function<void()> act;
        std::vector<int> selected;
        int current;
        Notes notes;
    } steps[] = {
        {"a click", click(1, {}), {1}, 1, {"itemselect List 1"}},
        {"Shift: up to there", click(4, kShift), {1, 2, 4}, 4, {"itemselect List 4"}},
        {"again from the same row", click(0, kShift), {0, 1}, 0, {"itemselect List 0"}},
        {"Ctrl: one more", click(4, kControl), {0, 1, 4}, 4, {"itemselect List 4"}},
        {"Ctrl: one less", click(4, kControl), {0, 1}, 0, {"itemselect List 4"}},
        {"both: more rows", click(2, kBoth), {0, 1, 2, 4}, 2, {"itemselect List 2"}},
        {"Ctrl+Space", press(Key::space, kControl), {0, 1, 4}, 0, {"itemselect List 2"}},
        {"Down: one row", press(Key::down, {}), {4}, 4, {"itemselect List 4"}},
        {"Shift+Up", press(Key::up, kShift), {2, 4}, 2, {"itemselect List 2"}},
        {"Shift+End", press(Key::end, kShift), {4, 5, 6, 7}, 7, {"itemselect List 7"}},
        {"Ctrl+A", press(Key::a, kControl), {0, 1, 2, 4, 5, 6, 7}, 7, {"itemselect List 7"}},
        {"one of many again", press(Key::down, {}), {7}, 7, {"itemselect List 7"}},
        {"a program",
         [&] {
             list.SelectItems({5, 1, 99});
         },
         {1, 5},
         1,
         {"itemselect List 1"}},
        {"rows go",
         [&] {
             list.RemoveAt(0);
             list.RemoveAt(0);
         },
         {3},
         3,
         {}},
        {"a screen reader",
         [&] { list.GetItemAt(0)->accessibleSelect(true); },
         {0, 3},
         0,
         {"itemselect List 0"}},
        {"what it took back",
         [&] { list.GetItemAt(3)->accessibleSelect(false); },
         {0},
         0,
         {"itemselect List 3"}},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_EQ(list.selectedRows(), step.selected) << step.what;
        EXPECT_EQ(list.GetCurSel(), step.current) << step.what;
        expectNotes(step.what, step.notes);
    }
    list.Add(std::make_unique<toolkit::CListContainerElementUI>())->SetFixedHeight(20);
    toolkit::controlCast<toolkit::CContainerUI>(list.GetItemAt(6))->AddNew<toolkit::CButtonUI>();
    platform::Event menu;
    menu.button = platform::MouseButton::right;
    list.SelectItems({0, 6});
    EXPECT_FALSE(list.pressRow(*list.GetItemAt(0), {toolkit::EventType::buttonDown, &list, menu}));
    EXPECT_EQ(list.selectedRows(), (std::vector{0, 6})) << "its menu is for all of them";
    list.SelectItem(0);
    expectNotes("a program", {"itemselect List 6", "itemselect List 0"});
    list.revealRow(6);
    window().GetPaintManager().UpdateLayout();
    driver().click(*list.GetItemAt(6), kShift);
    expectNotes("Shift on what is in a row", {"itemselect List 6"});
    EXPECT_EQ(driver().focusName(), u"List");
}

TEST(ScrollModel, KeepsItsOffsetAndItsThumbInsideWhateverTheSizes) {
    ScrollModel model;
    const Rect track = Rect::at(0, 10, 14, 100);
    model.setExtent(1'000'000'000, 100);
    EXPECT_EQ(model.thumb(track).height(), ScrollModel::kMinThumb);
    for (const int offset : {0, 250'000'000, 999'999'900}) {
        model.setOffset(offset);
        EXPECT_NEAR(model.offsetForThumb(track, model.thumb(track).top), offset, 10'000'000);
    }
    EXPECT_TRUE(model.thumb({}).isEmpty());
    model.setExtent(600, 500);
    EXPECT_EQ(model.offset(), 100) << "shrinks with its content";
    EXPECT_TRUE(model.turnWheel(32767, 32767));
    EXPECT_EQ(model.offset(), 0);
    for (int i = 0; i < 40; ++i) {
        model.turnWheel(-3, 1);
    }
    EXPECT_EQ(model.offset(), 3) << "parts of a notch add up to it";
    model.setExtent(-5, -5);
    EXPECT_EQ(model.offset(), 0);
    EXPECT_FALSE(model.isNeeded());
}
