#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

namespace fs = std::filesystem;
using platform::OpenMode;

class PosixFileTest : public support::TempFolderTest {
protected:
    platform::FileSystem& m_files = platform::nativeFileSystem();
    int m_error = 0;
};

TEST_F(PosixFileTest, AFullDiskShowsAtTheLatestWhenItIsBroughtToTheDisk) {
    auto stream = m_files.open("/dev/full", OpenMode::write, m_error);
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->write("text", 4), 4U);
    EXPECT_FALSE(stream->sync());
    EXPECT_EQ(stream->lastError(), ENOSPC);
    EXPECT_FALSE(stream->close());
    stream = m_files.open("/dev/full", OpenMode::write, m_error);
    const std::string much(1 << 20, 'x');
    EXPECT_LT(stream->write(much.data(), much.size()), much.size());
    EXPECT_EQ(stream->lastError(), ENOSPC);
    EXPECT_FALSE(stream->close());
}

TEST_F(PosixFileTest, PipesAndDevicesAreNeverWaitedFor) {
    ASSERT_EQ(::mkfifo("pipe", 0600), 0);
    for (const OpenMode mode : {OpenMode::read, OpenMode::write, OpenMode::writeInPlace}) {
        EXPECT_FALSE(m_files.open("pipe", mode, m_error));
    }
    EXPECT_FALSE(m_files.open("/dev/zero", OpenMode::read, m_error));
    EXPECT_EQ(m_error, EINVAL);
    const auto nowhere = m_files.open("/dev/null", OpenMode::write, m_error);
    ASSERT_TRUE(nowhere);
    EXPECT_EQ(nowhere->write("x", 1), 1U);
    EXPECT_TRUE(nowhere->sync()) << "nothing to wait for";
    EXPECT_TRUE(nowhere->close());
}

TEST_F(PosixFileTest, NewFilesKeepTheUsersMask) {
    const mode_t previous = ::umask(027);
    EXPECT_TRUE(m_files.open("f", OpenMode::write, m_error));
    EXPECT_TRUE(m_files.createFolder("d", m_error));
    ::umask(previous);
    const auto access = [](const char* path) {
        return static_cast<int>(fs::status(path).permissions());
    };
    EXPECT_EQ(access("f"), 0640);
    EXPECT_EQ(access("d"), 0750);
    m_files.copyAccess("missing", "f");
    EXPECT_EQ(access("f"), 0640);
}

TEST_F(PosixFileTest, LinksLeadToTheirEnd) {
    support::writeBytes("deep/real", "x");
    support::makeFolder("deep/folder");
    fs::create_symlink("deep/second", "first");
    fs::create_symlink("real", "deep/second");
    fs::create_symlink("nowhere/f", "dangling");
    fs::create_symlink(m_folder.path() + "deep/real", "absolute");
    fs::create_symlink("deep/folder", "linkedFolder");
    fs::create_symlink("b", "a");
    fs::create_symlink("a", "b");
    const std::string longTarget = std::string(240, 'x') + "/" + std::string(240, 'y');
    fs::create_symlink(longTarget, "long");
    EXPECT_EQ(m_files.resolveLink("first"), "deep/real");
    EXPECT_EQ(m_files.resolveLink("dangling"), "nowhere/f");
    EXPECT_EQ(m_files.resolveLink("absolute"), m_folder.path() + "deep/real");
    EXPECT_EQ(m_files.resolveLink("a"), "");
    EXPECT_EQ(m_files.resolveLink("long"), longTarget);
    EXPECT_EQ(m_files.resolveLink("missing"), "missing");
    EXPECT_EQ(m_files.info("first")->size, 1U);
    EXPECT_FALSE(m_files.info("dangling"));

    std::vector<platform::FolderEntry> entries;
    ASSERT_TRUE(m_files.list(".", entries));
    for (const platform::FolderEntry& entry : entries) {
        EXPECT_EQ(entry.isFolder, entry.name == "deep" || entry.name == "linkedFolder")
            << entry.name;
    }
}

TEST_F(PosixFileTest, RootAndLostFoldersHaveTheirPaths) {
    EXPECT_EQ(m_files.fullPath("/"), "/");
    EXPECT_EQ(m_files.fullPath("/../a/./b/../c/"), "/a/c");
    EXPECT_EQ(m_files.fullPath("\\a"), "/a");
    EXPECT_GT(m_files.fullPath(std::string(5000, 'n')).size(), 5000U) << "no limit here";
    support::makeFolder("gone");
    ASSERT_TRUE(m_files.setCurrentFolder("gone"));
    ASSERT_EQ(::rmdir((m_folder.path() + "gone").c_str()), 0);
    EXPECT_EQ(m_files.currentFolder(), "");
    EXPECT_EQ(m_files.fullPath("a"), "");
    ASSERT_TRUE(m_files.setCurrentFolder("/"));
    EXPECT_EQ(m_files.currentFolder(), "/");
    EXPECT_FALSE(m_files.setCurrentFolder(m_folder.path() + "gone"));
}

} // namespace
