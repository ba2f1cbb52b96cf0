// The copy into the back buffer and the frames of one video, without a window.
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "video/CVideoUI.h"
#include "video/Video.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

struct Copy {
    const char* what;
    int width;
    int height;
    Bytes source; ///< R, G, B, top row first
    Bytes target; ///< the whole buffer afterwards; 0xEE where nothing was written
};

TEST(CopyBottomUp, MirrorsRowsSwapsColoursAndStaysInsideTheBuffer) {
    const Copy cases[] = {
        {"one pixel", 1, 1, {1, 2, 3}, {3, 2, 1}},
        {"rows are mirrored", 1, 2, {1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}},
        {"rows are packed, so an odd width shifts",
         1,
         2,
         {1, 2, 3, 4, 5, 6},
         {6, 5, 4, 3, 2, 1, 0xEE, 0xEE}},
        {"a smaller buffer keeps what fits",
         2,
         2,
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
         {9, 8, 7, 12, 11, 10, 3, 2, 1, 0xEE, 0xEE}},
        {"half a pixel does not fit", 1, 1, {1, 2, 3}, {0xEE, 0xEE}},
        {"no buffer", 1, 1, {1, 2, 3}, {}},
        {"no height", 3, 0, {}, {0xEE}},
        {"a height below 0", 3, -4, {}, {0xEE}},
    };
    for (const Copy& test : cases) {
        Bytes target(test.target.size(), 0xEE);
        video::copyBottomUp(test.source.data(), test.width, test.height, target.data(),
                            target.size());
        EXPECT_EQ(target, test.target) << test.what;
    }
}

TEST(BackBuffer, EachFaultHasItsMessage) {
    const support::LogCapture log;
    platform::FrameBufferResult window;
    window.windowContextFailed = true;
    window.windowContextError = 0x57;
    window.bitmapError = 0xE;
    EXPECT_FALSE(video::reportFrameBuffer(window)) << "there is no buffer either";
    platform::FrameBufferResult memory;
    memory.memoryContextFailed = true;
    memory.memoryContextError = 0x80070008;
    memory.bitmapFailed = true;
    EXPECT_FALSE(video::reportFrameBuffer(memory));
    EXPECT_EQ(log.errors(), (Lines{"Unable to get window DC (00000057)",
                                   "Unable to create back buffer bitmap (0000000E)",
                                   "Unable to create compatible DC (80070008)"}));
}

/// Waits for frames that the decoder announces from its own thread.
class FrameNews {
public:
    void listenTo(video::Video& video) {
        video.setFrameReadyCallback([this] {
            {
                const std::lock_guard lock(m_mutex);
                ++m_count;
            }
            m_changed.notify_all();
        });
    }
    bool waitForDueFrame(video::Video& video) {
        std::unique_lock lock(m_mutex);
        for (int round = 0; round < 100; ++round) {
            if (video.hasDueFrame()) {
                return true;
            }
            m_changed.wait_for(lock, std::chrono::milliseconds(100));
        }
        return false;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

class MemoryFrame final : public platform::FrameBuffer {
public:
    explicit MemoryFrame(platform::Size size)
        : m_size(size),
          m_bytes(static_cast<std::size_t>(((size.width * 3 + 3) & ~3) * size.height)) {}
    platform::Size size() const override { return m_size; }
    std::uint8_t* bits() override { return m_bytes.data(); }
    const std::uint8_t* bits() const override { return m_bytes.data(); }

private:
    platform::Size m_size;
    Bytes m_bytes;
};

class VideoFrames : public support::TempFolderTest {
protected:
    VideoFrames() {
        support::ClipSpec spec;
        spec.frames = 25;
        support::writeBytes("clip.ogv", support::makeClip(spec));
    }
    /// The number that the buffer's picture carries.
    static int numberOf(const MemoryFrame& frame, int width, int height) {
        Bytes rgb;
        for (int y = height - 1; y >= 0; --y) {
            for (int x = 0; x < width; ++x) {
                const std::uint8_t* pixel = frame.bits() + (y * width + x) * 3;
                rgb.insert(rgb.end(), {pixel[2], pixel[1], pixel[0]});
            }
        }
        return support::readFrameNumber(rgb.data(), width, height);
    }

    support::LogCapture m_log;
    FrameNews m_news;
};

TEST_F(VideoFrames, GivesTheFrameAskedForAndNoOther) {
    video::Video video;
    EXPECT_EQ(video.currentFrame, -1);
    m_news.listenTo(video);
    ASSERT_TRUE(video.Load("clip.ogv"));
    EXPECT_EQ(video.currentFrame, 0);
    EXPECT_EQ(video.frameCount, 25);
    EXPECT_EQ(video.width, 64);
    EXPECT_EQ(video.height, 48);
    MemoryFrame frame({64, 48});
    for (const int wanted : {0, 1, 2, 24, 7, 8, 3, 3, 0}) {
        EXPECT_TRUE(video.seekTo(wanted));
        ASSERT_TRUE(m_news.waitForDueFrame(video)) << wanted;
        EXPECT_TRUE(video.RenderFrame(&frame));
        EXPECT_EQ(numberOf(frame, 64, 48), wanted);
        EXPECT_FALSE(video.RenderFrame(&frame)) << "playback never runs on by itself";
    }
    for (const int outside : {-1, 25}) {
        EXPECT_FALSE(video.seekTo(outside));
        EXPECT_EQ(video.currentFrame, 0);
    }
    video.setFrameReadyCallback({});
}

TEST_F(VideoFrames, AFrameCanBeTakenWithoutAPlaceForIt) {
    video::Video video;
    m_news.listenTo(video);
    ASSERT_TRUE(video.Load("clip.ogv"));
    ASSERT_TRUE(m_news.waitForDueFrame(video));
    EXPECT_TRUE(video.RenderFrame(nullptr));
    EXPECT_FALSE(video.RenderFrame(nullptr));
    // A buffer made for a smaller video keeps what fits.
    MemoryFrame small({16, 16});
    EXPECT_TRUE(video.seekTo(5));
    ASSERT_TRUE(m_news.waitForDueFrame(video));
    EXPECT_TRUE(video.RenderFrame(&small));
    video.setFrameReadyCallback({});
}

TEST_F(VideoFrames, AFileThatIsNoVideoIsReported) {
    support::writeBytes("text.ogv", std::string("no video"));
    for (const char* path : {"text.ogv", "missing.ogv", ""}) {
        video::Video video;
        EXPECT_FALSE(video.Load(path));
        EXPECT_EQ(video.currentFrame, -1);
        EXPECT_EQ(video.frameCount, 0);
        EXPECT_FALSE(video.RenderFrame(nullptr));
        EXPECT_FALSE(video.hasDueFrame());
    }
    EXPECT_EQ(m_log.errors(), Lines(3, "Unable to load Theora video"));
}

} // namespace
