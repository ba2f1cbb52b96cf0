// Stepping through a clip: what the queue and the plane cache hold is served from there, and a
// second decoder works ahead of stepping back; every picture stays exact.
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

support::Bytes steppingClip() {
    support::ClipSpec spec;
    spec.width = 96;
    spec.height = 64;
    spec.frames = 150;
    spec.keyframeDistance = 32;
    return support::makeClip(spec);
}

TEST(Stepping, EveryWalkShowsTheFramesOfASequentialDecode) {
    const auto file = steppingClip();
    const auto expected = reference::decode(file);
    PlaybackSession session(file);
    std::mt19937 random(21);
    int at = 70;
    for (int step = 0; step < 1200; ++step) {
        // Runs of single and ten-fold steps in either direction, and a jump now and then.
        const int run = step / 40 % 6;
        const int moves[] = {-1, 1, -10, 10, -1, 1};
        at = step % 173 == 172 ? static_cast<int>(random() % 150)
                               : std::clamp(at + moves[run], 0, 149);
        const auto shown = session.seek(at);
        ASSERT_TRUE(shown) << "step " << step;
        ASSERT_EQ(shown->number, at);
        ASSERT_EQ(shown->hash, expected.hashes[static_cast<std::size_t>(at)])
            << "step " << step << " frame " << at;
    }
}

TEST(Stepping, PlayingOnAfterSteppingBackIsExact) {
    const auto file = steppingClip();
    const auto expected = reference::decode(file);
    PlaybackSession session(file);
    for (const int from : {149, 148, 100, 99, 98, 40, 41, 42, 3}) {
        const auto shown = session.seek(from);
        ASSERT_TRUE(shown);
        const auto played = session.playToEnd();
        ASSERT_EQ(played.size(), static_cast<std::size_t>(149 - from)) << from;
        for (std::size_t i = 0; i < played.size(); ++i) {
            ASSERT_EQ(played[i].number, from + 1 + static_cast<int>(i));
            ASSERT_EQ(played[i].hash, expected.hashes[static_cast<std::size_t>(played[i].number)]);
        }
    }
}

TEST(Stepping, AQueueOfOneFrameStepsWhileTheDisplayHoldsIt) {
    PlaybackSession session(steppingClip(), 1);
    ASSERT_TRUE(session.seek(60));
    for (const int frame : {61, 62, 60, 3, 149}) {
        session.clip().requestSeek(frame);
        const theora::TheoraVideoFrame* shown = nullptr;
        while ((shown = session.clip().peekReadyFrame()) == nullptr) {
            std::this_thread::yield();
        }
        EXPECT_EQ(shown->getFrameNumber(), frame); // and is not released
    }
}

TEST(Stepping, RestartAtTheEndGoesRoundExactly) {
    support::ClipSpec spec;
    spec.frames = 20;
    const auto file = support::makeClip(spec);
    const auto expected = reference::decode(file);
    PlaybackSession session(file);
    session.clip().setRestartAtEnd(true);
    ASSERT_TRUE(session.seek(0));
    session.clip().getTimer().play();
    for (int i = 1; i < 70; ++i) {
        const auto shown = session.nextShown();
        ASSERT_TRUE(shown) << i;
        ASSERT_EQ(shown->number, i % 20);
        ASSERT_EQ(shown->hash, expected.hashes[static_cast<std::size_t>(i % 20)]);
    }
}

TEST(Stepping, AModeChangeWhilePlayingLosesNoFrame) {
    support::ClipSpec spec;
    spec.frames = 40;
    PlaybackSession session(support::makeClip(spec));
    session.clip().getTimer().play();
    for (int i = 0; i < 40; ++i) {
        const auto shown = session.nextShown();
        ASSERT_TRUE(shown) << i;
        EXPECT_EQ(shown->number, i);
        session.clip().setOutputMode(i % 2 == 0 ? theora::TheoraOutputMode::TH_BGRX
                                                : theora::TheoraOutputMode::TH_RGB);
    }
}

} // namespace
