// Undo and redo in the zone editor, whether the zones are saved, and the bar over the picture.
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ZoneEdit/WindowTimer.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/TempFolder.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Point;
using Texts = std::vector<std::u16string>;

constexpr platform::Modifiers kControl{.control = true};
constexpr platform::Modifiers kControlShift{.shift = true, .control = true};
constexpr int kFrames = 20;

class ZoneEditUndo : public test::ZoneEditTest {
protected:
    void undo() { m_driver->press(Key::z, kControl); }
    std::u16string state() { return m_driver->textOf(u"LabelState"); }
    bool isVisible(std::u16string_view name) { return m_driver->get(name).IsVisible(); }
    /// What the bar says, and its buttons; empty while it is hidden.
    Texts notice() {
        if (!isVisible(u"PanelNotice")) {
            return {};
        }
        Texts texts{m_driver->textOf(u"LabelNotice")};
        for (const auto* button : {u"ButtonNoticeUndo", u"ButtonOnlyThisFrame",
                                   u"ButtonOnAllFrames", u"ButtonRestoreDraft"}) {
            if (isVisible(button)) {
                texts.emplace_back(m_driver->textOf(button));
            }
        }
        return texts;
    }
    /// A triangle that has moved on by one pixel on each of the frames 10 to 19.
    void followTriangle() {
        show(kFrames, 1);
        drawTriangle();
        m_driver->click(u"OptionProgressChanges");
        for (int frame = 10; frame < kFrames; ++frame) {
            goTo(frame);
            m_driver->drag({at(100, 100), at(100 + frame, 100)});
        }
        m_driver->click(u"OptionProgressChanges");
        EXPECT_EQ(notice(), Texts()) << "each on one frame alone";
        goTo(4);
    }
    std::vector<std::vector<Point>> allPoints() {
        std::vector<std::vector<Point>> all;
        for (int frame = 0; frame < kFrames; ++frame) {
            all.push_back(points(0, frame));
        }
        return all;
    }
};

TEST_F(ZoneEditUndo, GoesToTheZoneAndTheFrameThatChanged) {
    show(kFrames, 1);
    drawTriangle();
    const std::vector<Point> drawn = points(0, 7);
    const auto tip = [this](const char16_t* name) { return m_driver->get(name).GetToolTip(); };
    EXPECT_EQ(tip(u"ButtonRedo"), u"Redo (Ctrl+Y)");
    goTo(7);
    m_driver->drag({at(100, 100), at(150, 120), at(160, 130)});
    addZone();
    m_driver->enter(u"EditZone", u"Door");
    m_driver->pick(u"ComboZone", 0);
    goTo(2);
    undo();
    EXPECT_EQ(zones().getZoneName(1), "Zone 2");
    EXPECT_EQ(m_driver->textOf(u"EditZone"), u"Zone 2") << "the zone that was renamed";
    EXPECT_EQ(tip(u"ButtonUndo"), u"Undo: add zone (Ctrl+Z)");
    EXPECT_EQ(tip(u"ButtonRedo"), u"Redo: rename (Ctrl+Y)");
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(zones().zoneCount(), 1);
    EXPECT_EQ(tip(u"ButtonUndo"), u"Undo: move point (Ctrl+Z)");
    undo();
    EXPECT_EQ(points(0, 7), drawn);
    EXPECT_TRUE(waitForFrame(7));
    EXPECT_EQ(frameText(), u"7");
    goTo(0);
    m_driver->press(Key::y, kControl);
    EXPECT_EQ(points(0, 7)[0], (Point{160, 130}));
    EXPECT_EQ(frameText(), u"7");
    m_driver->press(Key::z, kControlShift);
    m_driver->click(u"ButtonRedo");
    EXPECT_EQ(zones().getZoneName(1), "Door");
    EXPECT_FALSE(m_driver->get(u"ButtonRedo").IsEnabled());
    // What is typed is the field's own until it is taken.
    m_driver->retype(u"EditZone", u"Gate");
    undo();
    EXPECT_EQ(zones().getZoneName(1), "Door");
    EXPECT_NE(m_driver->textOf(u"EditZone"), u"Gate");
    m_driver->press(Key::escape);
    m_driver->click(u"ButtonSave");
    while (m_driver->get(u"ButtonUndo").IsEnabled()) { // past the save
        undo();
    }
    EXPECT_EQ(zones().zoneCount(), 0);
}

TEST_F(ZoneEditUndo, IsNotForTheMiddleOfADrag) {
    show(kFrames, 1);
    drawTriangle();
    m_driver->send(EventKind::mouseDown, at(100, 100));
    m_driver->hover(at(120, 120));
    undo();
    EXPECT_FALSE(m_driver->get(u"ButtonUndo").IsEnabled());
    m_driver->hover(at(140, 140));
    m_driver->send(EventKind::mouseUp, at(140, 140));
    EXPECT_EQ(points(0, 0)[0], (Point{140, 140}));
    undo();
    EXPECT_EQ(points(0, 0)[0], (Point{100, 100})) << "the whole drag";
}

TEST_F(ZoneEditUndo, TheStateSaysWhetherTheZonesAreSaved) {
    show(kFrames);
    EXPECT_EQ(state(), u"");
    addZone();
    EXPECT_EQ(state(), u"Not saved yet");
    undo();
    EXPECT_EQ(state(), u"");
    addZone();
    m_driver->click(u"ButtonSave");
    EXPECT_TRUE(state().starts_with(u"Saved "));
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(state(), u"Modified");
    undo();
    EXPECT_TRUE(state().starts_with(u"Saved "));
    std::filesystem::remove("Scenes/Fire/clip-ZoneInfo.bin");
    support::makeFolder("Scenes/Fire/clip-ZoneInfo.bin");
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(state(), u"Not saved");
    addZone();
    EXPECT_EQ(state(), u"Not saved") << "until a good one";
    std::filesystem::remove("Scenes/Fire/clip-ZoneInfo.bin");
    m_driver->click(u"ButtonSave");
    show();
    EXPECT_TRUE(state().starts_with(u"Saved ")) << "the file's time";
}

TEST_F(ZoneEditUndo, AnEarlierVersionIsOpenedByTheMenuAndRestoredAsAStep) {
    show(kFrames, 1);
    m_driver->enter(u"EditZone", u"Door");
    drawTriangle();
    m_driver->click(u"ButtonSave");
    m_driver->drag({at(100, 100), at(150, 120)});
    addZone();
    m_driver->click(u"ButtonSave");
    const auto now = allPoints();
    m_driver->click(u"ButtonMenu");
    EXPECT_EQ(test::menuOf(*m_driver),
              (Texts{u"Clear Lines", u"Fill Between Keys", u"Keep the Grab Distance", u"-",
                     u"Interpolate All Gaps", u"Match Points", u"Duplicate Zone", u"-",
                     u"Earlier Versions…", u"Settings…", u"Keys", u"Manual"}));
    m_driver->press(Key::home);
    for (int row = 0; row < 6; ++row) {
        m_driver->press(Key::down);
    }
    inWindow("EarlierVersions.xml", [](const test::WindowDriver& versions) {
        EXPECT_TRUE(
            test::pumpUntil([&] { return versions.get(u"ButtonRestoreVersion").IsEnabled(); }));
        const auto& list = versions.get<toolkit::CListUI>(u"ListVersions");
        EXPECT_EQ(list.GetCount(), 2) << "a day and its version";
        EXPECT_FALSE(versions.get(u"OptionVersionMap").IsVisible()) << "zones have no map";
        EXPECT_FALSE(versions.get(u"VersionMap").IsVisible());
        EXPECT_TRUE(versions.get(u"ListVersionActions").IsVisible());
        EXPECT_TRUE(list.GetItemAt(1)->accessibleName().ends_with(
            u", 1 zone fewer, zone Door: frames 0 to 19"));
        versions.click(u"ButtonRestoreVersion");
    });
    m_driver->press(Key::enter);
    EXPECT_EQ(zones().zoneCount(), 1);
    // In whole pixels of the video, as a save stores them.
    EXPECT_EQ(points(0, 7), (std::vector<Point>{{100, 105}, {300, 105}, {200, 405}}));
    EXPECT_EQ(state(), u"Modified") << "only Save writes";
    EXPECT_EQ(m_driver->get(u"ButtonUndo").GetToolTip(), u"Undo: restore version (Ctrl+Z)");
    undo();
    EXPECT_EQ(zones().zoneCount(), 2);
    EXPECT_EQ(allPoints(), now);
    EXPECT_TRUE(state().starts_with(u"Saved "));
    addZone();
    EXPECT_EQ(zones().zoneCount(), 3) << "the editor works again";
}

TEST_F(ZoneEditUndo, AChangeOverOtherShapesOffersTwoWaysBack) {
    followTriangle();
    const auto before = allPoints();
    const Texts offer{u"Changed 10 later frames that had their own shape.", u"Undo",
                      u"Only This Frame"};
    const auto drag = [this] { m_driver->drag({at(300, 100), at(340, 90), at(350, 100)}); };
    drag();
    EXPECT_EQ(notice(), offer);
    EXPECT_EQ(points(0, 19)[1], (Point{350, 100}));
    m_driver->press(Key::f2);
    EXPECT_EQ(m_driver->focusName(), u"EditZone");
    m_driver->press(Key::f6);
    EXPECT_EQ(m_driver->focusName(), u"ButtonNoticeUndo") << "what the bar offers";
    m_driver->press(Key::f6);
    EXPECT_EQ(m_driver->focusName(), u"EditZone") << "where it was before";
    m_driver->press(Key::f6, {.shift = true});
    m_driver->press(Key::tab);
    m_driver->press(Key::space); // Only This Frame
    EXPECT_EQ(notice(), Texts());
    auto alone = before;
    alone[4][1] = {350, 100};
    EXPECT_EQ(allPoints(), alone);
    undo();
    EXPECT_EQ(allPoints(), before) << "both are one step";
    const std::function<void()> ends[] = {
        [this] { m_driver->click(u"ButtonNoticeUndo"); },
        [this] { m_driver->click(u"ButtonCloseNotice"); },
        [this] { m_driver->press(Key::escape); },
        [this] { undo(); },
        [this] {
            m_driver->drag({at(200, 400), at(201, 400), at(200, 300)});
        },
    };
    for (const auto& end : ends) {
        goTo(5);
        clickPicture(1000, 600);
        drag();
        goTo(0);
        goTo(4);
        clickPicture(200, 400); // chooses a point, which is no step
        EXPECT_EQ(notice(), offer) << "frames may be changed meanwhile";
        goTo(0);
        end();
        EXPECT_NE(notice(), offer) << &end - ends;
        for (int steps = 0; steps < 3 && allPoints() != before; ++steps) {
            undo();
        }
        ASSERT_EQ(allPoints(), before) << &end - ends;
    }
    // So is a drag of the whole shape, however many moves it takes.
    goTo(4);
    const std::pair<platform::EventKind, int> moves[] = {{platform::EventKind::mouseDown, 400},
                                                         {platform::EventKind::mouseMove, 420},
                                                         {platform::EventKind::mouseMove, 460},
                                                         {platform::EventKind::mouseUp, 460}};
    for (const auto& [kind, x] : moves) {
        test::input().mouse(m_driver->native(), kind, at(x, 200), platform::MouseButton::left,
                            kControl);
    }
    test::pump();
    EXPECT_EQ(notice(), offer);
    m_driver->click(u"ButtonOnlyThisFrame");
    auto scaled = before;
    scaled[4] = points(0, 4);
    EXPECT_NE(scaled, before);
    EXPECT_EQ(allPoints(), scaled);
    undo();
    EXPECT_EQ(allPoints(), before);
    // Flags that were set later are such a change; other shapes alone are none.
    goTo(15);
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(notice(), Texts());
    goTo(12);
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(notice(), (Texts{u"Changed 5 later frames that had their own shape.", u"Undo",
                               u"Only This Frame"}));
    m_driver->click(u"ButtonOnlyThisFrame");
    EXPECT_FALSE(zones().isActive(0, 12));
    EXPECT_TRUE(zones().isActive(0, 13));
    EXPECT_FALSE(zones().isActive(0, 15));
}

TEST_F(ZoneEditUndo, AddAndDeleteThatMissFramesOfferAllFrames) {
    followTriangle();
    m_driver->click(u"OptionProgressChanges");
    m_driver->drag({at(100, 100), at(300, 300)});
    m_driver->drag({at(300, 100), at(104, 100)}); // frame 4 has another point in its place
    m_driver->click(u"OptionProgressChanges");
    goTo(0);
    const auto before = allPoints();
    m_driver->click(u"OptionDeletePoint");
    clickPicture(100, 100); // on the later ones it lies elsewhere
    EXPECT_EQ(notice(), (Texts{u"Removed on 9 of 20 frames.", u"Undo", u"On All Frames"}));
    EXPECT_EQ(points(0, 4), (std::vector<Point>{{300, 300}, {200, 400}}));
    m_driver->click(u"ButtonNoticeUndo");
    EXPECT_EQ(allPoints(), before);
    clickPicture(100, 100);
    m_driver->click(u"ButtonOnAllFrames");
    EXPECT_EQ(notice(), Texts());
    std::vector corners(kFrames, std::vector<Point>{{300, 100}, {200, 400}});
    corners[4][0] = {104, 100};
    EXPECT_EQ(allPoints(), corners);
    undo();
    EXPECT_EQ(allPoints(), before);
    clickPicture(100, 100);
    // Where the later frames have three points, those before have two.
    goTo(15);
    m_driver->click(u"OptionMovePoint");
    clickPicture(200, 400);
    m_driver->click(u"OptionAddPoint");
    m_driver->drag({at(600, 600), at(640, 610)});
    EXPECT_EQ(notice(), (Texts{u"Added on 10 of 20 frames.", u"Undo", u"On All Frames"}));
    m_driver->click(u"ButtonOnAllFrames");
    EXPECT_EQ(points(0, 0), (std::vector<Point>{{300, 100}, {200, 400}, {640, 610}})) << "its last";
    EXPECT_EQ(points(0, 10)[3], (Point{645, 604})) << "as its neighbours lie there";
    EXPECT_EQ(points(0, 15)[3], (Point{640, 610}));
    const auto everywhere = allPoints();
    undo();
    EXPECT_EQ(points(0, 15).size(), 3U);
    m_driver->press(Key::y, kControl);
    EXPECT_EQ(allPoints(), everywhere);
}

TEST_F(ZoneEditUndo, APointAddedToAShapeThatMovesOffersToGoWithItsNeighbours) {
    followTriangle();
    const auto before = allPoints();
    goTo(12);
    clickPicture(112, 100);
    m_driver->click(u"OptionAddPoint");
    clickPicture(206, 100); // in the middle of the line here
    EXPECT_EQ(points(0, 0)[1], (Point{206, 100})) << "as Add always does";
    EXPECT_EQ(notice(),
              (Texts{u"Added at the same place on 15 frames where the shape is elsewhere.", u"Undo",
                     u"On All Frames"}));
    m_driver->click(u"ButtonOnAllFrames");
    EXPECT_EQ(notice(), Texts());
    for (int frame = 0; frame < kFrames; ++frame) {
        const std::vector<Point> all = points(0, frame);
        EXPECT_EQ(all[1], (Point{(all[0].x + all[2].x + 1) / 2, 100})) << frame;
    }
    undo();
    EXPECT_EQ(allPoints(), before) << "one step";
}

TEST_F(ZoneEditUndo, TheBarSaysWhatTheCaptionHasNoRoomFor) {
    m_gui.host.screenHeight = 700;
    makeClip(kFrames);
    const std::string base = "Scenes/Fire/" + std::string(30, 'W');
    std::filesystem::rename("Scenes/Fire/clip.ogv", base + ".ogv");
    m_state.zoneEditVideo = base + ".ogv";
    show();
    addZone();
    addZone();
    EXPECT_EQ(notice(), Texts());
    const std::u16string name(40, u'W');
    for (const int zone : {0, 1}) {
        m_driver->pick(u"ComboZone", zone);
        m_driver->enter(u"EditZone", name);
    }
    const Texts hint{u"2 zones are named \"" + name +
                     u"\": actions tell zones apart by their names alone."};
    EXPECT_EQ(notice(), hint);
    EXPECT_FALSE(isVisible(u"LabelNote")) << "not twice";
    drawTriangle();
    for (const int frame : {15, 0}) {
        m_driver->click(u"OptionProgressChanges");
        m_driver->click(u"ButtonSave"); // about which the next step leaves nothing to say
        goTo(frame);
        m_driver->click(u"OptionToggleActive");
    }
    const Texts offer{u"Changed 1 later frame that had its own shape.", u"Undo",
                      u"Only This Frame"};
    EXPECT_EQ(notice(), offer) << "in front of a hint that changes at the same time";
    undo();
    m_driver->click(u"OptionDeletePoint");
    clickPicture(100, 100);
    EXPECT_EQ(notice(), hint) << "behind what is said for a time";
    m_driver->click(u"ButtonCloseNotice");
    EXPECT_EQ(notice(), Texts());
    goTo(1);
    EXPECT_EQ(notice(), Texts()) << "it was read";
    undo();
    m_driver->enter(u"EditZone", u"Z");
    EXPECT_TRUE(isVisible(u"LabelNote"));
    // A refusal leaves the caption to the fault, and goes after its time.
    std::filesystem::remove(base + "-ZoneInfo.xml");
    support::makeFolder(base + "-ZoneInfo.xml");
    m_driver->click(u"OptionToggleActive");
    m_driver->click(u"ButtonSave");
    const Texts fault = notice();
    const Point sign = m_driver->get(u"NoticeSign").GetPos().topLeft();
    const platform::Bitmap picture = m_driver->picture();
    int amber = 0;
    for (int pixel = 0; pixel < 256; ++pixel) {
        amber += picture.at(sign.x + pixel % 16, sign.y + pixel / 16) == 0xFFB97A0A ? 1 : 0;
    }
    EXPECT_GT(amber, 0) << "a sign of its own";
    m_driver->click(u"ButtonCloseNotice");
    EXPECT_TRUE(fault != offer && notice() == offer) << "the fault came later";
    m_driver->enter(u"EditCurrentFrame", u"x");
    EXPECT_EQ(notice(), Texts{u"Not a frame number"});
    platform::Event time;
    time.kind = EventKind::timer;
    time.timerId = zoneedit::kNoticeTimer;
    m_window->HandleMessage(time);
    EXPECT_EQ(notice(), offer) << "it never goes by time";
    m_driver->enter(u"EditCurrentFrame", u"y");
    EXPECT_EQ(notice(), Texts{u"Not a frame number"}) << "each time";
    m_driver->click(u"ButtonCloseNotice");
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(notice(), fault) << "each time, too";
    undo();
    m_driver->click(u"OptionToggleActive");
    EXPECT_EQ(notice(), offer);
    m_driver->click(u"ButtonCloseNotice");
    EXPECT_EQ(notice(), fault);
}

} // namespace
