// What a standing clip prepares for the next step: the frames ahead of its queue and those before.
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "src/Theora/StepBackDecoder.h"
#include "src/Theora/StreamScan.h"
#include "src/Theora/TheoraVideoClip_Theora.h"
#include "src/TheoraException.h"
#include "tests/src/MemorySource.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr int kFrames = 120;

/// Frames of about 4 kB in groups of 100.
support::Bytes longGroups() {
    support::ClipSpec spec;
    spec.width = 128;
    spec.height = 96;
    spec.frames = kFrames;
    spec.keyframeDistance = 100;
    spec.quality = 63;
    return support::makeClip(spec);
}

/// Reading can be forbidden, and held up until the test lets it go on.
class GuardedSource : public MemorySource {
public:
    using MemorySource::MemorySource;
    std::size_t read(void* buffer, std::size_t count) override {
        if (forbidden.load()) {
            throw theora::TheoraGenericException("read in vain", "test", 1);
        }
        if (isHeldUp && isHeldUp() && !isOpen.load()) {
            isWaiting.store(true);
            isOpen.wait(false);
        }
        return MemorySource::read(buffer, count);
    }
    void open() {
        isOpen.store(true);
        isOpen.notify_all();
    }

    std::atomic<bool> forbidden{false};
    std::function<bool()> isHeldUp; ///< asked before each read
    std::atomic<bool> isOpen{false};
    std::atomic<bool> isWaiting{false};
};

TEST(LookAround, AStandingClipDecodesAheadOfItsQueue) {
    auto owned = std::make_unique<GuardedSource>(longGroups());
    GuardedSource& source = *owned;
    theora::TheoraWorkSignal signal;
    theora::TheoraVideoClip_Theora clip(std::move(owned), theora::TheoraOutputMode::TH_RGB, 4,
                                        false, signal, nullptr);
    clip.load();
    clip.getTimer().pause();
    clip.requestSeek(10);
    while (clip.wantsWork()) {
        ASSERT_TRUE(clip.decodeOnWorker());
    }
    source.forbidden.store(true);
    for (const int frame : {20, 30, 9, 19, 13, 34}) {
        clip.requestSeek(frame);
        ASSERT_TRUE(clip.decodeOnWorker()) << frame;
        const theora::TheoraVideoFrame* shown = clip.peekReadyFrame();
        ASSERT_NE(shown, nullptr) << frame;
        EXPECT_EQ(
            support::readFrameNumber(shown->getBuffer(), shown->getWidth(), shown->getHeight()),
            frame);
        clip.releaseShownFrame();
    }
}

TEST(LookAround, AFrameThatTheStepBackDecoderComesPastIsWaitedFor) {
    GuardedSource bytes(longGroups());
    theora::SharedSource source(bytes);
    theora::StreamHeaders headers;
    theora::readStreamHeaders(source, headers);
    const theora::GranuleFormat format(*headers.theora.info.get());
    theora::StreamLayout layout;
    layout.serial = headers.theora.serial;
    layout.dataStart = headers.dataStart;
    theora::findFirstFrame(source, format, layout);
    layout.frameCount = theora::findFrameCount(source, layout.serial, format);
    theora::PlaneCache cache(std::size_t{64} << 20U, 128, 96, 1, 1);
    theora::StepBackDecoder decoder(source, headers.theora, layout, format, cache);
    const theora::StopCheck never = [] { return false; };
    EXPECT_FALSE(decoder.waitFor(60, never)); // it is not under way at all

    cache.setCentre(100);
    bytes.isHeldUp = [&] { return cache.find(0) != nullptr; }; // once decoding has begun
    decoder.prepare(100);
    // Whatever fails below, the decoder's thread can end.
    const std::shared_ptr<void> opened(nullptr, [&](void*) { bytes.open(); });
    while (!bytes.isWaiting.load()) {
        std::this_thread::yield();
    }
    cache.setCentre(80);
    decoder.moveTo(80);                                    // on its way: the work goes on
    EXPECT_TRUE(decoder.waitFor(80, [] { return true; })); // a newer request ends the wait
    EXPECT_FALSE(cache.find(80));
    const theora::StopCheck openTheGate = [&] {
        bytes.open();
        return false;
    };
    EXPECT_TRUE(decoder.waitFor(80, openTheGate));
    EXPECT_TRUE(cache.find(80));
}

} // namespace
