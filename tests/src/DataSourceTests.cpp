// Files as sources, the banner, and files that fail during playback.
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <theora/theoradec.h>
#include <vorbis/codec.h>

#include "src/TheoraException.h"
#include "src/TheoraFileDataSource.h"
#include "src/TheoraLog.h"
#include "src/TheoraProbe.h"
#include "tests/src/MemorySource.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

using theora::TheoraFileDataSource;
using theora::TheoraGenericException;
using Lines = std::vector<std::string>;

class FileSource : public support::TempFolderTest {};

TEST_F(FileSource, OpensAtTheFirstAccessOnly) {
    TheoraFileDataSource missing("none/clip.ogv", platform::nativeFileSystem());
    EXPECT_EQ(missing.repr(), "none/clip.ogv");
    EXPECT_EQ(missing.tell(), 0);
    char byte = 0;
    EXPECT_THROW((void)missing.size(), TheoraGenericException);
    EXPECT_THROW(missing.seek(3), TheoraGenericException);
    EXPECT_THROW((void)missing.read(&byte, 1), TheoraGenericException);
    TheoraFileDataSource folder(".", platform::nativeFileSystem());
    EXPECT_THROW((void)folder.size(), TheoraGenericException);
}

TEST_F(FileSource, AFailedReadIsNotTheEndOfTheFile) {
    support::writeBytes("clip.ogv", "0123");
    support::FaultyFileSystem files(platform::nativeFileSystem());
    TheoraFileDataSource source("clip.ogv", files);
    std::array<char, 8> bytes{};
    EXPECT_EQ(source.read(bytes.data(), bytes.size()), 4U);
    files.failOn("read", EIO);
    EXPECT_THROW((void)source.read(bytes.data(), bytes.size()), TheoraGenericException);
    files.heal();
    source.seek(3);
    EXPECT_EQ(source.read(bytes.data(), bytes.size()), 1U) << "the medium is back";
    EXPECT_EQ(bytes[0], '3');
}

TEST_F(FileSource, AClipIsKnownByItsHeaders) {
    const support::Bytes clip = support::makeClip({.sound = support::Sound::after});
    const std::string whole(clip.begin(), clip.end());
    const char* const end = "End of file found prematurely";
    const std::tuple<std::string, bool, std::string> files[] = {
        {whole, true, ""},
        {whole.substr(0, whole.size() / 2), true, ""},
        {whole.substr(0, 100), true, end}, // inside the headers
        {"", false, end},
        {std::string(4, '\0') + " ftypisom" + std::string(std::size_t{1} << 20U, 'm'), false, end},
    };
    for (const auto& [bytes, isTheora, reason] : files) {
        support::writeBytes("clip.ogv", bytes);
        const theora::Probe probe = theora::probeClip("clip.ogv", platform::nativeFileSystem());
        EXPECT_EQ(std::tie(probe.isPlayable, probe.isTheora, probe.reason),
                  std::tuple(reason.empty(), isTheora, reason));
    }
    const theora::Probe lost = theora::probeClip("missing.ogv", platform::nativeFileSystem());
    EXPECT_TRUE(lost.isTheora) << "nobody knows";
    EXPECT_EQ(lost.reason, "Can't open video file");
}

TEST(Manager, LogsItsBannerEachClipAndWhyOneWasRefused) {
    Lines lines;
    theora::setLogHook([&](const std::string& line) { lines.push_back(line); });
    {
        theora::TheoraVideoManager manager(0);
        const theora::TheoraVideoClip* clip =
            manager.createClip(std::make_unique<MemorySource>(support::makeClip({})),
                               theora::TheoraOutputMode::TH_RGB);
        EXPECT_EQ(clip->getNumPrecachedFrames(), 8);
        EXPECT_EQ(clip->getFPS(), 25.0F);
        EXPECT_FLOAT_EQ(clip->getDuration(), 1.2F);
        EXPECT_THROW((void)manager.createClip("missing.ogv", theora::TheoraOutputMode::TH_RGB),
                     TheoraGenericException);
    }
    theora::setLogHook({});
    EXPECT_EQ(lines, (Lines{"Initializing Theora Playback Library (1.0)\n",
                            std::string("  - libtheora version: ") + th_version_string(),
                            std::string("  - libvorbis version: ") + vorbis_version_string(),
                            std::string(36, '-'), "Creating video from data source:memory clip",
                            "Creating video from data source:missing.ogv",
                            std::string("[TheoraGenericException: src\\TheoraDataSource.cpp:40]") +
                                " - Can't open video file: missing.ogv"}));
}

TEST(Manager, AFailingFileEndsTheSeekAndNothingElse) {
    const auto file = support::makeClip({.frames = 200});
    for (const bool throws : {true, false}) {
        std::atomic<bool> failing{false};
        PlaybackSession session(file, 0, nullptr, [&failing, throws] {
            if (failing.load() && throws) {
                throw TheoraGenericException("gone", "src\\TheoraDataSource", 1);
            }
            return !failing.load();
        });
        failing.store(true);
        (void)session.seek(190); // shows nothing or the last picture read
        EXPECT_EQ(session.clip().pendingSeekFrame.load(), -1);
        EXPECT_TRUE(session.clip().endOfFile.load());
        failing.store(false); // the medium is back
        EXPECT_EQ(session.seek(150).pictureNumber, 150);
    }
}

} // namespace
