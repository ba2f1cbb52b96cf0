// Every seek and every step shows exactly the frame that a plain sequential decode gives, whatever
// the file's layout, and whether the queue, the plane cache or a decoder serves it.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

using support::Sound;

/// A clip, its pictures by a plain decode, and a session on it.
struct ExactClip {
    explicit ExactClip(const support::ClipSpec& spec) : file(support::makeClip(spec)) {}

    void expect(const ShownFrame& shown, int number) const {
        ASSERT_EQ(shown.number, number);
        ASSERT_EQ(shown.hash, expected.at(static_cast<std::size_t>(number)).hash) << number;
    }

    support::Bytes file;
    std::vector<reference::Frame> expected = reference::decode(file);
    PlaybackSession session{file};
};

struct NamedClip {
    const char* name;
    support::ClipSpec spec;
};

const NamedClip kClips[] = {
    {"HundredPacketsAPage", {.frames = 250, .keyframeDistance = 64, .pages = {100, 255}}},
    {"PacketsOverPages", {.quality = 60, .pages = {3, 2}}},
    {"PositionsRepeatedInsidePackets", {.quality = 60, .pages = {3, 2, true}}},
    {"Version320", {.version320 = true, .pages = {5, 255}}},
    {"Chroma422", {.chroma = support::Chroma::yuv422}},
    {"Chroma444", {.chroma = support::Chroma::yuv444}},
    {"PictureInsideFrame",
     {.width = 80, .pictureWidth = 66, .pictureHeight = 35, .pictureX = 6, .pictureY = 4}},
    {"OnlyKeyframes", {.keyframeDistance = 1, .granuleShift = 0}},
    {"LongGroups", {.frames = 300, .keyframeDistance = 256, .pages = {20, 255}}},
    {"EmptyPackets",
     {.frames = 200,
      .granuleShift = 6,
      .pages = {9, 255},
      .isEmpty = [](int frame) { return frame % 3 != 0; }}},
    {"ThousandsOfEmptyPackets",
     {.frames = 4000,
      .granuleShift = 8,
      .pages = {255, 255},
      .isEmpty = [](int frame) { return frame % 50 != 0; }}},
    {"SoundAfter", {.frames = 90, .pages = {10, 255}, .sound = Sound::after}},
    {"SkeletonAndSecondTheora", {.sound = Sound::after, .skeleton = true, .secondTheora = true}},
    {"LastPageWithoutPacket", {.emptyLastPage = true, .lastPageGranule = (25 << 3) + 5}},
    {"SmallerThanFourKilobytes", {.frames = 3, .quality = 0}},
    {"ADamagedKeyframe", {.frames = 60, .damagedFrame = 24}},
    {"PageNumbersThatJump", {.numbersJump = true}},
    {"EveryPageMarkedAsTheFirst",
     {.frames = 90,
      .quality = 60,
      .pages = {.packetsPerPage = 3, .segmentsPerPage = 2, .repeatsBegin = true},
      .sound = Sound::before,
      .skeleton = true}},
    {"OneFrame", {.frames = 1}},
};

class SeekExactness : public testing::TestWithParam<NamedClip> {};

TEST_P(SeekExactness, EveryFrameInAnyOrderIsThatOfASequentialDecode) {
    const int frames = GetParam().spec.frames;
    ExactClip clip(GetParam().spec);
    ASSERT_EQ(std::ssize(clip.expected), frames);
    ASSERT_EQ(clip.session.clip().getNumFrames(), frames);
    int next = 0;
    for (const ShownFrame& shown : clip.session.playToEnd()) {
        ASSERT_NO_FATAL_FAILURE(clip.expect(shown, next++)) << "played";
    }
    ASSERT_EQ(next, frames);
    std::vector<int> order(clip.expected.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    order.resize(std::min<std::size_t>(order.size(), 400));
    for (const int frame : order) {
        ASSERT_NO_FATAL_FAILURE(clip.expect(clip.session.seek(frame), frame));
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, SeekExactness, testing::ValuesIn(kClips),
                         [](const auto& test) { return std::string(test.param.name); });

constexpr int kFrames = 150;

class Stepping : public testing::Test {
protected:
    ExactClip m_clip{{.width = 96, .height = 64, .frames = kFrames, .keyframeDistance = 32}};
    PlaybackSession& m_session = m_clip.session;
};

TEST_F(Stepping, EveryWalkShowsTheFramesOfASequentialDecode) {
    std::mt19937 random(21);
    int at = 70;
    for (int step = 0; step < 1200; ++step) {
        // Runs of single and ten-fold steps in either direction, and a jump now and then.
        const int moves[] = {-1, 1, -10, 10, -1, 1};
        at = step % 173 == 172 ? static_cast<int>(random() % kFrames)
                               : std::clamp(at + moves[step / 40 % 6], 0, kFrames - 1);
        ASSERT_NO_FATAL_FAILURE(m_clip.expect(m_session.seek(at), at)) << "step " << step;
    }
}

TEST_F(Stepping, PlayingOnAfterSteppingBackIsExact) {
    for (const int from : {149, 148, 100, 99, 98, 40, 41, 42, 3}) {
        ASSERT_NO_FATAL_FAILURE(m_clip.expect(m_session.seek(from), from));
        int next = from + 1;
        for (const ShownFrame& shown : m_session.playToEnd()) {
            ASSERT_NO_FATAL_FAILURE(m_clip.expect(shown, next++)) << "played from " << from;
        }
        EXPECT_EQ(next, kFrames);
    }
}

TEST_F(Stepping, RestartAtTheEndGoesRoundExactly) {
    m_session.clip().setRestartAtEnd(true);
    ASSERT_NO_FATAL_FAILURE(m_clip.expect(m_session.seek(kFrames - 20), kFrames - 20));
    m_session.clip().getTimer().play();
    for (int number = kFrames - 19; number < 2 * kFrames + 20; ++number) {
        ASSERT_NO_FATAL_FAILURE(m_clip.expect(m_session.nextShown(), number % kFrames));
    }
}

TEST_F(Stepping, AModeChangeDisturbsNeitherASeekNorPlayingOn) {
    theora::TheoraVideoClip& clip = m_session.clip();
    clip.getTimer().play();
    for (int round = 0; round < 200; ++round) {
        const int wanted = round * 37 % (kFrames - 1);
        clip.requestSeek(wanted);
        for (int turn = 0; turn < round % 16; ++turn) {
            std::this_thread::yield(); // so that the seek is sometimes running
        }
        clip.setOutputMode(theora::TheoraOutputMode::TH_BGRX);
        ASSERT_EQ(m_session.nextShown().pictureNumber, wanted);
        clip.setOutputMode(theora::TheoraOutputMode::TH_RGB);
        ASSERT_EQ(m_session.nextShown().pictureNumber, wanted + 1);
    }
}

TEST_F(Stepping, AQueueOfOneFrameStepsWhileTheDisplayHoldsIt) {
    PlaybackSession session(m_clip.file, 1);
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
