// Stepping through a clip: what the queue and the plane cache hold is served from there, and a
// second decoder works ahead of stepping back; every picture stays exact.
#include <algorithm>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr int kFrames = 150;

class Stepping : public testing::Test {
protected:
    void expectExact(const ShownFrame& shown, int number) {
        ASSERT_EQ(shown.number, number);
        ASSERT_EQ(shown.hash, m_expected[static_cast<std::size_t>(number)].hash) << number;
    }

    support::Bytes m_file =
        support::makeClip({.width = 96, .height = 64, .frames = kFrames, .keyframeDistance = 32});
    std::vector<reference::Frame> m_expected = reference::decode(m_file);
};

TEST_F(Stepping, EveryWalkShowsTheFramesOfASequentialDecode) {
    PlaybackSession session(m_file);
    std::mt19937 random(21);
    int at = 70;
    for (int step = 0; step < 1200; ++step) {
        // Runs of single and ten-fold steps in either direction, and a jump now and then.
        const int moves[] = {-1, 1, -10, 10, -1, 1};
        at = step % 173 == 172 ? static_cast<int>(random() % kFrames)
                               : std::clamp(at + moves[step / 40 % 6], 0, kFrames - 1);
        ASSERT_NO_FATAL_FAILURE(expectExact(session.seek(at), at)) << "step " << step;
    }
}

TEST_F(Stepping, PlayingOnAfterSteppingBackIsExact) {
    PlaybackSession session(m_file);
    for (const int from : {149, 148, 100, 99, 98, 40, 41, 42, 3}) {
        ASSERT_NO_FATAL_FAILURE(expectExact(session.seek(from), from));
        int next = from + 1;
        for (const ShownFrame& shown : session.playToEnd()) {
            ASSERT_NO_FATAL_FAILURE(expectExact(shown, next++)) << "played from " << from;
        }
        EXPECT_EQ(next, kFrames);
    }
}

TEST_F(Stepping, RestartAtTheEndGoesRoundExactly) {
    PlaybackSession session(m_file);
    session.clip().setRestartAtEnd(true);
    ASSERT_NO_FATAL_FAILURE(expectExact(session.seek(kFrames - 20), kFrames - 20));
    session.clip().getTimer().play();
    for (int number = kFrames - 19; number < 2 * kFrames + 20; ++number) {
        ASSERT_NO_FATAL_FAILURE(expectExact(session.nextShown(), number % kFrames));
    }
}

TEST_F(Stepping, AModeChangeDisturbsNeitherASeekNorPlayingOn) {
    PlaybackSession session(m_file);
    theora::TheoraVideoClip& clip = session.clip();
    clip.getTimer().play();
    for (int round = 0; round < 200; ++round) {
        const int wanted = round * 37 % (kFrames - 1);
        clip.requestSeek(wanted);
        clip.setOutputMode(theora::TheoraOutputMode::TH_BGRX);
        EXPECT_EQ(session.nextShown().carried, wanted);
        clip.setOutputMode(theora::TheoraOutputMode::TH_RGB);
        EXPECT_EQ(session.nextShown().carried, wanted + 1);
    }
}

TEST_F(Stepping, AQueueOfOneFrameStepsWhileTheDisplayHoldsIt) {
    PlaybackSession session(m_file, 1);
    for (const int frame : {60, 61, 62, 60, 3, 149}) {
        session.clip().requestSeek(frame);
        const theora::TheoraVideoFrame* held = nullptr;
        while ((held = session.clip().peekReadyFrame()) == nullptr) {
            std::this_thread::yield();
        }
        EXPECT_EQ(held->getFrameNumber(), frame);
    }
}

} // namespace
