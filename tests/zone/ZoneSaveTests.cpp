#include <cstddef>
#include <string>
#include <vector>

#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

constexpr const char* kXml = "clip-ZoneInfo.xml";
constexpr const char* kBin = "clip-ZoneInfo.bin";
constexpr const char* kListFailed = "Unable to save zone info file";
constexpr const char* kBinaryFailed = "Unable to save zone binary file";

class ZoneSaveTest : public ZoneTest {
protected:
    ZoneSaveTest() {
        file(kXml) = infoBytes({});
        m_manager = load(m_newBin, 1);
    }

    /// One save over old files, and what it told standard error.
    bool save() {
        file(kXml) = "old list";
        file(kBin) = "old shapes";
        m_files.forgetCalls();
        testing::internal::CaptureStderr();
        const bool result = m_manager->saveAs("clip");
        m_told = testing::internal::GetCapturedStderr();
        return result;
    }
    bool isNew(const char* name) {
        const bool fresh = file(name) == (name == kXml ? infoBytes({"Z"}) : m_newBin);
        EXPECT_TRUE(fresh || file(name) == (name == kXml ? "old list" : "old shapes")) << name;
        return fresh;
    }

    const std::string m_newBin = zoneBytes("Z", {shapeBytes({{5, 6}, {7, 8}})});
    std::string m_told;
};

TEST_F(ZoneSaveTest, BothFilesAreOnTheDiskBeforeTheFirstIsReplacedTheListFirst) {
    EXPECT_TRUE(save());
    Lines steps;
    for (const std::string& call : m_files.callTexts()) {
        if (call.starts_with("sync") || call.starts_with("close") || call.starts_with("replace")) {
            steps.push_back(call);
        }
    }
    EXPECT_EQ(steps, (Lines{"sync .quorvel-saving.xml", "close .quorvel-saving.xml",
                            "sync .quorvel-saving.bin", "close .quorvel-saving.bin",
                            "replaceFile clip-ZoneInfo.xml", "syncFolder .",
                            "replaceFile clip-ZoneInfo.bin", "syncFolder ."}));
}

TEST_F(ZoneSaveTest, TheFilesStandBesideTheVideoUnderItsNameWithoutExtension) {
    m_disk.folders.insert("/home/A.b");
    m_manager->setZoneName(0, "A&B <x>");
    EXPECT_TRUE(m_manager->save("A.b\\clip.v2.ogv"));
    EXPECT_EQ(file("A.b/clip.v2-ZoneInfo.xml"), infoBytes({"A&B <x>"})) << "names as they are";
    m_manager->removeZone(0);
    EXPECT_TRUE(m_manager->save("A.b/clip.v2.ogg"));
    EXPECT_EQ(file("A.b/clip.v2-ZoneInfo.bin"), "");
}

TEST_F(ZoneSaveTest, AFaultAtAnyCallHasItsResultAndLeavesEachFileOldOrNew) {
    using Plan = void (support::FaultyFileSystem::*)(int);
    const Plan plans[]{&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
                       &support::FaultyFileSystem::stopAt};
    ASSERT_TRUE(save());
    const std::vector<support::Call> calls = m_files.calls();
    for (const support::Call& call : calls) {
        const bool ofList = call.path.ends_with("xml");
        const bool opens = call.operation == "open";
        const bool matters = opens || call.operation == "write" || call.operation == "sync" ||
                             call.operation == "close" || call.operation == "replaceFile";
        for (const Plan plan : plans) {
            SCOPED_TRACE(call.operation + " " + call.path);
            (m_files.*plan)(call.number);
            const bool result = save();
            const std::string reason = m_manager->lastSaveFailure().text();
            m_files.heal();
            EXPECT_EQ(reason.empty(), isNew(kBin));
            EXPECT_TRUE(isNew(kXml) || !isNew(kBin)) << "the list is replaced first";
            EXPECT_NE(m_told.find(reason.empty() ? "" : "Not saved: " + reason), std::string::npos);
            if (plan == &support::FaultyFileSystem::stopAt) {
                (void)m_log.newErrors();
                continue; // nothing can be cleaned up then
            }
            EXPECT_EQ(result, !matters || !(ofList || opens));
            EXPECT_EQ(m_log.newErrors(),
                      Lines(result ? 0 : 1, ofList ? kListFailed : kBinaryFailed));
            // Nothing is replaced before both are on the disk.
            const bool onlyBinaryFails = !ofList && call.operation == "replaceFile";
            EXPECT_EQ(isNew(kXml), !matters || onlyBinaryFails);
            EXPECT_EQ(isNew(kBin), !matters);
            EXPECT_FALSE(m_disk.info(".quorvel-saving.xml") || m_disk.info(".quorvel-saving.bin"));
        }
    }
    EXPECT_GT(calls.size(), 18U);
    EXPECT_TRUE(save());
    EXPECT_EQ(m_manager->lastSaveFailure().text(), "") << "the next good save clears it";
}

TEST_F(ZoneSaveTest, FilesNotReadWholeAreKeptAsideThreeTimesAndNoCopyIsOverwritten) {
    constexpr const char* kCopy = "clip-ZoneInfo.damaged-";
    for (const std::string number : {"1", "2", "3", "4"}) {
        file(kXml) = infoBytes({"Z" + number, "lost"});
        file(kBin) = zoneBytes("Z" + number, {shapeBytes({{1, 2}})});
        const auto damaged = zone::ZoneManager::createForEditing("clip", 1, zone::Scale{});
        EXPECT_TRUE(damaged->saveAs("elsewhere"));
        EXPECT_EQ(damaged->loadReport().problem, zone::LoadProblem::binaryDamaged);
        EXPECT_TRUE(damaged->saveAs("clip"));
        EXPECT_EQ(damaged->keptAs(), number == "4" ? "" : kCopy + number);
        EXPECT_EQ(damaged->hadNoRoomToKeep(), number == "4");
        EXPECT_EQ(damaged->loadReport().problem, zone::LoadProblem::none);
        EXPECT_TRUE(damaged->saveAs("clip")) << "keeps no good file";
    }
    for (const std::string number : {"1", "2", "3"}) {
        EXPECT_EQ(file(kCopy + number + ".xml"), infoBytes({"Z" + number, "lost"}));
        EXPECT_EQ(file(kCopy + number + ".bin"), zoneBytes("Z" + number, {shapeBytes({{1, 2}})}));
    }
    EXPECT_FALSE(m_disk.info(kCopy + std::string("4.bin")));
}

TEST_F(ZoneSaveTest, AFaultWhileKeepingReplacesNothingThatHasNoCopy) {
    const auto copy = [this](const std::string& extension) {
        const auto found = m_disk.files.find("/home/clip-ZoneInfo.damaged-1." + extension);
        return found == m_disk.files.end() ? "" : found->second;
    };
    std::size_t calls = 0;
    for (std::size_t number = 0; number <= calls; ++number) { // the first run has no fault
        for (const auto plan :
             {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
              &support::FaultyFileSystem::stopAt}) {
            SCOPED_TRACE(number);
            m_disk.files.clear();
            file(kXml) = "old list";
            file(kBin) = "old shapes";
            m_manager = zone::ZoneManager::createForEditing("clip", 1, zone::Scale{});
            (m_files.*plan)(static_cast<int>(number));
            (void)save();
            calls = number == 0 ? m_files.calls().size() : calls;
            m_files.heal();
            const bool isReplaced = file(kXml) != "old list" || file(kBin) != "old shapes";
            const bool isKept = copy("bin") == "old shapes" && copy("xml") == "old list";
            EXPECT_TRUE(isKept || !isReplaced);
            EXPECT_EQ(m_manager->lastSaveFailure().empty(), file(kBin).empty());
            EXPECT_TRUE(copy("bin") == "" || copy("bin") == "old shapes");
            EXPECT_TRUE(copy("xml") == "" || copy("xml") == "old list");
            EXPECT_TRUE(copy("bin") == "" || isKept || plan == &support::FaultyFileSystem::stopAt)
                << "half a pair would use up a number";
        }
    }
    EXPECT_GT(calls, 30U);
}

TEST_F(ZoneSaveTest, ShapesThatNoFileCanHoldKeepTheOldOne) {
    const auto expectKept = [this] {
        EXPECT_TRUE(save());
        EXPECT_EQ(m_told, "Not saved: clip-ZoneInfo.bin: zones cannot be stored\n");
        EXPECT_EQ(m_manager->lastSaveFailure().text(), "clip-ZoneInfo.bin: zones cannot be stored");
        EXPECT_FALSE(isNew(kXml) || isNew(kBin));
    };
    file(kXml) = infoBytes({});
    m_manager = load(zoneBytes("Z", {shapeBytes(Points(70, {1, 1}))}), 8'000'000);
    expectKept(); // more than a record's size can say
    m_manager->scale.reset();
    expectKept();
}

} // namespace
} // namespace zone_tests
