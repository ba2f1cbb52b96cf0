// What a standing clip prepares for the next step: the frames ahead of its queue and those before.
#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "src/Theora/StepBackDecoder.h"
#include "src/Theora/TheoraVideoClip_Theora.h"
#include "tests/src/OpenedStream.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"

namespace {

/// Frames of about 4 kB in groups of 100.
support::Bytes longGroups() {
    return support::makeClip(
        {.width = 128, .height = 96, .frames = 120, .keyframeDistance = 100, .quality = 63});
}

TEST(LookAround, AStandingClipDecodesAheadOfItsQueue) {
    std::atomic<bool> forbidden{false};
    theora::TheoraWorkSignal signal;
    theora::TheoraVideoClip_Theora clip(
        std::make_unique<MemorySource>(longGroups(), [&] { return !forbidden.load(); }),
        theora::TheoraOutputMode::TH_RGB, 4, false, signal, nullptr);
    clip.load();
    clip.getTimer().pause();
    clip.requestSeek(10);
    while (clip.wantsWork()) {
        ASSERT_TRUE(clip.decodeOnWorker());
    }
    forbidden.store(true);
    for (const int frame : {20, 30, 9, 19, 13, 34}) {
        clip.requestSeek(frame);
        ASSERT_TRUE(clip.decodeOnWorker()) << frame;
        const theora::TheoraVideoFrame* shown = clip.peekReadyFrame();
        ASSERT_NE(shown, nullptr) << frame;
        EXPECT_EQ(carriedBy(*shown), frame);
        clip.releaseShownFrame();
    }
}

TEST(LookAround, AFrameThatTheStepBackDecoderComesPastIsWaitedFor) {
    std::atomic<bool> isOpen{false};
    std::atomic<bool> isWaiting{false};
    theora::PlaneCache cache(std::size_t{64} << 20U, 128, 96, 1, 1);
    MemorySource bytes(longGroups(), [&] { // held up once decoding has begun
        if (cache.find(0) != nullptr && !isOpen.load()) {
            isWaiting.store(true);
            isOpen.wait(false);
        }
        return true;
    });
    OpenedStream stream(bytes);
    theora::StepBackDecoder decoder(stream.source, stream.headers.theora, stream.layout,
                                    *stream.format, cache);
    const theora::StopCheck openTheGate = [&] {
        isOpen.store(true);
        isOpen.notify_all();
        return false;
    };
    EXPECT_FALSE(decoder.waitFor(60, openTheGate)); // it is not under way at all: nobody waits
    EXPECT_FALSE(isOpen.load());

    cache.setCentre(100);
    decoder.prepare(100);
    // Whatever fails below, the decoder's thread can end.
    const std::shared_ptr<void> opened(nullptr, [&](void*) { (void)openTheGate(); });
    while (!isWaiting.load()) {
        std::this_thread::yield();
    }
    cache.setCentre(80);
    decoder.moveTo(80);                                    // on its way: the work goes on
    EXPECT_TRUE(decoder.waitFor(80, [] { return true; })); // a newer request ends the wait
    EXPECT_FALSE(cache.find(80));
    EXPECT_TRUE(decoder.waitFor(80, openTheGate));
    EXPECT_TRUE(cache.find(80));
}

} // namespace
