// Copies of folders: whole, or nothing of them.
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "jobs/FolderCopy.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"

namespace {

using Names = std::vector<std::string>;

class FolderCopyTest : public support::TempFolderTest {
protected:
    FolderCopyTest() {
        support::writeBytes("from/a.ogv", std::string(2'000'000, 'a'));
        support::writeBytes("from/sub/b.bin", std::string("b"));
        support::writeBytes("from/Scene.xml", std::string("old"));
    }
    /// Why there is none; what it shows while it runs is done by `onProgress`.
    std::string copy(const std::function<void(jobs::FolderCopy&)>& onProgress = {}) {
        jobs::FolderCopy copy(m_loop, m_files);
        std::optional<std::string> failure;
        copy.start(
            m_folder.path() + "from", m_folder.path() + "to", {"Scene.xml", "new"},
            [&] {
                if (onProgress) {
                    onProgress(copy);
                }
            },
            [&](const std::string& why) { failure = why; });
        while (!failure) {
            m_loop.processEvents(true);
        }
        return *failure;
    }

    support::TaskLoop m_loop;
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
};

TEST_F(FolderCopyTest, WhateverFailsLeavesAWholeCopyOrNone) {
    ASSERT_EQ(copy(), "");
    const auto calls = static_cast<int>(m_files.calls().size());
    EXPECT_EQ(support::filesBelow("to"), (Names{"Scene.xml", "a.ogv", "sub/b.bin"}));
    EXPECT_EQ(support::readBytes("to/Scene.xml"), "new");
    EXPECT_NE(copy(), "") << "there is a folder of that name";
    EXPECT_EQ(support::filesBelow("to").size(), 3U);
    for (int number = 1; number <= calls; ++number) {
        std::filesystem::remove_all("to");
        m_files.forgetCalls();
        m_files.failAt(number);
        const bool isWhole = copy().empty();
        m_files.heal();
        EXPECT_EQ(support::exists("to"), isWhole) << "call " << number;
        EXPECT_EQ(isWhole ? support::filesBelow("to").size() : 3U, 3U);
    }
    EXPECT_EQ(support::readBytes("from/Scene.xml"), "old");
}

TEST_F(FolderCopyTest, CancellingOrALinkLeavesNothing) {
    EXPECT_EQ(copy([](jobs::FolderCopy& running) { running.cancel(); }), jobs::kCopyCancelled);
    EXPECT_FALSE(support::exists("to"));
    std::error_code refused;
    std::filesystem::create_symlink("a.ogv", "from/sub/link.ogv", refused);
    if (!refused) {
        EXPECT_EQ(copy(), "\"sub/link.ogv\" is a link");
        std::filesystem::rename("from", "elsewhere");
        std::filesystem::create_directory_symlink("elsewhere", "from");
        EXPECT_EQ(copy(), "\"from\" is a link");
        EXPECT_FALSE(support::exists("to"));
    }
}

} // namespace
