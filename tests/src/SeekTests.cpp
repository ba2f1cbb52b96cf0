// Every seek shows exactly the frame that a plain sequential decode gives, whatever the file's
// layout.
#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

using support::Bytes;
using support::Sound;

struct NamedClip {
    const char* name;
    support::ClipSpec spec;
};

const NamedClip kClips[] = {
    {"OnePacketAPage", {}},
    {"HundredPacketsAPage", {.frames = 250, .keyframeDistance = 64, .pages = {100, 255}}},
    {"SevenPacketsAPage", {.frames = 120, .pages = {7, 255}}},
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
    {"SoundBefore", {.sound = Sound::before}},
    {"SoundAfter", {.frames = 90, .pages = {10, 255}, .sound = Sound::after}},
    {"SkeletonAndSecondTheora", {.sound = Sound::after, .skeleton = true, .secondTheora = true}},
    {"LastPageWithoutPacket", {.emptyLastPage = true, .lastPageGranule = (25 << 3) + 5}},
    {"SmallerThanFourKilobytes", {.frames = 3, .quality = 0}},
    {"ADamagedKeyframe", {.frames = 60, .damagedFrame = 24}},
    {"PageNumbersThatJump", {.numbersJump = true}},
    {"OneFrame", {.frames = 1}},
};

class SeekExactness : public testing::TestWithParam<NamedClip> {};

TEST_P(SeekExactness, EveryFrameInAnyOrderIsThatOfASequentialDecode) {
    const Bytes file = support::makeClip(GetParam().spec);
    const auto expected = reference::decode(file);
    ASSERT_EQ(std::ssize(expected), GetParam().spec.frames);
    PlaybackSession session(file);
    ASSERT_EQ(session.clip().getNumFrames(), GetParam().spec.frames);

    const auto played = session.playToEnd();
    ASSERT_EQ(played.size(), expected.size());
    for (std::size_t i = 0; i < played.size(); ++i) {
        ASSERT_EQ(played[i].number, static_cast<int>(i));
        ASSERT_EQ(played[i].hash, expected[i].hash) << "played frame " << i;
    }

    std::vector<int> order(expected.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    order.resize(std::min<std::size_t>(order.size(), 400));
    for (const int n : order) {
        const ShownFrame shown = session.seek(n);
        ASSERT_EQ(shown.number, n);
        ASSERT_EQ(shown.hash, expected[static_cast<std::size_t>(n)].hash) << "frame " << n;
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, SeekExactness, testing::ValuesIn(kClips),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
