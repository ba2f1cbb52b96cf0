// Where controls stand.
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
