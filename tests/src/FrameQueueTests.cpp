// How frames circulate between the worker that fills them and the display that holds one.
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraFrameQueue.h"
#include "src/TheoraLog.h"

namespace {

using theora::TheoraFrameQueue;
using theora::TheoraVideoFrame;

class FrameQueue : public testing::Test {
protected:
    void fill(const std::vector<int>& numbers) {
        for (const int number : numbers) {
            TheoraVideoFrame* frame = queue.requestEmptyFrame();
            ASSERT_NE(frame, nullptr);
            frame->setFrameNumber(number);
            queue.markReady(frame);
        }
    }
    int front() {
        const TheoraVideoFrame* frame = queue.front();
        return frame == nullptr ? -1 : frame->getFrameNumber();
    }
    /// Takes all that is ready.
    std::vector<int> drain() {
        std::vector<int> numbers;
        for (int number = front(); number >= 0; number = front()) {
            numbers.push_back(number);
            queue.pop();
        }
        return numbers;
    }

    theora::TheoraFrameFormat format{theora::TheoraOutputMode::TH_GREY, 4, 2, 4};
    int memory = 100; ///< number of frames it can hold
    TheoraFrameQueue queue{[this] {
        return memory-- > 0 ? std::make_unique<TheoraVideoFrame>(format) : throw std::bad_alloc();
    }};
};

TEST_F(FrameQueue, AFrameThatIsBeingFilledIsNeitherHandedOutNorFreed) {
    queue.setSize(2);
    const TheoraVideoFrame* taken = queue.requestEmptyFrame();
    EXPECT_EQ(front(), -1);
    queue.pop();
    queue.markReady(taken);
    EXPECT_EQ(queue.front(), taken);
}

TEST_F(FrameQueue, RunningOutOfMemoryKeepsTheFramesMadeAndSaysSo) {
    std::vector<std::string> lines;
    theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
    memory = 3;
    queue.setSize(8);
    theora::setLogHook({});
    EXPECT_EQ(queue.getSize(), 3);
    EXPECT_EQ(lines, std::vector<std::string>{"TheoraFrameQueue: unable to create 8 frames, out of "
                                              "memory. Created 3 frames."});
}

TEST_F(FrameQueue, AHeldFrameOutlivesADiscardUntilItIsTakenOrLookedForAgain) {
    for (const bool popped : {true, false}) {
        queue.setSize(2);
        fill({1, 2});
        const TheoraVideoFrame* held = queue.front();
        queue.clear();
        EXPECT_EQ(queue.getReadyCount(), 0);
        fill({50});
        EXPECT_EQ(queue.requestEmptyFrame(), nullptr); // the held one is not reused
        EXPECT_EQ(held->getFrameNumber(), 1);
        if (popped) {
            queue.pop();
        }
        EXPECT_EQ(front(), 50);
        fill({51});
        EXPECT_EQ(drain(), (std::vector{50, 51}));
    }
}

TEST_F(FrameQueue, AdvancingDropsOnlyWhatStandsBefore) {
    for (const bool hold : {false, true}) {
        queue.setSize(4);
        fill({10, 11, 12, 13});
        if (hold) {
            EXPECT_EQ(front(), 10);
        }
        EXPECT_FALSE(queue.advanceTo(9));
        EXPECT_EQ(queue.getReadyCount(), 4);
        EXPECT_TRUE(queue.advanceTo(12));
        EXPECT_EQ(queue.getReadyCount(), 2);
        EXPECT_EQ(queue.firstWaitingNumber(), 12);
        EXPECT_EQ(front(), 12);
        fill({14, 15});
        EXPECT_TRUE(queue.isFull());
        EXPECT_EQ(drain(), (std::vector{12, 13, 14, 15}));
    }
}

/// One column of one luma.
theora::TheoraPicture greyPicture(const std::uint8_t& luma, unsigned identity) {
    const theora::TheoraPlane plane{&luma, 0, 1, 2};
    return {{plane, plane, plane}, 1, 1, identity};
}

TEST_F(FrameQueue, PicturesThatComeAgainAreNotConvertedAgain) {
    queue.setSize(4);
    const std::uint8_t lumas[] = {16, 60, 100, 140, 180, 220};
    const struct {
        unsigned prepared; ///< 0 = unknown: nothing is prepared
        std::vector<unsigned> pictures;
        int converted;
    } rounds[] = {
        {0, {1, 2, 3, 4}, 4}, {0, {5, 1, 2, 3}, 1}, // stepped back by one
        {0, {1, 2, 3, 4}, 1},                       // and forward again
        {0, {2, 2, 2, 2}, 0},                       // repeated
        {0, {2, 3, 3, 5}, 2}, {0, {0, 0, 0, 0}, 4}, // unknown: always converted
        {0, {1, 1, 4, 1}, 2}, {0, {4, 2, 4, 1}, 1}, {5, {5, 4, 2, 1}, 0}, // prepared for once
        {2, {5, 5, 2, 3}, 1},                       // prepared, but present already
        {4, {4, 4, 1, 4}, 1}, {3, {4, 1, 5, 3}, 1}, // used later
    };
    for (const auto& round : rounds) {
        queue.prepare(greyPicture(lumas[round.prepared], round.prepared));
        int converted = 0;
        for (const unsigned at : round.pictures) {
            TheoraVideoFrame* frame = queue.requestEmptyFrame();
            ASSERT_NE(frame, nullptr);
            if (!queue.reusePixels(*frame, at)) {
                frame->decode(greyPicture(lumas[at], at));
                ++converted;
            }
            queue.markReady(frame);
        }
        EXPECT_EQ(converted, round.converted);
        for (const unsigned at : round.pictures) {
            EXPECT_EQ(queue.front()->getBuffer()[0], lumas[at]);
            queue.pop();
        }
    }
}

TEST_F(FrameQueue, AQueueOfANewFormatForgetsWhatWasPrepared) {
    const std::uint8_t luma = 128;
    queue.setSize(1);
    queue.prepare(greyPicture(luma, 1));
    format.mode = theora::TheoraOutputMode::TH_RGBX;
    queue.setSize(1);
    EXPECT_FALSE(queue.reusePixels(*queue.requestEmptyFrame(), 1));
}

} // namespace
