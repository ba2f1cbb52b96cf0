// Requests, decoding and destruction at random moments; most useful under ThreadSanitizer.
#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/MemorySource.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/Random.h"

namespace {

using theora::TheoraOutputMode;
using theora::TheoraVideoClip;
using theora::TheoraVideoManager;

constexpr int kFrames = 60;

support::Bytes smallClip() {
    return support::makeClip({.frames = kFrames, .keyframeDistance = 16, .quality = 10});
}

/// Takes up to 300 microseconds. Yielding instead would cost minutes on a busy machine.
void spin(support::Random& random) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::microseconds(random.below(300));
    while (Clock::now() < end) {
    }
}

TEST(Threads, AManagerMayDieAtAnyMomentOfASeek) {
    const support::Bytes file = smallClip();
    support::Random random(5);
    for (int round = 0; round < 1000; ++round) {
        TheoraVideoManager manager(1 + round % 2);
        if (round % 10 == 9) {
            continue; // before any clip
        }
        TheoraVideoClip* clip =
            manager.createClip(std::make_unique<MemorySource>(file), TheoraOutputMode::TH_RGB);
        clip->getTimer().pause();
        spin(random);
        clip->requestSeek(random.below(kFrames));
        spin(random);
        if (round % 3 == 0) {
            clip->requestSeek(random.below(kFrames));
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
    TheoraVideoClip& clip = session.clip();
    std::atomic<bool> done{false};
    std::thread other([&] {
        support::Random random(6);
        for (int i = 0; i < 10000; ++i) {
            clip.requestSeek(random.below(kFrames));
            if (i % 64 == 0) {
                spin(random);
            }
        }
        done.store(true); // before the last one: later frames may be shown at once
        clip.requestSeek(41);
    });
    for (int last = -1; !done.load() || last != 41;) {
        if (const theora::TheoraVideoFrame* frame = clip.peekReadyFrame()) {
            // A held frame stays whole even when a seek discards it meanwhile.
            EXPECT_EQ(pictureNumber(*frame), frame->getFrameNumber());
            last = frame->getFrameNumber();
            clip.releaseShownFrame();
        } else {
            std::this_thread::yield();
        }
    }
    other.join();
}

TEST(Threads, WorkGoesToTheMostUrgentClipThatNobodyWorksOn) {
    const support::Bytes file = smallClip();
    TheoraVideoManager manager(0);
    std::vector<TheoraVideoClip*> clips;
    for (std::size_t i = 0; i < 3; ++i) {
        clips.push_back(
            manager.createClip(std::make_unique<MemorySource>(file), TheoraOutputMode::TH_RGB));
        EXPECT_TRUE(clips[i]->decodeOnWorker());
        while (clips[i]->getNumReadyFrames() == 0) {
            std::this_thread::yield(); // it is being converted
        }
    }
    clips[0]->getTimer().pause();
    clips[2]->setPriority(2.0F);
    theora::TheoraWorkerThread worker(manager); // not started
    for (const std::size_t next : {2U, 1U, 0U}) {
        EXPECT_EQ(manager.requestWork(&worker), clips[next]);
    }
    EXPECT_EQ(manager.requestWork(&worker), nullptr);
    manager.workDone(*clips[1]);
    EXPECT_EQ(manager.requestWork(&worker), clips[1]);
}

} // namespace
