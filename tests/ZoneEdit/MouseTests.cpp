// The four point tools, by real mouse events on the picture.
#include <cstddef>
#include <string_view>
#include <vector>

#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/windows/Answering.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/COptionUI.h"
#include "video/CVideoUI.h"

namespace {

using platform::EventKind;
using platform::Point;
using test::isChecked;
using Points = std::vector<Point>;

const Points kTriangle{{100, 100}, {300, 100}, {200, 400}};

class ZoneEditMouse : public test::ZoneEditTest {
protected:
    ZoneEditMouse() { show(20, 1); }
    void TearDown() override {
        EXPECT_EQ(m_log.errors(), test::kNoZones) << "no tool writes to the log";
        ZoneEditTest::TearDown();
    }

    int selected() { return editing().zones.at(0).selectedPoint; }
    /// None of its points is chosen.
    void drawTriangle() {
        ZoneEditTest::drawTriangle();
        clickPicture(1000, 600);
        ASSERT_EQ(selected(), -1);
    }
};

TEST_F(ZoneEditMouse, AddOneAddsOnePointBehindTheChosenOneAndGoesBackToMove) {
    drawTriangle();
    clickPicture(100, 100);
    EXPECT_EQ(selected(), 0);
    m_driver->click(u"OptionAddPoint");
    // The new point follows the button that stays down.
    m_driver->drag({at(150, 250), at(160, 260), at(170, 280)});
    const Points drawn{{100, 100}, {170, 280}, {300, 100}, {200, 400}};
    EXPECT_EQ(points(0, 0), drawn);
    EXPECT_EQ(points(0, 19), drawn) << "every frame has it";
    EXPECT_EQ(selected(), 1);
    EXPECT_TRUE(isChecked(*m_driver, u"OptionMovePoint"));
    EXPECT_FALSE(isChecked(*m_driver, u"OptionAddPoint"));
    clickPicture(1000, 600);
    EXPECT_EQ(points(0, 0), drawn) << "the next click chooses";
}

TEST_F(ZoneEditMouse, PointsKeepTheirPlacesInThePictureWhateverItsSizeOnTheScreen) {
    const auto& video = static_cast<const video::CVideoUI&>(m_driver->get(u"Video"));
    const platform::Size area = video.GetPos().size();
    m_driver->click(u"OptionAddMultiPoint");
    Points expected;
    for (const platform::Size size : {platform::Size{1400, 136 + area.height}, {1400, 712}}) {
        m_driver->native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        ASSERT_TRUE(test::pumpUntil([&] {
            return video.GetPos().size() == platform::Size{1400, size.height - 136};
        }));
        const platform::Rect picture = video.pictureRect();
        EXPECT_EQ(picture.height(), size.height - 136) << "as large as there is room for";
        m_driver->click(Point{picture.left - 10, 300}); // beside it nothing is drawn
        for (const Point at : {picture.topLeft(), Point{picture.right - 1, picture.bottom - 1},
                               Point{picture.left + 333, picture.top + 221}}) {
            m_driver->click(at);
            const double scale = static_cast<double>(area.height) / picture.height();
            expected.push_back({static_cast<int>((at.x - picture.left + 0.5) * scale),
                                static_cast<int>((at.y - picture.top + 0.5) * scale)});
        }
    }
    EXPECT_EQ(points(0, 0), expected);
    EXPECT_EQ(expected.back(), (Point{667 * area.height / 1152, 443 * area.height / 1152}));
}

TEST_F(ZoneEditMouse, AddManyAddsAPointForEachClickAndDragsNone) {
    m_driver->click(u"OptionAddMultiPoint");
    clickPicture(0, 0);
    m_driver->drag({at(200, 100), at(250, 150)});
    m_driver->doubleClick(at(1279, 719));
    // Outside of the picture, and with other buttons, there is nothing to draw with.
    m_driver->click(Point{690, 814});
    for (const auto button : {platform::MouseButton::right, platform::MouseButton::middle}) {
        test::input().mouse(m_driver->native(), EventKind::mouseDown, at(100, 100), button);
        test::input().mouse(m_driver->native(), EventKind::mouseUp, at(100, 100), button);
    }
    test::pump();
    EXPECT_EQ(points(0, 0), (Points{{0, 0}, {200, 100}, {1279, 719}, {1279, 719}}));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionAddMultiPoint"));
}

TEST_F(ZoneEditMouse, ThePointerTellsWhatAPressWouldDo) {
    using platform::PointerShape;
    const auto shapeAt = [&](Point place) {
        m_driver->hover(place);
        return m_driver->manager().mouse().shape();
    };
    drawTriangle(); // its centre is (200, 200)
    const struct {
        const char16_t* tool;
        PointerShape point, centre, elsewhere;
    } cases[] = {
        {u"OptionMovePoint", PointerShape::move, PointerShape::move, PointerShape::arrow},
        {u"OptionAddMultiPoint", PointerShape::addPoint, PointerShape::addPoint,
         PointerShape::addPoint},
        {u"OptionDeletePoint", PointerShape::deletePoint, PointerShape::notAllowed,
         PointerShape::notAllowed},
    };
    for (const auto& c : cases) {
        m_driver->click(c.tool);
        EXPECT_EQ(m_driver->manager().mouse().shape(), PointerShape::arrow);
        EXPECT_EQ(shapeAt(at(300, 100)), c.point);
        EXPECT_EQ(shapeAt(at(200, 200)), c.centre);
        EXPECT_EQ(shapeAt(at(200, 150)), c.elsewhere);
    }
    clickPicture(100, 100); // deletes: what is under the pointer has changed
    EXPECT_EQ(m_driver->manager().mouse().shape(), PointerShape::notAllowed);
    EXPECT_EQ(shapeAt(test::WindowDriver::middleOf(m_driver->get(u"EditZone"))),
              PointerShape::text);
    m_driver->clickThen(u"ButtonRemoveZone", test::answering(test::Answer::yes));
    m_driver->click(u"OptionMovePoint");
    EXPECT_EQ(shapeAt(at(200, 150)), PointerShape::notAllowed) << "there is no zone";
}

TEST_F(ZoneEditMouse, AMessageOverThePictureTakesOnlyPressesOfItsButtons) {
    drawTriangle();
    m_driver->get(u"PanelNotice").SetVisible(true);
    test::pump();
    const platform::Rect close = m_driver->get(u"ButtonCloseNotice").GetPos();
    const Point onClose{close.left + 5 - at(0, 0).x, close.top + 5 - at(0, 0).y};
    m_driver->click(u"OptionAddMultiPoint");
    clickPicture(100, 10);
    clickPicture(onClose.x, onClose.y);
    EXPECT_EQ(points(0, 0).size(), 4U);
    m_driver->click(u"OptionMovePoint");
    m_driver->drag({at(100, 10), at(500, 500), at(onClose.x, onClose.y)});
    EXPECT_EQ(points(0, 0)[3], onClose);
}

TEST_F(ZoneEditMouse, TheCentreHandleDragsTheWholeZone) {
    drawTriangle(); // its centre is (200, 200)
    goTo(4);
    m_driver->drag({at(200, 200), at(210, 220), at(240, 260), at(50, 650)});
    EXPECT_EQ(points(0, 4), (Points{{-50, 550}, {150, 550}, {50, 850}})) << "wherever it leads";
    EXPECT_EQ(points(0, 19), points(0, 4));
    EXPECT_EQ(points(0, 3), kTriangle);
    EXPECT_EQ(selected(), 3);
}

TEST_F(ZoneEditMouse, ADragEndsOutsideThePictureWithTheButtonAndWithTheCapture) {
    drawTriangle();
    const Point outside{600, 790};
    m_driver->send(EventKind::mouseDown, at(300, 100));
    m_driver->hover(at(310, 110));
    m_driver->hover(outside);
    m_driver->hover(Point{640, 10}); // above it
    m_driver->send(EventKind::mouseUp, outside);
    EXPECT_EQ(points(0, 0)[1], (Point{310, 110}));
    m_driver->hover(at(500, 500));
    m_driver->send(EventKind::mouseDown, at(310, 110));
    m_driver->hover(at(320, 120));
    test::pump();
    platform::Event lost;
    lost.kind = EventKind::captureLost;
    m_window->HandleMessage(lost);
    EXPECT_FALSE(m_window->session().history().inGesture());
    m_driver->hover(at(400, 400));
    m_driver->send(EventKind::mouseUp, at(400, 400));
    EXPECT_EQ(points(0, 0)[1], (Point{320, 120}));
}

TEST_F(ZoneEditMouse, APressUpToItsReleaseIsOneStep) {
    drawTriangle();
    goTo(4);
    const struct {
        const char16_t* tool;
        Points drag;
        const char* step; ///< null: none
    } cases[] = {
        {u"OptionMovePoint", {{300, 100}, {310, 110}, {320, 120}}, "move point"},
        {u"OptionMovePoint", {{900, 500}, {910, 510}}, nullptr},
        {u"OptionAddPoint", {{500, 500}, {510, 510}, {520, 530}}, "add point"},
        {u"OptionAddMultiPoint", {{600, 500}, {610, 510}}, "add point"},
        {u"OptionDeletePoint", {{600, 500}, {610, 510}}, "delete point"},
        {u"OptionDeletePoint", {{900, 500}, {910, 510}}, nullptr},
    };
    const auto& history = m_window->session().history();
    for (const auto& c : cases) {
        const std::size_t steps = history.size();
        m_driver->click(c.tool);
        m_driver->send(EventKind::mouseDown, at(c.drag[0].x, c.drag[0].y));
        for (const Point to : c.drag) {
            m_driver->hover(at(to.x, to.y));
        }
        EXPECT_EQ(history.inGesture(), c.tool != std::u16string_view(u"OptionDeletePoint"));
        m_driver->send(EventKind::mouseUp, at(c.drag.back().x, c.drag.back().y));
        EXPECT_FALSE(history.inGesture());
        EXPECT_EQ(history.size(), steps + (c.step != nullptr ? 1 : 0)) << &c - cases;
        if (c.step != nullptr) {
            EXPECT_EQ(zone::stepName(history.undoLabel()->name), c.step);
            EXPECT_EQ(history.undoLabel()->frame, 4);
        }
    }
}

TEST_F(ZoneEditMouse, WhatKeysChangeWhileTheButtonIsDownIsNoPartOfTheDrag) {
    drawTriangle();
    goTo(4);
    const std::size_t steps = m_window->session().history().size();
    const auto dragTo = [this](int x) {
        m_driver->hover(at(x, 110));
        EXPECT_EQ(points(editing().currentZone, 0), kTriangle);
    };
    m_driver->send(EventKind::mouseDown, at(302, 97));
    dragTo(310);
    dragTo(315);
    m_driver->press(platform::Key::right);
    dragTo(320);
    (void)m_driver->get<toolkit::COptionUI>(u"OptionToggleActive").Activate();
    dragTo(330);
    (void)m_driver->get<toolkit::CButtonUI>(u"ButtonAddZone").Activate();
    (void)m_driver->get<toolkit::CComboUI>(u"ComboZone").SelectItem(0);
    dragTo(340);
    m_driver->send(EventKind::mouseUp, at(340, 110));
    EXPECT_EQ(points(0, 4)[1], (Point{315, 110}));
    EXPECT_EQ(points(0, 5)[1], (Point{340, 110}));
    EXPECT_EQ(points(0, 19), points(0, 5));
    const auto& history = m_window->session().history();
    EXPECT_EQ(history.size(), steps + 6);
    EXPECT_EQ(history.undoLabel()->name, zone::StepLabel::Name::movePoint);
    EXPECT_EQ(history.undoLabel()->frame, 5);
}

TEST_F(ZoneEditMouse, DeleteTakesThePointUnderTheMouseOnEveryFrameThatHasOneThere) {
    drawTriangle();
    m_driver->click(u"OptionProgressChanges");
    goTo(3);
    m_driver->drag({at(300, 100), at(600, 300)});
    goTo(10);
    m_driver->click(u"OptionDeletePoint");
    clickPicture(300, 100);
    EXPECT_EQ(points(0, 3), (Points{{100, 100}, {600, 300}, {200, 400}})) << "it lies elsewhere";
    EXPECT_EQ(points(0, 0), (Points{{100, 100}, {200, 400}}));
    EXPECT_EQ(points(0, 19), points(0, 0));
    EXPECT_TRUE(isChecked(*m_driver, u"OptionDeletePoint"));
    // No capture: a move changes nothing.
    m_driver->drag({at(100, 100), at(150, 150)});
    EXPECT_EQ(points(0, 0), (Points{{200, 400}}));
}

TEST_F(ZoneEditMouse, AClickIsDrawnAtOnceAndTakesANameFirst) {
    drawTriangle();
    const auto pixel = [&](int x, int y) { return m_driver->pixel(at(x, y)) & 0xFFFFFFU; };
    EXPECT_EQ(pixel(160, 100), 0xFF0000U) << "the line between the first two points";
    m_driver->retype(u"EditZone", u"Door");
    clickPicture(100, 100);
    EXPECT_EQ(zones().getZoneName(0), "Door");
    EXPECT_EQ(m_driver->focusName(), u"");
    EXPECT_EQ(pixel(104, 104), 0xFFFF00U) << "the chosen point";
    EXPECT_EQ(pixel(160, 100), 0xFFFF00U) << "and the line behind it";
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(pixel(160, 100), 0xC0C000U) << "not active on this frame";
    addZone();
    EXPECT_NE(pixel(104, 104), 0xFFFF00U) << "only the current zone is drawn";
}

} // namespace
