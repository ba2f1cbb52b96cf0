// What the zone editor shows and how: zoom, the parts that are shown on demand, by real events.
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "core/EditorSettings.h"
#include "platform/Window.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "toolkit/controls/CComboUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::MouseButton;
using platform::Point;
using test::isChecked;

constexpr platform::Modifiers kControl{.control = true};

class ZoneEditView : public test::ZoneEditTest {
protected:
    ~ZoneEditView() override { m_gui.windows().setZoom(1); }

    const video::CVideoUI& video() { return m_driver->get<video::CVideoUI>(u"Video"); }
    std::u16string zoom() { return m_driver->textOf(u"ComboZoom"); }
    void wheel(Point at, int notches, platform::Modifiers modifiers = kControl) {
        test::input().wheel(m_driver->native(), at, 120 * notches, modifiers);
        test::pump();
    }
    void mouse(EventKind kind, Point at, MouseButton button) {
        test::input().mouse(m_driver->native(), kind, at, button);
        test::pump();
    }
    void key(EventKind kind, Key key) {
        test::input().key(m_driver->native(), kind, key, {}, {});
        test::pump();
    }
};

TEST_F(ZoneEditView, AClickAtAnyZoomGivesThePointWhosePixelItHit) {
    for (const double enlarged : {1.0, 2.0}) {
        m_gui.windows().setZoom(enlarged);
        show(5, 1);
        resize({1280, 760});
        const double scale = m_driver->native().scale(); // less than asked for on a small screen
        m_driver->click(u"OptionAddMultiPoint");
        std::vector<Point> expected;
        for (const int entry : {1, 2, 3, 4, 0}) {
            m_driver->pick(u"ComboZoom", entry);
            const video::PictureView view = video().view();
            const double shown =
                std::array{view.scale, 0.5, 1.0, 2.0, 4.0}.at(static_cast<std::size_t>(entry));
            EXPECT_EQ(view.scale, shown);
            for (const Point at : {Point{441, 297}, {444, 298}, {701, 450}}) {
                m_driver->click(at);
                expected.push_back({static_cast<int>((at.x + 0.5 - view.offset.x) / shown),
                                    static_cast<int>((at.y + 0.5 - view.offset.y) / shown)});
                const Point drawn = view.toWindow(expected.back());
                EXPECT_LE(std::abs(drawn.x - at.x), shown / 2 + 1) << "the marker is there";
                EXPECT_EQ(m_driver->pixel({static_cast<int>((drawn.x + 0.5) * scale),
                                           static_cast<int>((drawn.y + 5.5) * scale)}) &
                              0xFFFFFFU,
                          0xFFFF00U);
            }
        }
        EXPECT_EQ(points(0, 0), expected);
    }
}

TEST_F(ZoneEditView, TheWheelWithCtrlZoomsAboutThePointer) {
    show(5, 1);
    const Point about = at(900, 200);
    const Point under = video().view().toDisplay(about);
    EXPECT_EQ(zoom(), u"Fit");
    EXPECT_FALSE(isVisible(u"Overview"));
    wheel(about, 1, {});
    EXPECT_EQ(zoom(), u"Fit") << "only with Ctrl";
    for (const char16_t* text : {u"150 %", u"200 %", u"300 %", u"400 %", u"400 %"}) {
        wheel(about, 1);
        EXPECT_EQ(zoom(), text);
        const Point now = video().view().toDisplay(about);
        EXPECT_LE(std::abs(now.x - under.x) + std::abs(now.y - under.y), 1);
        EXPECT_TRUE(isVisible(u"Overview"));
    }
    const platform::Rect overview = m_driver->get(u"Overview").GetPos();
    EXPECT_EQ(overview, platform::Rect::at(video().GetPos().right - 188, 48, 176, 99));
    m_driver->click(Point{overview.left + 2, overview.top + 2});
    EXPECT_EQ(video().view().offset, at(0, 0)) << "as far as the edge";
    m_driver->drag({overview.topLeft(), {overview.left + 88, overview.top + 50}});
    const Point middle = video().view().toDisplay(at(640, 360));
    EXPECT_LE(std::abs(middle.x - 640) + std::abs(middle.y - 360), 12);
    m_driver->get(u"PanelNotice").SetVisible(true);
    test::pump();
    EXPECT_EQ(m_driver->get(u"Overview").GetPos().top, 80) << "below the message";
    wheel(about, -4);
    EXPECT_EQ(zoom(), u"Fit");
    wheel(about, -1);
    EXPECT_EQ(zoom(), u"75 %");
    EXPECT_FALSE(isVisible(u"Overview")) << "all of it is seen";
}

TEST_F(ZoneEditView, TheMiddleButtonAndSpaceMoveThePicture) {
    show(5, 1);
    drawTriangle();
    wheel(at(640, 360), 2);
    const Point before = video().view().offset;
    const auto moved = [&] {
        const Point now = video().view().offset;
        return Point{now.x - before.x, now.y - before.y};
    };
    mouse(EventKind::mouseDown, at(300, 100), MouseButton::middle);
    mouse(EventKind::mouseMove, at(310, 95), MouseButton::none);
    mouse(EventKind::mouseMove, at(350, 110), MouseButton::none);
    mouse(EventKind::mouseUp, at(350, 110), MouseButton::middle);
    EXPECT_EQ(moved(), (Point{50, 10}));
    key(EventKind::keyDown, Key::space);
    m_driver->drag({at(350, 110), at(330, 130), at(290, 90)});
    key(EventKind::keyUp, Key::space);
    EXPECT_EQ(moved(), (Point{-10, -10}));
    mouse(EventKind::mouseDown, at(600, 300), MouseButton::middle);
    mouse(EventKind::mouseMove, at(9000, 9000), MouseButton::none);
    mouse(EventKind::mouseUp, at(9000, 9000), MouseButton::middle);
    EXPECT_EQ(video().view().offset, at(0, 0)) << "no gap opens beside it";
    EXPECT_EQ(points(0, 0).size(), 3U) << "no tool has seen any of it";
    for (const auto kind : {EventKind::mouseDown, EventKind::mouseUp, EventKind::mouseDoubleClick,
                            EventKind::mouseUp}) {
        mouse(kind, at(600, 300), MouseButton::middle);
    }
    EXPECT_EQ(zoom(), u"Fit");
}

TEST_F(ZoneEditView, WhatIsShownIsOffUntilAskedForAndRemembered) {
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    show(5);
    const std::pair<const char16_t*, Key> switches[] = {{u"CheckAllZones", Key::z},
                                                        {u"CheckOnion", Key::o},
                                                        {u"CheckLoupe", Key::l},
                                                        {u"CheckPanel", Key::other}};
    for (const auto& [name, key] : switches) {
        EXPECT_FALSE(isChecked(*m_driver, name));
        if (key != Key::other) {
            m_driver->retype(u"EditCurrentFrame", u"1");
            m_driver->press(key);
            EXPECT_FALSE(isChecked(*m_driver, name)) << "typed into a field";
            m_driver->click(u"ButtonAddZone"); // and what is clicked keeps no key either
            m_driver->press(key);
            EXPECT_TRUE(isChecked(*m_driver, name));
        }
    }
    resize({1560, 832});
    EXPECT_TRUE(isVisible(u"PaneZones")) << "a wide window has room for it";
    EXPECT_EQ(video().GetPos().width(), 1280);
    resize({1550, 832});
    EXPECT_FALSE(isVisible(u"PaneZones"));
    m_driver->click(u"CheckPanel");
    m_driver->click(u"CheckLoupe");
    EXPECT_TRUE(isVisible(u"PaneZones"));
    show();
    for (const auto& [name, key] : switches) {
        EXPECT_EQ(isChecked(*m_driver, name), key != Key::l);
    }
    m_driver->click(u"CheckPanel");
    resize({1700, 832});
    EXPECT_FALSE(isVisible(u"PaneZones")) << "the author's choice counts";
}

} // namespace
