#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "platform/SilentSound.h"
#include "platform/Sound.h"
#include "playback/Preview.h"
#include "player/Player.h"
#include "player/Story.h"
#include "tests/playback/LeftZone.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FixedClock.h"
#include "tests/support/SoundMaker.h"
#include "tests/support/TempFolder.h"

namespace playback {
namespace {

using player::Action;
using State = player::Player::State;
using When = player::Action::When;

constexpr int kFrameMs = 1000 / support::kClipFramesPerSecond;

/// Silent outputs that keep what was written to them.
class RecordingSound final : public platform::SoundSystem {
public:
    explicit RecordingSound(platform::Clock& clock) : m_clock(clock) {}

    std::unique_ptr<platform::SoundOutput> open(const platform::SoundFormat& format) override {
        ++opened;
        return hasDevice ? std::make_unique<Output>(format, *this) : nullptr;
    }

    bool hasDevice = true;
    bool isBroken = false;   ///< nothing is heard any more
    std::int64_t needed = 0; ///< samples: with fewer to play, it stands
    int opened = 0;
    std::vector<float> heard; ///< of the output opened last
    platform::SoundOutput* output = nullptr;

private:
    class Output final : public platform::SoundOutput {
    public:
        Output(const platform::SoundFormat& format, RecordingSound& system)
            : m_system(system), m_output(platform::openSilentSound(format, system.m_clock)) {
            system.output = this;
            system.heard.clear();
        }
        ~Output() override { m_system.output = nullptr; }
        std::size_t space() override { return m_system.isBroken ? 0 : m_output->space(); }
        std::size_t write(const float* samples, std::size_t count) override {
            const std::size_t taken = m_output->write(samples, count);
            m_written += static_cast<std::int64_t>(taken);
            stand();
            m_system.heard.insert(m_system.heard.end(), samples, samples + taken);
            return taken;
        }
        std::int64_t position() override {
            m_position = m_system.isBroken ? m_position : m_output->position();
            stand();
            return m_position;
        }
        void pause(bool paused) override {
            m_isPaused = paused;
            stand();
        }
        void flush() override {
            m_output->flush();
            m_written = m_output->position();
            m_system.heard.resize(static_cast<std::size_t>(m_output->position()));
        }
        bool isLost() override { return false; }

    private:
        void stand() {
            m_output->pause(m_isPaused || m_written - m_output->position() < m_system.needed);
        }

        RecordingSound& m_system;
        std::unique_ptr<platform::SoundOutput> m_output;
        std::int64_t m_position = 0;
        std::int64_t m_written = 0;
        bool m_isPaused = false;
    };

    platform::Clock& m_clock;
};

class PreviewTest : public support::TempFolderTest {
protected:
    void clip(const std::string& name, int frames, bool hasSound) {
        support::ClipSpec spec;
        spec.frames = frames;
        spec.sound = hasSound ? support::Sound::before : support::Sound::none;
        support::writeBytes(name, support::makeClip(spec));
    }

    Preview& play(player::Story story, std::uint32_t seed = 1) {
        const std::string first = story.first;
        m_preview = std::make_unique<Preview>(Preview::Setup{std::move(story), m_folder.path(),
                                                             platform::nativeFileSystem(), m_clock,
                                                             m_sound, seed});
        m_preview->startAt(first);
        return *m_preview;
    }

    /// Brings everything to the present, and what the decoder owes.
    bool tick() {
        bool changed = false;
        do {
            changed = m_preview->tick([this](const std::uint8_t* pixels, platform::Size size) {
                m_frames.push_back(support::readFrameNumber(pixels, size.width, size.height, 4));
            }) || changed;
            if (m_preview->isWaiting()) {
                std::this_thread::yield();
            }
        } while (m_preview->isWaiting());
        return changed;
    }
    /// As many frames pass, one by one.
    std::vector<int> pass(int frames) {
        m_frames.clear();
        for (int i = 0; i < frames; ++i) {
            tick();
            m_clock.passed += kFrameMs;
        }
        return std::exchange(m_frames, {});
    }
    [[nodiscard]] std::vector<std::string> path() const {
        std::vector<std::string> names;
        for (const player::Step& step : m_preview->player().path()) {
            names.push_back(step.name);
        }
        return names;
    }
    static std::vector<int> upTo(int end, int from = 0) {
        std::vector<int> numbers;
        for (int i = from; i < end; ++i) {
            numbers.push_back(i);
        }
        return numbers;
    }

    support::FixedClock m_clock;
    RecordingSound m_sound{m_clock};
    std::unique_ptr<Preview> m_preview;
    std::vector<int> m_frames;
};

TEST_F(PreviewTest, FollowsAScriptFrameByFrame) {
    clip("alarm.ogv", 30, true);
    clip("short.ogv", 6, false);
    makeLeftZone(m_folder.path() + "alarm.ogv", "Exit");
    Preview& preview = play(
        {"Alarm",
         {{"Alarm",
           "alarm.ogv",
           {{When::zoneClicked, "Exit", "Out", true}, {When::keyPressed, "B", "Alarm", false}}},
          {"Out",
           "short.ogv",
           {{When::byChance, "", "Alarm", false}, {When::byChance, "", "Roof", false}}},
          {"Roof", "", {}}}},
        2);
    EXPECT_EQ(pass(4), upTo(4));
    EXPECT_FALSE(preview.click({10, 10})) << "not active on frame 3";
    EXPECT_TRUE(preview.press("b"));
    EXPECT_EQ(pass(26), upTo(30, 4));
    EXPECT_EQ(pass(8), upTo(8)) << "the branch led to itself, with no frame lost between";
    EXPECT_FALSE(preview.click({700, 10})) << "beside the zone";
    EXPECT_TRUE(preview.click({10, 10}));
    EXPECT_EQ(pass(6), upTo(6));
    EXPECT_EQ(pass(30), upTo(30)) << "thrown by the seed";
    EXPECT_EQ(preview.player().state(), State::playing);
    tick(); // the end of the clip, where nothing applies
    EXPECT_EQ(preview.player().state(), State::ended);
    EXPECT_EQ(path(), (std::vector<std::string>{"Alarm", "Alarm", "Out", "Alarm"}));
    EXPECT_NEAR(preview.player().path().back().seconds, (30 + 7 + 6) / 25.0, 0.001);
    EXPECT_EQ(preview.pictures().dropped, 0U);
    EXPECT_EQ(preview.pictures().late, 0U);
}

TEST_F(PreviewTest, ShowsThePictureThatBelongsToTheSoundHeard) {
    clip("long.ogv", 300, true);
    Preview& preview = play({"A", {{"A", "long.ogv", {}}}});
    tick();
    for (int step = 0; step < 400; ++step) { // 2.8 s, in steps that no frame is a multiple of
        m_clock.passed += 7;
        tick();
        const double heard = static_cast<double>(m_sound.output->position()) / 8000.0;
        ASSERT_EQ(preview.frame(), static_cast<int>(heard * 25.0 + 1e-3)) << step;
        ASSERT_NEAR(heard, 0.007 * (step + 1), 0.002) << "the sound never waits";
    }
    // Vorbis loses little of a pure tone: what was written is the track from its first sample on.
    double error = 0.0;
    for (std::size_t i = 0; i < 20'000; ++i) {
        error += std::abs(m_sound.heard.at(i) - support::soundAt(static_cast<double>(i) / 8000.0));
    }
    EXPECT_LT(error / 20'000, 0.05);
}

TEST_F(PreviewTest, PausesSeeksAndChangesItsSpeed) {
    clip("clip.ogv", 60, true);
    Preview& preview = play({"A", {{"A", "clip.ogv", {}}}});
    EXPECT_EQ(pass(5), upTo(5));
    preview.setPaused(true);
    m_clock.passed += 5000;
    tick();
    EXPECT_EQ(preview.frame(), 5) << "up to the moment of the pause";
    preview.setPaused(false);
    m_frames.clear();
    preview.seek(40);
    EXPECT_EQ(pass(3), upTo(43, 40));
    EXPECT_NEAR(m_sound.heard.back(), 0.0F, 1.0F);
    preview.setSpeed(0.5);
    EXPECT_EQ(pass(8), upTo(47, 43));
    preview.setSpeed(2.0);
    m_clock.passed += kFrameMs;
    tick();
    EXPECT_EQ(preview.frame(), 49);
    preview.setSpeed(1.0);
    tick();
    m_clock.passed += kFrameMs;
    tick();
    EXPECT_EQ(preview.frame(), 50);
    preview.restart();
    EXPECT_EQ(pass(3), upTo(3));
}

TEST_F(PreviewTest, PlaysOnWithoutADeviceAndWhenItFails) {
    clip("sound.ogv", 100, true);
    m_sound.hasDevice = false;
    Preview& silent = play({"A", {{"A", "sound.ogv", {}}}});
    EXPECT_EQ(pass(20), upTo(20));
    EXPECT_TRUE(silent.transport().lacksDevice());

    m_sound.hasDevice = true;
    Preview& preview = play({"A", {{"A", "sound.ogv", {}}}});
    EXPECT_EQ(pass(10), upTo(10));
    EXPECT_FALSE(preview.transport().lacksDevice());
    m_sound.isBroken = true;
    const int stood = preview.frame();
    m_clock.passed += 3000;
    tick();
    EXPECT_LE(preview.frame(), stood + 1);
    EXPECT_TRUE(preview.transport().lacksDevice());
    EXPECT_GE(pass(10).back(), stood + 8) << "by the clock from here on";

    m_sound.isBroken = false;
    m_sound.needed = 1120; // 70 ms
    support::ClipSpec spec;
    spec.sound = support::Sound::before;
    spec.claimedSoundRate = 16'000; // ends in the middle of the clip
    support::writeBytes("half.ogv", support::makeClip(spec));
    Preview& filled = play({"A", {{"A", "half.ogv", {}}}});
    while (filled.player().state() == State::playing && !filled.transport().lacksDevice()) {
        (void)pass(1);
        std::this_thread::yield(); // while the decoder owes sound, time stands
    }
    EXPECT_EQ(filled.frame(), 29);
    EXPECT_FALSE(filled.transport().lacksDevice()) << "silence keeps the device going";
}

TEST_F(PreviewTest, SaysWhyItStopsAndPlaysOnFromThere) {
    clip("clip.ogv", 5, false);
    support::writeBytes("broken.ogv", std::string("OggS"));
    Preview& preview = play({"A",
                             {{"A",
                               "clip.ogv",
                               {{When::keyPressed, "N", "Nowhere", true},
                                {When::keyPressed, "B", "Broken", true},
                                {When::keyPressed, "V", "Void", true}}},
                              {"Broken", "broken.ogv", {}},
                              {"Void", "", {}}}});
    for (const auto& [key, state] :
         {std::pair{"n", State::noBranch}, {"b", State::unreadableClip}, {"v", State::noVideo}}) {
        (void)pass(2);
        EXPECT_TRUE(preview.press(key));
        EXPECT_EQ(preview.player().state(), state) << key;
        EXPECT_TRUE(tick());
        EXPECT_FALSE(tick());
        preview.restart();
        EXPECT_EQ(preview.player().state(), state) << key;
        EXPECT_TRUE(tick()) << "it may have stopped for another reason";
        preview.seek(3);
        EXPECT_TRUE(preview.back());
        EXPECT_EQ(preview.player().state(), State::playing);
    }
    EXPECT_EQ(pass(5), upTo(5));
}

TEST_F(PreviewTest, NothingAnswersUntilAPictureOfTheBranchIsOnShow) {
    clip("clip.ogv", 30, false);
    makeLeftZone(m_folder.path() + "clip.ogv", "Exit");
    Preview& preview =
        play({"A",
              {{"A",
                "clip.ogv",
                {{When::keyPressed, "A", "A", true}, {When::zoneClicked, "Exit", "A", true}}}}});
    const auto answers = [&] {
        return std::vector{preview.press("a"), preview.choose(0), preview.click({10, 10})};
    };
    EXPECT_FALSE(preview.isShown());
    EXPECT_EQ(answers(), std::vector({false, false, false}));
    (void)pass(7);
    EXPECT_TRUE(preview.isShown());
    EXPECT_TRUE(preview.click({10, 10}));
    EXPECT_FALSE(preview.isShown()) << "the last picture of the clip before";
    EXPECT_EQ(answers(), std::vector({false, false, false}));
    EXPECT_EQ(path().size(), 2U);
    (void)pass(7);
    preview.restart();
    EXPECT_EQ(answers(), std::vector({false, false, false}));
    (void)pass(1);
    EXPECT_EQ(answers(), std::vector({true, false, false}));
}

TEST_F(PreviewTest, IsSilentWhileItMayNotBeHeard) {
    clip("clip.ogv", 60, true);
    Preview& preview = play({"A", {{"A", "clip.ogv", {}}}});
    const auto loudest = [this] { // of what is written in the time of some frames
        m_sound.heard.clear();
        (void)pass(8);
        float most = 0;
        for (const float sample : m_sound.heard) {
            most = std::max(most, std::abs(sample));
        }
        return most;
    };
    EXPECT_GT(loudest(), 0.1F);
    preview.setAudible(false);
    (void)pass(8); // what was written before
    EXPECT_EQ(loudest(), 0.0F);
    preview.setAudible(true);
    (void)pass(8);
    EXPECT_GT(loudest(), 0.1F);
}

TEST_F(PreviewTest, EndsClipsThatAreShorterThanTheySay) {
    support::ClipSpec spec;
    spec.frames = 30;
    support::Bytes whole = support::makeClip(spec);
    whole.resize(whole.size() / 2);
    support::writeBytes("cut.ogv", whole);
    clip("one.ogv", 1, true);
    play({"A", {{"A", "cut.ogv", {{When::clipEnds, "", "B", false}}}, {"B", "one.ogv", {}}}});
    (void)pass(35);
    EXPECT_EQ(path(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(m_preview->player().state(), State::ended);
}

} // namespace
} // namespace playback
