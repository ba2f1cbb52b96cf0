#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/QuickInfo.h"
#include "tests/support/TempFolder.h"

namespace {

using platform::OpenMode;
using Names = std::vector<std::string>;

/// `path` with the system's own separators.
std::string native(std::string path) {
    std::replace(path.begin(), path.end(), '/',
                 static_cast<char>(std::filesystem::path::preferred_separator));
    return path;
}

class FileSystemTest : public support::TempFolderTest {
protected:
    Names names(const std::string& folder) {
        std::vector<platform::FolderEntry> entries;
        if (!m_files.list(folder, entries)) {
            return {"(unreadable)"};
        }
        Names result;
        for (const platform::FolderEntry& entry : entries) {
            result.push_back(entry.name + (entry.isFolder ? "/" : ""));
        }
        return result;
    }

    bool write(const std::string& path, const std::string& text) {
        const auto stream = m_files.open(path, OpenMode::write, m_error);
        return stream && stream->write(text.data(), text.size()) == text.size() && stream->close();
    }

    platform::FileSystem& m_files = platform::nativeFileSystem();
    int m_error = 0;
};

TEST_F(FileSystemTest, AStreamWritesReadsAndSeeks) {
    auto stream = m_files.open("f", OpenMode::write, m_error);
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->write("0123456789", 10), 10U);
    EXPECT_TRUE(stream->seek(2));
    EXPECT_EQ(stream->write("\r\n", 2), 2U);
    EXPECT_EQ(stream->tell(), 4);
    EXPECT_EQ(stream->size(), 10);
    EXPECT_EQ(stream->tell(), 4) << "asking for the size moves nothing";
    EXPECT_TRUE(stream->sync());
    EXPECT_TRUE(stream->close());
    EXPECT_FALSE(stream->close() || stream->sync() || stream->seek(0));
    EXPECT_EQ(stream->write("x", 1), 0U);
    EXPECT_EQ(stream->tell(), -1);
    EXPECT_EQ(support::readBytes("f"), "01\r\n456789");

    stream = m_files.open("f", OpenMode::read, m_error);
    ASSERT_TRUE(stream);
    std::array<char, 16> buffer{};
    EXPECT_EQ(stream->read(buffer.data(), buffer.size()), 10U);
    EXPECT_TRUE(stream->seek(9));
    EXPECT_EQ(stream->read(buffer.data(), 1), 1U);
    EXPECT_EQ(buffer[0], '9');
    EXPECT_FALSE(stream->seek(-1));
    EXPECT_EQ(stream->read(buffer.data(), 1), 0U);
    EXPECT_EQ(stream->lastError(), 0) << "the end of the file";
    stream = m_files.open("f", OpenMode::write, m_error);
    EXPECT_EQ(stream->read(buffer.data(), 1), 0U);
    EXPECT_NE(stream->lastError(), 0) << "no end, but a stream that cannot be read";
}

TEST_F(FileSystemTest, EachModeOpensWhatItMay) {
    support::writeBytes("f", "old");
    support::makeFolder("folder");
    const std::tuple<const char*, OpenMode, bool> cases[] = {
        {"f", OpenMode::read, true},
        {"missing", OpenMode::read, false},
        {"folder", OpenMode::read, false},
        {"folder", OpenMode::write, false},
        {"no/f", OpenMode::write, false},
        {"f", OpenMode::writeInPlace, true},
        {"missing", OpenMode::writeInPlace, false},
        {"folder", OpenMode::writeInPlace, false},
        {"", OpenMode::read, false},
        {"f/f", OpenMode::read, false},
    };
    for (const auto& [path, mode, opens] : cases) {
        EXPECT_EQ(m_files.open(path, mode, m_error) != nullptr, opens) << path;
        EXPECT_EQ(m_error == 0, opens) << path;
        EXPECT_EQ(m_files.errorText(m_error).empty(), false);
    }
    EXPECT_EQ(support::readBytes("f"), "old");
    EXPECT_FALSE(support::exists("missing"));
    EXPECT_TRUE(write("f", ""));
    EXPECT_EQ(support::readBytes("f"), "");
}

TEST_F(FileSystemTest, BothSeparatorsLeadToTheSameFile) {
    EXPECT_TRUE(m_files.createFolder("A", m_error));
    EXPECT_TRUE(m_files.createFolder("A\\B\\", m_error));
    EXPECT_FALSE(m_files.createFolder("A/B", m_error));
    EXPECT_NE(m_error, 0);
    EXPECT_TRUE(write("A\\B\\f", "x"));
    EXPECT_TRUE(m_files.replaceFile("A\\B\\f", "A\\g", m_error));
    EXPECT_EQ(support::filesBelow("."), Names{"A/g"});
    EXPECT_EQ(names("A\\"), (Names{"B/", "g"}));
    ASSERT_TRUE(m_files.info("A\\g") && m_files.info("A"));
    EXPECT_EQ(m_files.info("A\\g")->size, 1U);
    EXPECT_TRUE(m_files.info("A")->isFolder && !m_files.info("A\\g")->isFolder);
    EXPECT_FALSE(m_files.info("missing") || m_files.info(""));
    for (const char* path : {"A\\g", "A", "A/", "missing", ""}) {
        SCOPED_TRACE(path);
        const auto info = m_files.info(path);
        const auto quick = platform::quickInfo(m_files, path);
        ASSERT_EQ(quick.has_value(), info.has_value());
        EXPECT_TRUE(!info ||
                    (quick->isFolder == info->isFolder && quick->modified == info->modified &&
                     quick->modifiedNanoseconds == info->modifiedNanoseconds &&
                     (info->isFolder || quick->size == info->size)));
    }
    EXPECT_TRUE(m_files.syncFolder("A\\B"));
    EXPECT_EQ(m_files.resolveLink("A\\g"), "A\\g");
    EXPECT_TRUE(m_files.removeFile("A\\g", m_error));
    EXPECT_FALSE(m_files.removeFile("A\\g", m_error));
    EXPECT_TRUE(m_files.setCurrentFolder("A\\B"));
    EXPECT_EQ(m_files.currentFolder(), native(m_folder.path() + "A/B"));
}

TEST_F(FileSystemTest, ASecondNameKeepsWhatARenameReplaces) {
    EXPECT_TRUE(write("file", "old") && write("new", "new"));
    EXPECT_TRUE(m_files.linkFile("file", "kept", m_error)) << m_files.errorText(m_error);
    EXPECT_FALSE(m_files.linkFile("new", "kept", m_error)) << "never over a file";
    EXPECT_NE(m_error, 0);
    EXPECT_TRUE(m_files.replaceFile("new", "file", m_error));
    EXPECT_EQ(support::readBytes("kept") + support::readBytes("file"), "oldnew");
    support::makeFolder("folder");
    EXPECT_FALSE(m_files.linkFile("folder", "second", m_error));
    EXPECT_FALSE(m_files.linkFile("missing", "second", m_error));
    std::error_code noLinksHere;
    std::filesystem::create_symlink("file", "link", noLinksHere);
    EXPECT_FALSE(m_files.linkFile("link", "second", m_error));
    EXPECT_FALSE(support::exists("second"));
}

TEST_F(FileSystemTest, AFileIsReplacedThoughSomebodyIsJustLookingIntoIt) {
    ASSERT_TRUE(write("file", "0"));
    for (int i = 1; i <= 50; ++i) {
        EXPECT_TRUE(write("new", std::to_string(i)));
        auto stream = m_files.open("file", OpenMode::read, m_error);
        ASSERT_TRUE(stream);
        std::thread reader([&] {
            char first = 0;
            for (int look = 0; look < 50; ++look) {
                EXPECT_TRUE(stream->seek(0) && stream->read(&first, 1) == 1);
            }
            stream.reset();
        });
        EXPECT_TRUE(m_files.replaceFile("new", "file", m_error)) << m_files.errorText(m_error);
        reader.join();
    }
    EXPECT_EQ(support::readBytes("file"), "50");
}

TEST_F(FileSystemTest, AFileWasWrittenAMomentAgoByTheSameClock) {
    EXPECT_TRUE(write("file", "x"));
    const std::int64_t now = platform::nativeClock().now();
    const auto info = m_files.info("file");
    ASSERT_TRUE(info);
    EXPECT_LT(now - 3600, info->modified);
    EXPECT_LE(info->modified, now + 3600);
    // Time zones differ, by less than a day; the years are those of this file's writer.
    EXPECT_GE(platform::nativeClock().localTime(now).year, 2024);
    const platform::LocalTime noon = platform::nativeClock().localTime(1'700'000'000);
    EXPECT_EQ(noon.year * 100 + noon.month, 202311);
    EXPECT_EQ(noon.second, 20);
}

TEST_F(FileSystemTest, AFileIsLockedOnceUntilItsOwnerEndsAndAFolderGoesOnlyWhenEmpty) {
    support::makeFolder("d");
    auto lock = m_files.lockFile("d/Lock", m_error);
    ASSERT_TRUE(lock);
    EXPECT_TRUE(lock->isIntact());
    EXPECT_FALSE(m_files.lockFile("d\\Lock", m_error));
    EXPECT_EQ(m_error, 0) << "held, which is no failure";
    EXPECT_FALSE(m_files.lockFile("missing/Lock", m_error));
    EXPECT_NE(m_error, 0);
    lock.reset();
    lock = m_files.lockFile("d/Lock", m_error);
    ASSERT_TRUE(lock);
    const bool isGone = m_files.removeFile("d/Lock", m_error);
    EXPECT_EQ(lock->isIntact(), !isGone) << "an owner notices";
    lock.reset();
    lock = m_files.lockFile("d/Lock", m_error);
    EXPECT_FALSE(m_files.removeFolder("d/", m_error) || m_error == 0);
    ASSERT_TRUE(lock);
    lock->remove();
    EXPECT_FALSE(lock->isIntact() || support::exists("d/Lock"));
    EXPECT_TRUE(m_files.removeFolder("d\\", m_error));
    EXPECT_FALSE(support::exists("d") || m_files.removeFolder("d", m_error));
}

TEST_F(FileSystemTest, ListsByNameWithoutCase) {
    for (const char* name : {"b", "_", "Z", "a", "B2", "\xC3\x84", "zz", ".hidden", "a.ini"}) {
        support::writeBytes(std::string("in/") + name, "");
    }
    const bool caseMatters = !support::exists("in/B");
    if (caseMatters) {
        support::writeBytes("in/A", "");
    }
    support::makeFolder("in/Folder");
    Names expected{".hidden", "a", "a.ini", "b", "B2", "Folder/", "Z", "zz", "_", "\xC3\x84"};
    if (caseMatters) {
        expected.insert(expected.begin() + 1, "A");
    }
    EXPECT_EQ(names("in"), expected);
    EXPECT_EQ(names("missing"), Names{"(unreadable)"});
    EXPECT_EQ(names("in/a"), Names{"(unreadable)"});
    EXPECT_EQ(names(""), Names{"in/"}) << "an empty name is the current folder";
}

TEST_F(FileSystemTest, FullPathsAreMadeByTextAlone) {
    const std::string here = m_folder.path();
    const std::string above = std::filesystem::path(here).parent_path().parent_path().string();
    const std::pair<const char*, std::string> cases[] = {
        {"a", here + "a"},          {"a/../b", here + "b"},
        {"./a//b/.", here + "a/b"}, {"..\\x.exe", above + "/x.exe"},
        {"a b/c", here + "a b/c"},  {"", ""},
    };
    for (const auto& [path, full] : cases) {
        EXPECT_EQ(m_files.fullPath(path), native(full)) << path;
    }
}

} // namespace
