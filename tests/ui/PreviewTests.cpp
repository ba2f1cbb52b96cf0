// The preview in the branch editor: played by real keys and clicks on a clock that stands between
// two steps of the test.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "platform/Bitmap.h"
#include "platform/Clock.h"
#include "platform/Geometry.h"
#include "platform/SilentSound.h"
#include "platform/Sound.h"
#include "platform/Window.h"
#include "player/Chance.h"
#include "tests/playback/LeftZone.h"
#include "tests/skin/CutTexts.h"
#include "tests/support/ClipMaker.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FigureTexts.h"

namespace {

using platform::Key;
using test::Texts;

class NoSound final : public platform::SoundSystem {
public:
    std::unique_ptr<platform::SoundOutput> open(const platform::SoundFormat& /*format*/) override {
        return nullptr;
    }
};

/// Silent outputs that know how loud they would be.
class LoudSound final : public platform::SoundSystem {
public:
    explicit LoudSound(platform::Clock& clock) : m_clock(clock) {}
    std::unique_ptr<platform::SoundOutput> open(const platform::SoundFormat& format) override {
        return std::make_unique<Output>(platform::openSilentSound(format, m_clock), loudest);
    }
    float loudest = 0;

private:
    class Output final : public platform::SoundOutput {
    public:
        Output(std::unique_ptr<platform::SoundOutput> output, float& loudest)
            : m_output(std::move(output)), m_loudest(loudest) {}
        std::size_t space() override { return m_output->space(); }
        std::size_t write(const float* samples, std::size_t count) override {
            for (std::size_t i = 0; i < count; ++i) {
                m_loudest = std::max(m_loudest, std::abs(samples[i]));
            }
            return m_output->write(samples, count);
        }
        std::int64_t position() override { return m_output->position(); }
        void pause(bool paused) override { m_output->pause(paused); }
        void flush() override { m_output->flush(); }
        bool isLost() override { return false; }

    private:
        std::unique_ptr<platform::SoundOutput> m_output;
        float& m_loudest;
    };

    platform::Clock& m_clock;
};

class PreviewTest : public test::BranchEditorTest {
protected:
    /// "Alarm": a zone and two keys; "Out": chance between "Alarm" and a branch that is not there.
    void showScene() {
        m_gui.soundSystem = &m_sound;
        support::ClipSpec spec;
        spec.sound = support::Sound::before;
        support::writeBytes("Scenes/Fire/a.ogv", support::makeClip(spec));
        support::writeBytes("Scenes/Fire/b.ogv", support::makeClip({.frames = 4}));
        playback::makeLeftZone("Scenes/Fire/a.ogv", "Exit");
        makeScene({"Alarm", "Out", "Void"}, {"a.ogv", "b.ogv"});
        addAction(scene::Action::kZoneAction, "Exit", "Out").SetImmediate(true);
        addAction(scene::Action::kKeypressAction, "B", "Alarm");
        addAction(scene::Action::kKeypressAction, "V", "Void").SetImmediate(true);
        addAction(scene::Action::kDefaultAction, {}, "Out");
        addAction(scene::Action::kRandomAction, {}, "Roof", 1);
        show();
        m_driver->native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
        test::pump();
    }
    /// The frames up to `last` come up one after the other, each on its time.
    void playTo(int last) {
        while (m_frame < last) {
            m_clock.passed += 40;
            ASSERT_TRUE(shows(m_frame + 1)) << m_frame;
        }
    }
    bool shows(int frame) {
        m_frame = frame;
        return test::pumpUntil([&] {
            return m_driver->textOf(u"LabelPreviewTime")
                .starts_with(ui::lengthText(frame / 25.0) + u" ");
        });
    }
    /// The first picture of a clip of so many frames, after one of another length or a stop.
    bool comesUp(int frames) {
        m_frame = 0;
        const std::u16string first = u"1 of " + core::displayText(std::to_string(frames));
        return test::pumpUntil(
            [&] { return m_driver->get(u"SliderPreview").accessibleValue() == first; });
    }
    Texts rows(std::u16string_view list) {
        Texts texts;
        auto& control = m_driver->get<toolkit::CListUI>(list);
        for (int i = 0; i < control.GetCount(); ++i) {
            texts.push_back(control.GetItemAt(i)->GetText());
        }
        return texts;
    }
    void rightClick(const toolkit::CControlUI& control) {
        for (const auto kind : {platform::EventKind::mouseDown, platform::EventKind::mouseUp}) {
            test::input().mouse(m_driver->native(), kind, m_driver->middleOf(control),
                                platform::MouseButton::right);
        }
        test::pump();
    }
    /// By the first letter of a row.
    void pickFromMenu(char16_t letter) {
        rightClick(m_driver->get(u"VideoPreview"));
        m_driver->type(std::u16string(1, letter));
        m_driver->press(Key::enter);
    }
    /// What the picture's menu has ticks at.
    Texts tickedRows() {
        rightClick(m_driver->get(u"VideoPreview"));
        Texts ticked;
        const auto* menu = toolkit::MenuPopup::of(m_driver->manager()).menu();
        for (int i = 0; menu != nullptr && i < menu->GetCount(); ++i) {
            if (menu->GetItemAt(i)->accessibleState().checked) {
                ticked.push_back(menu->GetItemAt(i)->accessibleName());
            }
        }
        m_driver->press(Key::escape);
        return ticked;
    }
    void clickPicture(int x, int y) { // in 1280 x 720
        const platform::Rect picture = m_driver->get(u"VideoPreview").GetPos();
        const int width = picture.height() * 4 / 3;
        const int left = picture.left + (picture.width() - width) / 2;
        m_driver->click({left + x * width / 1280, picture.top + y * picture.height() / 720});
    }

    platform::SilentSound m_sound{m_clock};
    int m_frame = 0;
};

TEST_F(PreviewTest, FollowsKeysClicksAndTheEndFrameByFrame) {
    showScene();
    const auto revision = session().revision();
    m_driver->press(Key::f5);
    EXPECT_TRUE(isVisible(u"VideoPreview"));
    EXPECT_EQ(m_driver->focusName(), u"VideoPreview");
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(m_driver->get(u"VideoPreview").accessibleName(), u"Preview of Alarm");
    EXPECT_EQ(rows(u"ListChoices"),
              (Texts{u"Alarm, Press B", u"Void, Press V", u"Out, At the end, in 0:01.20"}));
    playTo(4);
    clickPicture(100, 100);
    EXPECT_EQ(rows(u"ListPath").size(), 1U) << "the zone is active from frame 5 on";
    m_driver->press(Key::b);
    playTo(8);
    EXPECT_EQ(rows(u"ListChoices"),
              (Texts{u"Out, Click into the zone Exit", u"Alarm, Chosen: at the end, in 0:00.88",
                     u"Void, Press V", u"Out, At the end, unless a choice waits"}));
    playTo(29);
    m_clock.passed += 40;
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(rows(u"ListPath"), (Texts{u"Alarm, Played from here, 0:00.00",
                                        u"Alarm, Key B pressed, at the end of the clip, 0:01.20"}));
    playTo(6);
    clickPicture(900, 100);
    EXPECT_EQ(rows(u"ListPath").size(), 2U) << "beside the zone";
    const auto* first = m_driver->get<toolkit::CListUI>(u"ListPath").GetItemAt(0);
    clickPicture(100, 100);
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(m_driver->get<toolkit::CListUI>(u"ListPath").GetItemAt(0), first)
        << "a long path costs no more at each step";
    EXPECT_EQ(rows(u"ListPath").back(), u"Out, Zone \"Exit\" clicked, immediate, 0:01.44");
    playTo(3);
    m_clock.passed += 40;
    EXPECT_TRUE(test::pumpUntil([&] { return rows(u"ListPath").size() == 5; }));
    EXPECT_EQ(rows(u"ListPath").at(3), u"Roof, By chance, 1 of 1, 0:01.60");
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: \"Roof\" is not in the scene.");
    m_driver->click(u"ButtonCopyPath");
    EXPECT_TRUE(m_gui.windows().clipboardText().starts_with(
        u"1\tAlarm\t0:00.00\tPlayed from here\n2\tAlarm\t0:01.20\tKey B pressed"));
    m_driver->press(Key::backspace);
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(rows(u"ListPath").size(), 3U);
    m_driver->press(Key::escape);
    EXPECT_FALSE(isVisible(u"VideoPreview"));
    EXPECT_TRUE(rows(u"ListPath").empty());
    EXPECT_EQ(session().revision(), revision) << "watching changes nothing";
}

TEST_F(PreviewTest, ThrowsTheDiceOfItsSeedFrameByFrame) {
    constexpr int kSeed = 33; // throws each of four numbers, the first one last
    showScene();
    session().setTarget(1, 0, "Void");
    for (int i = 0; i < 3; ++i) {
        addAction(scene::Action::kRandomAction, {}, "Out", 1);
    }
    m_driver->pick(u"ComboBranchName", 1);
    m_clock.passed = kSeed;
    player::Chance dice(kSeed);
    m_driver->press(Key::f5, {.shift = true});
    ASSERT_TRUE(shows(0));
    std::size_t turns = 1;
    for (int pick = 1; pick != 0; ++turns) {
        pick = dice.pick(4); // of the actions in their order
        playTo(3);
        m_clock.passed += 40;
        ASSERT_TRUE(test::pumpUntil([&] { return rows(u"ListPath").size() > turns; }));
        EXPECT_TRUE(rows(u"ListPath")[turns].starts_with(pick == 0 ? u"Void, By chance, 1 of 4"
                                                                   : u"Out, By chance, 1 of 4"))
            << turns;
        ASSERT_TRUE(pick == 0 || shows(0));
    }
    EXPECT_EQ(turns, 7U);
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: no video.");
}

TEST_F(PreviewTest, PlaysFromHereAndLetsTheSceneBeEdited) {
    showScene();
    m_driver->pick(u"ComboBranchName", 1);
    m_driver->press(Key::f5, {.shift = true});
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(rows(u"ListChoices"), (Texts{u"Roof, By chance at the end, 1 of 1"}));
    m_driver->press(Key::space);
    m_clock.passed += 4000;
    test::pump();
    EXPECT_EQ(rows(u"ListPath").size(), 1U) << "paused";
    session().renameBranch(1, "Outside");
    session().setTarget(1, 0, "Alarm");
    session().moveBranch(0, 2);
    EXPECT_EQ(rows(u"ListPath"), (Texts{u"Outside, Played from here, 0:00.00"}));
    EXPECT_EQ(rows(u"ListChoices"), (Texts{u"Alarm, By chance at the end, 1 of 1"}));
    m_driver->press(Key::space);
    playTo(3);
    m_clock.passed += 40;
    ASSERT_TRUE(test::pumpUntil([&] { return rows(u"ListPath").size() == 2; }));
    EXPECT_EQ(rows(u"ListPath").back(), u"Alarm, By chance, 1 of 1, 0:00.16");
    ASSERT_TRUE(comesUp(30));
    session().removeBranch(2);
    m_driver->click(*m_driver->get<toolkit::CListUI>(u"ListChoices").GetItemAt(1));
    EXPECT_TRUE(test::pumpUntil([&] { return rows(u"ListPath").size() == 4; }));
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: no video.");
    m_driver->click(u"ButtonPreviewStop");
    EXPECT_FALSE(isVisible(u"VideoPreview"));
    EXPECT_TRUE(isVisible(u"SceneMap"));
}

TEST_F(PreviewTest, ChoicesHaveTheMenuOfThePicture) {
    showScene();
    m_driver->press(Key::f5);
    ASSERT_TRUE(comesUp(30));
    rightClick(m_driver->get(u"VideoPreview"));
    const Texts ofPicture = test::menuOf(*m_driver);
    EXPECT_EQ(ofPicture.size(), 10U);
    m_driver->press(Key::escape);
    auto& choices = m_driver->get<toolkit::CListUI>(u"ListChoices");
    rightClick(*choices.GetItemAt(1));
    EXPECT_EQ(test::menuOf(*m_driver), ofPicture);
    EXPECT_EQ(choices.GetCurSel(), 1);
    m_driver->press(Key::escape);
    m_driver->press(Key::f10, {.shift = true});
    EXPECT_EQ(test::menuOf(*m_driver), ofPicture);
    m_driver->press(Key::escape);
    EXPECT_TRUE(isVisible(u"VideoPreview")) << "Esc closed the menu alone";
}

TEST_F(PreviewTest, RenamingBringsTheNameBackThatStandsBehindIt) {
    showScene();
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1000, 760));
    test::pump();
    m_driver->press(Key::f5);
    ASSERT_TRUE(isVisible(u"VideoPreview"));
    ASSERT_FALSE(isVisible(u"EditBranchName"));
    m_driver->press(Key::f2);
    EXPECT_TRUE(isVisible(u"EditBranchName"));
    EXPECT_EQ(m_driver->focusName(), u"EditBranchName");
}

TEST_F(PreviewTest, RestartPlaysWhatTheAuthorHasMended) {
    showScene();
    m_driver->press(Key::f5);
    ASSERT_TRUE(shows(0));
    m_driver->press(Key::v);
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: no video.");
    EXPECT_EQ(m_driver->get(u"VideoPreview").accessibleName(), u"Preview of Alarm")
        << "its picture is the one on show";
    session().setVideo(2, "b.ogv");
    m_driver->click(u"ButtonPreviewRestart");
    ASSERT_TRUE(comesUp(4));
    EXPECT_EQ(m_driver->get(u"VideoPreview").accessibleName(), u"Preview of Void");
    m_driver->press(Key::backspace);
    ASSERT_TRUE(comesUp(30));
    session().setTarget(0, 2, "Roof");
    m_driver->manager().SetFocus(&m_driver->get(u"VideoPreview"));
    m_driver->press(Key::v);
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: \"Roof\" is not in the scene.");
    session().addBranch();
    session().renameBranch(3, "Roof");
    m_driver->click(u"ButtonPreviewRestart");
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: no video.");
    session().setVideo(3, "b.ogv");
    m_driver->click(u"ButtonPreviewRestart");
    ASSERT_TRUE(comesUp(4));
    EXPECT_EQ(rows(u"ListPath").back(), u"Roof, Key V pressed, immediate, 0:00.00");

    session().setFirstBranch("");
    m_driver->press(Key::f5);
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: the scene has no first branch.");
    session().setFirstBranch("Out");
    m_driver->click(u"ButtonPreviewRestart");
    ASSERT_TRUE(comesUp(4));
    EXPECT_EQ(rows(u"ListPath"), (Texts{u"Out, Played from here, 0:00.00"}));
    session().setTarget(1, 0, "");
    playTo(3);
    m_clock.passed += 40;
    EXPECT_TRUE(test::pumpUntil([&] { return rows(u"ListPath").size() == 3; }));
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: the action has no target branch.");
}

TEST_F(PreviewTest, ChoicesAreTakenAsButtonsAre) {
    showScene();
    m_driver->press(Key::f5);
    ASSERT_TRUE(shows(0));
    auto& list = m_driver->get<toolkit::CListUI>(u"ListChoices");
    rightClick(*list.GetItemAt(1));
    EXPECT_EQ(rows(u"ListPath").size(), 1U) << "the right button asks for a menu";
    m_driver->press(Key::escape);
    m_driver->press(Key::b);
    list.GetItemAt(1)->accessiblePress();
    EXPECT_EQ(rows(u"ListPath").size(), 3U) << "a screen reader, after a key";
    m_driver->press(Key::backspace);
    ASSERT_TRUE(comesUp(30));
    m_driver->click(*list.GetItemAt(1));
    EXPECT_EQ(rows(u"ListPath").size(), 3U) << "a click";
    m_driver->press(Key::backspace);
    ASSERT_TRUE(comesUp(30));
    m_driver->manager().SetFocus(&list);
    m_driver->press(Key::down);
    m_driver->press(Key::down);
    EXPECT_EQ(rows(u"ListPath").size(), 1U) << "a key only selects";
    m_driver->press(Key::enter);
    EXPECT_EQ(rows(u"ListPath").size(), 3U) << "Enter";
}

TEST_F(PreviewTest, MakesRowsOnlyForTheChoicesInView) {
    constexpr int kMany = 2000;
    showScene();
    for (int i = 0; i < kMany; ++i) {
        addAction(scene::Action::kKeypressAction, "key " + std::to_string(i), "Out");
    }
    m_driver->press(Key::f5);
    ASSERT_TRUE(shows(0));
    auto& list = m_driver->get<toolkit::CListUI>(u"ListChoices");
    ASSERT_EQ(list.GetCount(), 3 + kMany);
    EXPECT_EQ(list.madeRow(kMany), nullptr);
    EXPECT_EQ(list.GetItemAt(2 + kMany)->GetText(), u"Out, Press key 1999");
    playTo(5);
    EXPECT_EQ(list.GetCount(), 4 + kMany) << "a zone";
    EXPECT_EQ(list.GetItemAt(2 + kMany)->GetText(), u"Out, Press key 1998");
    EXPECT_EQ(list.madeRow(kMany), nullptr);
}

TEST_F(PreviewTest, ADragOfThePlaceEndsWithTheClip) {
    showScene();
    session().setTarget(0, 3, "Void");
    m_driver->press(Key::f5);
    ASSERT_TRUE(shows(0));
    const platform::Rect bar = m_driver->get(u"SliderPreview").GetPos();
    const int middle = bar.top + bar.height() / 2;
    const auto mouse = [this](platform::EventKind kind, platform::Point point) {
        test::input().mouse(m_driver->native(), kind, point);
        test::pump();
    };
    mouse(platform::EventKind::mouseDown, {bar.right - 2, middle});
    ASSERT_TRUE(shows(29));
    ASSERT_TRUE(test::pumpUntil([&] {
        m_clock.passed += 40;
        return rows(u"ListPath").size() == 3;
    }));
    EXPECT_EQ(rows(u"ListPath").back(), u"Stopped: no video.");
    mouse(platform::EventKind::mouseUp, {bar.right - 2, middle});
    m_driver->press(Key::backspace);
    ASSERT_TRUE(shows(0));
    mouse(platform::EventKind::mouseMove, {bar.left + bar.width() / 2, middle});
    EXPECT_EQ(m_driver->get(u"SliderPreview").accessibleValue(), u"1 of 30")
        << "nothing is pressed any more";
}

TEST_F(PreviewTest, NoLineOfTheStageStaysBesideAPictureThatFits) {
    m_gui.soundSystem = &m_sound;
    const support::ClipSpec spec{.width = 256, .height = 144, .frames = 2};
    support::writeBytes("Scenes/Fire/a.ogv", support::makeClip(spec));
    makeScene({"Alarm"}, {"a.ogv"});
    show();
    for (const int width : {1366, 1600, 1601, 1602, 1603, 1604}) {
        m_driver->native().setGeometry(platform::Rect::at(0, 0, width, 900));
        m_driver->press(Key::f5);
        ASSERT_TRUE(comesUp(2));
        const platform::Rect box = m_driver->get(u"VideoPreview").GetPos();
        const std::uint32_t stage = m_driver->manager().look().palette()[toolkit::Tone::stage];
        const int middle = (box.top + box.bottom) / 2;
        EXPECT_NE(m_driver->pixel({box.left, middle}), stage) << width;
        EXPECT_NE(m_driver->pixel({box.right - 1, middle}), stage) << width;
        m_driver->press(Key::escape);
    }
}

TEST_F(PreviewTest, SpeedSoundOutlinesAndPlaceCanBeChosen) {
    showScene();
    NoSound none;
    m_gui.soundSystem = &none;
    m_driver->click(u"ButtonPlay");
    ASSERT_TRUE(shows(0));
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"No sound device: playing silently.");
    m_driver->press(Key::space);
    auto& slider = m_driver->get(u"SliderPreview");
    const platform::Rect bar = slider.GetPos();
    m_driver->click({bar.right - 2, bar.top + bar.height() / 2});
    ASSERT_TRUE(shows(29));
    EXPECT_EQ(slider.accessibleValue(), u"30 of 30");
    m_driver->press(Key::left);
    ASSERT_TRUE(shows(28));
    const auto before = m_driver->picture();
    m_driver->click(u"CheckShowZones");
    const auto after = m_driver->picture();
    const platform::Rect picture = m_driver->get(u"VideoPreview").GetPos();
    int changed = 0;
    for (int y = picture.top; y < picture.bottom; ++y) {
        for (int x = picture.left; x < picture.right; ++x) {
            changed += before.at(x, y) != after.at(x, y) ? 1 : 0;
        }
    }
    EXPECT_GT(changed, 500) << "the outline and the name of the zone";
    EXPECT_EQ(m_driver->get(u"ButtonPreviewPlay").accessibleName(), u"Play");
    m_driver->click({bar.left + 1, bar.top + bar.height() / 2});
    ASSERT_TRUE(shows(0));
    m_driver->click(u"ButtonPreviewPlay");
    for (const auto& [letter, milliseconds] : {std::pair{u'D', 20}, {u'H', 80}}) {
        pickFromMenu(letter);
        m_clock.passed += milliseconds;
        EXPECT_TRUE(shows(m_frame + 1)) << milliseconds;
        EXPECT_NE(m_driver->textOf(u"LabelPreviewTime").find(u" \u00D7"), std::u16string::npos);
        EXPECT_EQ(test::cutText(m_driver->get<toolkit::CLabelUI>(u"LabelPreviewTime")), u"");
        EXPECT_EQ(tickedRows(), (Texts{letter == u'D' ? u"Double Speed" : u"Half Speed"}));
    }
    pickFromMenu(u'N');
    EXPECT_TRUE(test::pumpUntil([&] {
        m_clock.passed += 40;
        return m_driver->textOf(u"LabelPreviewTime").find(u'\u00D7') == std::u16string::npos;
    }));
    EXPECT_EQ(tickedRows(), (Texts{u"Normal Speed"}));
    m_driver->press(Key::escape); // the preview ends before its sound
    EXPECT_FALSE(isVisible(u"VideoPreview"));
}

TEST_F(PreviewTest, SoundAndOutlinesComeBackAsTheyWereLeft) {
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    showScene();
    LoudSound sound(m_clock);
    m_gui.soundSystem = &sound;
    const auto playLoud = [&] {
        sound.loudest = 0;
        m_driver->press(Key::f5);
        EXPECT_TRUE(shows(0));
        return sound.loudest;
    };
    const auto pictureOfCheck = [&] {
        const platform::Bitmap window = m_driver->picture();
        const double scale = 1.0 * window.size().width / m_driver->manager().GetWindowSize().width;
        const auto at = [scale](int place) { return static_cast<int>(place * scale); };
        const platform::Rect box = m_driver->get(u"CheckSound").GetPos();
        std::vector<std::uint32_t> pixels;
        for (int y = at(box.top); y < at(box.bottom); ++y) {
            for (int x = at(box.left); x < at(box.right); ++x) {
                pixels.push_back(window.at(x, y));
            }
        }
        return pixels;
    };
    EXPECT_GT(playLoud(), 0.1F);
    const auto on = pictureOfCheck();
    m_driver->click(u"CheckSound");
    m_driver->click(u"CheckShowZones");
    EXPECT_EQ(playLoud(), 0.0F);
    const auto off = pictureOfCheck();
    EXPECT_NE(off, on);

    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    show();
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
    test::pump();
    EXPECT_EQ(playLoud(), 0.0F);
    EXPECT_EQ(pictureOfCheck(), off) << "with its other icon";
    EXPECT_FALSE(test::isChecked(*m_driver, u"CheckSound"));
    EXPECT_TRUE(test::isChecked(*m_driver, u"CheckShowZones"));
    m_driver->press(Key::escape);
}

} // namespace
