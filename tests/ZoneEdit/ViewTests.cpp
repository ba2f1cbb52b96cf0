// What the zone editor shows and how: zoom, the parts that are shown on demand, by real events.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/gui/TestWindow.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
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
        resize({1280, 712});                             // which fits on the screen, enlarged too
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

TEST_F(ZoneEditView, ThePictureIsSmoothWhereItIsNotOneToOne) {
    show(5);
    /// How often the colour changes along the picture's middle.
    const auto changes = [this] {
        const platform::Bitmap picture = m_driver->picture();
        const platform::Rect& area = video().GetPos();
        const int y = (area.top + area.bottom) / 2;
        int count = 0;
        for (int x = area.left + 1; x < area.right; ++x) {
            count += picture.at(x, y) != picture.at(x - 1, y) ? 1 : 0;
        }
        return count;
    };
    EXPECT_LT(changes(), support::ClipSpec().width) << "nearest pixels at the base size";
    m_driver->pick(u"ComboZoom", 3);
    ASSERT_EQ(zoom(), u"200 %");
    EXPECT_GT(changes(), 3 * support::ClipSpec().width);
    m_driver->pick(u"ComboZoom", 0);
    resize({1600, 1000});
    EXPECT_GT(changes(), 3 * support::ClipSpec().width);
}

TEST_F(ZoneEditView, NoLineOfTheStageStaysBesideAPictureThatFits) {
    show(5, 1);
    resize({1600, 900});
    const platform::Size room = video().GetPos().size();
    const std::uint32_t stage = m_driver->manager().look().palette()[toolkit::Tone::stage];
    for (const int more : {0, 1, 2, 3}) {
        resize({1600, 900 - room.height + room.width * 9 / 16 + more});
        const platform::Rect box = video().GetPos();
        const Point middle = box.centred({1, 1}).topLeft();
        for (const Point edge : {Point{box.left, middle.y}, Point{box.right - 1, middle.y},
                                 Point{middle.x, box.top}, Point{middle.x, box.bottom - 1}}) {
            EXPECT_NE(m_driver->pixel(edge), stage)
                << box.height() << ": " << edge.x << "," << edge.y;
        }
    }
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
    for (int drag = 0; drag < 3; ++drag) {
        mouse(EventKind::mouseDown, at(300, 100), MouseButton::middle);
        mouse(EventKind::mouseMove, at(1200, 700), MouseButton::none);
        mouse(EventKind::mouseUp, at(1200, 700), MouseButton::middle);
    }
    EXPECT_EQ(video().view().offset, at(0, 0)) << "no gap opens beside it";
    EXPECT_EQ(points(0, 0).size(), 3U) << "no tool has seen any of it";
    for (const auto kind : {EventKind::mouseDown, EventKind::mouseUp, EventKind::mouseDoubleClick,
                            EventKind::mouseUp}) {
        mouse(kind, at(600, 300), MouseButton::middle);
    }
    EXPECT_EQ(zoom(), u"Fit");
}

TEST_F(ZoneEditView, ThePictureMayMoveInTheMiddleOfADragWhicheverButtonEndsFirst) {
    show(5, 1);
    drawTriangle();
    wheel(at(0, 0), 2);
    const auto isMoving = [&](Point from, Point to) {
        const Point before = video().view().offset;
        mouse(EventKind::mouseMove, from, MouseButton::none);
        mouse(EventKind::mouseMove, to, MouseButton::none);
        return video().view().offset != before;
    };
    for (const bool leftFirst : {false, true}) {
        const auto chosen = [&] { return points(0, 0)[0]; };
        const auto shown = [&] { return video().view().toWindow(chosen()); };
        mouse(EventKind::mouseDown, shown(), MouseButton::left);
        mouse(EventKind::mouseDown, at(400, 300), MouseButton::middle);
        EXPECT_TRUE(isMoving(at(390, 290), at(380, 280)));
        mouse(EventKind::mouseUp, at(380, 280),
              leftFirst ? MouseButton::left : MouseButton::middle);
        const Point before = chosen();
        EXPECT_FALSE(isMoving(at(420, 320), at(440, 330)));
        EXPECT_EQ(chosen() == before, leftFirst) << "which goes on while its button is down";
        mouse(EventKind::mouseUp, at(440, 330),
              leftFirst ? MouseButton::middle : MouseButton::left);
        const Point after = chosen();
        EXPECT_FALSE(isMoving(at(420, 320), at(400, 300)));
        EXPECT_EQ(chosen(), after);
        EXPECT_FALSE(m_window->session().inGesture());
    }
}

TEST_F(ZoneEditView, APressThatDragsNothingGivesThePointerBackToOtherWindows) {
    show(5, 1);
    drawTriangle();
    m_driver->click(u"OptionDeletePoint");
    for (const bool leftFirst : {false, true}) {
        const MouseButton first = leftFirst ? MouseButton::left : MouseButton::middle;
        const MouseButton last = leftFirst ? MouseButton::middle : MouseButton::left;
        mouse(EventKind::mouseDown, at(600, 500), MouseButton::left); // where no point is
        mouse(EventKind::mouseDown, at(600, 500), MouseButton::middle);
        mouse(EventKind::mouseUp, at(600, 500), first);
        mouse(EventKind::mouseUp, at(600, 500), last);
        test::TestWindow other;
        other.show();
        test::input().mouse(other.native(), EventKind::mouseDown, {50, 50}, MouseButton::left);
        test::pump();
        const std::vector<std::string> events = other.takeEvents();
        EXPECT_TRUE(std::ranges::any_of(events, [](const std::string& event) {
            return event.starts_with("down");
        })) << leftFirst;
    }
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

TEST_F(ZoneEditView, HandlesAreAsLargeAsTheyAreDrawnAtAnyZoom) {
    show(5, 1);
    drawTriangle();
    wheel(at(100, 100), 4);
    ASSERT_EQ(zoom(), u"400 %");
    const Point middle = video().view().toWindow(Point{100, 100});
    m_driver->click(Point{middle.x - 7, middle.y});
    EXPECT_EQ(editing().zones[0].selectedPoint, 0);
    m_driver->click(Point{middle.x + 14, middle.y});
    EXPECT_EQ(editing().zones[0].selectedPoint, -1) << "beside it";
    m_driver->click(u"OptionDeletePoint");
    m_driver->click(Point{middle.x + 14, middle.y});
    EXPECT_EQ(points(0, 0).size(), 3U);
    m_driver->click(middle);
    EXPECT_EQ(points(0, 0).size(), 2U);
}

/// Two zones, of which the second is edited: a square at the left and one at the right.
class ZoneEditZonesPanel : public ZoneEditView {
protected:
    ZoneEditZonesPanel() {
        show(9, 2);
        resize({1600, 832});
        for (const int zone : {0, 1}) {
            m_driver->pick(u"ComboZone", zone);
            m_driver->click(u"OptionAddMultiPoint");
            const int left = 200 + 500 * zone;
            for (const Point corner :
                 {Point{left, 200}, {left + 200, 200}, {left + 200, 400}, {left, 400}}) {
                clickPicture(corner.x, corner.y);
            }
        }
        m_driver->click(u"OptionMovePoint");
    }
    platform::Color pixel(Point place) { return m_driver->pixel(at(place.x, place.y)) & 0xFFFFFFU; }
    /// How many pixels of that colour there are on the line from one point to the other, level or
    /// upright.
    int count(Point from, Point to, platform::Color color) {
        const platform::Bitmap picture = m_driver->picture();
        int found = 0;
        for (int x = from.x; x <= to.x; ++x) {
            for (int y = from.y; y <= to.y; ++y) {
                const Point place = at(x, y);
                found += (picture.at(place.x, place.y) & 0xFFFFFFU) == color ? 1 : 0;
            }
        }
        return found;
    }
    std::u16string row(int zone) {
        return m_driver->get<toolkit::CListUI>(u"ListZones").GetItemAt(zone)->GetText();
    }
    template <class T = toolkit::CControlUI>
    T& part(int zone, std::u16string_view name) {
        return test::inRow<T>(*m_driver, u"ListZones", zone, name);
    }
    int edited() { return editing().currentZone; }
};

constexpr platform::Color kFirstOther = 0x35D07F;

TEST_F(ZoneEditZonesPanel, ARowTellsAndChoosesItsZone) {
    EXPECT_EQ(row(0), u"Zone 1, active, shown");
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(row(1), u"Zone 2, not active, shown");
    m_driver->click(part(0, u"LabelRowName"));
    EXPECT_EQ(edited(), 0);
    EXPECT_EQ(m_driver->textOf(u"EditZone"), u"Zone 1");
    m_driver->press(Key::f2);
    m_driver->type(u"Door");
    m_driver->press(Key::escape);
    EXPECT_EQ(row(0), u"Zone 1, active, shown") << "dropped";
    m_driver->press(Key::f2);
    m_driver->type(u"Exit");
    m_driver->press(Key::enter);
    EXPECT_EQ(zones().getZoneName(0), "Exit");
    EXPECT_EQ(row(0), u"Exit, active, shown");
    m_driver->doubleClick(test::WindowDriver::middleOf(part(1, u"LabelRowName")));
    EXPECT_EQ(m_driver->focusName(), u"EditRowName");
    m_driver->press(Key::enter);
    EXPECT_EQ(edited(), 1);
    m_driver->click(u"ButtonDuplicateZone");
    EXPECT_EQ(zones().zoneCount(), 3);
    EXPECT_EQ(edited(), 2);
    EXPECT_EQ(row(2), u"Zone 2 2, not active, shown");
    EXPECT_EQ(points(2, 8), points(1, 8));
    m_driver->click(u"ButtonPanelRemoveZone");
    EXPECT_EQ(m_driver->textOf(u"LabelNotice"), u"Zone \"Zone 2 2\" removed.");
    m_driver->click(u"ButtonNoticeUndo");
    EXPECT_EQ(zones().zoneCount(), 3);
    m_driver->click(u"ButtonPanelAddZone");
    EXPECT_EQ(zones().zoneCount(), 4);
}

TEST_F(ZoneEditZonesPanel, TheListStaysWhereItWasScrolledUntilAnotherZoneIsChosen) {
    for (int zone = 2; zone < 40; ++zone) {
        addZone();
    }
    m_driver->pick(u"ComboZone", 1);
    auto& list = m_driver->get<toolkit::CListUI>(u"ListZones");
    const auto offset = [&list] { return list.GetScrollBar().model().offset(); };
    wheel(test::WindowDriver::middleOf(list), -5, {});
    const int scrolled = offset();
    ASSERT_GT(scrolled, 60) << "the chosen row is out of view";
    m_driver->manager().SetFocus(nullptr);
    m_driver->press(Key::right);
    m_driver->press(Key::a);
    EXPECT_EQ(row(1), u"Zone 2, not active, shown");
    m_driver->drag({at(700, 200), at(700, 100)});
    const int last = list.GetPos().height() / 30 + scrolled / 30 - 2; // in view
    m_driver->click(part(last, u"CheckRowOutline"));
    EXPECT_EQ(row(last).substr(row(last).size() - 6), u"hidden");
    EXPECT_EQ(offset(), scrolled);
    m_driver->press(Key::n);
    EXPECT_LT(offset(), scrolled) << "the row of the zone that is edited comes into view";
}

TEST_F(ZoneEditZonesPanel, OutlinesAndTagsShowAndChooseOtherZones) {
    const Point tag{210, 185};
    EXPECT_EQ(count({250, 199}, {350, 201}, kFirstOther), 0);
    clickPicture(tag.x, tag.y);
    EXPECT_EQ(edited(), 1) << "no tag is shown";
    m_driver->press(Key::z);
    EXPECT_GT(count({250, 199}, {350, 201}, kFirstOther), 90);
    EXPECT_EQ(count({202, 180}, {202, 190}, kFirstOther), 11) << "the tag's edge";
    m_driver->click(part(0, u"CheckRowOutline"));
    EXPECT_EQ(row(0), u"Zone 1, active, hidden");
    EXPECT_EQ(count({250, 199}, {350, 201}, kFirstOther), 0);
    m_driver->click(part(0, u"CheckRowOutline"));
    EXPECT_EQ(edited(), 1) << "an eye chooses nothing but itself";
    const auto shapeAt = [this](Point place) {
        m_driver->hover(at(place.x, place.y));
        return m_driver->manager().mouse().shape();
    };
    m_driver->press(Key::digit3);
    EXPECT_EQ(shapeAt(tag), platform::PointerShape::hand);
    EXPECT_EQ(shapeAt({tag.x, tag.y + 40}), platform::PointerShape::addPoint);
    m_driver->press(Key::digit1);
    clickPicture(tag.x, tag.y);
    EXPECT_EQ(edited(), 0);
    m_driver->click(u"OptionToggleActive");
    m_driver->press(Key::n);
    EXPECT_EQ(edited(), 1);
    const int dashes = count({250, 199}, {350, 201}, kFirstOther);
    EXPECT_TRUE(dashes > 20 && dashes < 70) << "not active: " << dashes;
    m_driver->press(Key::n, {.shift = true});
    EXPECT_EQ(edited(), 0);
    m_driver->click(at(800, 300), kControl);
    EXPECT_EQ(edited(), 1) << "inside another zone";
    m_driver->click(at(850, 350), kControl);
    EXPECT_EQ(edited(), 1) << "inside no other";
}

TEST_F(ZoneEditZonesPanel, TheOnionSkinShowsTheKeysBesideTheFrame) {
    goTo(4);
    m_driver->drag({at(700, 200), at(700, 100)}); // frame 4 is a key, and so is what is before it
    goTo(3);
    const auto green = [this] { return count({700, 110}, {700, 190}, 0x7BE0A8); };
    const auto blue = [this] { return count({750, 200}, {850, 200}, 0x59A9FF); };
    EXPECT_EQ(green(), 0);
    m_driver->press(Key::o);
    EXPECT_TRUE(green() > 30 && green() < 60) << "the corner that moves up, dashed";
    goTo(6);
    EXPECT_EQ(green(), 0) << "under the zone itself";
    goTo(4);
    EXPECT_TRUE(blue() > 40 && blue() < 75) << "where it came from, dashed";
}

TEST_F(ZoneEditZonesPanel, ClearLinesHaveADarkEdge) {
    const platform::Color above = pixel({800, 199});
    m_driver->click(u"ButtonMenu");
    EXPECT_EQ(test::menuOf(*m_driver).front(), u"Clear Lines");
    m_driver->press(Key::home);
    m_driver->press(Key::enter);
    EXPECT_NE(pixel({800, 199}), above);
    EXPECT_EQ(pixel({760, 200}), 0xFF0000U) << "the line itself stays";
}

TEST_F(ZoneEditZonesPanel, TheLoupeShowsThePlaceOfThePointerFourTimesAsLarge) {
    EXPECT_FALSE(isVisible(u"Loupe"));
    m_driver->press(Key::l);
    const platform::Rect& loupe = m_driver->get(u"Loupe").GetPos();
    EXPECT_EQ(loupe.size(), (platform::Size{256, 144}));
    EXPECT_GT(loupe.left, video().GetPos().right) << "in the pane";
    m_driver->hover(at(790, 210));
    const Point middle = loupe.centred({1, 1}).topLeft();
    int red = 0;
    for (int y = middle.y - 44; y <= middle.y - 36; ++y) {
        red += (m_driver->pixel({middle.x + 30, y}) & 0xFFFFFFU) == 0xFF0000U ? 1 : 0;
    }
    EXPECT_TRUE(red >= 1 && red <= 4) << "the line ten pixels above the pointer: " << red;
    m_driver->click(u"CheckPanel");
    EXPECT_EQ(m_driver->get(u"Loupe").GetPos(),
              platform::Rect::at(video().GetPos().right - 268, 48, 256, 144));
    m_driver->get(u"PanelNotice").SetVisible(true);
    wheel(at(790, 210), 1);
    EXPECT_EQ(m_driver->get(u"Loupe").GetPos().top, 48 + 32 + 111);
}

} // namespace
