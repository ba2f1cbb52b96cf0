// Lists: rows, scrolling, selection.
#include <memory>
#include <string>
#include <utility>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/ScrollModel.h"

using namespace toolkit_test;
using platform::Key;
using platform::Rect;
using toolkit::CListUI;
using toolkit::ScrollModel;

namespace {

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
