// Files as sources, the banner, and what happens when a file fails while a clip plays.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <theora/theoradec.h>
#include <vorbis/codec.h>

#include "src/TheoraException.h"
#include "src/TheoraFileDataSource.h"
#include "src/TheoraLog.h"
#include "src/TheoraVideoManager.h"
#include "tests/src/MemorySource.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"

namespace {

using theora::TheoraFileDataSource;

class FileSource : public support::TempFolderTest {};

TEST_F(FileSource, OpensAtTheFirstAccessOnly) {
    TheoraFileDataSource missing("none/clip.ogv", platform::nativeFileSystem());
    EXPECT_EQ(missing.repr(), "none/clip.ogv");
    EXPECT_EQ(missing.tell(), 0);
    for (int access = 0; access < 3; ++access) {
        try {
            char byte = 0;
            if (access == 0) {
                (void)missing.size();
            } else if (access == 1) {
                missing.seek(3);
            } else {
                (void)missing.read(&byte, 1);
            }
            ADD_FAILURE() << access;
        } catch (const theora::TheoraGenericException& error) {
            EXPECT_EQ(error.getMessage(), "Can't open video file: none/clip.ogv");
            EXPECT_EQ(error.getErrorText(),
                      "[TheoraGenericException: src\\TheoraDataSource.cpp:40] "
                      "- Can't open video file: none/clip.ogv");
        }
    }
    TheoraFileDataSource folder(".", platform::nativeFileSystem());
    EXPECT_THROW((void)folder.size(), theora::TheoraGenericException);
}

TEST_F(FileSource, ReadsFromAnyOffset) {
    support::writeBytes("bytes", std::string("0123456789"));
    TheoraFileDataSource source("bytes", platform::nativeFileSystem());
    char text[8] = {};
    source.seek(6);
    EXPECT_EQ(source.tell(), 6);
    EXPECT_EQ(source.read(text, 8), 4U);
    EXPECT_EQ(std::string(text, 4), "6789");
    EXPECT_EQ(source.read(text, 8), 0U);
    EXPECT_EQ(source.size(), 10);
}

TEST_F(FileSource, AClipPlaysFromAFile) {
    support::writeBytes("clip.ogv", support::makeClip({}));
    PlaybackSession session(std::string("clip.ogv"));
    const auto shown = session.seek(17);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->carried, 17);
    EXPECT_EQ(session.clip().getName(), "clip.ogv");
}

TEST(Manager, WritesItsBannerAndTheNameOfEachClip) {
    std::vector<std::string> lines;
    theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
    {
        theora::TheoraVideoManager manager(0);
        theora::TheoraVideoClip* clip =
            manager.createClip(std::make_unique<MemorySource>(support::makeClip({})),
                               theora::TheoraOutputMode::TH_RGB);
        EXPECT_EQ(clip->getNumPrecachedFrames(), 8);
        EXPECT_EQ(clip->getFPS(), 25.0F);
        EXPECT_FLOAT_EQ(clip->getDuration(), 1.2F);
    }
    theora::setLogHook({});
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0], "Initializing Theora Playback Library (1.0)\n");
    EXPECT_EQ(lines[1], std::string("  - libtheora version: ") + th_version_string());
    EXPECT_EQ(lines[2], std::string("  - libvorbis version: ") + vorbis_version_string());
    EXPECT_EQ(lines[3], std::string(36, '-'));
    EXPECT_EQ(lines[4], "Creating video from data source: memory clip");
}

TEST(Manager, TellsItsLogWhyAClipWasRefused) {
    std::vector<std::string> lines;
    theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
    theora::TheoraVideoManager manager(0);
    EXPECT_THROW((void)manager.createClip("missing.ogv", theora::TheoraOutputMode::TH_RGB),
                 theora::TheoraGenericException);
    theora::setLogHook({});
    EXPECT_EQ(lines.back(), "[TheoraGenericException: src\\TheoraDataSource.cpp:40] - Can't open "
                            "video file: missing.ogv");
}

/// A file on a medium that fails after some reads: by throwing, or by giving nothing.
class FailingSource : public MemorySource {
public:
    FailingSource(support::Bytes file, bool throws)
        : MemorySource(std::move(file)), m_throws(throws) {}
    std::size_t read(void* buffer, std::size_t count) override {
        if (!failing.load()) {
            return MemorySource::read(buffer, count);
        }
        if (m_throws) {
            throw theora::TheoraGenericException("gone", "src\\TheoraDataSource", 1);
        }
        return 0;
    }
    std::atomic<bool> failing{false};

private:
    bool m_throws;
};

TEST(Manager, AFailingFileEndsTheSeekAndNothingElse) {
    support::ClipSpec spec;
    spec.frames = 200;
    const auto file = support::makeClip(spec);
    for (const bool throws : {true, false}) {
        theora::TheoraVideoManager manager(1);
        auto owned = std::make_unique<FailingSource>(file, throws);
        FailingSource& source = *owned;
        theora::TheoraVideoClip* clip =
            manager.createClip(std::move(owned), theora::TheoraOutputMode::TH_RGB);
        clip->getTimer().pause();
        source.failing.store(true);
        clip->requestSeek(190);
        while (clip->pendingSeekFrame.load() != -1) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(clip->endOfFile.load());
        source.failing.store(false); // the medium is back
        clip->requestSeek(150);
        const theora::TheoraVideoFrame* frame = nullptr;
        while ((frame = clip->peekReadyFrame()) == nullptr) {
            std::this_thread::yield();
        }
        EXPECT_EQ(support::readFrameNumber(frame->getBuffer(), 64, 48), 150);
    }
}

} // namespace
