// Files whose frame numbers are not 0 to count - 1: cut from longer ones, counted wrongly, with
// gaps.
#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"

namespace {

using support::ClipSpec;

TEST(Numbering, AFileThatStartsLateShowsItsFirstFrameForEarlierNumbers) {
    ClipSpec spec;
    spec.firstNumber = 100;
    PlaybackSession session(support::makeClip(spec));
    EXPECT_EQ(session.clip().getNumFrames(), 130);
    const struct {
        int seek;
        int carried;
    } cases[] = {{0, 0}, {99, 0}, {100, 0}, {101, 1}, {117, 17}, {129, 29}, {50, 0}};
    for (const auto& item : cases) {
        const auto shown = session.seek(item.seek);
        ASSERT_TRUE(shown) << item.seek;
        EXPECT_EQ(shown->number, item.seek);
        EXPECT_EQ(shown->carried, item.carried) << item.seek;
    }
}

TEST(Numbering, AStreamThatStartsInsideAGroupShowsWhatASequentialDecodeShows) {
    ClipSpec spec;
    spec.frames = 40;
    spec.dropFrames = 3; // the first keyframe is missing
    PlaybackSession session(support::makeClip(spec));
    const auto played = session.playToEnd();
    ASSERT_EQ(played.size(), 37U);
    EXPECT_EQ(played.front().number, 3);
    for (const auto& expected : played) {
        const auto shown = session.seek(expected.number);
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->hash, expected.hash) << expected.number;
    }
    const auto first = session.seek(0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->hash, played.front().hash);
}

TEST(Numbering, AStreamThatStartsWithEmptyOrDamagedFramesShowsGreyUntilAPictureComes) {
    for (const bool damaged : {false, true}) {
        ClipSpec spec;
        spec.frames = 24;
        spec.granuleShift = 6;
        spec.isEmpty = [](int frame) { return frame % 8 == 1 || frame % 8 == 2; };
        spec.dropFrames = 1;
        spec.damagedFrame = damaged ? 0 : -1;
        PlaybackSession session(support::makeClip(spec));
        const auto played = session.playToEnd();
        ASSERT_EQ(played.size(), 23U);
        for (const int frame : {23, 1, 2, 20, 3, 1, 9}) {
            const auto shown = session.seek(frame);
            ASSERT_TRUE(shown);
            EXPECT_EQ(shown->hash, played[static_cast<std::size_t>(frame - 1)].hash) << frame;
        }
    }
}

TEST(Numbering, AVersionMismatchDoesNotLoseTheFirstFrame) {
    ClipSpec spec;
    spec.firstNumber = -1; // a version that counts from 1 in a file that counts from 0
    PlaybackSession session(support::makeClip(spec));
    for (const int n : {0, 1, 13, 29}) {
        const auto shown = session.seek(n);
        ASSERT_TRUE(shown) << n;
        EXPECT_EQ(shown->carried, n);
    }
}

TEST(Numbering, BehindTheEndTheLastPictureStandsUnderTheNumberAskedFor) {
    ClipSpec spec;
    spec.emptyLastPage = true; // counts a frame that does not exist
    PlaybackSession session(support::makeClip(spec));
    EXPECT_EQ(session.clip().getNumFrames(), 31);
    for (const int n : {30, 29, 30, 5000, 3}) {
        const auto shown = session.seek(n);
        ASSERT_TRUE(shown) << n;
        EXPECT_EQ(shown->number, n);
        EXPECT_EQ(shown->carried, std::min(n, 29));
    }
}

TEST(Numbering, OfAGapTheFrameBeforeItIsShown) {
    // Two parts of one stream, the second numbered as if twenty frames had been lost between them.
    ClipSpec spec;
    const auto first = support::makeClip(spec);
    spec.firstNumber = 50;
    auto second = support::makeClip(spec);
    constexpr char kTag[] = "OggS";
    std::size_t at = 0; // the pages behind the headers
    for (int page = 0; page < 2; ++page) {
        at = static_cast<std::size_t>(
            std::search(second.begin() + static_cast<std::ptrdiff_t>(at) + 1, second.end(), kTag,
                        kTag + 4) -
            second.begin());
    }
    auto file = first;
    file.insert(file.end(), second.begin() + static_cast<std::ptrdiff_t>(at), second.end());
    PlaybackSession session(file);
    EXPECT_EQ(session.clip().getNumFrames(), 80);
    const struct {
        int seek;
        int carried;
    } cases[] = {{29, 29}, {30, 29}, {49, 29}, {50, 0}, {51, 1}, {79, 29}, {40, 29}, {12, 12}};
    for (const auto& item : cases) {
        const auto shown = session.seek(item.seek);
        ASSERT_TRUE(shown) << item.seek;
        EXPECT_EQ(shown->number, item.seek);
        EXPECT_EQ(shown->carried, item.carried) << item.seek;
    }
}

TEST(Numbering, AFileThatDoesNotTellItsLengthLoadsAndPlays) {
    ClipSpec spec;
    auto file = support::makeClip(spec);
    const support::Bytes noise(300000, 0x11);
    file.insert(file.end(), noise.begin(), noise.end());
    PlaybackSession session(file);
    EXPECT_EQ(session.clip().getNumFrames(), -1);
    EXPECT_EQ(session.clip().getDuration(), -1.0F);
    EXPECT_EQ(session.playToEnd().size(), 30U);
    const auto shown = session.seek(17);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->carried, 17);
}

} // namespace
