// Every seek shows exactly the frame that a plain sequential decode gives, whatever the file's
// layout.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

using support::Bytes;
using support::ClipSpec;

struct NamedClip {
    const char* name;
    ClipSpec spec;
};

ClipSpec clipSpec(void (*change)(ClipSpec&)) {
    ClipSpec spec;
    change(spec);
    return spec;
}

const NamedClip kClips[] = {
    {"OnePacketAPage", clipSpec([](ClipSpec&) {})},
    {"HundredPacketsAPage", clipSpec([](ClipSpec& s) {
         s.frames = 250;
         s.pages = {100, 255};
         s.keyframeDistance = 64;
     })},
    {"SevenPacketsAPage", clipSpec([](ClipSpec& s) {
         s.frames = 120;
         s.pages = {7, 255};
     })},
    {"PacketsOverPages", clipSpec([](ClipSpec& s) {
         s.pages = {3, 2};
         s.quality = 60;
     })},
    {"Version320", clipSpec([](ClipSpec& s) {
         s.version320 = true;
         s.pages = {5, 255};
     })},
    {"Chroma422", clipSpec([](ClipSpec& s) { s.chroma = support::Chroma::yuv422; })},
    {"Chroma444", clipSpec([](ClipSpec& s) { s.chroma = support::Chroma::yuv444; })},
    {"PictureInsideFrame", clipSpec([](ClipSpec& s) {
         s.width = 80;
         s.pictureWidth = 66;
         s.pictureHeight = 35;
         s.pictureX = 6;
         s.pictureY = 4;
     })},
    {"OnlyKeyframes", clipSpec([](ClipSpec& s) {
         s.keyframeDistance = 1;
         s.granuleShift = 0;
     })},
    {"LongGroups", clipSpec([](ClipSpec& s) {
         s.frames = 300;
         s.keyframeDistance = 256;
         s.pages = {20, 255};
     })},
    {"EmptyPackets", clipSpec([](ClipSpec& s) {
         s.frames = 200;
         s.granuleShift = 6;
         s.isEmpty = [](int frame) { return frame % 3 != 0; };
         s.pages = {9, 255};
     })},
    {"ThousandsOfEmptyPackets", clipSpec([](ClipSpec& s) {
         s.frames = 4000;
         s.granuleShift = 8;
         s.isEmpty = [](int frame) { return frame % 50 != 0; };
         s.pages = {255, 255};
     })},
    {"SoundBefore", clipSpec([](ClipSpec& s) { s.sound = support::Sound::before; })},
    {"SoundAfter", clipSpec([](ClipSpec& s) {
         s.sound = support::Sound::after;
         s.frames = 90;
         s.pages = {10, 255};
     })},
    {"SkeletonAndSecondTheora", clipSpec([](ClipSpec& s) {
         s.skeleton = true;
         s.secondTheora = true;
         s.sound = support::Sound::after;
     })},
    {"LastPageWithoutPacket", clipSpec([](ClipSpec& s) {
         s.emptyLastPage = true;
         s.lastPageGranule = (25 << 3) + 5;
         s.frames = 30;
     })},
    {"SmallerThanFourKilobytes", clipSpec([](ClipSpec& s) {
         s.frames = 3;
         s.quality = 0;
     })},
    {"ADamagedKeyframe", clipSpec([](ClipSpec& s) {
         s.frames = 60;
         s.damagedFrame = 24;
     })},
    {"PageNumbersThatJump", clipSpec([](ClipSpec& s) { s.numbersJump = true; })},
    {"OneFrame", clipSpec([](ClipSpec& s) { s.frames = 1; })},
};

class SeekExactness : public testing::TestWithParam<NamedClip> {};

TEST_P(SeekExactness, EveryFrameInAnyOrderIsThatOfASequentialDecode) {
    const Bytes file = support::makeClip(GetParam().spec);
    const auto expected = reference::decode(file);
    ASSERT_EQ(expected.hashes.size(), static_cast<std::size_t>(GetParam().spec.frames));
    PlaybackSession session(file);
    ASSERT_EQ(session.clip().getNumFrames(), GetParam().spec.frames);

    const auto played = session.playToEnd();
    ASSERT_EQ(played.size(), expected.hashes.size());
    for (std::size_t i = 0; i < played.size(); ++i) {
        ASSERT_EQ(played[i].number, static_cast<int>(i));
        ASSERT_EQ(played[i].hash, expected.hashes[i]) << "played frame " << i;
    }

    std::vector<int> order(expected.hashes.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = static_cast<int>(i);
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    order.resize(std::min<std::size_t>(order.size(), 400));
    for (const int n : order) {
        const auto shown = session.seek(n);
        ASSERT_TRUE(shown) << "frame " << n;
        ASSERT_EQ(shown->number, n);
        ASSERT_EQ(shown->hash, expected.hashes[static_cast<std::size_t>(n)]) << "frame " << n;
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, SeekExactness, testing::ValuesIn(kClips),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
