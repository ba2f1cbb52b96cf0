// Bringing a video into a scene's folder: whatever happens, no file is harmed.
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "core/Paths.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"
#include "ui/VideoImport.h"

namespace {

using support::readBytes;
using support::writeBytes;
using ui::ImportProgress;
using ui::ImportResult;

const std::string kNew(3'500'000, 'n'); // several blocks
const std::string kOld = "old video";

class VideoImport : public support::TempFolderTest {
protected:
    VideoImport() { writeBytes("from/clip.ogv", kNew); }

    ImportResult import(const std::string& from, const std::string& to) {
        return ui::importVideo(m_files, from, to, m_progress, [this] { ++m_blocks; });
    }
    std::string scenePath(const std::string& rest) { return m_folder.path() + "Scenes/" + rest; }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    ImportProgress m_progress;
    int m_blocks = 0;
};

TEST_F(VideoImport, CopiesIntoAFolderThatDoesNotExistYet) {
    EXPECT_EQ(import(m_folder.path() + "from/clip.ogv", scenePath("A\\clip.ogv")),
              ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kNew);
    EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv"});
    EXPECT_EQ(m_progress.copiedBytes, kNew.size());
    EXPECT_EQ(m_progress.totalBytes, kNew.size());
    EXPECT_GE(m_blocks, 3);
}

TEST_F(VideoImport, ReplacesAnotherFileOfThatNameOnlyOnceTheCopyIsWhole) {
    writeBytes("Scenes/A/clip.ogv", kOld);
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A\\clip.ogv"), ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kNew);
}

TEST_F(VideoImport, LeavesAFileThatIsItsOwnDestinationAlone) {
    writeBytes("Scenes/A/clip.ogv", kOld);
    std::filesystem::create_hard_link("Scenes/A/clip.ogv", "from/link.ogv");
    std::vector<std::string> sources{
        "Scenes/A/clip.ogv",     "Scenes\\A\\clip.ogv",
        scenePath("A/clip.ogv"), scenePath("A\\..\\A/clip.ogv"),
        "from/link.ogv",
    };
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
        m_files.forgetCalls();
        EXPECT_EQ(import(source, scenePath("A\\clip.ogv")), ImportResult::sameFile) << source;
        for (const std::string& call : m_files.callTexts()) {
            EXPECT_EQ(call.find("remove"), std::string::npos) << call;
            EXPECT_EQ(call.find("replace"), std::string::npos) << call;
        }
        EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kOld) << source;
    }
}

TEST_F(VideoImport, EveryFaultLeavesTheOldFileAndNoTrace) {
    // First a good run, to know how many calls there are.
    writeBytes("Scenes/A/clip.ogv", kOld);
    ASSERT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::copied);
    const int calls = static_cast<int>(m_files.calls().size());
    ASSERT_GT(calls, 10);
    for (const bool shorten : {false, true}) {
        for (int call = 1; call <= calls; ++call) {
            writeBytes("Scenes/A/clip.ogv", kOld);
            m_files.heal();
            m_files.forgetCalls();
            shorten ? m_files.shortenAt(call) : m_files.failAt(call);
            const ImportResult result = import("from/clip.ogv", "Scenes/A/clip.ogv");
            const std::string& expected = result == ImportResult::copied ? kNew : kOld;
            EXPECT_EQ(readBytes("Scenes/A/clip.ogv").size(), expected.size()) << call;
            EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv"})
                << call;
        }
    }
}

TEST_F(VideoImport, AMachineThatStopsLeavesTheOldOrTheNewFile) {
    for (int call = 1; call <= 30; ++call) {
        writeBytes("Scenes/A/clip.ogv", kOld);
        m_files.heal();
        m_files.forgetCalls();
        m_files.stopAt(call);
        (void)import("from/clip.ogv", "Scenes/A/clip.ogv");
        const std::string left = readBytes("Scenes/A/clip.ogv");
        EXPECT_TRUE(left == kOld || left == kNew) << call;
    }
}

struct Refusal {
    const char* operation;
    int error;
};

TEST_F(VideoImport, AFullDiskFails) {
    writeBytes("Scenes/A/clip.ogv", kOld);
    for (const Refusal& refusal : {Refusal{"write", ENOSPC}, Refusal{"sync", EIO},
                                   Refusal{"close", EIO}, Refusal{"replaceFile", EACCES}}) {
        m_files.heal();
        m_files.failOn(refusal.operation, refusal.error);
        EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::failed)
            << refusal.operation;
        EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kOld);
        EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv"});
    }
}

TEST_F(VideoImport, NeverReplacesAFolderAndNeedsAFileToCopy) {
    support::makeFolder("Scenes/A/clip.ogv");
    writeBytes("Scenes/A/clip.ogv/inside", kOld);
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::failed);
    EXPECT_EQ(import("from", "Scenes/A/other.ogv"), ImportResult::failed);
    EXPECT_EQ(import("from/none.ogv", "Scenes/A/other.ogv"), ImportResult::failed);
    EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv/inside"});
}

TEST_F(VideoImport, NoNameLeadsOutOfTheScenesFolder) {
    const std::string names[] = {"..",
                                 ".",
                                 "",
                                 "../x.ogv",
                                 "..\\x.ogv",
                                 "a/../../x.ogv",
                                 "/x.ogv",
                                 "C:\\x.ogv",
                                 "C:x.ogv",
                                 "NUL",
                                 "con.ogv",
                                 "x.ogv.",
                                 "x.ogv ",
                                 "...",
                                 " ",
                                 "a:b.ogv",
                                 "VideoCopy.part",
                                 std::string(255, 'n'),
                                 std::string(300, 'n') + ".ogv"};
    for (const std::string& name : names) {
        std::filesystem::remove_all("Scenes");
        writeBytes("Scenes/A/kept.ogv", kOld);
        const ImportResult result =
            import("from/clip.ogv", scenePath("A\\") + core::fileName(name));
        EXPECT_EQ(readBytes("Scenes/A/kept.ogv"), kOld) << name;
        int copies = 0;
        for (const std::string& path : support::filesBelow(".")) {
            if (path == "from/clip.ogv" || path == "Scenes/A/kept.ogv") {
                continue;
            }
            EXPECT_EQ(std::filesystem::path(path).parent_path(), "Scenes/A") << name;
            EXPECT_EQ(readBytes(path), kNew) << name;
            ++copies;
        }
        EXPECT_EQ(copies, result == ImportResult::copied ? 1 : 0) << name;
    }
}

TEST_F(VideoImport, ACancelledCopyLeavesEverythingAsItWas) {
    writeBytes("Scenes/A/clip.ogv", kOld);
    const auto result = ui::importVideo(m_files, "from/clip.ogv", "Scenes/A/clip.ogv", m_progress,
                                        [this] { m_progress.cancelled = true; });
    EXPECT_EQ(result, ImportResult::cancelled);
    EXPECT_LT(m_progress.copiedBytes, kNew.size());
    EXPECT_EQ(readBytes("Scenes/A/clip.ogv"), kOld);
    EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv"});
}

TEST_F(VideoImport, AFileThatLiesAtTheTemporarysPlaceIsNotCopiedOntoItself) {
    const std::string temporary = std::string("Scenes/A/") + ui::kImportTemporary;
    writeBytes(temporary, kOld);
    EXPECT_EQ(import(scenePath(ui::kImportTemporary).insert(scenePath("").size(), "A/"),
                     "Scenes/A/clip.ogv"),
              ImportResult::failed);
    EXPECT_EQ(readBytes(temporary), kOld);
    EXPECT_EQ(support::filesBelow("Scenes"),
              std::vector<std::string>{std::string("A/") + ui::kImportTemporary});
}

TEST_F(VideoImport, TakesOverALeftoverOfACrash) {
    writeBytes(std::string("Scenes/A/") + ui::kImportTemporary, "half");
    EXPECT_EQ(import("from/clip.ogv", "Scenes/A/clip.ogv"), ImportResult::copied);
    EXPECT_EQ(support::filesBelow("Scenes"), std::vector<std::string>{"A/clip.ogv"});
}

TEST_F(VideoImport, CopiesAnEmptyFile) {
    writeBytes("from/empty.ogv", "");
    EXPECT_EQ(import("from/empty.ogv", "Scenes/A/empty.ogv"), ImportResult::copied);
    EXPECT_EQ(readBytes("Scenes/A/empty.ogv"), "");
}

} // namespace
