// Drags with Ctrl and Shift, and keys for the tools, by real events: in the whole picture, zoomed
// in, and on a screen of another scale.
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "ZoneEdit/Timeline.h"
#include "tests/ZoneEdit/GestureFixture.h"
#include "video/PictureView.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Modifiers;
using platform::Point;
using test::isChecked;
using test::kBoth;
using test::kControl;
using test::kShift;
using test::Points;

class ZoneEditGesture : public test::ZoneGestureTest {};

TEST_F(ZoneEditGesture, CtrlDrawsRectanglesScalesAndTurnsWhateverTheZoomAndTheScreen) {
    for (const double enlarged : {1.0, 2.0}) {
        m_gui.windows().setZoom(enlarged);
        for (const char16_t* tool : {u"", u"200"}) {
            show(5, 1);
            if (*tool != 0) {
                m_driver->pick(u"ComboZoom", 3);
            }
            m_driver->click(u"OptionAddMultiPoint");
            const Point from = on(560, 400);
            const Point to = on(460, 320);
            drag({from, {from.x - 20, from.y - 3}, to}, kControl);
            const Point low = hit(from);
            const Point high = hit(to);
            const Points drawn{high, {low.x, high.y}, low, {high.x, low.y}};
            EXPECT_EQ(points(0, 0), drawn) << "from the upper left onwards";
            EXPECT_EQ(points(0, 4), drawn);
            EXPECT_EQ(lastStep(), "rectangle");
            drag({on(520, 250), {on(520, 250).x + 3, on(520, 250).y}}, kControl);
            ASSERT_EQ(points(0, 0).size(), 5U) << "a click";
            m_driver->press(Key::z, kControl);

            m_driver->click(u"OptionMovePoint");
            const Point centre = on((low.x + high.x) / 2, (low.y + high.y) / 2);
            drag({{centre.x + 60, centre.y}, {centre.x + 70, centre.y}, {centre.x, centre.y - 120}},
                 kControl);
            const int width = low.x - high.x;
            EXPECT_NEAR(points(0, 4)[1].x - points(0, 4)[0].x, 2 * width, 4);
            EXPECT_NEAR(points(0, 4)[0].x, high.x - width / 2, 4) << "about its centre";
            EXPECT_EQ(lastStep(), "scale");
            m_driver->press(Key::z, kControl);
            EXPECT_EQ(points(0, 0), drawn);

            drag({{centre.x + 60, centre.y}, {centre.x, centre.y + 90}}, kBoth);
            EXPECT_NEAR(points(0, 0)[0].x - points(0, 0)[1].x, 0, 4) << "a quarter, clockwise";
            EXPECT_NEAR(points(0, 0)[1].y - points(0, 0)[0].y, width, 4);
            EXPECT_EQ(lastStep(), "rotate");
        }
    }
}

TEST_F(ZoneEditGesture, TheOthersWorkAlikeWhateverTheZoomAndTheScreen) {
    for (const double enlarged : {1.0, 2.0}) {
        m_gui.windows().setZoom(enlarged);
        for (const int zoom : {0, 3}) { // all of it; 200 %
            show(9, 1);
            m_driver->pick(u"ComboZoom", zoom);
            drawSquare(500, 300, 80);
            m_driver->manager().SetFocus(nullptr);
            drag({on(500, 300), on(520, 302), on(530, 306)}, kShift);
            EXPECT_EQ(points(0, 8)[0], (Point{530, 300}));
            m_driver->doubleClick(on(580, 340));
            EXPECT_EQ(points(0, 8)[2], (Point{580, 340}));
            m_driver->press(Key::right, kBoth);
            EXPECT_EQ(points(0, 8)[2], (Point{590, 340}));
            m_driver->press(Key::del);
            EXPECT_EQ(points(0, 8).size(), 4U);

            addZone();
            m_driver->click(u"OptionMovePoint");
            drag({on(560, 340)}, kControl);
            EXPECT_EQ(editing().currentZone, 0) << "a click into another zone";
            press(Key::n);
            EXPECT_EQ(editing().currentZone, 1);
            press(Key::z); // outlines of all zones, with their names
            m_driver->click(Point{on(500, 300).x + 8, on(500, 300).y - 10});
            EXPECT_EQ(editing().currentZone, 0) << "its name";
            press(Key::n);
            m_driver->click(u"OptionAddMultiPoint");
            m_driver->doubleClick(Point{on(500, 300).x + 8, on(500, 300).y - 10});
            EXPECT_EQ(editing().currentZone, 0);
            EXPECT_EQ(points(0, 8).size(), 4U) << "the second click of two is no tool's";
            m_driver->click(u"OptionMovePoint");
            press(Key::z);

            const auto& line = m_driver->get<zoneedit::Timeline>(u"Timeline");
            const auto onLine = [&line](int frame) {
                return Point{static_cast<int>(std::lround(line.scale().xOf(frame))),
                             line.GetPos().bottom - 6};
            };
            drag({onLine(2), onLine(4), onLine(5)}, kShift);
            EXPECT_EQ(m_driver->textOf(u"EditRangeFrom"), u"2");
            EXPECT_EQ(m_driver->textOf(u"EditRangeTo"), u"5");
            m_driver->press(Key::escape);
            m_driver->click(onLine(7));
            EXPECT_EQ(frameText(), u"7");
            test::input().wheel(m_driver->native(), onLine(3), -120);
            test::pump();
            EXPECT_EQ(frameText(), u"8");
        }
    }
}

TEST_F(ZoneEditGesture, KeysWorkAlikeWhateverTheZoomAndTheScreen) {
    for (const double enlarged : {1.0, 2.0}) {
        m_gui.windows().setZoom(enlarged);
        for (const int zoom : {0, 3}) { // all of it; 200 %
            show(21, 1);
            m_driver->pick(u"ComboZoom", zoom);
            drawSquare();
            const Points square = points(0, 0);
            const std::pair<Key, const char16_t*> choices[] = {
                {Key::digit2, u"OptionAddPoint"},
                {Key::digit4, u"OptionDeletePoint"},
                {Key::digit3, u"OptionAddMultiPoint"},
                {Key::enter, u"OptionMovePoint"},
                {Key::o, u"CheckOnion"},
                {Key::l, u"CheckLoupe"}};
            for (const auto& [key, option] : choices) {
                press(key);
                EXPECT_TRUE(isChecked(*m_driver, option));
            }
            press(Key::o);
            press(Key::l);
            press(Key::a);
            EXPECT_FALSE(zones().isActive(0, 20));
            m_driver->press(Key::c, kControl);
            goTo(10);
            drag({on(540, 340), on(560, 350), on(580, 340)}, {});
            EXPECT_EQ(points(0, 10)[0], (Point{540, 300}));
            goTo(5);
            press(Key::i);
            EXPECT_EQ(points(0, 5)[0], (Point{520, 300}));
            m_driver->press(Key::i, kShift);
            drag({on(560, 340), on(560, 360)}, {});
            EXPECT_EQ(points(0, 5)[0], (Point{520, 320}));
            EXPECT_EQ(points(0, 1)[0], (Point{504, 304}));
            m_driver->press(Key::i, kShift);
            goTo(12);
            m_driver->manager().SetFocus(nullptr);
            m_driver->press(Key::v, kControl);
            EXPECT_EQ(points(0, 12), square);
            press(Key::space);
            EXPECT_EQ(m_driver->get(u"ButtonPlayVideo").accessibleName(), u"Pause");
            m_driver->press(Key::escape);
            EXPECT_EQ(m_driver->get(u"ButtonPlayVideo").accessibleName(), u"Play");
        }
    }
}

TEST_F(ZoneEditGesture, ADragWithCtrlTellsItsMeasureAndEscTakesItBack) {
    show(5, 1);
    drawSquare();
    const Points square = points(0, 0);
    const std::size_t steps = m_window->session().history().size();
    const struct {
        Modifiers held;
        Point to;
        const char16_t* measure;
        const char16_t* hint;
        platform::PointerShape shape;
    } cases[] = {
        {kControl,
         {690, 340},
         u"150 %",
         u"Drag: scale about the centre",
         platform::PointerShape::scale},
        {kBoth,
         {540, 440},
         u"90°",
         u"Drag: rotate about the centre",
         platform::PointerShape::rotate},
    };
    for (const auto& c : cases) {
        mouse(EventKind::mouseDown, on(640, 340), c.held);
        mouse(EventKind::mouseMove, on(c.to.x, c.to.y), c.held);
        EXPECT_EQ(hint(), c.hint);
        EXPECT_EQ(m_driver->manager().mouse().shape(), c.shape);
        EXPECT_EQ(m_driver->textOf(u"LabelGesture"), c.measure);
        EXPECT_EQ(m_driver->get(u"LabelGesture").GetPos().topLeft(),
                  (Point{on(c.to.x, c.to.y).x + 20, on(c.to.x, c.to.y).y + 10}));
        EXPECT_NE(points(0, 0), square);
        // The left edge of the shape before: a dash, and a gap behind it.
        EXPECT_EQ(m_driver->pixel(on(500, 378)) & 0xFFFFFFU, 0xFFFFFFU);
        m_driver->press(Key::escape);
        EXPECT_EQ(points(0, 0), square);
        EXPECT_FALSE(isVisible(u"LabelGesture"));
        mouse(EventKind::mouseMove, on(700, 400), c.held);
        mouse(EventKind::mouseUp, on(700, 400), c.held);
        EXPECT_EQ(points(0, 0), square);
    }
    mouse(EventKind::mouseDown, on(500, 300), {});
    mouse(EventKind::mouseMove, on(510, 310), {});
    m_driver->press(Key::escape);
    mouse(EventKind::mouseUp, on(510, 310), {});
    EXPECT_EQ(points(0, 0), square) << "a point's drag as well";
    EXPECT_EQ(m_window->session().history().size(), steps);
}

TEST_F(ZoneEditGesture, ShiftKeepsADragOnItsAxisWhileItIsHeld) {
    show(5, 1);
    drawSquare();
    mouse(EventKind::mouseDown, on(503, 302), {});
    mouse(EventKind::mouseMove, on(560, 320), kShift);
    EXPECT_EQ(hint(), u"Straight across or down");
    EXPECT_EQ(points(0, 0)[0], (Point{560, 300}));
    mouse(EventKind::mouseMove, on(510, 380), kShift);
    EXPECT_EQ(points(0, 0)[0], (Point{500, 380}));
    mouse(EventKind::mouseMove, on(511, 381), {});
    EXPECT_EQ(points(0, 0)[0], (Point{511, 381}));
    mouse(EventKind::mouseUp, on(511, 381), {});
    EXPECT_EQ(hint(), u"Ctrl: scale, Ctrl + Shift: rotate");
    m_driver->click(u"OptionAddPoint"); // a new point is dragged at once
    mouse(EventKind::mouseDown, on(700, 500), {});
    mouse(EventKind::mouseMove, on(760, 520), kShift);
    mouse(EventKind::mouseUp, on(760, 520), kShift);
    EXPECT_EQ(points(0, 0)[static_cast<std::size_t>(selected())], (Point{760, 500}));
}

TEST_F(ZoneEditGesture, ADragWithCtrlEndsOnTheFrameItBeganOn) {
    show(5, 1);
    drawSquare();
    m_driver->click(u"OptionProgressChanges");
    m_driver->click(on(500, 300)); // a chosen point, which is not moved instead
    mouse(EventKind::mouseDown, on(640, 340), kControl);
    mouse(EventKind::mouseMove, on(690, 340), kControl);
    const Points scaled = points(0, 0);
    const Points square = points(0, 1);
    ASSERT_NE(scaled, square);
    m_driver->press(Key::right);
    mouse(EventKind::mouseMove, on(720, 340), kControl);
    mouse(EventKind::mouseMove, on(740, 340), kControl);
    mouse(EventKind::mouseUp, on(740, 340), kControl);
    EXPECT_EQ(points(0, 0), scaled);
    EXPECT_EQ(points(0, 1), square);
}

TEST_F(ZoneEditGesture, ARectangleIsDrawnWhereItBeganOrNowhere) {
    show(5, 2);
    m_driver->click(u"OptionAddMultiPoint");
    const std::size_t steps = m_window->session().history().size();
    mouse(EventKind::mouseDown, on(500, 300), kControl);
    mouse(EventKind::mouseMove, on(540, 340), kControl);
    m_driver->press(Key::z, kControl); // would take the second zone back
    ASSERT_EQ(zones().zoneCount(), 2);
    mouse(EventKind::mouseMove, on(580, 380), kControl);
    mouse(EventKind::mouseUp, on(580, 380), kControl);
    EXPECT_EQ(points(1, 4).size(), 4U);
    EXPECT_EQ(m_window->session().history().size(), steps + 1);
    for (const bool moves : {false, true}) {
        for (const Key elsewhere : {Key::n, Key::right}) {
            mouse(EventKind::mouseDown, on(600, 300), kControl);
            mouse(EventKind::mouseMove, on(640, 340), kControl);
            press(elsewhere);
            if (moves) {
                mouse(EventKind::mouseMove, on(680, 380), {});
            }
            mouse(EventKind::mouseUp, on(680, 380), {});
            EXPECT_FALSE(isVisible(u"LabelGesture"));
            EXPECT_TRUE(points(0, 0).empty());
            EXPECT_EQ(points(1, 0).size(), 4U);
        }
    }
    EXPECT_EQ(m_window->session().history().size(), steps + 1);
}

TEST_F(ZoneEditGesture, ADragWithCtrlKeepsThePlaceOfItsPressWhileTheWheelZooms) {
    show(5, 1);
    const auto zoomIn = [this](Point about) {
        test::input().wheel(m_driver->native(), about, 240, kControl);
        test::pump();
    };
    m_driver->click(u"OptionAddMultiPoint");
    mouse(EventKind::mouseDown, on(500, 300), kControl);
    mouse(EventKind::mouseMove, on(540, 340), kControl);
    zoomIn(on(540, 340));
    ASSERT_GT(view().scale, 1);
    mouse(EventKind::mouseMove, on(580, 380), kControl);
    mouse(EventKind::mouseUp, on(580, 380), kControl);
    EXPECT_EQ(points(0, 0), (Points{{500, 300}, {580, 300}, {580, 380}, {500, 380}}));

    m_driver->click(u"OptionMovePoint");
    m_driver->pick(u"ComboZoom", 0);
    m_driver->click(on(700, 300)); // no point is chosen
    mouse(EventKind::mouseDown, on(640, 340), kControl);
    mouse(EventKind::mouseMove, on(650, 340), kControl);
    zoomIn(on(650, 340));
    mouse(EventKind::mouseMove, on(690, 340), kControl);
    mouse(EventKind::mouseUp, on(690, 340), kControl);
    EXPECT_EQ(points(0, 0), (Points{{480, 280}, {600, 280}, {600, 400}, {480, 400}}));
}

TEST_F(ZoneEditGesture, ToolsAndTheActiveFlagHaveKeysUnlessTheyAreTyped) {
    show(5, 1);
    const std::pair<Key, const char16_t*> tools[] = {{Key::digit2, u"OptionAddPoint"},
                                                     {Key::digit3, u"OptionAddMultiPoint"},
                                                     {Key::digit4, u"OptionDeletePoint"},
                                                     {Key::digit1, u"OptionMovePoint"}};
    for (const auto& [key, option] : tools) {
        m_driver->press(key);
        EXPECT_TRUE(isChecked(*m_driver, option));
    }
    m_driver->press(Key::a);
    EXPECT_FALSE(zones().zone(0)->isActive(0));
    EXPECT_EQ(lastStep(), "active");
    m_driver->press(Key::a);
    EXPECT_TRUE(zones().zone(0)->isActive(0));
    m_driver->click(u"EditZone");
    m_driver->press(Key::digit4);
    m_driver->press(Key::a);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    EXPECT_TRUE(zones().zone(0)->isActive(0));
}

} // namespace
