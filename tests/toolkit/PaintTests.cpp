// What is painted, how much of it, and what the state of a control does to it.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "tests/toolkit/ToolkitTest.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"

using namespace toolkit_test;
using platform::EventKind;
using platform::Rect;

namespace {

/// Notes the dirty rectangle of each paint.
class Canary : public toolkit::CControlUI {
public:
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override {
        paints.push_back(dirty);
        canvas.fillRect(GetPos(), 0xFF00FF00);
    }
    [[nodiscard]] bool PaintsWhole() const override { return whole; }
    std::vector<Rect> paints;
    bool whole = false;
};

class Paint : public ToolkitTest {
protected:
    Canary& addCanary(const Rect& place) {
        auto* canary = root().AddNew<Canary>();
        canary->SetPlace(place);
        static_cast<void>(driver().picture());
        canary->paints.clear();
        return *canary;
    }
    void repaint() {
        driver().native().picture().repaintNow();
        test::pump();
    }
};

} // namespace

TEST_F(Paint, ReachesOnlyWhatChanged) {
    open(R"(<Button name="Go" pos="0,0,80,25"/><Combo name="Combo" pos="0,30,80,20">
            <ListLabelElement text="old"/></Combo>)");
    Canary& far = addCanary({200, 200, 250, 250});
    Canary& near = addCanary({70, 0, 120, 50});
    repaint();
    far.paints.clear();
    near.paints.clear();
    get<toolkit::CButtonUI>(u"Go").SetText(u"new");
    repaint();
    EXPECT_TRUE(far.paints.empty());
    ASSERT_EQ(near.paints.size(), 1U);
    EXPECT_EQ(near.paints[0].intersected(near.GetPos()), (Rect{70, 0, 80, 25}));
    near.Invalidate();
    near.Invalidate();
    repaint();
    EXPECT_EQ(near.paints.size(), 2U) << "two requests, one paint";
    near.paints.clear();
    get<toolkit::CComboUI>(u"Combo").GetItemAt(0)->SetText(u"new");
    repaint();
    EXPECT_EQ(near.paints.size(), 1U) << "an item shows in the box of its combo";
    near.whole = true;
    near.paints.clear();
    get<toolkit::CButtonUI>(u"Go").SetText(u"newer");
    repaint();
    ASSERT_FALSE(near.paints.empty());
    EXPECT_EQ(near.paints.front(), near.GetPos()) << "a control that paints whole";
}

TEST_F(Paint, LeavesHiddenControlsAndWhatTheyCoverAlone) {
    open(R"(<Control pos="0,0,50,50" bkcolor="#FF0000FF"/>
            <Control name="Cover" pos="0,0,50,50" bkcolor="#FFFF0000"/>)");
    EXPECT_EQ(driver().pixel({10, 10}), 0xFFFF0000);
    driver().get(u"Cover").SetVisible(false);
    EXPECT_EQ(driver().pixel({10, 10}), 0xFF0000FF);
}

TEST_F(Paint, DrawsBordersInsideAndTheWindowsFrameBelowItsControls) {
    open(
        R"(<Control pos="10,10,20,20" bkcolor="#FF0000FF" bordercolor="#FFFF0000" bordersize="1,2,3,4"/>
            <Control pos="0,100,400,20" bkcolor="#FF00FF00"/>)",
        "bkcolor=\"#FFFFFFFF\" bordercolor=\"#FF8A97A5\" bordersize=\"1\"");
    const platform::Bitmap picture = driver().picture();
    const std::tuple<int, int, std::uint32_t> points[] = {
        {10, 20, 0xFFFF0000}, {11, 20, 0xFF0000FF},  {20, 11, 0xFFFF0000},  {20, 12, 0xFF0000FF},
        {27, 20, 0xFFFF0000}, {26, 20, 0xFF0000FF},  {20, 26, 0xFFFF0000},  {20, 25, 0xFF0000FF},
        {0, 50, 0xFF8A97A5},  {399, 50, 0xFF8A97A5}, {50, 299, 0xFF8A97A5}, {1, 1, 0xFFFFFFFF},
        {0, 110, 0xFF00FF00}};
    for (const auto& [x, y, color] : points) {
        EXPECT_EQ(picture.at(x, y), color) << x << "," << y;
    }
}

TEST_F(Paint, RoundsTheCornersOfAFillThatHasARadius) {
    open(R"(<Control pos="10,10,20,20" bkcolor="#FF0000FF" bkradius="6"/>)",
         "bkcolor=\"#FFFFFFFF\"");
    const platform::Bitmap picture = driver().picture();
    for (const platform::Point at : {platform::Point{10, 10}, {29, 10}, {10, 29}, {29, 29}}) {
        EXPECT_EQ(picture.at(at.x, at.y), 0xFFFFFFFF) << at.x << "," << at.y;
    }
    for (const platform::Point at : {platform::Point{10, 20}, {20, 10}, {29, 20}, {20, 20}}) {
        EXPECT_EQ(picture.at(at.x, at.y), 0xFF0000FF) << at.x << "," << at.y;
    }
}

TEST_F(Paint, RoundsTheCornersOfABorderOfABoxWithARadius) {
    open(R"(<Control pos="10,10,20,20" bkradius="6" bordercolor="#FFFF0000" bordersize="2"/>)",
         "bkcolor=\"#FFFFFFFF\"");
    const platform::Bitmap picture = driver().picture();
    for (const platform::Point at : {platform::Point{10, 10}, {29, 10}, {10, 29}, {29, 29}}) {
        EXPECT_EQ(picture.at(at.x, at.y), 0xFFFFFFFF) << at.x << "," << at.y;
    }
    for (const int along : {20, 23}) {
        for (const int edge : {10, 11, 28, 29}) {
            EXPECT_EQ(picture.at(edge, along), 0xFFFF0000) << edge << "," << along;
            EXPECT_EQ(picture.at(along, edge), 0xFFFF0000) << along << "," << edge;
        }
        for (const int beside : {9, 12, 27, 30}) {
            EXPECT_EQ(picture.at(beside, along), 0xFFFFFFFF) << beside << "," << along;
        }
    }
}

TEST_F(Paint, ShowsTheStateOfButtonsAndOptions) {
    std::string look;
    std::uint32_t color = 0xFF000000;
    for (const std::string state :
         {"normal", "hot", "pushed", "disabled", "selected", "selectedhot"}) {
        support::writeBytes("UI/" + state + ".bmp", bmp(2, 2, ++color));
        look += state + "image=\"" + state + ".bmp\" ";
    }
    support::writeBytes("UI/Icons.txt",
                        "scale 100 x -1\ntint t #000011 #000012 #000013 #000014 #000015\n"
                        "icon Dot 0 0 2\r\nicon Bad 0 -1 2\nicon\ntint\n\n");
    support::writeBytes("UI/Icons100.png", bmp(2, 2, 0xFFFFFFFF));
    open("<Option name=\"Check\" pos=\"0,0,80,25\" icon=\"Dot\" icontint=\"t\" " + look + "/>");
    auto& check = get<toolkit::COptionUI>(u"Check");
    constexpr platform::Point kAway{300, 200};
    const std::tuple<const char*, std::function<void()>, std::uint32_t, std::uint32_t> cases[] = {
        {"normal", [&] { driver().hover(kAway); }, 1, 1},
        {"hot", [&] { driver().hover(u"Check"); }, 2, 2},
        {"pushed",
         [&] {
             driver().send(EventKind::mouseDown, {40, 12});
         },
         3, 3},
        {"held, the pointer outside", [&] { driver().send(EventKind::mouseMove, kAway); }, 2, 2},
        {"released outside", [&] { driver().send(EventKind::mouseUp, kAway); }, 1, 1},
        {"selected", [&] { check.Selected(true); }, 5, 5},
        {"selected and hot", [&] { driver().hover(u"Check"); }, 6, 5},
        {"disabled", [&] { check.SetEnabled(false); }, 4, 4},
        {"enabled below the pointer",
         [&] {
             check.SetEnabled(true);
             driver().hover(platform::Point{41, 13});
         },
         6, 5},
    };
    for (const auto& [what, act, face, icon] : cases) {
        act();
        EXPECT_EQ(driver().pixel({5, 5}), 0xFF000000 + face) << what;
        EXPECT_EQ(driver().pixel({39, 12}), 0xFF000010 + icon) << what;
    }
}

TEST_F(Paint, TakesImagesAsTheyWereDrawnForTheScale) {
    support::writeBytes("UI/Icons.txt", "scale 100 200\nimage Face.bmp 2 0 2 2\ncolor ink #010203\n"
                                        "color hint grey\ncolor none #040506\n");
    support::writeBytes("UI/Icons200.png", bmp(8, 4, 0xFF0000B2));
    support::writeBytes("UI/Face.bmp", bmp(2, 2, 0xFF0000A1));
    open("<Control pos=\"0,0,80,25\" bkimage=\"file='Face.bmp' corner='1,1,1,1'\" />");
    EXPECT_EQ(driver().pixel({0, 0}), 0xFF0000A1);
    const toolkit::Palette& colors = driver().manager().look().palette();
    EXPECT_EQ(colors[toolkit::Tone::ink], 0xFF010203);
    EXPECT_EQ(colors[toolkit::Tone::hint], 0xFF596675) << "the default skin's";
    test::gui().windows().setZoom(2);
    EXPECT_EQ(driver().pixel({159, 49}), 0xFF0000B2);
    test::gui().windows().setZoom(1);
}

TEST_F(Paint, ShowsSelectedAndHotRows) {
    open(R"(<List name="List" pos="0,0,100,100" itemheight="20" itembkcolor="#FF000001"
        itemhotbkcolor="#FF000002" itemselectedbkcolor="#FF000003" itemlinecolor="#FF000004"
        itemselectedlinecolor="#FF000005">
        <ListContainerElement name="A" height="20"><Label pos="0,0,50,10"/></ListContainerElement>
        <ListContainerElement name="B" height="20"/><ListLabelElement/></List>)");
    const auto pixels = [&] {
        const platform::Bitmap p = driver().picture();
        return std::array{p.at(90, 5), p.at(90, 19), p.at(90, 25), p.at(90, 45)};
    };
    driver().hover(platform::Point{200, 200});
    EXPECT_EQ(pixels(), (std::array{0xFF000001, 0xFF000004, 0xFF000001, 0xFF000001}));
    driver().hover(platform::Point{5, 5});
    EXPECT_EQ(pixels()[0], 0xFF000002) << "also while the pointer is on a control of the row";
    driver().click(u"A");
    driver().hover(platform::Point{50, 45});
    EXPECT_EQ(pixels(), (std::array{0xFF000003, 0xFF000005, 0xFF000001, 0xFF000002}));
}

TEST(FittedText, EndsInAnEllipsisBetweenWholeCharacters) {
    const platform::FontSet& fonts = test::gui().fonts();
    const std::u16string text = u"Branch \U0001F600\U0001F600\U0001F600 and more";
    for (int width = 0; width < 300; ++width) {
        const std::u16string fitted = toolkit::fittedText(text, width, 0, fonts);
        ASSERT_LE(fonts.measure(fitted, 0).width, width);
        if (fitted == text || fitted.empty()) {
            continue;
        }
        ASSERT_EQ(fitted.back(), u'\u2026');
        ASSERT_TRUE(text.starts_with(fitted.substr(0, fitted.size() - 1)));
        ASSERT_TRUE(fitted.size() < 2 || (fitted[fitted.size() - 2] & 0xFC00) != 0xD800);
    }
    EXPECT_EQ(toolkit::fittedText(u"", 0, 0, fonts), u"");
    const std::u16string marks(1'000'000, u'\u0301');
    EXPECT_LT(toolkit::fittedText(u"e" + marks, 100, 0, fonts).size(), 1000U) << "nor measured";
}

TEST_F(Paint, UnknownFontsAreTheDefaultFont) {
    open(R"(<Font size="40"/>)");
    const auto& manager = window().GetPaintManager();
    EXPECT_NE(manager.look().GetFont(0), 0);
    EXPECT_EQ(manager.look().GetFont(-1) + manager.look().GetFont(1) + manager.look().GetFont(1000),
              0);
}
