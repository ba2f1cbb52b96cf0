// Files whose frame numbers are not 0 to count - 1: cut from longer ones, counted wrongly, with
// gaps.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/FileSystem.h"
#include "src/ClipEnding.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"

namespace {

using support::Bytes;
using support::ClipSpec;

/// So far on that neighbours have the same time as a 32-bit float.
constexpr int kFar = 40'000'000;

struct SeekCase {
    int asked;
    int pictureNumber; ///< of the picture shown for it
};

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

/// A clip followed by its data once more, as if twenty frames had been lost between them.
Bytes withGap() {
    Bytes file = support::makeClip({});
    const Bytes second = support::makeClip({.firstNumber = 50});
    const Bytes page = {'O', 'g', 'g', 'S'};
    auto data = second.begin();
    for (int header = 0; header < 2; ++header) {
        data = std::search(data + 1, second.end(), page.begin(), page.end());
    }
    file.insert(file.end(), data, second.end());
    return file;
}

Bytes followedBy(const Bytes& more) {
    Bytes file = support::makeClip({});
    file.insert(file.end(), more.begin(), more.end());
    return file;
}

struct NumberedFile {
    const char* name;
    Bytes file;
    int frames;   ///< as the file counts them
    int playedOn; ///< pictures that follow when 0 has been shown
    std::vector<SeekCase> seeks;
};

std::vector<NumberedFile> oddlyNumberedFiles() {
    return {
        {"starts late",
         support::makeClip({.firstNumber = 100}),
         130,
         30,
         {{0, 0}, {99, 0}, {100, 0}, {101, 1}, {117, 17}, {129, 29}, {50, 0}}},
        {"starts weeks late",
         support::makeClip({.firstNumber = kFar}),
         kFar + 30,
         30,
         {{kFar, 0}, {kFar + 1, 1}, {kFar + 17, 17}, {kFar + 16, 16}, {kFar + 29, 29}}},
        {"counts from 0, of a version that counts from 1",
         support::makeClip({.firstNumber = -1}),
         30,
         29,
         {{0, 0}, {1, 1}, {13, 13}, {29, 29}}},
        {"the last page counts a frame that is not there",
         support::makeClip({.emptyLastPage = true}),
         31,
         29,
         {{30, 29}, {29, 29}, {30, 29}, {5000, 29}, {3, 3}}},
        {"a gap",
         withGap(),
         80,
         59,
         {{29, 29}, {30, 29}, {49, 29}, {50, 0}, {51, 1}, {79, 29}, {40, 29}}},
        {"does not tell its length", followedBy(Bytes(300000, 0x11)), -1, 29, {{17, 17}}},
        {"a further clip is chained",
         followedBy(support::makeClip({})),
         30,
         29,
         {{29, 29}, {3, 3}}},
    };
}

TEST(Numbering, NumbersThatTheFileDoesNotHaveShowTheNearestPicture) {
    for (const NumberedFile& item : oddlyNumberedFiles()) {
        SCOPED_TRACE(item.name);
        PlaybackSession session(item.file);
        EXPECT_EQ(session.clip().getNumFrames(), item.frames);
        EXPECT_EQ(session.clip().getDuration() < 0, item.frames < 0);
        for (const SeekCase& seek : item.seeks) {
            const ShownFrame shown = session.seek(seek.asked);
            EXPECT_EQ(shown.number, seek.asked);
            EXPECT_EQ(shown.pictureNumber, seek.pictureNumber) << seek.asked;
            EXPECT_TRUE(session.showsNothingLater()) << seek.asked;
        }
        EXPECT_EQ(session.seek(0).pictureNumber, 0);
        EXPECT_EQ(std::ssize(session.playToEnd()), item.playedOn) << "what is there, once";
    }
}

TEST(Numbering, AStreamThatStartsInsideAGroupShowsWhatPlayingShows) {
    expectSeeksAsPlayed({.frames = 40, .dropFrames = 3}, 3); // the first keyframe is missing
    // Empty or damaged frames in front: grey until a picture comes.
    for (const int damaged : {-1, 0}) {
        expectSeeksAsPlayed({.frames = 24,
                             .granuleShift = 6,
                             .isEmpty = [](int frame) { return frame % 8 == 1 || frame % 8 == 2; },
                             .damagedFrame = damaged,
                             .dropFrames = 1},
                            1);
    }
}

class ClipEnding : public support::TempFolderTest {};

TEST_F(ClipEnding, RepeatsTheLastPictureAndNothingElse) {
    struct Case {
        ClipSpec spec;
        int asked;
        int frames; ///< that there are then
    };
    const Case cases[] = {
        {{.frames = 10, .granuleShift = 4}, 17, 17},
        {{.frames = 10, .granuleShift = 4, .sound = support::Sound::after}, 13, 13},
        {{.frames = 10, .granuleShift = 4, .pages = {.packetsPerPage = 9}}, 12, 12},
        {{.frames = 10, .version320 = true}, 12, 12},
        {{.frames = 10}, 10, 10},
        {{.frames = 10}, 5, 10},
        {{.frames = 10, .keyframeDistance = 8}, 40, 10}, // no position says "32 since a key frame"
    };
    platform::FileSystem& files = platform::nativeFileSystem();
    const auto goesOn = [] { return false; };
    for (const auto& [spec, asked, frames] : cases) {
        const Bytes before = support::makeClip(spec);
        support::writeBytes("clip.ogv", std::string(before.begin(), before.end()));
        EXPECT_EQ(theora::extendClip("clip.ogv", asked, files, goesOn), frames >= asked) << asked;
        const std::string after = support::readBytes("clip.ogv");
        EXPECT_EQ(after.size() > before.size(), frames > spec.frames);
        PlaybackSession session(Bytes(after.begin(), after.end()));
        EXPECT_EQ(session.clip().getNumFrames(), frames);
        const auto played = session.playToEnd();
        ASSERT_EQ(std::ssize(played), frames);
        for (int frame = 0; frame < frames; ++frame) {
            const auto& shown = played[static_cast<std::size_t>(frame)];
            EXPECT_EQ(shown.pictureNumber, std::min(frame, spec.frames - 1));
            EXPECT_EQ(session.seek(frame).hash, shown.hash);
        }
    }
    support::writeBytes("clip.ogv", "no clip");
    EXPECT_FALSE(theora::extendClip("clip.ogv", 3, files, goesOn));
    EXPECT_EQ(support::readBytes("clip.ogv"), "no clip");
}

} // namespace
