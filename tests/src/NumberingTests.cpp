// Files whose frame numbers are not 0 to count - 1: cut from longer ones, counted wrongly, with
// gaps.
#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"

namespace {

using support::Bytes;
using support::ClipSpec;

struct SeekCase {
    int asked;
    int carried; ///< the picture that stands under the number asked for
};

void expectSeeks(PlaybackSession& session, const std::vector<SeekCase>& cases) {
    for (const SeekCase& item : cases) {
        const ShownFrame shown = session.seek(item.asked);
        EXPECT_EQ(shown.number, item.asked);
        EXPECT_EQ(shown.carried, item.carried) << item.asked;
    }
}

/// Seeks show what playing showed.
void expectSeeksAsPlayed(const ClipSpec& spec, int firstNumber) {
    PlaybackSession session(support::makeClip(spec));
    const auto played = session.playToEnd();
    ASSERT_EQ(std::ssize(played), spec.frames - spec.dropFrames);
    EXPECT_EQ(played.front().number, firstNumber);
    for (const int step : {1, 7, 11}) { // forwards, then back and forth
        for (std::size_t i = 0; i < played.size(); ++i) {
            const ShownFrame& expected = played[i * static_cast<std::size_t>(step) % played.size()];
            EXPECT_EQ(session.seek(expected.number).hash, expected.hash) << expected.number;
        }
    }
    EXPECT_EQ(session.seek(0).hash, played.front().hash);
}

TEST(Numbering, NumbersThatTheFileDoesNotHaveShowTheNearestPicture) {
    const struct {
        const char* name;
        ClipSpec spec;
        int frames;
        std::vector<SeekCase> seeks;
    } cases[] = {
        {"starts late",
         {.firstNumber = 100},
         130,
         {{0, 0}, {99, 0}, {100, 0}, {101, 1}, {117, 17}, {129, 29}, {50, 0}}},
        {"counts from 0, of a version that counts from 1",
         {.firstNumber = -1},
         30,
         {{0, 0}, {1, 1}, {13, 13}, {29, 29}}},
        {"the last page counts a frame that is not there",
         {.emptyLastPage = true},
         31,
         {{30, 29}, {29, 29}, {30, 29}, {5000, 29}, {3, 3}}},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.name);
        PlaybackSession session(support::makeClip(item.spec));
        EXPECT_EQ(session.clip().getNumFrames(), item.frames);
        expectSeeks(session, item.seeks);
    }
}

TEST(Numbering, AStreamThatStartsInsideAGroupShowsWhatPlayingShows) {
    ClipSpec spec;
    spec.frames = 40;
    spec.dropFrames = 3; // the first keyframe is missing
    expectSeeksAsPlayed(spec, 3);
}

TEST(Numbering, AStreamThatStartsWithEmptyOrDamagedFramesShowsGreyUntilAPictureComes) {
    for (const int damaged : {-1, 0}) {
        ClipSpec spec;
        spec.frames = 24;
        spec.granuleShift = 6;
        spec.isEmpty = [](int frame) { return frame % 8 == 1 || frame % 8 == 2; };
        spec.dropFrames = 1;
        spec.damagedFrame = damaged;
        expectSeeksAsPlayed(spec, 1);
    }
}

TEST(Numbering, OfAGapTheFrameBeforeItIsShown) {
    // Two parts of one stream, the second numbered as if twenty frames had been lost between them.
    ClipSpec spec;
    Bytes file = support::makeClip(spec);
    spec.firstNumber = 50;
    const Bytes second = support::makeClip(spec);
    const Bytes page = {'O', 'g', 'g', 'S'};
    auto data = second.begin();
    for (int header = 0; header < 2; ++header) {
        data = std::search(data + 1, second.end(), page.begin(), page.end());
    }
    file.insert(file.end(), data, second.end());
    PlaybackSession session(file);
    EXPECT_EQ(session.clip().getNumFrames(), 80);
    expectSeeks(session, {{29, 29}, {30, 29}, {49, 29}, {50, 0}, {51, 1}, {79, 29}, {40, 29}});
}

TEST(Numbering, AFileThatDoesNotTellItsLengthLoadsAndPlays) {
    Bytes file = support::makeClip({});
    file.insert(file.end(), 300000, 0x11);
    PlaybackSession session(file);
    EXPECT_EQ(session.clip().getNumFrames(), -1);
    EXPECT_EQ(session.clip().getDuration(), -1.0F);
    EXPECT_EQ(session.playToEnd().size(), 30U);
    expectSeeks(session, {{17, 17}});
}

} // namespace
