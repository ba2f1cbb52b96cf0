// Playback when memory runs out at a moment where nothing may be thrown, or nobody would be told.
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "src/Theora/PlaneCache.h"
#include "src/TheoraThread.h"
#include "src/TheoraVideoManager.h"
#include "tests/src/MemorySource.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/RefusedMemory.h"

namespace {

using support::allocationsLeft;

TEST(PlaybackMemory, AThreadThatCannotBeMadeIsNotRunning) {
    class Idle final : public theora::TheoraThread {
    public:
        ~Idle() override { join(); }

    private:
        void execute() override {}
    };
    Idle thread;
    allocationsLeft = 0;
    EXPECT_THROW(thread.start(), std::bad_alloc);
    EXPECT_FALSE(thread.isRunning()) << "its owner would wait for it";
    thread.start();
    EXPECT_TRUE(thread.isRunning());
}

TEST(PlaybackMemory, AFailureThatCannotBeWrittenDownEndsTheClipAllTheSame) {
    bool fails = false;
    theora::TheoraVideoManager manager(0);
    theora::TheoraVideoClip* clip = manager.createClip(
        std::make_unique<MemorySource>(support::makeClip({.frames = 600}),
                                       [&fails] {
                                           if (fails) {
                                               const std::runtime_error error("the disk is gone");
                                               allocationsLeft = 0;
                                               throw error;
                                           }
                                           return true;
                                       }),
        theora::TheoraOutputMode::TH_RGB);
    fails = true;
    clip->requestSeek(599);
    EXPECT_FALSE(clip->decodeOnWorker());
    EXPECT_TRUE(clip->endOfFile.load());
    EXPECT_LT(allocationsLeft.load(), 0) << "nothing was refused";
    allocationsLeft = -1;
}

TEST(PlaybackMemory, APictureIsGivenBackWithoutAnyMore) {
    auto cache = std::make_unique<theora::PlaneCache>(1 << 20, 16, 16, 1, 1);
    theora::TheoraPicture picture;
    const std::vector<std::uint8_t> row(16, 1);
    picture.planes = {{{row.data(), 0, 16, 16}, {row.data(), 0, 8, 8}, {row.data(), 0, 8, 8}}};
    cache->store(0, picture);
    auto held = cache->find(0);
    ASSERT_TRUE(held);
    cache.reset();
    allocationsLeft = 0;
    held.reset();
    EXPECT_EQ(allocationsLeft.exchange(-1), 0) << "none was asked for";
}

} // namespace
