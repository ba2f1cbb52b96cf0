// Where drop lists and tool tips stand, and what tool tips say.
#include <functional>
#include <string>
#include <string_view>
#include <tuple>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/window/PopupPlacement.h"
#include "toolkit/window/ToolTipWindow.h"

using namespace toolkit_test;
using platform::Rect;
using toolkit::placeDropList;
using toolkit::placeToolTip;

namespace {

constexpr Rect kScreen{0, 0, 1000, 800};

class ToolTips : public ToolkitTest {
protected:
    /// Rests on the control until the tip is there; empty when none comes.
    std::u16string tipOver(std::u16string_view name) {
        driver().hover(platform::Point{399, 299});
        driver().hover(name);
        toolkit::ToolTipWindow& tip = window().GetPaintManager().toolTip();
        tip.timeOver(); // the half second is over
        return tip.shownText();
    }
};

} // namespace

TEST(DropListPlace, FlipsAndStaysOnTheMonitor) {
    const std::tuple<const char*, Rect, platform::Size, Rect> cases[] = {
        {"below", {100, 100, 300, 125}, {200, 300}, Rect::at(100, 125, 200, 300)},
        {"above: more room", {100, 700, 300, 725}, {200, 300}, Rect::at(100, 400, 200, 300)},
        {"cut below", {100, 300, 300, 325}, {200, 600}, Rect::at(100, 325, 200, 475)},
        {"cut above", {100, 500, 300, 525}, {200, 600}, Rect::at(100, 0, 200, 500)},
        {"the right edge", {900, 100, 990, 125}, {200, 100}, Rect::at(800, 125, 200, 100)},
        {"the left edge", {-50, 100, 50, 125}, {200, 100}, Rect::at(0, 125, 200, 100)},
        {"under a window half below",
         {100, 820, 300, 845},
         {200, 300},
         Rect::at(100, 500, 200, 300)},
        {"under one half above", {100, -60, 300, -35}, {200, 300}, Rect::at(100, 0, 200, 300)},
        {"wider than all", {0, 100, 50, 125}, {3000, 100}, Rect::at(0, 125, 1000, 100)},
    };
    for (const auto& [what, anchor, size, place] : cases) {
        EXPECT_EQ(placeDropList(anchor, size, kScreen), place) << what;
    }
}

TEST(ToolTipPlace, StandsBelowThePointerAndStaysOnTheMonitor) {
    EXPECT_EQ(placeToolTip({100, 100}, 20, {80, 24}, kScreen), Rect::at(100, 120, 80, 24));
    EXPECT_EQ(placeToolTip({990, 100}, 20, {80, 24}, kScreen), Rect::at(920, 120, 80, 24));
    EXPECT_EQ(placeToolTip({100, 790}, 20, {80, 24}, kScreen), Rect::at(100, 756, 80, 24));
    EXPECT_EQ(placeToolTip({5, 5}, 20, {3000, 24}, kScreen).left, 0);
}

TEST_F(ToolTips, SayWhatTheControlSaysOrWhatItCuts) {
    open(R"(<Button name="Go" pos="0,0,80,25" tooltip="Go on"/>
            <Button name="Silent" pos="0,30,80,25" text="x"/>
            <Label name="Cut" pos="0,60,40,20" text="a text that does not fit"/>
            <Button pos="0,210,80,25" tooltip="Below"/>
            <Label name="Over" pos="0,210,40,25" mouse="false" text="a text that is cut"/>
            <Label name="Fits" pos="0,90,200,20" text="fits"/>
            <Combo name="Combo" pos="0,120,60,25" tooltip="Choose">
                <ListLabelElement text="a very long name of a zone"/><ListLabelElement text="b"/></Combo>
            <Edit name="Edit" pos="0,150,40,25" text="long text in a short edit"/>
            <List pos="200,0,60,60"><ListHeader height="20">
                <Label name="Head" pos="0,0,40,20" text="a long heading" mouse="false"/></ListHeader></List>
            <Button name="Off" pos="0,180,80,25" tooltip="Not now" enabled="false"/>)");
    EXPECT_EQ(tipOver(u"Head"), u"a long heading");
    EXPECT_EQ(tipOver(u"Go"), u"Go on");
    EXPECT_EQ(tipOver(u"Silent"), u"");
    EXPECT_EQ(tipOver(u"Cut"), u"a text that does not fit");
    EXPECT_EQ(tipOver(u"Fits"), u"");
    EXPECT_EQ(tipOver(u"Combo"), u"Choose");
    EXPECT_TRUE(get<toolkit::CComboUI>(u"Combo").SelectItem(0));
    EXPECT_EQ(tipOver(u"Combo"), u"a very long name of a zone");
    EXPECT_EQ(tipOver(u"Edit"), u"long text in a short edit");
    EXPECT_EQ(tipOver(u"Over"), u"a text that is cut");
    get<toolkit::CControlUI>(u"Over").SetText(u"x");
    EXPECT_EQ(tipOver(u"Over"), u"Below");
    EXPECT_EQ(tipOver(u"Off"), u"Not now") << "a disabled control still explains itself";
}

TEST_F(ToolTips, GoWithPressKeyPointerAndControl) {
    open(R"(<Button name="Go" pos="0,0,80,25" tooltip="Go on"/>)");
    auto& tip = window().GetPaintManager().toolTip();
    constexpr platform::Point kAway{300, 200};
    const std::function<void()> ends[] = {
        [&] { driver().click(u"Go"); },
        [&] { driver().press(platform::Key::tab); },
        [&] { driver().hover(kAway); },
        [&] { driver().wheel(kAway, 1); },
        [&] { driver().send(platform::EventKind::mouseLeave, {}); },
        [&] {
            root().SetVisible(false);
            root().SetVisible(true);
        },
        [&] { root().RemoveAll(); },
    };
    for (const auto& end : ends) {
        ASSERT_EQ(tipOver(u"Go"), u"Go on");
        end();
        EXPECT_EQ(tip.shownText(), u"");
    }
}

TEST_F(ToolTips, AppearByThemselvesWhenThePointerRests) {
    open(R"(<Default class="ToolTip" bkcolor="#FF112233" textcolor="#FFFFFFFF" height="30"/>
            <Button name="Go" pos="0,0,80,25" tooltip="Go on"/>)");
    driver().hover(u"Go");
    auto& tip = window().GetPaintManager().toolTip();
    EXPECT_EQ(tip.shownText(), u"") << "not at once";
    ASSERT_TRUE(test::pumpUntil([&] { return !tip.shownText().empty(); }));
    EXPECT_EQ(tip.native()->geometry().height(), 30);
    EXPECT_EQ(tip.native()->picture().snapshot().at(1, 1), 0xFF112233U);
    EXPECT_EQ(tip.native()->geometry().top, driver().native().geometry().top + 12 + 20);
}
