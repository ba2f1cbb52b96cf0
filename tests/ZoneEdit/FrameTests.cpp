// Stepping through the frames of a video: the number in the edit, the picture on the screen.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "ZoneEdit/WindowTimer.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/FileSystem.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "video/CVideoUI.h"

namespace {

using platform::Key;

std::u16string number(int value) {
    return core::displayText(std::to_string(value));
}

const struct {
    const char16_t* button; ///< null: a key
    Key key;
    bool shift;
    int by;
    int times = 1;
} kSteps[] = {
    {u"ButtonPrevious10", {}, false, -10}, {u"ButtonPrevious", {}, false, -1},
    {u"ButtonNext", {}, false, 1},         {u"ButtonNext10", {}, false, 10},
    {nullptr, Key::left, true, -10},       {nullptr, Key::left, false, -1},
    {nullptr, Key::right, false, 1},       {nullptr, Key::right, true, 10},
    {nullptr, Key::right, false, 1, 7}, // held down: steps that nobody waits for
};

class ZoneEditFrames : public test::ZoneEditTest {};

TEST_F(ZoneEditFrames, TheScreenShowsTheCurrentFrameAfterHundredsOfSteps) {
    constexpr int kFrames = 40;
    makeClip(kFrames, 16);
    show();
    std::mt19937 random(7);
    int frame = 0;
    for (int count = 0; count < 250; ++count) {
        const std::size_t choice = random() % (std::size(kSteps) + 1);
        if (choice == std::size(kSteps)) {
            frame = static_cast<int>(random() % kFrames);
            goTo(frame);
        } else if (kSteps[choice].button != nullptr) {
            m_driver->click(kSteps[choice].button);
            frame += kSteps[choice].by;
        } else {
            for (int held = 0; held < kSteps[choice].times; ++held) {
                test::input().key(m_driver->native(), platform::EventKind::keyDown,
                                  kSteps[choice].key, {}, {.shift = kSteps[choice].shift});
                frame += kSteps[choice].by;
            }
            test::pump();
        }
        frame = std::clamp(frame, 0, kFrames - 1);
        ASSERT_EQ(frameText(), number(frame)) << count;
        ASSERT_TRUE(waitForFrame(frame)) << count << ": shows " << shownFrame();
    }
    EXPECT_EQ(m_log.errors(), test::kNoZones);
}

TEST_F(ZoneEditFrames, ATypedFrameIsGoneToWhenTheEditIsLeft) {
    show(30);
    std::size_t errors = test::kNoZones.size();
    const struct {
        std::u16string text;
        int shown;
        std::u16string note = {};
        std::size_t errors = 0;
    } cases[] = {{u"17", 17},
                 {u"17", 17},
                 {u"2o", 2},
                 {u"99", 29},
                 {u"-5", 0},
                 {u" +12abc", 12},
                 {u"", 12, u"Not a frame number"},
                 {u"abc", 12, u"Not a frame number", 1},
                 {u"+-8", 12, u"Not a frame number", 1},
                 {u"007", 7},
                 {u"99999999999", 29, u"", 1},
                 {u"-99999999999", 0, u"", 1},
                 {u"8", 8}};
    for (const auto& typed : cases) {
        SCOPED_TRACE(core::storedText(typed.text));
        m_driver->enter(u"EditCurrentFrame", typed.text);
        errors += typed.errors;
        EXPECT_EQ(frameText(), number(typed.shown));
        EXPECT_TRUE(waitForFrame(typed.shown));
        EXPECT_EQ(m_driver->textOf(u"LabelNote"), typed.note);
        EXPECT_EQ(m_log.errors().size(), errors);
    }
    m_driver->enter(u"EditCurrentFrame", u"x");
    m_driver->press(Key::right);
    EXPECT_EQ(m_driver->textOf(u"LabelNote"), u"");
    m_driver->retype(u"EditCurrentFrame", u"20");
    m_driver->press(Key::escape);
    EXPECT_EQ(frameText(), u"9") << "what stood there before";
    // Before a click elsewhere acts.
    m_driver->retype(u"EditCurrentFrame", u"12");
    m_driver->click(u"ButtonNext");
    EXPECT_EQ(frameText(), u"13");
    m_driver->retype(u"EditCurrentFrame", u"20");
    clickPicture(5, 5);
    EXPECT_TRUE(waitForFrame(20));
}

TEST_F(ZoneEditFrames, WhatIsNoFrameNumberIsSaidForSomeSecondsAndUntilAnotherFrameShows) {
    show(30);
    resize({1900, 900});
    ASSERT_TRUE(isVisible(u"EditRangeFrom"));
    platform::Event time;
    time.kind = platform::EventKind::timer;
    time.timerId = zoneedit::kHeaderTimer;
    for (const auto* field : {u"EditCurrentFrame", u"EditRangeFrom", u"EditRangeTo"}) {
        for (const bool byTime : {true, false}) {
            m_driver->enter(field, u"x");
            EXPECT_EQ(m_driver->textOf(u"LabelNote"), u"Not a frame number");
            byTime ? (void)m_window->HandleMessage(time) : m_driver->press(Key::end);
            EXPECT_EQ(m_driver->textOf(u"LabelNote"), u"");
            m_driver->press(Key::home);
        }
    }
    EXPECT_EQ(m_driver->textOf(u"EditRangeFrom"), u"");
}

TEST_F(ZoneEditFrames, TheArrowsBelongToAnEditAndToAnOpenList) {
    show(30, 1);
    for (const auto* control : {u"EditCurrentFrame", u"ComboZone"}) {
        m_driver->click(control);
        m_driver->press(Key::right);
        EXPECT_EQ(frameText(), u"0");
    }
    m_driver->press(Key::escape);
    // Closed, the list leaves left and right to the window, and so do the tools.
    m_driver->press(Key::right);
    m_driver->click(u"OptionMovePoint");
    m_driver->press(Key::right);
    EXPECT_EQ(frameText(), u"2");
    EXPECT_TRUE(test::isChecked(*m_driver, u"OptionMovePoint"));
}

TEST_F(ZoneEditFrames, AMissingOrBrokenVideoClosesTheWindowAndNothingElse) {
    makeClip(1);
    scene().newScene("Fire");
    scene().AddBranch();
    std::vector<std::string> expected;
    for (const char* content : {"", "OggS and nothing that follows from it", "missing"}) {
        support::writeBytes("Scenes/Fire/clip.ogv", content);
        if (content == std::string("missing")) {
            std::filesystem::remove("Scenes/Fire/clip.ogv");
        }
        const auto window = zoneedit::ZoneEdit::create(context());
        EXPECT_TRUE(window->run());
        EXPECT_FALSE(m_state.quit);
        EXPECT_EQ(window->result().unreadableVideo, m_state.zoneEditVideo);
        expected.emplace_back("Unable to load Theora video");
        expected.push_back("Unable to load video " + m_state.zoneEditVideo);
    }
    EXPECT_EQ(m_log.errors(), expected);
    EXPECT_EQ(scene().branchCount(), 1);
}

TEST_F(ZoneEditFrames, AVideoWithoutFramesLeavesItsZonesAlone) {
    show(3, 1);
    m_driver->click(u"ButtonSave");
    const char* const binary = "Scenes/Fire/clip-ZoneInfo.bin";
    const std::string saved = support::readBytes(binary);
    show(0);
    ASSERT_LT(m_window->FindControl<video::CVideoUI>(u"Video")->video()->frameCount, 1);
    for (const auto* tool : {u"OptionMovePoint", u"OptionAddPoint", u"OptionDeletePoint"}) {
        m_driver->click(tool);
        m_driver->drag({at(100, 100), at(200, 200)});
    }
    m_driver->click(u"OptionToggleActive");
    m_driver->press(Key::right);
    addZone();
    goTo(2);
    EXPECT_EQ(frameText(), u"0");
    EXPECT_EQ(m_driver->textOf(u"EditTotalFrames"), u"0");
    const std::u16string problem =
        u"The length of this video is unknown: there are no frames to step through or draw on.";
    EXPECT_TRUE(isVisible(u"LabelNotice")) << "the caption has no room for it";
    EXPECT_EQ(m_driver->textOf(u"LabelNotice"), problem);
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1800, 900));
    EXPECT_TRUE(test::pumpUntil([&] { return isVisible(u"LabelProblem"); })) << "now it has";
    EXPECT_FALSE(isVisible(u"PanelNotice"));
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"), problem);
    EXPECT_EQ(m_driver->textOf(u"EmptyLine"), u"The video's length is unknown.");
    EXPECT_EQ(m_driver->get<toolkit::CComboUI>(u"ComboZone").GetCount(), 1);
    EXPECT_EQ(m_log.errors(), test::kNoZones);
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(support::readBytes(binary), saved);
}

TEST_F(ZoneEditFrames, TheLayoutFitsTheScreenAndHasItsPageInTheManual) {
    makeClip(10);
    for (const auto& [height, size, page] :
         {std::tuple{860, platform::Size{1280, 720}, "Manual/ZoneEdit.html"},
          std::tuple{859, platform::Size{1024, 600}, "Manual/ZoneEditSmall.html"}}) {
        m_gui.host.screenHeight = height;
        support::writeBytes(page, "");
        show();
        m_driver->click(u"EditCurrentFrame");
        m_driver->press(Key::f1, {.shift = true});
        ASSERT_FALSE(m_gui.userDesktop.opened.empty());
        EXPECT_EQ(m_gui.userDesktop.opened.back(), core::services().fileSystem->fullPath(page));
        EXPECT_EQ(m_driver->get(u"Video").GetPos().size(), size);
        EXPECT_EQ((platform::Size{zones().videoWidth, zones().videoHeight}), size);
        EXPECT_TRUE(waitForFrame(0));
    }
    m_gui.host.fails = true;
    EXPECT_FALSE(zoneedit::ZoneEdit::create(context())->run());
    m_gui.host.fails = false;
    std::filesystem::remove("UI/ZoneEditSmall.xml");
    EXPECT_FALSE(zoneedit::ZoneEdit::create(context())->run());
}

TEST_F(ZoneEditFrames, WithoutTheVideoControlEveryUseIsReported) {
    makeClip(10);
    std::string layout = support::readBytes("UI/ZoneEdit.xml");
    layout.replace(layout.find("<Video "), 6, "<Label"); // one of another kind
    support::writeBytes("UI/ZoneEdit.xml", layout);
    show();
    m_driver->press(Key::right);
    m_driver->click(u"ButtonPrevious10");
    addZone();
    m_driver->click(platform::Point{600, 300});
    std::vector<std::string> expected; // two steps, one zone, and each press of the mouse
    for (const char* line : {"214", "402", "214", "402", "305", "402"}) {
        expected.push_back("..\\ZoneEdit\\ZoneEdit.cpp:" + std::string(line) +
                           " VideoUI is invalid");
    }
    EXPECT_EQ(m_log.errors(), expected);
}

} // namespace
