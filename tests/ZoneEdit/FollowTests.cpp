// Following what is in a zone, by real events: the reference job of a box that moves through 300
// frames, where following ends, and what becomes of what it found.
#include <cmath>
#include <cstddef>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "ZoneEdit/ZoneTexts.h"
#include "bench/FollowedClip.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/BoxClip.h"
#include "track/Geometry.h"

namespace {

using platform::Key;
using platform::Point;

constexpr int kScaleX = 2; // of the window's picture to the clip's

class ZoneEditFollow : public test::ZoneEditTest {
protected:
    ZoneEditFollow() {
        m_clip.width = 640;
        m_clip.height = 368;
        m_clip.side = 30;
        m_clip.place = [](int frame) {
            return Point{40 + frame * 3 / 2, 160 + static_cast<int>(90 * std::sin(frame / 25.0))};
        };
    }

    void showBox(int frames) {
        m_clip.frames = frames;
        support::makeFolder("Scenes/Fire");
        support::writeBytes("Scenes/Fire/clip.ogv", m_clip.make());
        m_state.zoneEditVideo = sceneFolder("Fire") + "clip.ogv";
        show();
    }
    void draw(int frame) {
        mouse(platform::EventKind::mouseDown, boxOn(frame)[0]);
        mouse(platform::EventKind::mouseMove, boxOn(frame)[2]);
        mouse(platform::EventKind::mouseUp, boxOn(frame)[2]);
    }
    /// A zone round the box, on all frames.
    void drawZone(int frame = 0) {
        addZone();
        m_driver->click(u"OptionAddMultiPoint");
        draw(frame);
        m_driver->click(u"OptionMovePoint");
    }
    void press(Key key) { test::press(m_driver->native(), key); }
    bool waitForEnd() {
        return test::pumpUntil([&] { return m_driver->get(u"ButtonFollowDiscard").IsVisible(); });
    }
    /// Follows from the first frame and returns while that goes on. Where a busy machine has done
    /// it all by then, it tries again.
    bool startAndSeeItRun() {
        for (int tries = 0; tries < 20; ++tries) {
            goTo(0);
            press(Key::f);
            (void)test::pumpUntil([&] {
                return m_driver->textOf(u"LabelFollow").find(u"frame 0 ") == std::u16string::npos;
            });
            if (m_driver->get(u"ButtonFollowStop").IsVisible()) {
                return true;
            }
            m_driver->click(u"ButtonFollowDiscard");
        }
        return false;
    }
    bool panelShows() { return m_driver->get(u"PanelFollow").IsVisible(); }

    /// The corners of the box in display pixels.
    [[nodiscard]] std::vector<Point> boxOn(int frame) const {
        const Point at = m_clip.place(frame);
        const auto y = [](int row) { return row * 720 / 368; };
        const int right = kScaleX * (at.x + m_clip.side) - 1;
        const int bottom = y(at.y + m_clip.side) - 1;
        return {
            {kScaleX * at.x, y(at.y)}, {right, y(at.y)}, {right, bottom}, {kScaleX * at.x, bottom}};
    }
    /// Green and white pixels along the upper edge of the box.
    std::pair<int, int> stripes(int frame) {
        test::pump();
        const platform::Bitmap picture = m_driver->picture();
        const Point from = at(boxOn(frame)[0].x, boxOn(frame)[0].y);
        std::pair<int, int> count;
        for (int y = from.y - 4; y <= from.y + 4; ++y) {
            for (int x = from.x; x < from.x + kScaleX * m_clip.side; ++x) {
                count.first += picture.at(x, y) == 0xFF1B6B3C ? 1 : 0;
                count.second += picture.at(x, y) == 0xFFFFFFFF ? 1 : 0;
            }
        }
        return count;
    }
    double overlapOn(int frame) {
        const auto polygon = [](const std::vector<Point>& points) {
            track::Polygon result;
            for (const Point& p : points) {
                result.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
            }
            return result;
        };
        return bench::overlap(polygon(points(0, frame)), polygon(boxOn(frame)));
    }

    /// Over the 300 frames of a reference job; ./test shows the line.
    double printedOverlap(const char* way, int inputs) {
        double mean = 0;
        for (int frame = 0; frame < 300; frame += 5) {
            mean += overlapOn(frame) / 60;
        }
        std::cout << "reference job by " << way << ": " << inputs
                  << " inputs (598 in 1.0.0), mean overlap " << mean << '\n';
        return mean;
    }

    support::BoxClip m_clip;

private:
    void mouse(platform::EventKind kind, Point at) {
        test::input().mouse(m_driver->native(), kind, this->at(at.x, at.y),
                            platform::MouseButton::left, {.control = true});
        test::pump();
    }
};

TEST_F(ZoneEditFollow, TheReferenceJobTakesFiveInputs) {
    showBox(300);
    int inputs = 0;
    const auto input = [&](auto act) {
        act();
        ++inputs;
    };
    input([&] { addZone(); });
    input([&] { m_driver->click(u"OptionAddMultiPoint"); });
    input([&] { draw(0); });
    const auto drawn = points(0, 0);
    input([&] { press(Key::f); });
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 299.");
    EXPECT_EQ(points(0, 299), drawn) << "nothing is changed before it is accepted";
    input([&] { m_driver->click(u"ButtonFollowAccept"); });
    EXPECT_FALSE(panelShows());
    EXPECT_LE(inputs, 6);
    EXPECT_GE(printedOverlap("Follow", inputs), 0.9);
    // One step, and back.
    EXPECT_EQ(m_window->session().undoLabel()->name, zone::StepLabel::Name::follow);
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(points(0, 299), drawn);
}

TEST_F(ZoneEditFollow, TheReferenceJobByKeysTakesTenInputs) {
    m_clip.place = [](int frame) { // straight, with two turns
        return frame < 100   ? Point{40 + 2 * frame, 60 + frame}
               : frame < 200 ? Point{240 + 3 * (frame - 100), 160}
                             : Point{540 - 4 * (frame - 200), 160 + (frame - 200)};
    };
    showBox(300);
    drawZone(); // three inputs
    m_driver->manager().SetFocus(nullptr);
    test::press(m_driver->native(), Key::i, {.shift = true});
    int inputs = 4;
    const auto middle = [this](int frame) {
        const auto box = boxOn(frame);
        return at((box[0].x + box[2].x) / 2, (box[0].y + box[2].y) / 2);
    };
    int before = 0;
    for (const int frame : {100, 200, 299}) {
        goTo(frame);
        m_driver->drag({middle(before), middle(frame)});
        inputs += 2;
        before = frame;
    }
    EXPECT_LE(inputs, 12);
    EXPECT_GE(printedOverlap("keys", inputs), 0.95);
}

TEST_F(ZoneEditFollow, ItStopsAtTheNextKeyAndMeetsIt) {
    showBox(40);
    drawZone();
    goTo(30);
    const Point from = boxOn(0)[0];
    const Point to = boxOn(30)[0];
    const Point middle{from.x + 29, from.y + 28};
    m_driver->drag(
        {at(middle.x, middle.y), at(middle.x + to.x - from.x, middle.y + to.y - from.y)});
    const auto key = points(0, 30);
    ASSERT_NE(key, points(0, 0));
    goTo(0);
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 29.");
    EXPECT_EQ(m_driver->textOf(u"LabelMatch").substr(0, 23), u"29 frames, least match ");
    m_driver->click(u"ButtonFollowAccept");
    EXPECT_EQ(points(0, 30), key);
    for (const int frame : {1, 10, 20, 29}) {
        EXPECT_GE(overlapOn(frame), 0.85) << frame;
    }
    // A range of one frame leads nowhere, whatever keys are in front of it, and no range to frames
    // outside of it.
    goTo(35);
    press(Key::b);
    press(Key::e);
    for (const int frame : {35, 32}) {
        goTo(frame);
        press(Key::f);
        EXPECT_FALSE(panelShows()) << frame;
        EXPECT_EQ(
            m_driver->textOf(u"LabelNotice"),
            u"There is no frame to follow to: the next one is a key, or the range ends here.");
    }
}

TEST_F(ZoneEditFollow, KeysThatTheAuthorDidNotPutThereDoNotEndIt) {
    const auto expectFollowed = [this](const char16_t* end) {
        press(Key::f);
        ASSERT_TRUE(panelShows()) << core::wideToNarrow(m_driver->textOf(u"LabelNotice"));
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(m_driver->textOf(u"LabelFollow"), end);
        m_driver->click(u"ButtonFollowDiscard");
    };
    const auto dragCorner = [this](int frame) {
        const Point corner = points(0, frame)[0];
        m_driver->drag({at(corner.x, corner.y), at(corner.x - 6, corner.y - 4)});
    };
    showBox(40); // switched off on the later frames
    drawZone();
    goTo(20);
    press(Key::a);
    goTo(0);
    expectFollowed(u"Followed to frame 39.");

    showBox(40); // a first drawing that was adjusted at once
    goTo(30);
    drawZone(30);
    dragCorner(30);
    press(Key::e);
    goTo(0);
    press(Key::b);
    goTo(30);
    expectFollowed(u"Followed to frame 0.");

    showBox(40); // but where it was drawn is one
    goTo(30);
    drawZone(30);
    goTo(29);
    press(Key::f);
    EXPECT_FALSE(panelShows());

    showBox(40); // on one frame
    m_driver->click(u"OptionProgressChanges");
    drawZone();
    dragCorner(0);
    ASSERT_NE(points(0, 1), points(0, 0));
    expectFollowed(u"Followed to frame 39.");

    m_clip.place = [](int frame) { return Point{40 + frame / 2, 160}; };
    showBox(40); // filled up to a frame where the line to the next one is as good
    drawZone();
    m_driver->manager().SetFocus(nullptr);
    test::press(m_driver->native(), Key::i, {.shift = true});
    goTo(20);
    const Point from = boxOn(0)[0];
    m_driver->drag({at(from.x + 29, from.y + 28), at(from.x + 49, from.y + 28)});
    expectFollowed(u"Followed to frame 39.");
}

TEST_F(ZoneEditFollow, WhatWasFollowedIsCorrectedAndFollowedAgain) {
    showBox(60); // on a curve: nearly every frame is a key
    drawZone();
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 59.");
    m_driver->click(u"ButtonFollowAccept");
    goTo(30);
    const Point corner = points(0, 30)[0];
    m_driver->drag({at(corner.x, corner.y), at(corner.x - 6, corner.y - 4)});
    const auto corrected = points(0, 30);
    for (const auto& [from, to] : {std::pair{0, 29}, std::pair{30, 59}, std::pair{40, 59}}) {
        goTo(from);
        press(Key::f);
        ASSERT_TRUE(waitForEnd()) << from;
        EXPECT_EQ(m_driver->textOf(u"LabelFollow"),
                  u"Followed to frame " + core::displayText(std::to_string(to)) + u".");
        m_driver->click(u"ButtonFollowAccept");
        EXPECT_EQ(points(0, 30), corrected);
    }
    goTo(29);
    press(Key::f);
    EXPECT_FALSE(panelShows());
    EXPECT_EQ(m_driver->textOf(u"LabelNotice"),
              u"There is no frame to follow to: the next one is a key, or the range ends here.");
    // A taken back step is no reason to go on over what it had made.
    for (int step = 0; step < 4; ++step) {
        m_driver->press(Key::z, {.control = true});
    }
    EXPECT_EQ(m_window->session().editingOf(0).followed.size(), 1U);
}

TEST_F(ZoneEditFollow, TheButtonOfTheRangeFollowsWithinItAndStripesShowWhatWasFound) {
    showBox(40);
    drawZone();
    press(Key::b);
    goTo(20);
    press(Key::e);
    goTo(0);
    ASSERT_TRUE(isVisible(u"PanelRange"));
    m_driver->click(u"ButtonFollow");
    EXPECT_FALSE(isVisible(u"PanelRange")) << "both have the same place";
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 20.");
    const platform::Rect panel = m_driver->get(u"PanelFollow").GetPos();
    constexpr int kOwnWidth = 0; // of its text
    const struct {
        const char16_t* name;
        int left;
        int width;
    } places[] = {{u"LabelFollow", 38, 300},
                  {u"LabelMatch", 350, kOwnWidth},
                  {u"ButtonFollowDiscard", 632, 96},
                  {u"ButtonFollowAccept", 736, 88}};
    for (const auto& place : places) {
        const platform::Rect at = m_driver->get(place.name).GetPos();
        EXPECT_EQ(at.left - panel.left, place.left) << core::wideToNarrow(place.name);
        EXPECT_TRUE(at.width() == place.width || place.width == kOwnWidth)
            << core::wideToNarrow(place.name) << " " << at.width();
    }
    EXPECT_GT(stripes(20).first, 40);
    EXPECT_GT(stripes(20).second, 40);
    m_driver->click(u"ButtonFollowDiscard");
    EXPECT_EQ(stripes(20).first, 0);
    EXPECT_TRUE(isVisible(u"PanelRange"));
}

TEST_F(ZoneEditFollow, BackwardsFromTheLastFrame) {
    showBox(30);
    drawZone(29);
    goTo(29);
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 0.");
    m_driver->click(u"ButtonFollowAccept");
    EXPECT_GE(overlapOn(0), 0.85);
}

TEST_F(ZoneEditFollow, LostSightIsSaidAndWhatWasFoundIsOffered) {
    m_clip.hiddenFrom = 20;
    showBox(60);
    press(Key::f); // without a zone
    EXPECT_FALSE(panelShows());
    addZone();
    press(Key::f);
    EXPECT_EQ(m_driver->textOf(u"LabelNotice"), u"Draw the zone on this frame first.");
    m_driver->click(u"OptionAddMultiPoint");
    draw(0);
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    const std::u16string said = m_driver->textOf(u"LabelFollow");
    EXPECT_EQ(said.substr(0, 21), u"Lost sight at frame 2");
    EXPECT_NE(said.find(u" frames found."), std::u16string::npos);
    const auto drawn = points(0, 5);
    m_driver->click(u"ButtonFollowDiscard");
    EXPECT_FALSE(panelShows());
    EXPECT_EQ(points(0, 5), drawn);
    // Any other step discards it, too.
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    m_driver->click(u"ButtonUndo");
    EXPECT_FALSE(panelShows());
    EXPECT_EQ(zoneedit::followedMatchText(0, 1), u"") << "of no frame";
}

TEST_F(ZoneEditFollow, WhileItRunsItCanBeStoppedAcceptedAndGivenUpByAnyStep) {
    showBox(300);
    drawZone();
    const auto drawn = points(0, 299);
    const std::size_t steps = m_window->session().history().position();
    ASSERT_TRUE(startAndSeeItRun());
    m_driver->click(u"ButtonFollowStop");
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow").substr(0, 18), u"Followed to frame ");
    m_driver->click(u"ButtonFollowDiscard");
    EXPECT_EQ(m_window->session().history().position(), steps);
    ASSERT_TRUE(startAndSeeItRun());
    m_driver->click(u"ButtonFollowAccept");
    ASSERT_TRUE(test::pumpUntil([&] { return !panelShows(); }));
    EXPECT_EQ(m_window->session().history().position(), steps + 1);
    EXPECT_NE(points(0, 1), drawn);
    EXPECT_EQ(points(0, 299), drawn) << "it had not come to its end";
    goTo(0);
    press(Key::b);
    goTo(299);
    press(Key::e);
    ASSERT_TRUE(startAndSeeItRun());
    m_driver->click(u"ButtonUndo");
    EXPECT_FALSE(panelShows());
    EXPECT_TRUE(test::pumpUntil([&] { return m_driver->get(u"ButtonFollow").IsEnabled(); }));
    EXPECT_EQ(points(0, 1), drawn);
    test::pump();
    EXPECT_EQ(m_window->session().history().position(), steps) << "nor does it come later";
}

TEST_F(ZoneEditFollow, ANextKeyWithOtherPointsEndsItButIsNotMet) {
    showBox(40);
    drawZone();
    goTo(30);
    const Point corner = points(0, 30)[2];
    m_driver->drag({at(corner.x, corner.y), at(corner.x + 60, corner.y + 40)});
    m_driver->click(u"OptionDeletePoint");
    m_driver->click(at(corner.x + 60, corner.y + 40));
    const auto key = points(0, 30);
    ASSERT_EQ(key.size(), 3U);
    goTo(0);
    press(Key::f);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow"), u"Followed to frame 29.");
    m_driver->click(u"ButtonFollowAccept");
    EXPECT_EQ(points(0, 30), key);
    for (const int frame : {1, 15, 29}) {
        EXPECT_GE(overlapOn(frame), 0.85) << frame;
    }
}

TEST_F(ZoneEditFollow, WhatIsFoundBelongsToItsZoneWhateverIsChosenOrPlayedMeanwhile) {
    showBox(300);
    drawZone();
    addZone(); // an empty one
    m_driver->pick(u"ComboZone", 0);
    m_driver->manager().SetFocus(nullptr);
    press(Key::space);
    ASSERT_EQ(m_driver->get(u"ButtonPlayVideo").accessibleName(), u"Pause");
    press(Key::space);
    ASSERT_TRUE(startAndSeeItRun());
    press(Key::space); // plays
    m_driver->pick(u"ComboZone", 1);
    goTo(200);
    ASSERT_TRUE(waitForEnd());
    m_driver->click(u"ButtonFollowAccept");
    EXPECT_FALSE(panelShows());
    EXPECT_GE(overlapOn(1), 0.85);
    EXPECT_NE(points(0, 1), points(0, 0)) << "it has moved";
    EXPECT_TRUE(points(1, 1).empty());
}

TEST_F(ZoneEditFollow, EscAndStopEndItAtOnceAndTheWindowMayCloseMeanwhile) {
    showBox(300);
    drawZone();
    ASSERT_TRUE(startAndSeeItRun());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow").substr(0, 11), u"Following \"");
    press(Key::escape);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(m_driver->textOf(u"LabelFollow").substr(0, 18), u"Followed to frame ");
    press(Key::escape);
    EXPECT_FALSE(panelShows());
    goTo(0);
    press(Key::f);
    m_window->Close(0); // the fixture destroys it while the work goes on
}

} // namespace
