// What is made for whom and in which order, what is kept, and clips and cache files of all kinds.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/FileSystem.h"
#include "src/TheoraStill.h"
#include "stills/StillService.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/Gate.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"

namespace {

using stills::StillClient;
using stills::StillPtr;
using stills::StillRequest;
using Paths = std::vector<std::string>;

constexpr platform::Size kBox{32, 32};
const platform::Size kFrame{64, 48};

class StillTest : public support::TempFolderTest {
protected:
    void serve(const stills::StillLimits& limits = {}) {
        m_service.emplace(m_loop, m_files, m_folder.path() + "Cache/", limits);
    }
    [[nodiscard]] std::unique_ptr<StillClient> client(Paths& arrived) {
        return std::make_unique<StillClient>(
            *m_service, [&](const StillRequest& request) { arrived.push_back(request.path); });
    }
    /// What a new client of a new service gets.
    [[nodiscard]] StillPtr still(const std::string& path, const stills::StillLimits& limits = {}) {
        serve(limits);
        Paths arrived;
        const auto asking = client(arrived);
        asking->want({{path, kBox}});
        await(arrived, 1);
        return asking->find({path, kBox});
    }
    void await(const Paths& arrived, std::size_t count) {
        while (arrived.size() < count) {
            m_loop.processEvents(true);
        }
    }
    [[nodiscard]] static std::string clip(int frames = 30) {
        const auto bytes = support::makeClip({.frames = frames});
        return {bytes.begin(), bytes.end()};
    }

    support::TaskLoop m_loop;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    std::optional<stills::StillService> m_service;
};

TEST_F(StillTest, AClipHasAPictureAndFactsAndOtherFilesHaveNone) {
    support::writeBytes("a.ogv", clip());
    support::writeBytes("text.ogv", std::string("no clip"));
    support::makeFolder("folder.ogv");
    const StillPtr made = still("a.ogv");
    EXPECT_EQ(made->picture.size(), (platform::Size{32, 24}));
    EXPECT_EQ(made->frame, kFrame);
    EXPECT_DOUBLE_EQ(made->seconds, 30.0 / support::kClipFramesPerSecond);
    EXPECT_EQ(made->bytes, clip().size());
    for (const std::string path : {"text.ogv", "folder.ogv", "missing.ogv"}) {
        const StillPtr none = still(path);
        EXPECT_TRUE(none->picture.isEmpty() && none->frame == platform::Size{}) << path;
        EXPECT_EQ(none->exists, path == "text.ogv");
    }
    EXPECT_TRUE(still("text.ogv", {.timeOfOne = std::chrono::milliseconds(0)})->picture.isEmpty());
}

TEST_F(StillTest, AFlatBeginningIsPassedOverAndStoppingEndsAnyStepOfTheWork) {
    const auto bytes = support::makeClip({.frames = 30, .flatFrames = 5});
    support::writeBytes("a.ogv", bytes);
    int calls = 0;
    int most = 0;
    const auto read = [&](int stopAt) {
        calls = 0;
        return theora::readClipStill("a.ogv", m_files, stills::kLargestBox,
                                     [&] { return ++calls > stopAt; });
    };
    const theora::ClipStill whole = read(100'000);
    most = calls;
    ASSERT_EQ(whole.picture.size(), kFrame);
    EXPECT_EQ(support::readFrameNumber(reinterpret_cast<const std::uint8_t*>(whole.picture.row(0)),
                                       64, 48, 4),
              15);
    for (int stopAt = 0; stopAt < most; ++stopAt) {
        const theora::ClipStill part = read(stopAt);
        EXPECT_LE(calls, stopAt + 10) << "went on";
        EXPECT_TRUE(part.isPlayable || part.picture.isEmpty());
    }
}

TEST_F(StillTest, TheDiskServesAClipUntilItChangesAndDamagedFilesAreMadeAgain) {
    support::writeBytes("a.ogv", clip());
    const StillPtr first = still("a.ogv");
    const std::string kept = support::filesBelow("Cache").at(0);
    const std::string bytes = support::readBytes("Cache/" + kept);
    const auto readsClip = [&](const std::string& name) {
        m_files.forgetCalls();
        EXPECT_EQ(still("a.ogv")->picture.at(5, 5), first->picture.at(5, 5)) << name;
        m_service.reset();
        const auto calls = m_files.callTexts();
        return std::find(calls.begin(), calls.end(), "read a.ogv") != calls.end();
    };
    EXPECT_FALSE(readsClip("kept"));
    for (std::size_t at = 0; at < bytes.size(); at += at < 64 ? 5 : 997) {
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x40);
        support::writeBytes("Cache/" + kept, at % 2 == 0 ? damaged : bytes.substr(0, at));
        EXPECT_TRUE(readsClip("damaged at " + std::to_string(at)));
    }
    support::writeBytes("a.ogv", clip(20));
    EXPECT_TRUE(readsClip("changed"));
    EXPECT_LT(still("a.ogv")->seconds, first->seconds);
    m_files.failOn("write", ENOSPC);
    support::writeBytes("b.ogv", clip());
    EXPECT_FALSE(still("b.ogv")->picture.isEmpty());
    EXPECT_EQ(support::filesBelow("Cache").size(), 1U);
}

TEST_F(StillTest, TheOldestGoWhenMemoryOrDiskHaveNoRoom) {
    support::writeBytes("Cache/foreign.txt", std::string("mine"));
    Paths all;
    for (int i = 0; i < 12; ++i) {
        all.push_back("clip" + std::to_string(i) + ".ogv");
        support::writeBytes(all.back(), clip(8 + i));
    }
    constexpr std::size_t kBytesOfOne = 32 * 24 * 4;
    serve({.memoryBytes = 3 * kBytesOfOne, .diskBytes = 5 * 64 * 48 * 3});
    Paths arrived;
    const auto asking = client(arrived);
    for (const std::string& path : all) {
        asking->want({{all.front(), kBox}, {path, kBox}});
        await(arrived, path == all.front() ? 1 : arrived.size() + 1);
    }
    EXPECT_LE(m_service->memoryBytes(), 3 * kBytesOfOne);
    EXPECT_TRUE(asking->find({all.back(), kBox}));
    EXPECT_FALSE(asking->find({all[1], kBox}));
    const Paths files = support::filesBelow("Cache");
    EXPECT_TRUE(files.size() >= 3 && files.size() <= 6);
    EXPECT_EQ(support::readBytes("Cache/foreign.txt"), "mine");
}

TEST_F(StillTest, TheVisibleComeFirstAndWhatNobodyShowsIsDropped) {
    for (const char* path : {"a.ogv", "b.ogv", "c.ogv", "d.ogv"}) {
        support::writeBytes(path, clip());
    }
    support::Gate begun;
    support::Gate planned;
    bool isFirst = true;
    m_files.setRule(
        [&](const support::Call& call) {
            if (call.path == "a.ogv" && std::exchange(isFirst, false)) {
                begun.open();
                planned.wait();
            }
            return support::Fault::none;
        },
        EIO);
    serve();
    Paths old;
    Paths arrived;
    auto closed = client(old);
    closed->want({{"a.ogv", kBox}, {"b.ogv", kBox}});
    begun.wait();
    auto shown = client(arrived);
    shown->want({{"b.ogv", kBox}, {"d.ogv", kBox}, {"c.ogv", kBox}});
    shown->want({{"d.ogv", kBox}, {"c.ogv", kBox}, {"b.ogv", kBox}});
    closed.reset();
    planned.open();
    await(arrived, 3);
    EXPECT_EQ(arrived, (Paths{"d.ogv", "c.ogv", "b.ogv"}));
    EXPECT_TRUE(old.empty());
    EXPECT_FALSE(shown->find({"a.ogv", kBox}));
    // What comes to be wanted again is made again if its file has changed, and only then.
    shown->want({});
    support::writeBytes("c.ogv", clip(20));
    shown->want({{"d.ogv", kBox}, {"c.ogv", kBox}});
    await(arrived, 4);
    EXPECT_EQ(arrived.back(), "c.ogv");
    shown->want({{"a.ogv", kBox}, {"b.ogv", kBox}});
    shown.reset();
    m_service.reset(); // while it works
}

} // namespace
