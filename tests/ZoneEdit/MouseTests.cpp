// The four point tools, by real mouse events on the picture.
#include <string>
#include <vector>

#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "zone/Zone.h"

namespace {

using platform::EventKind;
using platform::Point;
using test::isChecked;
using Points = std::vector<Point>;

class ZoneEditMouse : public test::ZoneEditTest {
protected:
    void start(int frames = 20) {
        makeClip(frames);
        show();
        addZone();
    }
    void down(Point point) { test::input().mouse(m_driver->native(), EventKind::mouseDown, point); }
    void move(Point point) {
        test::input().mouse(m_driver->native(), EventKind::mouseMove, point,
                            platform::MouseButton::none);
    }
    void up(Point point) {
        test::input().mouse(m_driver->native(), EventKind::mouseUp, point);
        test::pump();
    }
    void goTo(const std::u16string& frame) { m_driver->enter(u"EditCurrentFrame", frame); }
    int selected() { return zones().zone(0)->selectedPoint(); }
    /// None of its points is chosen.
    void drawTriangle() {
        ZoneEditTest::drawTriangle();
        clickPicture(1000, 600);
        ASSERT_EQ(selected(), -1);
    }
};

TEST_F(ZoneEditMouse, AddOneAddsOnePointAndGoesBackToMove) {
    start();
    chooseTool(u"OptionAddPoint");
    clickPicture(100, 120);
    EXPECT_EQ(points(0, 0), (Points{{100, 120}}));
    EXPECT_EQ(points(0, 19), (Points{{100, 120}})) << "every frame has it";
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    EXPECT_FALSE(isChecked(*m_driver, u"OptionAddPoint"));
    clickPicture(500, 500);
    EXPECT_EQ(points(0, 0).size(), 1U);
    EXPECT_EQ(selected(), -1) << "the next click chooses";
    // The new point follows the button that stays down.
    chooseTool(u"OptionAddPoint");
    m_driver->drag({at(200, 120), at(210, 130), at(250, 180)});
    EXPECT_EQ(points(0, 0), (Points{{100, 120}, {250, 180}}));
    EXPECT_EQ(selected(), 1);
}

TEST_F(ZoneEditMouse, AddManyAddsAPointForEachClickAndDragsNone) {
    start();
    chooseTool(u"OptionAddMultiPoint");
    clickPicture(100, 100);
    m_driver->drag({at(200, 100), at(250, 150)});
    m_driver->doubleClick(at(300, 300));
    EXPECT_EQ(points(0, 0), (Points{{100, 100}, {200, 100}, {300, 300}, {300, 300}}));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionAddMultiPoint"));
}

TEST_F(ZoneEditMouse, PointsGoInBehindTheChosenOne) {
    start();
    drawTriangle();
    clickPicture(100, 100);
    EXPECT_EQ(selected(), 0);
    chooseTool(u"OptionAddPoint");
    clickPicture(150, 250);
    EXPECT_EQ(points(0, 5), (Points{{100, 100}, {150, 250}, {300, 100}, {200, 400}}));
    EXPECT_EQ(selected(), 1);
}

TEST_F(ZoneEditMouse, MoveDragsAPointAndLaterFramesFollow) {
    start();
    drawTriangle();
    goTo(u"10");
    m_driver->drag({at(302, 97), at(320, 110), at(350, 140)});
    EXPECT_EQ(points(0, 9)[1], (Point{300, 100})) << "earlier frames never change";
    EXPECT_EQ(points(0, 10)[1], (Point{350, 140}));
    EXPECT_EQ(points(0, 19)[1], (Point{350, 140}));
    m_driver->click(u"OptionProgressChanges");
    m_driver->drag({at(350, 140), at(400, 200)});
    EXPECT_EQ(points(0, 10)[1], (Point{400, 200}));
    EXPECT_EQ(points(0, 11)[1], (Point{350, 140}));
}

TEST_F(ZoneEditMouse, TheCentreHandleDragsTheWholeZone) {
    start();
    drawTriangle(); // its centre is (200, 200)
    goTo(u"4");
    m_driver->drag({at(200, 200), at(210, 220), at(240, 260), at(260, 230)});
    EXPECT_EQ(points(0, 4), (Points{{160, 130}, {360, 130}, {260, 430}}));
    EXPECT_EQ(points(0, 19), (Points{{160, 130}, {360, 130}, {260, 430}}));
    EXPECT_EQ(points(0, 3), (Points{{100, 100}, {300, 100}, {200, 400}}));
    EXPECT_EQ(selected(), 3);
}

TEST_F(ZoneEditMouse, ADragOutsideThePictureMovesNothing) {
    start();
    drawTriangle();
    const Point outside{600, 790};
    down(at(300, 100));
    move(at(310, 110));
    move(outside);
    move({-20, 300});
    up(outside);
    EXPECT_EQ(points(0, 0)[1], (Point{310, 110}));
    // The button is up: later moves belong to nobody.
    move(at(500, 500));
    test::pump();
    EXPECT_EQ(points(0, 0)[1], (Point{310, 110}));
}

TEST_F(ZoneEditMouse, DeleteTakesThePointUnderTheMouseOnEveryFrameThatHasOneThere) {
    start();
    drawTriangle();
    m_driver->click(u"OptionProgressChanges");
    goTo(u"3");
    m_driver->drag({at(300, 100), at(600, 300)});
    goTo(u"10");
    chooseTool(u"OptionDeletePoint");
    clickPicture(300, 100);
    EXPECT_EQ(points(0, 3), (Points{{100, 100}, {600, 300}, {200, 400}})) << "it lies elsewhere";
    EXPECT_EQ(points(0, 0), (Points{{100, 100}, {200, 400}}));
    EXPECT_EQ(points(0, 19), (Points{{100, 100}, {200, 400}}));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionDeletePoint"));
    // No capture: a move changes nothing.
    m_driver->drag({at(100, 100), at(150, 150)});
    EXPECT_EQ(points(0, 0), (Points{{200, 400}}));
}

TEST_F(ZoneEditMouse, ClicksOutsideThePictureOrWithoutAZoneDoNothing) {
    makeClip(5);
    show();
    chooseTool(u"OptionAddPoint");
    clickPicture(100, 100);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionAddPoint"));
    addZone();
    m_driver->click(Point{600, 10});
    m_driver->click(Point{690, 790});
    for (const auto button : {platform::MouseButton::right, platform::MouseButton::middle}) {
        test::input().mouse(m_driver->native(), EventKind::mouseDown, at(100, 100), button);
        test::input().mouse(m_driver->native(), EventKind::mouseUp, at(100, 100), button);
    }
    test::pump();
    EXPECT_TRUE(points(0, 0).empty());
    EXPECT_TRUE(isChecked(*m_driver, u"OptionAddPoint"));
    clickPicture(0, 0);
    EXPECT_EQ(points(0, 0), (Points{{0, 0}}));
    chooseTool(u"OptionAddPoint");
    clickPicture(1279, 719);
    EXPECT_EQ(points(0, 0), (Points{{0, 0}, {1279, 719}}));
}

TEST_F(ZoneEditMouse, ALostCaptureEndsTheDrag) {
    start();
    drawTriangle();
    down(at(300, 100));
    move(at(310, 110));
    test::pump();
    platform::Event lost;
    lost.kind = EventKind::captureLost;
    m_window->HandleMessage(lost);
    move(at(400, 400));
    test::pump();
    EXPECT_EQ(points(0, 0)[1], (Point{310, 110}));
    up(at(400, 400));
    EXPECT_EQ(points(0, 0)[1], (Point{310, 110}));
}

TEST_F(ZoneEditMouse, AClickOnThePictureTakesANameFirst) {
    start();
    chooseTool(u"OptionAddPoint");
    test::typeInto(*m_driver, u"EditZone", u"Door");
    clickPicture(100, 100);
    EXPECT_EQ(zones().getZoneName(0), "Door");
    EXPECT_EQ(points(0, 0), (Points{{100, 100}}));
    EXPECT_EQ(m_driver->focusName(), u"");
}

TEST_F(ZoneEditMouse, TheZoneIsDrawnOverThePictureAtOnce) {
    start();
    drawTriangle();
    const auto pixel = [&](int x, int y) { return m_driver->pixel(at(x, y)) & 0xFFFFFFU; };
    EXPECT_EQ(pixel(160, 100), 0xFF0000U) << "the line between the first two points";
    EXPECT_EQ(pixel(104, 104), 0xFFFFFFU) << "a point that is not chosen";
    clickPicture(100, 100);
    EXPECT_EQ(pixel(104, 104), 0xFFFF00U) << "the chosen point";
    EXPECT_EQ(pixel(160, 100), 0xFFFF00U) << "and the line behind it";
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(pixel(160, 100), 0xC0C000U) << "not active on this frame";
    addZone();
    EXPECT_NE(pixel(104, 104), 0xFFFF00U) << "only the current zone is drawn";
}

TEST_F(ZoneEditMouse, ADragOverAHundredThousandFramesWritesNothingToTheLog) {
    support::ClipSpec spec;
    spec.frames = 100'000;
    spec.isEmpty = [](int frame) { return frame % 1000 != 0; };
    makeClip(spec);
    show();
    addZone();
    drawTriangle();
    const auto before = m_log.errors();
    std::vector<Point> way;
    for (int i = 0; i < 200; ++i) {
        way.push_back(at(300 + i, 100 + i % 50));
    }
    m_driver->drag(way);
    EXPECT_EQ(points(0, 0)[1], (Point{499, 149}));
    EXPECT_EQ(points(0, 99'999)[1], (Point{499, 149}));
    EXPECT_EQ(m_log.errors(), before);
}

} // namespace
