// What a paused clip caches for the next step: frames past its queue and frames before, in bounded
// memory.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "src/Theora/StepBackDecoder.h"
#include "src/Theora/StepBackPlan.h"
#include "src/Theora/TheoraVideoClip_Theora.h"
#include "tests/src/OpenedStream.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/Gate.h"

namespace {

using theora::PlaneCache;

constexpr int kSide = 16;
constexpr std::size_t kPictureBytes = kSide * kSide * 3 / 2;

/// Stores a picture whose samples are all `value`.
void keep(PlaneCache& cache, int frame, int value) {
    const std::vector<std::uint8_t> samples(kSide * kSide, static_cast<std::uint8_t>(value));
    const theora::TheoraPlane luma{samples.data(), kSide, kSide, kSide};
    const theora::TheoraPlane chroma{samples.data(), kSide, kSide / 2, kSide / 2};
    cache.store(frame, {{luma, chroma, chroma}, 1, 1, 0});
}

void visit(PlaneCache& cache, int frame, int value) {
    cache.setCentre(frame);
    keep(cache, frame, value);
}

int valueOf(const PlaneCache& cache, int frame) {
    const auto found = cache.find(frame);
    return found ? found->picture.planes[2].data[kSide / 2 * kSide / 2 - 1] : -1;
}

TEST(PlaneCache, KeepsTheWindowAroundTheCentreWithinItsMemoryAndWhatIsHeld) {
    PlaneCache cache(kPictureBytes * 21, kSide, kSide, 1, 1);
    EXPECT_EQ(cache.capacity(), 20);
    visit(cache, 0, 77);
    const auto held = cache.find(0);
    ASSERT_TRUE(held);
    for (int frame = 1; frame < 200; ++frame) {
        visit(cache, frame, frame);
    }
    EXPECT_EQ(held->picture.planes[0].data[0], 77);
    for (int frame = 0; frame < 200; ++frame) {
        EXPECT_EQ(valueOf(cache, frame), frame < 180 ? -1 : frame);
    }
    EXPECT_EQ(cache.firstMissingBelow(200, 0), -1);    // what is missing would not be kept
    EXPECT_EQ(cache.firstMissingBelow(100, 50), 49);   // nor would any of these
    EXPECT_EQ(cache.firstMissingBelow(200, 190), 189); // none missing down to the limit
    EXPECT_FALSE(cache.wants(179));                    // behind the window of this centre
    EXPECT_TRUE(cache.wants(199 + cache.ahead()));
    EXPECT_FALSE(cache.wants(199 + cache.ahead() + 1));
    cache.setCentre(190);
    EXPECT_EQ(cache.firstMissingBelow(190, 0), 179);
}

/// A key that is held after a jump into a clip, while the step-back decoder gets on by so many
/// frames from one step to the next.
class HeldKey {
public:
    HeldKey(int pictures, int group, int speed)
        : m_cache(kPictureBytes * static_cast<std::size_t>(pictures), kSide, kSide, 1, 1),
          m_plan(m_cache, 0, group), m_group(group), m_speed(speed) {}

    void goBackFrom(int frame) {
        m_cache.setCentre(frame);
        for (int kept = frame / m_group * m_group; kept <= frame; ++kept) {
            if (kept >= frame - theora::StepBackPlan::keptBefore(m_cache, m_group)) {
                keep(m_cache, kept, 0);
            }
        }
        for (m_shown = frame; m_shown > 0;) {
            for (int i = 0; i < m_speed; ++i) {
                decode();
            }
            m_cache.setCentre(--m_shown);
            while (!m_cache.find(m_shown)) {
                ++waited;
                ASSERT_TRUE(decode());
            }
        }
    }

    int waited = 0;  ///< frames that were decoded while a step waited
    int decoded = 0; ///< all of them

private:
    bool decode() {
        if (m_goal < 0) {
            m_goal = static_cast<int>(m_plan.goalBelow(m_shown));
            m_at = m_goal / m_group * m_group;
        }
        if (m_goal < 0) {
            return false;
        }
        ++decoded;
        m_plan.passed(m_at);
        keep(m_cache, m_at, 0);
        m_goal = m_at++ < m_goal ? m_goal : -1;
        return true;
    }

    PlaneCache m_cache;
    theora::StepBackPlan m_plan;
    int m_group;
    int m_speed;
    int m_shown = 0;
    int m_goal = -1;
    int m_at = 0;
};

TEST(StepBackPlan, HasThePicturesOfAHeldKeyReadyWithoutDecodingOverAndOver) {
    constexpr int kLarge = 39;  // pictures that fit, of 1920 x 1080
    constexpr int kMiddle = 90; // of 1280 x 720
    constexpr struct {
        int pictures;
        int group;
        int speed;
        int decodedForAStep;
    } kCases[] = {{kMiddle, 12, 7, 2},   {kMiddle, 64, 7, 2},  {kMiddle, 256, 7, 4},
                  {kMiddle, 256, 40, 5}, {kLarge, 256, 14, 8}, {kLarge, 64, 40, 4}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.pictures << " " << c.group << " " << c.speed);
        HeldKey key(c.pictures, c.group, c.speed);
        key.goBackFrom(1000);
        EXPECT_EQ(key.waited, 0);
        EXPECT_LE(key.decoded, 1000 * c.decodedForAStep);
    }
}

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
        EXPECT_EQ(pictureNumber(*shown), frame);
        clip.releaseShownFrame();
    }
}

TEST(LookAround, AJumpIntoALongGroupKeepsWhatAHeldKeyNeedsNext) {
    const std::thread::id worker = std::this_thread::get_id();
    std::atomic<bool> isThere{false};
    theora::TheoraWorkSignal signal;
    theora::TheoraVideoClip_Theora clip(
        std::make_unique<MemorySource>(
            longGroups(), [&] { return std::this_thread::get_id() == worker && !isThere.load(); }),
        theora::TheoraOutputMode::TH_RGB, 4, false, signal, nullptr);
    clip.load();
    clip.getTimer().pause();
    for (int frame = 90; frame > 72; --frame) {
        clip.requestSeek(frame);
        ASSERT_TRUE(clip.decodeOnWorker()) << frame;
        isThere.store(true);
        const theora::TheoraVideoFrame* shown = clip.peekReadyFrame();
        ASSERT_NE(shown, nullptr) << frame;
        EXPECT_EQ(pictureNumber(*shown), frame);
        clip.releaseShownFrame();
    }
}

TEST(LookAround, TheGroupBeforeIsDecodedAsSoonAsAPictureIsShownAndNotOnlyWhenTheQueueIsFull) {
    const std::thread::id worker = std::this_thread::get_id();
    std::atomic<bool> isPrepared{false};
    theora::TheoraWorkSignal signal;
    theora::TheoraVideoClip_Theora clip(
        std::make_unique<MemorySource>(longGroups(),
                                       [&] {
                                           if (std::this_thread::get_id() != worker) {
                                               isPrepared.store(true);
                                           }
                                           return true;
                                       }),
        theora::TheoraOutputMode::TH_RGB, 4, false, signal, nullptr);
    clip.load();
    clip.getTimer().pause();
    clip.requestSeek(101);
    ASSERT_TRUE(clip.decodeOnWorker());
    while (!isPrepared.load()) {
        std::this_thread::yield();
    }
}

TEST(LookAround, AFrameThatTheStepBackDecoderComesPastIsWaitedFor) {
    std::atomic<bool> isOpen{false};
    support::Gate gate;
    std::atomic<bool> isWaiting{false};
    PlaneCache cache(std::size_t{64} << 20U, 128, 96, 1, 1);
    MemorySource bytes(longGroups(), [&] { // blocked once decoding has begun
        if (cache.find(0) != nullptr && !isOpen.load()) {
            isWaiting.store(true);
            gate.wait();
        }
        return true;
    });
    OpenedStream stream(bytes);
    theora::StepBackDecoder decoder(stream.source, stream.headers.theora, stream.layout,
                                    *stream.format, cache);
    const theora::StopCheck openTheGate = [&] {
        isOpen.store(true);
        gate.open();
        return false;
    };
    EXPECT_FALSE(decoder.waitFor(60, openTheGate)); // not started: no wait
    EXPECT_FALSE(isOpen.load());

    cache.setCentre(100);
    decoder.prepare(100);
    // Lets the decoder's thread end even when a check below fails.
    const std::shared_ptr<void> opened(nullptr, [&](void*) { (void)openTheGate(); });
    while (!isWaiting.load()) {
        std::this_thread::yield();
    }
    cache.setCentre(80);
    decoder.moveTo(80);                                    // on its way: work continues
    EXPECT_TRUE(decoder.waitFor(80, [] { return true; })); // a newer request ends the wait
    EXPECT_FALSE(cache.find(80));
    EXPECT_TRUE(decoder.waitFor(80, openTheGate));
    EXPECT_TRUE(cache.find(80));
}

} // namespace
