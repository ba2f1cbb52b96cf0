// Which frame is due, which is dropped, and what happens at the end, on a clip without a decoder.
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraException.h"
#include "src/TheoraLog.h"
#include "src/TheoraVideoClip.h"
#include "tests/src/MemorySource.h"

namespace {

using theora::TheoraOutputMode;

/// 100 frames of 24 x 2 pixels at 10 a second; the test plays the worker.
class StubClip : public theora::TheoraVideoClip {
public:
    explicit StubClip(theora::TheoraWorkSignal& signal, bool powerOfTwo = false,
                      bool knowsLength = true)
        : TheoraVideoClip(std::make_unique<MemorySource>(support::Bytes{}),
                          TheoraOutputMode::TH_RGB, 4, powerOfTwo, signal) {
        load();
        if (knowsLength) {
            setFrameCount(100);
        }
    }
    void load() override { setGeometry(24, 2, 10.0F); }
    void decodedAudioCheck() override {}
    [[nodiscard]] bool hasAudio() const override { return false; }

    void produce(std::initializer_list<int> numbers) {
        for (const int number : numbers) {
            theora::TheoraVideoFrame* frame = m_frameQueue->requestEmptyFrame();
            ASSERT_NE(frame, nullptr);
            deliver(*frame, number);
        }
    }
    using TheoraVideoClip::wrapAround;

    int continuedFrom = -1;
    int requestedMeanwhile = -1; ///< by another thread while the next seek runs

protected:
    bool seekTo(int) override {
        if (requestedMeanwhile >= 0) {
            requestSeek(requestedMeanwhile);
        }
        return true;
    }
    bool decodeNextFrame() override { return false; }
    void continueFrom(int frame) override { continuedFrom = frame; }
};

class ClipRules : public testing::Test {
protected:
    int shown() {
        const theora::TheoraVideoFrame* frame = clip.peekReadyFrame();
        return frame == nullptr ? -1 : frame->getFrameNumber();
    }

    theora::TheoraWorkSignal signal;
    StubClip clip{signal};
};

TEST_F(ClipRules, AFrameIsShownFromItsTimeOnAndLateOnesAreDroppedDownToTheLast) {
    clip.produce({0, 1, 2, 3});
    EXPECT_EQ(shown(), 0);
    clip.releaseShownFrame();
    EXPECT_EQ(shown(), -1);
    clip.update(0.1F);
    EXPECT_EQ(shown(), 1);
    clip.produce({4});
    clip.update(0.25F);
    EXPECT_EQ(shown(), 3);
    EXPECT_EQ(clip.getNumDroppedFrames(), 2U);
    EXPECT_EQ(clip.getNumDisplayedFrames(), 3U);
    clip.update(5.0F);
    EXPECT_EQ(shown(), 4); // late as well, but better than nothing
    EXPECT_EQ(clip.getNumReadyFrames(), 1);
}

TEST_F(ClipRules, ARequestMadeDuringASeekStays) {
    clip.requestedMeanwhile = 6;
    clip.requestSeek(5);
    ASSERT_TRUE(clip.decodeOnWorker());
    EXPECT_EQ(clip.pendingSeekFrame.load(), 6);
}

TEST_F(ClipRules, ARestartCarriesTheOvershootOverAndDropsOldFrames) {
    const struct {
        float step; ///< from a tenth of a second before the end
        bool knowsLength;
        float time;
        const char* line;
        int shown; ///< the first old frame bridges to the new pass, unless that is far on
        unsigned displayed;
    } cases[] = {{0.3F, true, 0.2F, "dropped 1 end frames", 97, 0},
                 {0.3F, false, 0.2F, "dropped 1 end frames", 97, 0},
                 {0.8F, true, 0.7F, "dropped 3 end frames", 0, 3},
                 {5.0F, true, 1.0F, "dropped 3 end frames", 0, 3}};
    for (const auto& item : cases) {
        StubClip looped(signal, false, item.knowsLength);
        std::vector<std::string> lines;
        theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
        looped.setRestartAtEnd(true);
        looped.requestSeek(90);
        ASSERT_TRUE(looped.decodeOnWorker());
        looped.produce({97, 98, 99});
        looped.wrapAround(100);
        looped.produce({0});
        looped.getTimer().seek(9.9F);
        looped.update(item.step);
        theora::setLogHook({});
        EXPECT_NEAR(looped.getTimer().getTime(), item.time, 1e-5F);
        EXPECT_EQ(lines, std::vector<std::string>{item.line});
        EXPECT_EQ(looped.getNumDisplayedFrames(), item.displayed);
        looped.getTimer().pause();
        const theora::TheoraVideoFrame* first = looped.peekReadyFrame();
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(first->getFrameNumber(), item.shown);
        EXPECT_NEAR(first->getTimeToDisplay(), item.shown > 0 ? item.time : 0, 1e-5F);
        EXPECT_EQ(first->getIteration(), 1);
        looped.getTimer().play();
        looped.getTimer().seek(9.9F);
        looped.update(0.3F);
        EXPECT_NEAR(looped.getTimer().getTime(), 10.2F, 1e-5F) << "it restarts once";
    }
}

TEST_F(ClipRules, FramesOfTheNextPassWaitForTheTimerWhichRunsOnWithoutARestart) {
    clip.wrapAround(100);
    clip.produce({0, 1});
    clip.getTimer().seek(9.95F);
    EXPECT_EQ(shown(), -1);
    clip.update(0.25F);
    EXPECT_NEAR(clip.getTimer().getTime(), 10.2F, 1e-5F);
    EXPECT_EQ(shown(), -1);
    EXPECT_EQ(clip.getNumDroppedFrames(), 0U);
}

TEST_F(ClipRules, AModeChangeRebuildsTheQueueAndDecodesTheLostFramesAgain) {
    clip.produce({4, 5});
    clip.setOutputMode(TheoraOutputMode::TH_RGB); // the current mode: no effect
    EXPECT_EQ(clip.getNumReadyFrames(), 2);
    clip.setOutputMode(TheoraOutputMode::TH_RGBA);
    EXPECT_EQ(clip.getNumReadyFrames(), 0);
    EXPECT_EQ(clip.getNumPrecachedFrames(), 4);
    EXPECT_EQ(clip.continuedFrom, 4);
    EXPECT_EQ(clip.getWidth(), 12);
    clip.produce({0});
    EXPECT_EQ(clip.peekReadyFrame()->getBufferSize(), 24U * 2 * 4);
    EXPECT_EQ(clip.peekReadyFrame()->getRowBytes(), 12 * 4);
}

TEST_F(ClipRules, AnInvalidModeIsRefusedAndChangesNothing) {
    try {
        clip.setOutputMode(TheoraOutputMode::TH_UNDEFINED);
        FAIL();
    } catch (const theora::TheoraGenericException& error) {
        EXPECT_EQ(error.getErrorText(), "[TheoraGenericException: src\\TheoraVideoClip.cpp:241] - "
                                        "Invalid output mode: TH_UNDEFINED for video: memory clip");
    }
    EXPECT_EQ(clip.getOutputMode(), TheoraOutputMode::TH_RGB);
}

TEST_F(ClipRules, AStrideIsTheNextPowerOfTwoIfAskedFor) {
    EXPECT_EQ(clip.getStride(), 24);
    EXPECT_EQ(StubClip(signal, true).getStride(), 32);
}

TEST_F(ClipRules, WorkIsWantedOnlyWhereAWorkerCanDoSomething) {
    EXPECT_TRUE(clip.wantsWork());
    clip.endOfFile.store(true);
    EXPECT_FALSE(clip.wantsWork());
    clip.requestSeek(3);
    ASSERT_TRUE(clip.decodeOnWorker());
    clip.produce({0, 1, 2, 3});
    EXPECT_FALSE(clip.wantsWork());
    clip.requestSeek(3); // a full queue does not delay a seek
    EXPECT_TRUE(clip.wantsWork());
    EXPECT_EQ(clip.getNumReadyFrames(), 0);
}

TEST_F(ClipRules, SpeedAndPauseDecideHowTimePasses) {
    clip.getTimer().setSpeed(2.0F);
    clip.update(0.5F);
    EXPECT_FLOAT_EQ(clip.getTimer().getTime(), 1.0F);
    clip.getTimer().pause();
    clip.update(1.0F);
    EXPECT_FLOAT_EQ(clip.getTimer().getTime(), 1.0F);
    clip.getTimer().play();
    clip.getTimer().stop();
    clip.update(-0.25F);
    EXPECT_FLOAT_EQ(clip.getTimer().getTime(), 0.5F);
}

} // namespace
