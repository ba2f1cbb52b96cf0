// Points that are added, moved and removed by clicks, drags, keys and numbers.
#include <climits>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "tests/ZoneEdit/GestureFixture.h"
#include "video/CVideoUI.h"
#include "zone/Scale.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Modifiers;
using platform::Point;
using test::kBoth;
using test::kControl;
using test::kShift;
using test::Points;

class ZoneEditPoints : public test::ZoneGestureTest {};

TEST_F(ZoneEditPoints, PointsAreAddedInThePictureAreaHoweverItsEdgeIsHit) {
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

TEST_F(ZoneEditPoints, ADoubleClickOnALineAddsAPointThereOnEveryFrame) {
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

TEST_F(ZoneEditPoints, ADoubleClickOnALineAddsAPointWhereThatLineIsMissingToo) {
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

TEST_F(ZoneEditPoints, AfterDeleteNoPointIsChosenAndThePanelSaysSo) {
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

TEST_F(ZoneEditPoints, ThePanelKnowsNoCentreOfLessThanThreePoints) {
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

TEST_F(ZoneEditPoints, CtrlWithArrowsMovesTheChosenPointInOneStepForEachPress) {
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

TEST_F(ZoneEditPoints, WhatMovesNothingIsNoStepAndLeavesWhatWasTakenBack) {
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

TEST_F(ZoneEditPoints, APointThatLiesFarAwayInTheFileIsMovedIntoThePicture) {
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

TEST_F(ZoneEditPoints, AGrabbedPointComesToThePointerUnlessItsDistanceIsKept) {
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

} // namespace
