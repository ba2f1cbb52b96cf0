#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraFrameQueue.h"
#include "src/TheoraLog.h"

namespace {

using theora::TheoraFrameFormat;
using theora::TheoraFrameQueue;
using theora::TheoraOutputMode;
using theora::TheoraPicture;
using theora::TheoraVideoFrame;

std::unique_ptr<TheoraVideoFrame> makeFrame() {
    return std::make_unique<TheoraVideoFrame>(TheoraFrameFormat{TheoraOutputMode::TH_RGB, 4, 2, 4});
}

void fill(TheoraFrameQueue& queue, int number) {
    TheoraVideoFrame* frame = queue.requestEmptyFrame();
    ASSERT_NE(frame, nullptr);
    frame->setFrameNumber(number);
    queue.markReady(frame);
}

int frontNumber(TheoraFrameQueue& queue) {
    const TheoraVideoFrame* frame = queue.front();
    return frame == nullptr ? -1 : frame->getFrameNumber();
}

TEST(FrameQueue, FramesComeOutInTheOrderTheyWereFilledIn) {
    TheoraFrameQueue queue(makeFrame);
    queue.setSize(3);
    int next = 0;
    int expected = 0;
    for (int round = 0; round < 10; ++round) {
        while (!queue.isFull()) {
            fill(queue, next++);
        }
        EXPECT_EQ(queue.getReadyCount(), 3);
        EXPECT_EQ(queue.requestEmptyFrame(), nullptr);
        for (int i = 0; i <= round % 3; ++i) {
            EXPECT_EQ(frontNumber(queue), expected++);
            queue.pop();
        }
    }
}

TEST(FrameQueue, AFrameThatIsBeingFilledIsNotHandedOut) {
    TheoraFrameQueue queue(makeFrame);
    queue.setSize(2);
    const TheoraVideoFrame* taken = queue.requestEmptyFrame();
    EXPECT_EQ(frontNumber(queue), -1);
    EXPECT_FALSE(queue.frontTime());
    queue.pop(); // nothing to free: the worker keeps its frame
    queue.giveBack(taken);
    EXPECT_EQ(queue.requestEmptyFrame(), taken);
}

TEST(FrameQueue, RunningOutOfMemoryKeepsTheFramesMadeAndSaysSo) {
    std::vector<std::string> lines;
    theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
    int left = 3;
    TheoraFrameQueue queue([&] {
        if (left-- == 0) {
            throw std::bad_alloc();
        }
        return makeFrame();
    });
    queue.setSize(8);
    theora::setLogHook({});
    EXPECT_EQ(queue.getSize(), 3);
    EXPECT_EQ(lines, std::vector<std::string>{"TheoraFrameQueue: unable to create 8 frames, out of "
                                              "memory. Created 3 frames."});
    fill(queue, 5);
    EXPECT_EQ(frontNumber(queue), 5);
}

TEST(FrameQueue, AHeldFrameOutlivesADiscardAndIsReusedAfterwards) {
    TheoraFrameQueue queue(makeFrame);
    queue.setSize(2);
    fill(queue, 1);
    fill(queue, 2);
    const TheoraVideoFrame* held = queue.front();
    queue.clear();
    EXPECT_EQ(queue.getReadyCount(), 0);
    fill(queue, 50);
    EXPECT_EQ(queue.requestEmptyFrame(), nullptr); // the held one is not given away
    EXPECT_EQ(held->getFrameNumber(), 1);
    queue.pop();
    EXPECT_EQ(frontNumber(queue), 50);
    fill(queue, 51);
    queue.pop();
    EXPECT_EQ(frontNumber(queue), 51);
}

TEST(FrameQueue, LookingAgainLetsGoOfADiscardedFrame) {
    TheoraFrameQueue queue(makeFrame);
    queue.setSize(2);
    fill(queue, 1);
    EXPECT_EQ(frontNumber(queue), 1);
    queue.clear();
    EXPECT_EQ(frontNumber(queue), -1);
    fill(queue, 7);
    fill(queue, 8);
    EXPECT_EQ(frontNumber(queue), 7);
}

TEST(FrameQueue, AdvancingDropsOnlyWhatStandsBefore) {
    for (const bool hold : {false, true}) {
        TheoraFrameQueue queue(makeFrame);
        queue.setSize(4);
        for (int i = 10; i < 14; ++i) {
            fill(queue, i);
        }
        if (hold) {
            EXPECT_EQ(frontNumber(queue), 10);
        }
        EXPECT_FALSE(queue.advanceTo(9));
        EXPECT_EQ(queue.getReadyCount(), 4);
        EXPECT_TRUE(queue.advanceTo(12));
        EXPECT_EQ(queue.getReadyCount(), 2);
        EXPECT_EQ(queue.firstWaitingNumber(), 12);
        EXPECT_EQ(frontNumber(queue), 12);
        fill(queue, 14);
        fill(queue, 15);
        EXPECT_TRUE(queue.isFull());
        for (int i = 12; i < 16; ++i) {
            EXPECT_EQ(frontNumber(queue), i);
            queue.pop();
        }
    }
}

/// A picture of 4 x 2 pixels of one luma.
TheoraPicture greyPicture(const std::uint8_t& luma, const std::uint8_t& chroma,
                          std::uint64_t identity) {
    TheoraPicture picture;
    picture.planes = {{{&luma, 0, 1, 2}, {&chroma, 0, 1, 1}, {&chroma, 0, 1, 1}}};
    picture.identity = identity;
    return picture;
}

TEST(FrameQueue, PicturesThatComeAgainAreNotConvertedAgain) {
    TheoraFrameQueue queue(makeFrame);
    queue.setSize(4);
    const std::uint8_t lumas[] = {16, 60, 100, 140, 180, 220};
    const std::uint8_t chroma = 128;
    int converted = 0;
    const auto fillAll = [&](const std::vector<unsigned>& pictures) {
        converted = 0;
        for (const unsigned at : pictures) {
            TheoraVideoFrame* frame = queue.requestEmptyFrame();
            ASSERT_NE(frame, nullptr);
            if (!queue.reusePixels(*frame, at)) {
                frame->decode(greyPicture(lumas[at], chroma, at));
                ++converted;
            }
            frame->setFrameNumber(static_cast<int>(at));
            queue.markReady(frame);
        }
    };
    const struct {
        unsigned prepared; ///< 0 = not known: nothing is prepared
        std::vector<unsigned> pictures;
        int converted;
    } rounds[] = {
        {0, {1, 2, 3, 4}, 4}, {0, {5, 1, 2, 3}, 1}, // stepped back by one
        {0, {1, 2, 3, 4}, 1},                       // and forward again
        {0, {2, 2, 2, 2}, 0},                       // repeated
        {0, {2, 3, 3, 5}, 2}, {0, {0, 0, 0, 0}, 4}, // unknown: always converted
        {0, {1, 1, 4, 1}, 2}, {0, {4, 2, 4, 1}, 1}, {5, {5, 4, 2, 1}, 0}, // prepared for once
        {2, {5, 5, 2, 3}, 1},                       // prepared what is here already
        {4, {4, 4, 1, 4}, 1}, {3, {4, 1, 5, 3}, 1}, // used later
    };
    for (const auto& round : rounds) {
        queue.prepare(greyPicture(lumas[round.prepared], chroma, round.prepared));
        fillAll(round.pictures);
        EXPECT_EQ(converted, round.converted);
        for (const unsigned at : round.pictures) {
            ASSERT_EQ(frontNumber(queue), static_cast<int>(at));
            TheoraVideoFrame expected({TheoraOutputMode::TH_RGB, 4, 2, 4});
            expected.decode(greyPicture(lumas[at], chroma, at));
            EXPECT_EQ(queue.front()->getBuffer()[0], expected.getBuffer()[0]) << at;
            queue.pop();
        }
    }
}

TEST(FrameQueue, AQueueOfANewFormatForgetsWhatWasPrepared) {
    TheoraFrameFormat format{TheoraOutputMode::TH_RGB, 4, 2, 4};
    TheoraFrameQueue queue([&] { return std::make_unique<TheoraVideoFrame>(format); });
    const std::uint8_t grey = 128;
    queue.setSize(1);
    queue.prepare(greyPicture(grey, grey, 1));
    format.mode = TheoraOutputMode::TH_RGBX;
    queue.setSize(1);
    EXPECT_FALSE(queue.reusePixels(*queue.requestEmptyFrame(), 1));
}

} // namespace
