// Stepping through the frames of a video: the number in the edit, the picture on the screen.
#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "core/Text.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "video/CVideoUI.h"

namespace {

using platform::Key;
using platform::Modifiers;

Modifiers shift() {
    Modifiers modifiers;
    modifiers.shift = true;
    return modifiers;
}

std::u16string number(int value) {
    return core::displayText(std::to_string(value));
}

/// What the log says of a video that has no zones yet.
const std::vector<std::string> kNoZones{"Unable to load zone binary"};

class ZoneEditFrames : public test::ZoneEditTest {};

TEST_F(ZoneEditFrames, StartsOnTheFirstFrame) {
    makeClip(30);
    show();
    EXPECT_EQ(frameText(), u"0");
    EXPECT_EQ(m_driver->get(u"EditTotalFrames").GetText(), u"29");
    EXPECT_EQ(m_driver->get(u"LabelVideo").GetText(), u"clip.ogv");
    EXPECT_TRUE(waitForFrame(0));
    EXPECT_EQ(m_log.errors(), kNoZones);
}

struct Move {
    const char* what;
    int from;
    const char16_t* button; ///< null: a key
    Key key;
    bool shifted;
    int to;
};

TEST_F(ZoneEditFrames, ButtonsAndKeysStepAndStopAtTheEnds) {
    makeClip(30);
    show();
    const Move moves[] = {
        {"next", 0, u"ButtonNext", Key::other, false, 1},
        {"next 10", 1, u"ButtonNext10", Key::other, false, 11},
        {"previous", 11, u"ButtonPrevious", Key::other, false, 10},
        {"previous 10", 10, u"ButtonPrevious10", Key::other, false, 0},
        {"previous on the first", 0, u"ButtonPrevious", Key::other, false, 0},
        {"previous 10 near the first", 5, u"ButtonPrevious10", Key::other, false, 0},
        {"next 10 near the last", 27, u"ButtonNext10", Key::other, false, 29},
        {"next on the last", 29, u"ButtonNext", Key::other, false, 29},
        {"right", 3, nullptr, Key::right, false, 4},
        {"left", 4, nullptr, Key::left, false, 3},
        {"shift right", 3, nullptr, Key::right, true, 13},
        {"shift left", 13, nullptr, Key::left, true, 3},
        {"left on the first", 0, nullptr, Key::left, false, 0},
        {"shift right near the last", 27, nullptr, Key::right, true, 29},
    };
    for (const Move& move : moves) {
        m_driver->enter(u"EditCurrentFrame", number(move.from));
        ASSERT_EQ(frameText(), number(move.from)) << move.what;
        if (move.button != nullptr) {
            m_driver->click(move.button);
        } else {
            m_driver->press(move.key, move.shifted ? shift() : Modifiers{});
        }
        EXPECT_EQ(frameText(), number(move.to)) << move.what;
        EXPECT_TRUE(waitForFrame(move.to)) << move.what;
    }
    EXPECT_EQ(m_log.errors(), kNoZones);
}

struct Typed {
    std::u16string text;
    int shown;
    std::size_t errors;
};

TEST_F(ZoneEditFrames, ATypedFrameIsGoneToWhenTheEditIsLeft) {
    makeClip(30);
    show();
    std::size_t errors = kNoZones.size();
    for (const Typed& typed : {Typed{u"17", 17, 0}, Typed{u"17", 17, 0}, Typed{u"99", 29, 0},
                               Typed{u"-5", 0, 0}, Typed{u"12abc", 12, 0}, Typed{u"abc", 0, 1},
                               Typed{u"8", 8, 0}, Typed{u"", 0, 0}, Typed{u"99999999999", 0, 1}}) {
        m_driver->enter(u"EditCurrentFrame", typed.text);
        errors += typed.errors;
        EXPECT_EQ(frameText(), number(typed.shown)) << core::storedText(typed.text);
        EXPECT_TRUE(waitForFrame(typed.shown));
        EXPECT_EQ(m_log.errors().size(), errors);
    }
}

TEST_F(ZoneEditFrames, ATypedFrameIsTakenBeforeAClickElsewhereActs) {
    makeClip(30);
    show();
    test::typeInto(*m_driver, u"EditCurrentFrame", u"12");
    m_driver->click(u"ButtonNext");
    EXPECT_EQ(frameText(), u"13");
    test::typeInto(*m_driver, u"EditCurrentFrame", u"20");
    clickPicture(5, 5);
    EXPECT_EQ(frameText(), u"20");
    EXPECT_TRUE(waitForFrame(20));
}

TEST_F(ZoneEditFrames, TheArrowsBelongToAnEditAndToAnOpenList) {
    makeClip(30);
    show();
    m_driver->click(u"EditCurrentFrame");
    m_driver->press(Key::right);
    m_driver->press(Key::left);
    EXPECT_EQ(frameText(), u"0");
    m_driver->press(Key::enter);

    addZone();
    m_driver->click(u"ComboZone");
    m_driver->press(Key::right);
    EXPECT_EQ(frameText(), u"0");
    m_driver->press(Key::escape);
    // Closed, the list leaves left and right to the window.
    m_driver->press(Key::right);
    EXPECT_EQ(frameText(), u"1");
}

TEST_F(ZoneEditFrames, TheScreenShowsTheCurrentFrameAfterHundredsOfSteps) {
    support::ClipSpec spec;
    spec.frames = 120;
    spec.keyframeDistance = 32;
    makeClip(spec);
    show();
    std::mt19937 random(7);
    int frame = 0;
    for (int step = 0; step < 200; ++step) {
        switch (random() % 6) {
        case 0:
            m_driver->press(Key::right);
            frame = std::min(frame + 1, 119);
            break;
        case 1:
            m_driver->press(Key::left);
            frame = std::max(frame - 1, 0);
            break;
        case 2:
            m_driver->click(u"ButtonNext10");
            frame = std::min(frame + 10, 119);
            break;
        case 3:
            m_driver->click(u"ButtonPrevious10");
            frame = std::max(frame - 10, 0);
            break;
        case 4: // a held key: steps that nobody waits for
            for (int held = 0; held < 7; ++held) {
                test::input().key(m_driver->native(), platform::EventKind::keyDown, Key::right);
            }
            test::input().key(m_driver->native(), platform::EventKind::keyUp, Key::right);
            test::pump();
            frame = std::min(frame + 7, 119);
            break;
        default:
            frame = static_cast<int>(random() % 120);
            m_driver->enter(u"EditCurrentFrame", number(frame));
            break;
        }
        ASSERT_EQ(frameText(), number(frame)) << step;
        ASSERT_TRUE(waitForFrame(frame)) << step << ": shows " << shownFrame();
    }
}

TEST_F(ZoneEditFrames, ARepeatedFrameOfTheFileShowsThePictureItRepeats) {
    support::ClipSpec spec;
    spec.frames = 20;
    spec.isEmpty = [](int frame) { return frame == 7; };
    makeClip(spec);
    show();
    m_driver->enter(u"EditCurrentFrame", u"7");
    EXPECT_TRUE(waitForFrame(6));
    EXPECT_EQ(frameText(), u"7");
}

TEST_F(ZoneEditFrames, AMissingOrBrokenVideoClosesTheWindowAndNothingElse) {
    support::makeFolder("Scenes/Fire");
    const std::string path = sceneFolder("Fire") + "clip.ogv";
    scene().newScene("Fire");
    scene().AddBranch();
    for (const char* content : {"", "OggS and nothing that follows from it"}) {
        support::writeBytes("Scenes/Fire/clip.ogv", std::string(content));
        m_state.zoneEditVideo = path;
        const auto window = zoneedit::ZoneEdit::create(context());
        forgetQuit();
        EXPECT_TRUE(window->run());
        EXPECT_FALSE(m_state.quit);
    }
    std::filesystem::remove("Scenes/Fire/clip.ogv");
    EXPECT_TRUE(zoneedit::ZoneEdit::create(context())->run());
    const std::vector<std::string> lines = {"Unable to load Theora video",
                                            "Unable to load video " + path};
    std::vector<std::string> expected;
    for (int run = 0; run < 3; ++run) {
        expected.insert(expected.end(), lines.begin(), lines.end());
    }
    EXPECT_EQ(m_log.errors(), expected);
    EXPECT_EQ(scene().branchCount(), 1);
}

TEST_F(ZoneEditFrames, AVideoWithoutFramesLeavesItsZonesAlone) {
    makeClip(3);
    show();
    addZone();
    m_driver->click(u"ButtonSave");
    const char* const binary = "Scenes/Fire/clip-ZoneInfo.bin";
    const std::string saved = support::readBytes(binary);
    makeClip(0);
    show();
    ASSERT_LT(m_window->FindControl<video::CVideoUI>(u"Video")->video()->frameCount, 1);
    EXPECT_EQ(m_driver->get<toolkit::CComboUI>(u"ComboZone").GetCount(), 1);
    const auto before = m_log.errors();
    for (const auto* tool : {u"OptionMovePoint", u"OptionAddPoint", u"OptionDeletePoint"}) {
        chooseTool(tool);
        m_driver->drag({at(100, 100), at(200, 200)});
    }
    m_driver->click(u"OptionToggleActive");
    m_driver->press(Key::right);
    m_driver->click(u"ButtonAddZone");
    m_driver->enter(u"EditCurrentFrame", u"2");
    EXPECT_EQ(frameText(), u"0");
    EXPECT_EQ(m_driver->get(u"EditTotalFrames").GetText(), u"0");
    EXPECT_EQ(m_driver->get<toolkit::CComboUI>(u"ComboZone").GetCount(), 1);
    EXPECT_EQ(m_log.errors(), before);
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(support::readBytes(binary), saved);
}

TEST_F(ZoneEditFrames, WithoutALayoutOrAWindowItDoesNotRun) {
    makeClip(3);
    m_gui.host.fails = true;
    EXPECT_FALSE(zoneedit::ZoneEdit::create(context())->run());
    m_gui.host.fails = false;
    std::filesystem::remove("UI/ZoneEdit.xml");
    EXPECT_FALSE(zoneedit::ZoneEdit::create(context())->run());
}

struct Screen {
    int height;
    platform::Size picture;
};

TEST_F(ZoneEditFrames, TheLayoutFitsTheScreen) {
    makeClip(10);
    for (const Screen& screen : {Screen{860, {1280, 720}}, Screen{859, {1024, 600}}}) {
        m_gui.host.screenHeight = screen.height;
        show();
        EXPECT_EQ(m_driver->get(u"Video").GetPos().size(), screen.picture);
        EXPECT_EQ(zones().videoWidth, screen.picture.width);
        EXPECT_EQ(zones().videoHeight, screen.picture.height);
        EXPECT_TRUE(waitForFrame(0));
        m_driver->press(Key::right);
        EXPECT_TRUE(waitForFrame(1));
    }
}

TEST_F(ZoneEditFrames, WithoutTheVideoControlEveryUseIsReported) {
    makeClip(10);
    std::string layout = support::readBytes("UI/ZoneEdit.xml");
    const std::size_t start = layout.find("<Video ");
    layout.erase(start, layout.find("/>", start) + 2 - start);
    support::writeBytes("UI/ZoneEdit.xml", layout);
    show();
    const auto before = m_log.errors().size();
    m_driver->press(Key::right);
    m_driver->click(u"ButtonPrevious10");
    m_driver->click(u"ButtonAddZone");
    m_driver->click(platform::Point{600, 300});
    const std::vector<std::string> errors = m_log.errors();
    ASSERT_EQ(errors.size(), before + 6) << "two steps, one zone, and each press of the mouse";
    const std::string place = "..\\ZoneEdit\\ZoneEdit.cpp:";
    for (std::size_t i = before; i < errors.size(); ++i) {
        EXPECT_EQ(errors[i].substr(0, place.size()), place);
        EXPECT_EQ(errors[i].substr(errors[i].find(' ')), " VideoUI is invalid");
    }
}

} // namespace
