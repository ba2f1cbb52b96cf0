#include <memory>
#include <string>
#include <vector>

#include "core/ReplacedFiles.h"
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

    /// One save over old files, and what it printed on standard error.
    bool save() {
        file(kXml) = "old list";
        file(kBin) = "old shapes";
        m_files.forgetCalls();
        testing::internal::CaptureStderr();
        const bool result = m_manager->saveAs("clip");
        m_printed = testing::internal::GetCapturedStderr();
        return result;
    }
    bool isNew(const char* name) {
        const bool fresh = file(name) == (name == kXml ? infoBytes({"Z"}) : m_newBin);
        EXPECT_TRUE(fresh || file(name) == (name == kXml ? "old list" : "old shapes")) << name;
        return fresh;
    }

    const std::string m_newBin = zoneBytes("Z", {shapeBytes({{5, 6}, {7, 8}})});
    std::string m_printed;
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
            EXPECT_NE(m_printed.find(reason.empty() ? "" : "Not saved: " + reason),
                      std::string::npos);
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

/// Says what it was asked to keep, and cannot while it has a failure.
class Keeper final : public core::ReplacedFiles {
public:
    void begin(const std::vector<std::string>& paths, Need need) noexcept override {
        calls = paths.front() + " " + paths.back() + (need == Need::must ? " must" : " wish");
    }
    core::FileError beforeReplace() noexcept override {
        return calls.ends_with("must") ? failure : core::FileError{};
    }
    void end(bool replaced) noexcept override { calls += replaced ? " replaced" : " as it was"; }

    std::string calls;
    core::FileError failure;
};

TEST_F(ZoneSaveTest, FilesNotReadWholeAreReplacedOnlyOnceTheyAreKept) {
    const auto keeper = std::make_shared<Keeper>();
    file(kXml) = infoBytes({"Z", "lost"});
    file(kBin) = zoneBytes("Z", {shapeBytes({{1, 2}})});
    const std::string old = file(kXml) + file(kBin);
    m_manager = zone::ZoneManager::createForEditing("clip", 1, zone::Scale{});
    m_manager->setKeeper(keeper);
    EXPECT_TRUE(m_manager->saveAs("elsewhere"));
    EXPECT_EQ(keeper->calls, "elsewhere-ZoneInfo.bin elsewhere-ZoneInfo.xml wish replaced");
    const std::string both = "clip-ZoneInfo.bin clip-ZoneInfo.xml";
    keeper->failure = {"Backups", "full"};
    EXPECT_FALSE(m_manager->saveAs("clip"));
    EXPECT_EQ(keeper->calls, both + " must as it was");
    EXPECT_EQ(m_manager->lastSaveFailure().text(), "Backups: full");
    EXPECT_EQ(file(kXml) + file(kBin), old);
    EXPECT_EQ(m_manager->loadReport().problem, zone::LoadProblem::binaryDamaged);
    keeper->failure = {};
    EXPECT_TRUE(m_manager->saveAs("clip"));
    EXPECT_EQ(keeper->calls, both + " must replaced");
    EXPECT_EQ(m_manager->loadReport().problem, zone::LoadProblem::none);
    EXPECT_TRUE(m_manager->saveAs("clip"));
    EXPECT_EQ(keeper->calls, both + " wish replaced") << "a good pair";
    m_files.failOn("sync", EIO);
    (void)save();
    EXPECT_EQ(keeper->calls, both + " wish as it was");
}

TEST_F(ZoneSaveTest, ShapesThatNoFileCanHoldKeepTheOldOne) {
    const auto expectKept = [this] {
        EXPECT_TRUE(save());
        EXPECT_EQ(m_printed, "Not saved: clip-ZoneInfo.bin: zones cannot be stored\n");
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
