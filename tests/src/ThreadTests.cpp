// Requests, decoding and destruction at random moments. Most of their worth is under
// ThreadSanitizer.
#include <atomic>
#include <memory>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "tests/src/MemorySource.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"

namespace {

using theora::TheoraOutputMode;
using theora::TheoraVideoClip;
using theora::TheoraVideoManager;

support::Bytes smallClip() {
    support::ClipSpec spec;
    spec.frames = 60;
    spec.keyframeDistance = 16;
    spec.quality = 10;
    return support::makeClip(spec);
}

/// Lets other threads run for a moment that depends on the round alone.
void spin(std::uint_fast32_t rounds) {
    for (std::uint_fast32_t i = 0; i < rounds; ++i) {
        std::this_thread::yield();
    }
}

TEST(Threads, AManagerMayDieAtAnyMomentOfASeek) {
    const support::Bytes file = smallClip();
    std::mt19937 random(5);
    for (int round = 0; round < 1000; ++round) {
        TheoraVideoManager manager(1 + round % 2);
        if (round % 10 == 9) {
            continue; // before any clip
        }
        TheoraVideoClip* clip =
            manager.createClip(std::make_unique<MemorySource>(file), TheoraOutputMode::TH_RGB);
        clip->getTimer().pause();
        spin(random() % 40);
        clip->requestSeek(static_cast<int>(random() % 60));
        spin(random() % 40);
        if (round % 3 == 0) {
            clip->requestSeek(static_cast<int>(random() % 60));
        }
        clip->advanceToDueFrame();
        if (clip->peekReadyFrame() != nullptr) {
            clip->releaseShownFrame();
        }
        EXPECT_EQ(TheoraVideoManager::getInstance(), &manager);
    }
    EXPECT_EQ(TheoraVideoManager::getInstance(), nullptr);
}

TEST(Threads, OfManySeeksFromAnotherThreadTheLastOneIsShown) {
    PlaybackSession session(smallClip());
    std::atomic<bool> done{false};
    std::thread other([&] {
        std::mt19937 random(6);
        for (int i = 0; i < 10000; ++i) {
            session.clip().requestSeek(static_cast<int>(random() % 60));
            if (i % 64 == 0) {
                spin(20);
            }
        }
        session.clip().requestSeek(41);
        done.store(true);
    });
    while (!done.load()) {
        if (const theora::TheoraVideoFrame* frame = session.clip().peekReadyFrame()) {
            // A held frame stays whole even when a seek discards it meanwhile.
            EXPECT_EQ(
                support::readFrameNumber(frame->getBuffer(), frame->getWidth(), frame->getHeight()),
                frame->getFrameNumber());
            session.clip().releaseShownFrame();
        }
    }
    other.join();
    const auto shown = session.nextShown();
    // The loop may have shown frame 41 already; the queue then goes on behind it.
    if (shown) {
        EXPECT_EQ(shown->number, 41);
        EXPECT_EQ(shown->carried, 41);
    }
    const auto again = session.seek(41);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->carried, 41);
}

TEST(Threads, AModeChangeDoesNotDisturbASeek) {
    PlaybackSession session(smallClip());
    for (int round = 0; round < 200; ++round) {
        const int wanted = (round * 37) % 60;
        session.clip().requestSeek(wanted);
        session.clip().setOutputMode(round % 2 == 0 ? TheoraOutputMode::TH_BGRX
                                                    : TheoraOutputMode::TH_RGB);
        const auto shown = session.nextShown();
        ASSERT_TRUE(shown) << round;
        EXPECT_EQ(shown->number, wanted);
    }
}

TEST(Threads, SeveralClipsShareTheWorkers) {
    const support::Bytes file = smallClip();
    TheoraVideoManager manager(2);
    std::vector<TheoraVideoClip*> clips;
    for (int i = 0; i < 5; ++i) {
        clips.push_back(
            manager.createClip(std::make_unique<MemorySource>(file), TheoraOutputMode::TH_RGB));
    }
    for (TheoraVideoClip* clip : clips) {
        clip->getTimer().pause();
        clip->requestSeek(33);
    }
    for (TheoraVideoClip* clip : clips) {
        const theora::TheoraVideoFrame* frame = nullptr;
        while ((frame = clip->peekReadyFrame()) == nullptr) {
            std::this_thread::yield();
        }
        EXPECT_EQ(frame->getFrameNumber(), 33);
    }
}

} // namespace
