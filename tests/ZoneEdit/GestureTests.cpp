// Drags with Ctrl and Shift, double-clicks and keys that edit points, by real events: in the whole
// picture, zoomed in, and on a screen of another scale.
#include <climits>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ZoneEdit/Timeline.h"
#include "core/EditorSettings.h"
#include "core/Text.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/Scale.h"
#include "zone/StepLabel.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Modifiers;
using platform::Point;
using test::isChecked;
using Points = std::vector<Point>;

constexpr Modifiers kControl{.control = true};
constexpr Modifiers kShift{.shift = true};
constexpr Modifiers kBoth{.shift = true, .control = true};

class ZoneEditGesture : public test::ZoneEditTest {
protected:
    ~ZoneEditGesture() override { m_gui.windows().setZoom(1); }

    video::PictureView view() { return m_driver->get<video::CVideoUI>(u"Video").view(); }
    /// Of the window, where a display pixel is shown.
    Point on(int x, int y) { return view().toWindow(Point{x, y}); }
    /// What a press there draws at.
    Point hit(Point window) { return view().toDisplay(window); }
    void mouse(EventKind kind, Point at, Modifiers held) {
        test::input().mouse(m_driver->native(), kind, at, platform::MouseButton::left, held);
        test::pump();
    }
    /// Down at the first, up at the last.
    void drag(const Points& window, Modifiers held) {
        mouse(EventKind::mouseDown, window.front(), held);
        for (const Point at : window) {
            mouse(EventKind::mouseMove, at, held);
        }
        mouse(EventKind::mouseUp, window.back(), held);
    }
    void key(EventKind kind, Key key, Modifiers held) {
        test::input().key(m_driver->native(), kind, key, {}, held);
        test::pump();
    }
    void press(Key key) {
        m_driver->manager().SetFocus(nullptr);
        m_driver->press(key);
    }
    /// A square on all frames, with no point chosen.
    void drawSquare(int left = 500, int top = 300, int size = 80) {
        m_driver->click(u"OptionAddMultiPoint");
        drag({on(left, top), on(left + size, top + size)}, kControl);
        m_driver->click(u"OptionMovePoint");
        m_driver->click(on(left + 200, top));
    }
    std::string lastStep() {
        const zone::StepLabel* label = m_window->session().undoLabel();
        return label != nullptr ? zone::stepName(label->name) : std::string();
    }
    int selected() { return editing().zones.at(0).selectedPoint; }
    std::u16string hint() { return m_driver->textOf(u"LabelHint"); }
};

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

TEST_F(ZoneEditGesture, HintAndPointerTellWhatADragDoesWhicheverKeysFollow) {
    using platform::PointerShape;
    show(5, 1);
    drawSquare();
    const struct {
        const char16_t* tool;
        Point press;
        Modifiers held;
        Modifiers then;
        const char16_t* hint;
        PointerShape shape;
    } cases[] = {
        {u"OptionMovePoint",
         {640, 340},
         kControl,
         {},
         u"Drag: scale about the centre",
         PointerShape::scale},
        {u"OptionMovePoint",
         {640, 340},
         kControl,
         kBoth,
         u"Drag: scale about the centre",
         PointerShape::scale},
        {u"OptionMovePoint",
         {640, 340},
         kBoth,
         kControl,
         u"Drag: rotate about the centre",
         PointerShape::rotate},
        {u"OptionMovePoint",
         {580, 300},
         {},
         kControl,
         u"Ctrl: scale, Ctrl + Shift: rotate",
         PointerShape::move},
        {u"OptionMovePoint",
         {580, 300},
         kShift,
         kBoth,
         u"Straight across or down",
         PointerShape::move},
        {u"OptionAddMultiPoint",
         {640, 340},
         kControl,
         {},
         u"Drag: a rectangle",
         PointerShape::rectangle},
        {u"OptionAddMultiPoint",
         {640, 340},
         {},
         kControl,
         u"Click: a point. Ctrl: rectangle",
         PointerShape::addPoint},
    };
    for (const auto& c : cases) {
        m_driver->click(c.tool);
        mouse(EventKind::mouseMove, on(c.press.x, c.press.y), c.held);
        mouse(EventKind::mouseDown, on(c.press.x, c.press.y), c.held);
        mouse(EventKind::mouseMove, on(c.press.x + 20, c.press.y), c.held);
        key(EventKind::keyDown, Key::other, c.then);
        mouse(EventKind::mouseMove, on(c.press.x + 40, c.press.y), c.then);
        EXPECT_EQ(hint(), c.hint);
        EXPECT_EQ(m_driver->manager().mouse().shape(), c.shape) << &c - cases;
        mouse(EventKind::mouseUp, on(c.press.x + 40, c.press.y), {});
        EXPECT_TRUE(hint().starts_with(u"Ctrl: scale") || hint().starts_with(u"Click: a point."))
            << "at rest";
        m_driver->click(u"ButtonUndo");
    }
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

TEST_F(ZoneEditGesture, PointsAreAddedInThePictureAreaHoweverItsEdgeIsHit) {
    show(5, 1);
    m_driver->click(u"OptionAddMultiPoint");
    drag({on(0, 300), {on(0, 300).x - 2, on(0, 300).y}}, kControl); // a click
    EXPECT_EQ(points(0, 0), (Points{{0, 300}}));
    m_gui.host.screenHeight = 700;
    show(5, 1);
    for (const int width : {1024, 1100}) {
        resize({width, 728}); // the last column of the picture lies partly beside the area
        const platform::Rect picture = m_driver->get<video::CVideoUI>(u"Video").pictureRect();
        for (const auto* tool : {u"OptionAddPoint", u"OptionAddMultiPoint"}) {
            m_driver->click(tool);
            m_driver->click(Point{picture.right - 1, picture.bottom - 1});
            EXPECT_EQ(points(0, 0).at(static_cast<std::size_t>(selected())), (Point{1023, 599}));
        }
    }
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

TEST_F(ZoneEditGesture, ADoubleClickOnALineAddsAPointThereOnEveryFrame) {
    show(5, 1);
    drawSquare();
    goTo(2);
    m_driver->drag({on(540, 340), on(640, 340)}); // the frames behind lie elsewhere
    const std::size_t steps = m_window->session().history().size();
    m_driver->doubleClick(on(620, 301));
    EXPECT_EQ(points(0, 2)[1], (Point{620, 301}));
    EXPECT_EQ(points(0, 4), points(0, 2));
    EXPECT_EQ(points(0, 0)[1], (Point{520, 301})) << "where the line is there";
    EXPECT_EQ(selected(), 1);
    EXPECT_EQ(m_window->session().history().size(), steps + 1);
    m_driver->doubleClick(on(640, 340)); // inside
    m_driver->doubleClick(on(620, 301)); // a point
    EXPECT_EQ(points(0, 0).size(), 5U);

    m_driver->press(Key::del);
    EXPECT_EQ(points(0, 0).size(), 4U);
    EXPECT_EQ(points(0, 4).size(), 4U);
    EXPECT_EQ(lastStep(), "delete point");
    m_driver->press(Key::backspace);
    EXPECT_EQ(points(0, 0).size(), 4U) << "none is chosen now";
}

TEST_F(ZoneEditGesture, ADoubleClickOnALineAddsAPointWhereThatLineIsMissingToo) {
    show(5, 1);
    drawSquare();
    goTo(3);
    m_driver->click(u"OptionProgressChanges"); // off
    m_driver->drag({on(580, 380), on(600, 400)});
    m_driver->click(u"OptionDeletePoint");
    m_driver->click(on(600, 400)); // on this frame alone
    ASSERT_EQ(points(0, 3).size(), 3U);
    m_driver->click(u"OptionMovePoint");
    goTo(0);
    m_driver->doubleClick(on(500, 340)); // from the fourth point to the first
    EXPECT_EQ(points(0, 0).size(), 5U);
    EXPECT_EQ(points(0, 3).size(), 4U);
    EXPECT_EQ(points(0, 3).back(), (Point{500, 340}));
}

TEST_F(ZoneEditGesture, AfterDeleteNoPointIsChosenAndThePanelSaysSo) {
    show(5, 1);
    drawSquare();
    const auto expectChosen = [this](int point, const char16_t* place, const char16_t* x) {
        EXPECT_EQ(selected(), point);
        EXPECT_EQ(m_driver->textOf(u"LabelPoint"), place);
        EXPECT_EQ(m_driver->textOf(u"EditPointX"), x);
        EXPECT_EQ(m_driver->get(u"EditPointX").IsEnabled(), *x != 0);
    };
    m_driver->click(on(580, 300));
    expectChosen(1, u"2 of 4", u"580");
    press(Key::del);
    ASSERT_EQ(points(0, 4).size(), 3U);
    expectChosen(-1, u"", u"");
    m_driver->press(Key::z, kControl);
    expectChosen(1, u"2 of 4", u"580");
    m_driver->press(Key::y, kControl);
    expectChosen(-1, u"", u"");
}

TEST_F(ZoneEditGesture, ThePanelKnowsNoCentreOfLessThanThreePoints) {
    show(5, 1);
    m_driver->click(u"OptionAddMultiPoint");
    const Points triangle{{500, 300}, {600, 300}, {550, 400}};
    for (std::size_t count = 1; count <= triangle.size(); ++count) {
        for (std::size_t added = points(0, 0).size(); added < count; ++added) {
            m_driver->click(u"OptionMovePoint");
            m_driver->click(on(700, 600)); // none is chosen
            m_driver->click(u"OptionAddMultiPoint");
            m_driver->click(on(triangle[added].x, triangle[added].y));
        }
        EXPECT_EQ(m_driver->textOf(u"EditPointX"),
                  core::displayText(std::to_string(triangle[count - 1].x)));
        m_driver->click(u"OptionDeletePoint"); // leaves its number chosen
        m_driver->click(on(triangle[count - 1].x, triangle[count - 1].y));
        ASSERT_EQ(points(0, 0).size(), count - 1);
        EXPECT_EQ(m_driver->textOf(u"LabelPoint"), u"");
        EXPECT_EQ(m_driver->textOf(u"EditPointX"), u"");
        m_driver->press(Key::right, kControl);
        EXPECT_EQ(lastStep(), "delete point") << "nothing to move";
    }
}

TEST_F(ZoneEditGesture, CtrlWithArrowsMovesTheChosenPointInOneStepForEachPress) {
    show(5, 1);
    drawSquare();
    goTo(1);
    m_driver->click(on(580, 300));
    const std::size_t steps = m_window->session().history().size();
    const Key arrows[] = {Key::left, Key::up, Key::right, Key::down};
    Point expected{580, 300};
    for (int press = 0; press < 8; ++press) {
        const Modifiers held = press < 4 ? kControl : kBoth;
        const int by = press < 4 ? 1 : 10;
        const int count = 1 + press % 3; // held down
        for (int i = 0; i < count; ++i) {
            key(EventKind::keyDown, arrows[press % 4], held);
        }
        key(EventKind::keyUp, arrows[press % 4], held);
        expected.x += count * by * (press % 4 == 0 ? -1 : press % 4 == 2 ? 1 : 0);
        expected.y += count * by * (press % 4 == 1 ? -1 : press % 4 == 3 ? 1 : 0);
        EXPECT_EQ(points(0, 1)[1], expected);
        EXPECT_EQ(m_window->session().history().size(),
                  steps + static_cast<std::size_t>(press) + 1);
    }
    EXPECT_EQ(points(0, 4)[1], expected) << "carried forward";
    EXPECT_EQ(points(0, 0)[1], (Point{580, 300}));
    EXPECT_EQ(frameText(), u"1");
    m_driver->press(Key::right);
    EXPECT_EQ(frameText(), u"2") << "without Ctrl they step as ever";
}

TEST_F(ZoneEditGesture, WhatMovesNothingIsNoStepAndLeavesWhatWasTakenBack) {
    show(5, 1);
    drawSquare(1190, 300, 80);
    m_driver->click(u"CheckPanel");
    test::pump();
    m_driver->click(on(1270, 300));
    for (int press = 0; press < 2; ++press) {
        m_driver->press(Key::right, kBoth); // to the border at 1279
    }
    m_driver->click(u"OptionToggleActive");
    m_driver->press(Key::z, kControl);
    const auto& history = m_window->session().history();
    const std::size_t steps = history.position();
    m_driver->press(Key::right, kControl);
    m_driver->press(Key::right, kBoth);
    for (const auto& [field, text] : {std::pair{u"EditPointX", u"5000"},
                                      {u"EditPointX", u"01279"},
                                      {u"EditPointY", u"300.2"},
                                      {u"EditShapeWidth", u"100.0"},
                                      {u"EditShapeAngle", u"360"},
                                      {u"EditShapeAngle", u"-720"}}) {
        m_driver->enter(field, text);
        EXPECT_EQ(history.position(), steps) << core::storedText(text);
    }
    EXPECT_EQ(m_driver->textOf(u"EditPointX"), u"1279");
    EXPECT_NE(history.redoLabel(), nullptr) << "it can be done again";

    m_driver->press(Key::i, kShift); // blends up to the keys
    m_driver->press(Key::right, kBoth);
    EXPECT_EQ(history.position(), steps);
    key(EventKind::keyDown, Key::left, kControl);
    key(EventKind::keyDown, Key::right, kBoth);
    key(EventKind::keyDown, Key::left, kControl);
    EXPECT_EQ(points(0, 0)[1].x, 1278) << "counted from the border";
    key(EventKind::keyUp, Key::left, kControl);
    EXPECT_EQ(history.position(), steps + 1);
}

TEST_F(ZoneEditGesture, APointThatLiesFarAwayInTheFileIsMovedIntoThePicture) {
    makeClip(3);
    const auto made = zone::ZoneManager::createEmpty();
    made->scale = zone::Scale{};
    zone::ZoneSession session(made);
    session.setArea({INT_MAX, INT_MAX});
    session.addZone("far", 3);
    session.addPoint(0, 0, 5, 5);
    (void)session.hitTest(0, 0, 5, 5);
    session.moveSelectedPoint(0, 1, INT_MAX - 1, INT_MAX - 1);
    ASSERT_TRUE(session.save("Scenes/Fire/clip.ogv"));
    show();
    m_driver->click(on(points(0, 0)[0].x, points(0, 0)[0].y));
    press(Key::right);
    m_driver->press(Key::right, kControl);
    EXPECT_EQ(points(0, 1)[0], (Point{1279, 719}));
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

TEST_F(ZoneEditGesture, AGrabbedPointComesToThePointerUnlessItsDistanceIsKept) {
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    for (const bool keeps : {false, true}) {
        show(5, 1);
        drawSquare();
        if (!keeps) {
            m_driver->drag({on(503, 302), on(523, 312)});
            EXPECT_EQ(points(0, 0)[0], (Point{523, 312}));
            m_driver->click(u"ButtonMenu");
            for (const Key key : {Key::home, Key::down, Key::down, Key::enter}) {
                m_driver->press(key);
            }
            m_driver->press(Key::z, kControl);
        }
        m_driver->drag({on(503, 302), on(523, 312)}); // remembered by the next window as well
        EXPECT_EQ(points(0, 0)[0], (Point{520, 310}));
        m_driver->drag({on(583, 378), on(573, 388)});
        EXPECT_EQ(points(0, 0)[2], (Point{570, 390}));
        m_driver->click(u"OptionAddPoint"); // no distance from an earlier grab
        m_driver->drag({on(700, 500), on(720, 510)});
        EXPECT_EQ(points(0, 0).at(3), (Point{720, 510}));
    }
}

TEST_F(ZoneEditGesture, ANarrowWindowShowsTheHintInPlaceOfTheVideoWhileItIsNew) {
    show(5, 1);
    EXPECT_TRUE(isVisible(u"LabelVideo"));
    resize({1100, 756});
    const auto isInPlace = [this] {
        const platform::Rect& hint = m_driver->get(u"LabelHint").GetPos();
        EXPECT_EQ(isVisible(u"LabelVideo"), hint.width() <= 1);
        return hint.width() > 200;
    };
    EXPECT_FALSE(isInPlace());
    key(EventKind::keyDown, Key::other, kControl);
    EXPECT_TRUE(isInPlace());
    key(EventKind::keyUp, Key::other, {});
    EXPECT_FALSE(isInPlace());
    const auto timeIsUp = [this] {
        platform::Event event;
        event.kind = EventKind::timer;
        event.timerId = 0x7FFFFFFD;
        (void)m_window->HandleMessage(event);
    };
    m_driver->click(u"OptionDeletePoint");
    EXPECT_TRUE(isInPlace());
    timeIsUp();
    EXPECT_FALSE(isInPlace());
    m_driver->click(on(600, 300));
    EXPECT_TRUE(isInPlace());
    EXPECT_EQ(hint(), u"There is no point here");
    resize({1280, 756});
    EXPECT_TRUE(isVisible(u"LabelVideo"));
}

TEST_F(ZoneEditGesture, HintsTellWhyNoPointWasAdded) {
    show(5, 1);
    const auto expectNothingAdded = [this](std::size_t count) {
        EXPECT_EQ(hint(), u"Choose a point first, with Move");
        EXPECT_EQ(points(0, 0).size(), count);
    };
    m_driver->click(u"OptionAddMultiPoint");
    for (const Point at : {on(500, 300), on(600, 300), on(550, 400)}) {
        m_driver->click(at);
    }
    press(Key::digit4);
    m_driver->click(on(550, 400)); // the chosen one
    press(Key::digit3);
    m_driver->click(on(550, 400));
    expectNothingAdded(2);
    m_driver->click(u"ButtonUndo");

    press(Key::digit1);
    m_driver->drag({on(550, 333), on(560, 333)}); // by its centre
    press(Key::digit2);
    m_driver->click(on(700, 300));
    expectNothingAdded(3);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    m_driver->click(on(560, 333)); // its centre
    press(Key::digit3);
    mouse(EventKind::mouseMove, on(700, 300), kControl);
    EXPECT_EQ(m_driver->manager().mouse().shape(), platform::PointerShape::notAllowed);
    drag({on(700, 300), on(800, 400)}, kControl);
    expectNothingAdded(3);
}

TEST_F(ZoneEditGesture, WhyAClickDidNothingIsSaidOnTheBarWhereTheCaptionSaysMore) {
    show(5, 1);
    widen();
    const auto expectReason = [this](bool isOnBar) {
        m_driver->click(u"OptionDeletePoint");
        m_driver->click(on(600, 300));
        EXPECT_EQ(isVisible(u"PanelNotice"), isOnBar);
        EXPECT_EQ(isVisible(u"LabelHint"), !isOnBar);
        EXPECT_EQ(m_driver->textOf(isOnBar ? u"LabelNotice" : u"LabelHint"),
                  u"There is no point here");
        platform::Event event;
        event.kind = EventKind::timer;
        event.timerId = 0x7FFFFFFF;
        (void)m_window->HandleMessage(event);
        EXPECT_FALSE(isVisible(u"PanelNotice"));
    };
    expectReason(false);
    m_driver->click(u"ButtonSave");
    expectReason(true);
    EXPECT_EQ(m_driver->textOf(u"LabelNote").substr(0, 8), u"Saved at");
    m_driver->enter(u"EditZone", u""); // a hint about names
    expectReason(true);
    m_driver->enter(u"EditZone", u"Door");
    expectReason(false);
}

TEST_F(ZoneEditGesture, EnterAndEscEndAddManyAndHintsTellWhyAClickDidNothing) {
    show(5);
    m_driver->click(on(600, 300));
    EXPECT_EQ(hint(), u"Add a zone first: press +");
    addZone();
    m_driver->press(Key::digit3);
    mouse(EventKind::mouseMove, on(600, 300), kControl);
    EXPECT_EQ(m_driver->manager().mouse().shape(), platform::PointerShape::rectangle);
    for (const Key end : {Key::enter, Key::escape}) {
        m_driver->click(u"OptionAddMultiPoint");
        EXPECT_EQ(hint(), u"Click: a point. Ctrl: rectangle");
        m_driver->manager().SetFocus(nullptr);
        m_driver->press(end);
        EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    }
    m_driver->click(u"OptionDeletePoint");
    EXPECT_EQ(hint(), u"Click a point to delete it");
    m_driver->click(on(600, 300));
    EXPECT_EQ(hint(), u"There is no point here");
    m_driver->click(u"OptionAddPoint");
    EXPECT_EQ(hint(), u"Click: a point behind the chosen one");
}

} // namespace
