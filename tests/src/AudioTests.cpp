// The sound that a clip delivers: all of it when played, and from the exact sample on after a seek.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/SoundMaker.h"

namespace {

constexpr int kSamplesPerFrame = support::kClipSoundRate / 25;

using Samples = std::vector<float>;

class Recorder : public theora::TheoraAudioInterfaceFactory {
public:
    std::unique_ptr<theora::TheoraAudioInterface>
    createInstance(const theora::TheoraVideoClip&, int channels, int samplesPerSecond) override {
        EXPECT_EQ(channels, 1);
        rate = samplesPerSecond;
        return std::make_unique<Sink>(*this);
    }

    Samples samples;
    int rate = 0;
    int flushes = 0;

private:
    class Sink : public theora::TheoraAudioInterface {
    public:
        explicit Sink(Recorder& owner) : m_owner(owner) {}
        void insertData(const float* data, int count) override {
            m_owner.samples.insert(m_owner.samples.end(), data, data + count);
        }
        void flush() override {
            ++m_owner.flushes;
            m_owner.samples.clear();
        }

    private:
        Recorder& m_owner;
    };
};

/// RMS difference between the samples and the track, which starts after `delay` samples of silence.
/// Encoding alone causes about 0.01, a shift by one sample 0.1.
double errorOf(const Samples& samples, int delay) {
    double sum = 0;
    for (int i = 0; i < static_cast<int>(samples.size()); ++i) {
        const double time = static_cast<double>(i - delay) / support::kClipSoundRate;
        const double error =
            samples[static_cast<std::size_t>(i)] - (time < 0 ? 0.0F : support::soundAt(time));
        sum += error * error;
    }
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

TEST(Audio, PlayingAndEverySeekHandOutTheExactSamplesOrSilenceWhereTheSoundStartsLater) {
    const struct {
        support::Sound sound;
        int delay;
        bool everyPageBegins;
    } cases[] = {{support::Sound::before, 0, true},
                 {support::Sound::after, 0, false},
                 {support::Sound::after, 2 * support::kClipSoundRate, false}};
    for (const auto& item : cases) {
        Recorder recorder;
        PlaybackSession session(support::makeClip({.frames = 100,
                                                   .pages = {3, 255, false, item.everyPageBegins},
                                                   .sound = item.sound,
                                                   .soundDelay = item.delay}),
                                0, &recorder);
        EXPECT_TRUE(session.clip().hasAudio());
        EXPECT_EQ(recorder.rate, support::kClipSoundRate);
        EXPECT_EQ(session.playToEnd().size(), 100U);
        const Samples whole = recorder.samples;
        EXPECT_GT(std::ssize(whole), 90 * kSamplesPerFrame);
        EXPECT_LT(errorOf(whole, item.delay), 0.03);
        int flushes = 0;
        for (const int frame : {50, 51, 3, 80, 0, 79, 50}) {
            EXPECT_EQ(session.seek(frame).number, frame);
            EXPECT_EQ(recorder.flushes, flushes++) << "a paused clip keeps its sound";
            EXPECT_EQ(std::ssize(session.playToEnd()), 99 - frame);
            const Samples& got = recorder.samples;
            const auto from = std::ptrdiff_t{frame} * kSamplesPerFrame;
            EXPECT_EQ(from + std::ssize(got), std::ssize(whole));
            EXPECT_TRUE(std::equal(got.rbegin(), got.rend(), whole.rbegin())) << frame;
        }
        EXPECT_EQ(recorder.flushes, flushes);
    }
}

TEST(Audio, AnAbsurdRateAndASoundThatStartsFarAwayTakeLittleMemory) {
    Recorder recorder;
    PlaybackSession session(support::makeClip({.sound = support::Sound::before,
                                               .soundDelay = 1 << 30,
                                               .claimedSoundRate = 1U << 26U}),
                            2, &recorder);
    while (session.clip().getNumReadyFrames() < 2) { // the sound of the first is decoded then
        std::this_thread::yield();
    }
    session.clip().getTimer().play();
    (void)session.nextShown();
    EXPECT_GT(recorder.samples.size(), std::size_t{8'000'000});
    EXPECT_LT(recorder.samples.size(), std::size_t{10'000'000});
}

TEST(Audio, PositionsBeyondAllBoundsLeaveThePicturesAlone) {
    Recorder recorder;
    PlaybackSession session(
        support::makeClip(
            {.sound = support::Sound::before, .soundDelay = -(1 << 30), .soundBegins = INT64_MAX}),
        0, &recorder);
    EXPECT_EQ(session.playToEnd().size(), 30U);
    EXPECT_EQ(session.seek(20).number, 20);
}

} // namespace
