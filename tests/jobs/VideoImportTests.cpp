// Bringing a video into a scene's folder: whatever happens, no file is harmed.
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "jobs/VideoImport.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"

namespace {

using jobs::ImportResult;
using support::Fault;
using support::filesBelow;
using support::readBytes;
using support::writeBytes;
using Names = std::vector<std::string>;

const std::string kNew(3'500'000, 'n'); // several blocks
const std::string kOld = "old video";

class VideoImport : public support::TempFolderTest {
protected:
    VideoImport() { writeBytes("from/clip.ogv", kNew); }

    ImportResult import(const std::string& from, const std::string& to) {
        const jobs::ImportReport report =
            jobs::importVideo(m_files, from, to, m_progress, [this] { ++m_blocks; });
        EXPECT_EQ(report.reason.empty(), report.result != ImportResult::failed);
        m_reason = report.reason;
        return report.result;
    }
    std::string scenePath(const std::string& rest) { return m_folder.path() + "Scenes/" + rest; }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    jobs::ImportProgress m_progress;
    int m_blocks = 0;
    std::string m_reason; ///< of the last import
};

TEST_F(VideoImport, CopiesOverOlderFilesAndIntoNewFolders) {
    EXPECT_EQ(import(m_folder.path() + "from/clip.ogv", scenePath("A\\clip.ogv")),
              ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kNew);
    EXPECT_EQ(m_progress.copiedBytes, kNew.size());
    EXPECT_EQ(m_progress.totalBytes, kNew.size());
    EXPECT_GE(m_blocks, 3);
    writeBytes("from/empty.ogv", "");
    const std::string leftover = "Scenes/A/VideoCopy-1.part";
    writeBytes(leftover, "half, of a crash");
    std::filesystem::last_write_time(leftover, std::filesystem::last_write_time(leftover) -
                                                   std::chrono::hours(2));
    EXPECT_EQ(import("from/empty.ogv", "Scenes/A\\clip.ogv"), ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), "");
    EXPECT_EQ(filesBelow("Scenes"), Names{"A/clip.ogv"});
}

TEST_F(VideoImport, LeavesAFileThatIsItsOwnDestinationAlone) {
    writeBytes("Scenes/A/clip.ogv", kOld);
    std::filesystem::create_hard_link("Scenes/A/clip.ogv", "from/link.ogv");
    Names sources{"Scenes/A/clip.ogv", "Scenes\\A\\clip.ogv", scenePath("A/clip.ogv"),
                  scenePath("A\\..\\A/clip.ogv"), "from/link.ogv"};
    std::error_code refused;
    std::filesystem::create_symlink("../Scenes/A/clip.ogv", "from/soft.ogv", refused);
    if (!refused) {
        sources.emplace_back("from/soft.ogv");
    } else {
        EXPECT_EQ(refused, std::errc::function_not_supported);
    }
    if (support::exists("SCENES/a/Clip.OGV")) { // a system to which it is the same name
        sources.emplace_back("SCENES/a/Clip.OGV");
    }
    for (const std::string& source : sources) {
        EXPECT_EQ(import(source, scenePath("A\\clip.ogv")), ImportResult::sameFile) << source;
        EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kOld) << source;
    }
    for (const support::Call& call : m_files.calls()) {
        EXPECT_TRUE(call.operation == "info" || call.operation == "fullPath") << call.operation;
    }
}

TEST_F(VideoImport, EveryFaultLeavesTheOldFileOrTheWholeNewOne) {
    const std::string place = "Scenes/A/clip.ogv";
    writeBytes(place, kOld);
    ASSERT_EQ(import("from/clip.ogv", place), ImportResult::copied);
    const std::vector<support::Call> calls = m_files.calls();
    const std::set<std::string> needed{"open", "read", "write", "sync", "replaceFile"};
    for (const Fault fault : {Fault::fail, Fault::shorten, Fault::stop}) {
        for (const support::Call& faulty : calls) {
            SCOPED_TRACE(faulty.operation + " " + faulty.path);
            writeBytes(place, kOld);
            m_files.setRule(
                [&](const support::Call& call) {
                    const bool later = fault == Fault::stop && call.number > faulty.number;
                    return call.number == faulty.number || later ? fault : Fault::none;
                },
                5);
            m_files.forgetCalls();
            const ImportResult result = import("from/clip.ogv", place);
            if (needed.contains(faulty.operation)) {
                EXPECT_EQ(result, ImportResult::failed);
            }
            EXPECT_EQ(readBytes(place).size(),
                      (result == ImportResult::copied ? kNew : kOld).size());
            if (fault != Fault::stop) {
                EXPECT_EQ(filesBelow("Scenes"), Names{"A/clip.ogv"});
            }
        }
    }
}

TEST_F(VideoImport, AFileThatCannotBeReadIsNoEmptyFile) {
    writeBytes("from/empty.ogv", ""); // as unreadable files of some systems state their size
    writeBytes("Scenes/A/clip.ogv", kOld);
    m_files.failOn("read", EIO);
    EXPECT_EQ(import("from/empty.ogv", "Scenes/A/clip.ogv"), ImportResult::failed);
    EXPECT_EQ(m_reason, m_files.errorText(EIO));
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kOld);
}

TEST_F(VideoImport, NeverReplacesAFolderAndNeedsAnotherFileToCopy) {
    writeBytes("Scenes/A/clip.ogv/inside", kOld);
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::failed);
    EXPECT_EQ(import("from", "Scenes/A/other.ogv"), ImportResult::failed);
    EXPECT_EQ(import("from/none.ogv", "Scenes/A/other.ogv"), ImportResult::failed);
    EXPECT_EQ(filesBelow("Scenes"), Names{"A/clip.ogv/inside"});
    // Nor is what another program still copies.
    const std::string temporary = "Scenes/A/VideoCopy-2.part";
    writeBytes(temporary, kOld);
    EXPECT_EQ(import(m_folder.path() + temporary, "Scenes/A/other.ogv"), ImportResult::failed);
    EXPECT_EQ(readBytes(temporary), kOld);
    EXPECT_FALSE(support::exists("Scenes/A/other.ogv"));
}

TEST_F(VideoImport, WritesThroughNoLinkThatLiesInTheFolder) {
    writeBytes("elsewhere", kOld);
    std::filesystem::create_directories("Scenes/A");
    for (const std::string& name : {jobs::importTemporary(), std::string("clip.ogv")}) {
        std::error_code refused;
        std::filesystem::create_symlink("../../elsewhere", "Scenes/A/" + name, refused);
        EXPECT_TRUE(!refused || refused == std::errc::function_not_supported);
    }
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::copied);
    EXPECT_EQ(readBytes("elsewhere"), kOld);
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kNew);
    EXPECT_EQ(filesBelow("Scenes"), Names{"A/clip.ogv"});
}

TEST_F(VideoImport, LeavesTheCopyOfAnotherEditorToIt) {
    writeBytes("Scenes/A/VideoCopy-2.part", kOld);
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/VideoCopy-2.part"), kOld);
}

TEST_F(VideoImport, NoNameLeadsOutOfTheScenesFolder) {
    for (const std::string& name :
         Names{"..", ".", "", "../x.ogv", "..\\x.ogv", "a/../../x.ogv", "/x.ogv", "C:\\x.ogv",
               "C:x.ogv", "NUL", "con.ogv", "x.ogv.", "x.ogv ", "...", " ", "a:b.ogv",
               "VideoCopy.part", std::string(255, 'n'), std::string(300, 'n') + ".ogv"}) {
        SCOPED_TRACE(name);
        std::filesystem::remove_all("Scenes");
        writeBytes("Scenes/A/kept.ogv", kOld);
        const ImportResult result =
            import("from/clip.ogv", scenePath("A\\") + core::fileName(name));
        EXPECT_EQ(readBytes("Scenes/A/kept.ogv"), kOld);
        int copies = 0;
        for (const std::string& path : filesBelow(".")) {
            if (path != "from/clip.ogv" && path != "Scenes/A/kept.ogv") {
                EXPECT_EQ(std::filesystem::path(path).parent_path(), "Scenes/A");
                EXPECT_EQ(readBytes(path), kNew);
                ++copies;
            }
        }
        EXPECT_EQ(copies, result == ImportResult::copied ? 1 : 0);
    }
}

} // namespace
