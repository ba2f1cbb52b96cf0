// Where controls stand.
#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CComboUI.h"

using namespace toolkit_test;
using platform::Rect;

class Layout : public ToolkitTest {};

TEST_F(Layout, PlacesByPosByFillingAndInRowsAndColumns) {
    open(R"(<Container name="Fill" inset="10,20,30,40">
              <Label name="Placed" pos="5,6,70,8"/>
              <Label name="Filling" padding="1,2,3,4"/>
              <Label name="Sized" width="50" height="20"/>
            </Container>
            <HorizontalLayout name="Row" pos="0,100,300,40" childpadding="10" inset="5,0,5,0">
              <Label name="R1" width="50"/><Label name="R2" padding="2,3,4,5"/>
              <Label name="Gone" visible="false" width="100"/>
              <Label name="R3" width="30" height="20"/><Label name="Out" pos="1,1,2,2"/>
            </HorizontalLayout>
            <VerticalLayout name="Column" pos="0,150,100,100">
              <Label name="C1" height="30" padding="1,2,3,4"/><Label name="C2" minheight="70"/>
              <Label name="C3" width="20" maxheight="10"/>
            </VerticalLayout>)");
    const std::pair<std::u16string_view, Rect> places[] = {
        {u"Fill", {0, 0, 400, 300}},      {u"Placed", Rect::at(15, 26, 70, 8)},
        {u"Filling", {11, 22, 367, 256}}, {u"Sized", Rect::at(10, 20, 50, 20)},
        {u"R1", {5, 100, 55, 140}},       {u"R2", {67, 103, 251, 135}},
        {u"R3", {265, 110, 295, 130}},    {u"Out", Rect::at(6, 101, 2, 2)},
        {u"C1", {1, 152, 97, 182}},       {u"C2", {0, 186, 100, 256}},
        {u"C3", {0, 256, 20, 256}},
    };
    for (const auto& [name, place] : places) {
        EXPECT_EQ(driver().get(name).GetPos(), place) << std::string(name.begin(), name.end());
    }
}

TEST_F(Layout, GivesAControlTheRoomThatItsTextNeeds) {
    open(R"(<HorizontalLayout pos="0,0,400,40"><Label name="Rest"/>
              <Label name="State" width="40" besidetext="10" text="No"/>
            </HorizontalLayout>)");
    toolkit::CControlUI& state = driver().get(u"State");
    EXPECT_EQ(state.GetPos(), Rect::at(360, 0, 40, 40));
    state.SetText(u"Saved on the 12th of May");
    window().GetPaintManager().UpdateLayout();
    EXPECT_GE(state.GetPos().width(),
              10 + window()
                       .GetPaintManager()
                       .fonts()
                       .measure(state.GetText(), window().GetPaintManager().look().GetFont(0))
                       .width);
    EXPECT_EQ(driver().get(u"Rest").GetPos().right, state.GetPos().left);
    EXPECT_EQ(state.GetPos().right, 400);
}

TEST_F(Layout, GivesARowTheRoomThatItsChildrenNeed) {
    open(R"(<HorizontalLayout pos="0,0,400,40"><Label name="Rest"/>
              <HorizontalLayout name="Bar" width="70" fit="true" inset="4,0,5,0" childpadding="2">
                <Label width="30" padding="1,0,0,0"/><Control/><Label name="More" width="50"/>
                <Label pos="0,0,300,10"/>
              </HorizontalLayout>
            </HorizontalLayout>)");
    toolkit::CControlUI& bar = driver().get(u"Bar");
    EXPECT_EQ(bar.GetPos(), Rect::at(306, 0, 94, 40));
    driver().get(u"More").SetVisible(false);
    window().GetPaintManager().UpdateLayout();
    EXPECT_EQ(bar.GetPos(), Rect::at(330, 0, 70, 40)) << "its own width is the least";
}

TEST_F(Layout, KeepsTheDistancesToAnchoredEdges) {
    open(R"(<Label name="Still" pos="10,20,30,40"/>
            <Label name="Right" pos="360,20,30,40" anchor="top, right"/>
            <Label name="Below" pos="10,250,30,40" anchor="left,bottom"/>
            <Label name="Wide" pos="10,20,30,40" anchor="left,right,top,bottom"/>
            <Label name="Middle" pos="190,140,20,20" anchor=""/>
            <Label name="Odd" pos="1,2,3,4" anchor="right,rihgt"/>
            <Container name="Box" pos="100,100,200,100" inset="5,5,5,5" anchor="left,top,right">
              <Label name="Inner" pos="150,10,40,80" anchor="top,right"/>
            </Container>)");
    const std::tuple<platform::Size, std::u16string_view, Rect> places[] = {
        {{500, 340}, u"Still", Rect::at(10, 20, 30, 40)},
        {{500, 340}, u"Right", Rect::at(460, 20, 30, 40)},
        {{500, 340}, u"Below", Rect::at(10, 290, 30, 40)},
        {{500, 340}, u"Wide", Rect::at(10, 20, 130, 80)},
        {{500, 340}, u"Middle", Rect::at(240, 160, 20, 20)},
        {{500, 340}, u"Odd", Rect::at(1, 2, 3, 4)},
        {{500, 340}, u"Inner", Rect::at(355, 115, 40, 80)},
        {{300, 200}, u"Wide", Rect::at(10, 20, 0, 0)},
        {{400, 300}, u"Inner", Rect::at(255, 115, 40, 80)},
    };
    for (const auto& [size, name, place] : places) {
        window().GetPaintManager().SetWindowSize(size);
        window().GetPaintManager().UpdateLayout();
        EXPECT_EQ(driver().get(name).GetPos(), place) << std::string(name.begin(), name.end());
    }
}

TEST_F(Layout, TakesWhatItsWindowHasRoomFor) {
    open(R"(<Default class="Label" textcolor="#FF000000"/>
            <Label name="A" pos="10,20,30,40" anchor="top,right" text="" visible="true">
              <Range from="500,0" pos="0,20,40,40" text="wide" textcolor="#FF0000FF"/>
              <Range from="500,400" text="large" align="right"/><Range text="odd"/>
            </Label>
            <HorizontalLayout pos="0,0,400,20" anchor="left,right">
              <Container name="Box" size="100,20" visible="false">
                <Label name="B" pos="90,0,10,20" anchor="top,right"/></Container>
            </HorizontalLayout>)");
    EXPECT_EQ(m_log.errors().size(), 2U) << "no usual \"align\", no size";
    const std::tuple<platform::Size, std::u16string_view, int> sizes[] = {
        {{499, 999}, u"", 109},     {{500, 399}, u"wide", 100}, {{500, 400}, u"large", 100},
        {{600, 200}, u"wide", 200}, {{400, 300}, u"", 10},
    };
    driver().get(u"Box").SetVisible(true);
    for (const auto& [size, text, left] : sizes) {
        window().GetPaintManager().SetWindowSize(size);
        window().GetPaintManager().UpdateLayout();
        EXPECT_EQ(driver().textOf(u"A"), text);
        EXPECT_EQ(driver().get(u"A").GetPos().left, left);
        EXPECT_EQ(driver().get(u"B").GetPos().right, size.width) << "hidden in the first layout";
    }
}

TEST_F(Layout, GivesWayToTheSplitter) {
    open(R"(<HorizontalLayout name="Row" pos="0,0,400,100" anchor="left,right">
              <Label name="Front" minwidth="50"/><Splitter name="Bar" width="16"/>
              <Label name="Gone" width="40" visible="false"/>
              <Label name="Back" width="100" minwidth="80"/></HorizontalLayout>)");
    const auto length = [&] { return driver().get(u"Back").GetPos().width(); };
    const platform::Point bar = test::WindowDriver::middleOf(driver().get(u"Bar"));
    const std::tuple<const char*, std::function<void()>, int, bool> moves[] = {
        {"at first", [] {}, 100, false},
        {"a drag",
         [&] {
             driver().drag({bar, {bar.x - 10, 99}, {bar.x - 60, 0}});
         },
         160, true},
        {"least",
         [&] {
             driver().doubleClick({bar.x - 60, 50});
         },
         80, true},
        {"last", [&] { driver().press(platform::Key::enter); }, 160, true},
        {"a key", [&] { driver().press(platform::Key::right); }, 144, true},
        {"to the end",
         [&] {
             driver().drag({{248, 50}, {-500, 50}});
         },
         334, true},
        {"less room",
         [&] {
             window().GetPaintManager().SetWindowSize({300, 300});
         },
         234, false},
        {"no room",
         [&] {
             window().GetPaintManager().SetWindowSize({120, 300});
         },
         80, false},
        {"room again",
         [&] {
             window().GetPaintManager().SetWindowSize({400, 300});
         },
         334, false},
        {"a width for what was hidden",
         [&] {
             driver().get(u"Back").SetVisible(false);
             driver().get(u"Gone").SetVisible(true);
         },
         334, false},
    };
    for (const auto& [what, move, expected, isUsers] : moves) {
        move();
        window().GetPaintManager().UpdateLayout();
        EXPECT_EQ(length(), expected) << what;
        const Notes notes = window().take();
        EXPECT_EQ(std::count(notes.begin(), notes.end(), "split Bar") > 0, isUsers) << what;
    }
    EXPECT_EQ(driver().get(u"Gone").GetPos().width(), 334);
}

TEST_F(Layout, ComesAnewWhenTheProgramChangesIt) {
    open(R"(<HorizontalLayout name="Row" pos="0,0,301,40"><Label name="A"/>
            <Label name="B" maxwidth="250"/></HorizontalLayout>)");
    auto& a = driver().get(u"A");
    auto& row = get<toolkit::CContainerUI>(u"Row");
    const std::tuple<const char*, std::function<void()>, int, int> changes[] = {
        {"an odd pixel goes to the first", [] {}, 151, 150},
        {"what a fixed one leaves", [&] { a.SetFixedWidth(100); }, 100, 201},
        {"no more than the highest", [&] { a.SetFixedWidth(20); }, 20, 250},
        {"too much wished", [&] { a.SetFixedWidth(400); }, 400, 0},
        {"a lowest width", [&] { a.SetMinWidth(420); }, 420, 0},
        {"a hidden one", [&] { a.SetVisible(false); }, 420, 250},
        {"an inset",
         [&] {
             row.SetInset({0, 0, 101, 0});
         },
         420, 200},
        {"no room at all",
         [&] {
             row.SetInset({0, 0, 999, 0});
         },
         420, 0},
    };
    for (const auto& [what, change, first, second] : changes) {
        change();
        EXPECT_EQ(driver().get(u"B").GetPos().width(), second) << what;
        EXPECT_EQ(a.GetPos().width(), first) << what;
    }
}

TEST_F(Layout, StaysInOrderHoweverLongARowIs) {
    std::string labels;
    for (int i = 0; i < 19'000; ++i) {
        labels += "<Label width=\"99999\" padding=\"99999,0,99999,0\"/>";
    }
    open("<HorizontalLayout childpadding=\"99999\">" + labels + "<Label name=\"Last\"/>" +
         "</HorizontalLayout>");
    EXPECT_GT(driver().get(u"Last").GetPos().left, 400);
}

TEST_F(Layout, FindsTheTopmostVisibleControlInsideItsContainer) {
    open(
        R"(<Container name="Box" pos="100,100,50,50"><Label name="Over" pos="-20,0,40,20"/></Container>
            <Label name="A" pos="0,0,50,50"/><Label name="B" pos="20,20,50,50"/>
            <Label name="Hidden" pos="0,0,400,300" visible="false"/>)");
    const auto nameAt = [&](int x, int y) {
        const auto* control = window().GetPaintManager().FindControl(platform::Point{x, y});
        return control != nullptr ? control->GetName() : u"none";
    };
    EXPECT_EQ(nameAt(10, 10), u"A");
    EXPECT_EQ(nameAt(30, 30), u"B");
    EXPECT_EQ(nameAt(105, 110), u"Over");
    EXPECT_EQ(nameAt(90, 110), u"") << "cut off at its container: the window itself";
    EXPECT_EQ(nameAt(400, 10), u"none");
    EXPECT_EQ(window().FindControl<toolkit::CComboUI>(u"A"), nullptr) << "of another kind";
    EXPECT_EQ(window().FindControl<toolkit::CControlUI>(u"Absent"), nullptr);
}
