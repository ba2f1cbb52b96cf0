#include <cerrno>

#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

using support::exists;
using support::readBytes;
using support::writeBytes;

constexpr const char* kXml = "clip-ZoneInfo.xml";
constexpr const char* kBin = "clip-ZoneInfo.bin";
const Points kOne{{3, 4}};
const Points kTwo{{5, 6}, {7, 8}};

class ZoneFilesTest : public ZoneTest {
protected:
    static Lines names(const zone::ZoneManager& manager) {
        Lines all;
        for (int zone = 0; zone < manager.zoneCount(); ++zone) {
            all.push_back(manager.getZoneName(zone));
        }
        return all;
    }

    static std::string infoBytes(const Lines& names) {
        std::string text = "<ZoneInfo>\r\n\t<VideoWidth>1280</VideoWidth>\r\n"
                           "\t<VideoHeight>720</VideoHeight>\r\n";
        for (const std::string& name : names) {
            text += "\t<Zone>\r\n\t\t<Name>" + name + "</Name>\r\n\t</Zone>\r\n";
        }
        return text + "</ZoneInfo>\r\n";
    }

    void addZone(const std::string& name, const std::vector<Points>& frames) {
        const auto zone = makeZone(frames);
        zone->setName(name);
        m_manager->addZone(zone);
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
};

TEST_F(ZoneFilesTest, SavingWritesBothFilesBesideTheVideo) {
    support::makeFolder("A");
    addZone("A&B <x>", {kOne, kTwo});
    addZone("", {kTwo});
    addZone("Zone 3", {kOne});
    EXPECT_TRUE(m_manager->save("A\\clip.v2.ogv"));
    EXPECT_EQ(m_manager->lastSaveFailure(), "");
    const std::string info = infoBytes({"A&B <x>", "", "Zone 3"});
    const std::string binary = zoneBytes("A&B <x>", {shapeBytes(kOne), shapeBytes(kTwo)}) +
                               namelessBytes({shapeBytes(kTwo)}) +
                               zoneBytes("Zone 3", {shapeBytes(kOne)});
    EXPECT_EQ(readBytes("A/clip.v2-ZoneInfo.xml"), info);
    EXPECT_EQ(readBytes("A/clip.v2-ZoneInfo.bin"), binary);
    EXPECT_EQ(support::filesBelow("A"), (Lines{"clip.v2-ZoneInfo.bin", "clip.v2-ZoneInfo.xml"}));
}

TEST_F(ZoneFilesTest, SavingNoZonesWritesAnEmptyBinaryFile) {
    EXPECT_TRUE(m_manager->saveAs("clip"));
    EXPECT_EQ(readBytes(kXml), infoBytes({}));
    EXPECT_EQ(readBytes(kBin), "");
}

TEST_F(ZoneFilesTest, WhatWasSavedIsLoadedAgain) {
    m_manager->videoWidth = 1024;
    addZone("Door", {kOne, kTwo, kTwo, {}});
    addZone("", {kTwo, kOne, {}, kOne});
    addZone("K\xC3\xBC"
            "che",
            {kOne, kOne, kOne, kOne});
    ASSERT_TRUE(m_manager->saveAs("clip"));
    const auto loaded = zone::ZoneManager::create("clip", 4, true);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(names(*loaded), (Lines{"Door", "",
                                     "K\xC3\xBC"
                                     "che"}));
    EXPECT_EQ(loaded->currentZone, 2);
    EXPECT_EQ(loaded->videoWidth, 1024);
    EXPECT_EQ(loaded->videoHeight, 720);
    EXPECT_EQ(loaded->frameCount, 4);
    EXPECT_TRUE(loaded->progressChanges);
    for (int zone = 0; zone < 3; ++zone) {
        for (int frame = 0; frame < 4; ++frame) {
            EXPECT_EQ(pointsOf(*loaded->zone(zone), frame),
                      pointsOf(*m_manager->zone(zone), frame));
        }
    }
    const auto listed = zone::ZoneManager::create("clip", 0, false);
    ASSERT_TRUE(listed);
    EXPECT_EQ(names(*listed), names(*loaded)) << "both files agree on the names";
    EXPECT_EQ(listed->currentZone, -1);
}

TEST_F(ZoneFilesTest, NamesBecomeAsLongAsTheirLineAllowsInBothFiles) {
    addZone(std::string(242, 'n') + "\xC3\xA4", {kOne});
    ASSERT_TRUE(m_manager->saveAs("clip"));
    const std::string name(242, 'n');
    EXPECT_EQ(readBytes(kXml), infoBytes({name}));
    EXPECT_EQ(readBytes(kBin), zoneBytes(name, {shapeBytes(kOne)}));
}

TEST_F(ZoneFilesTest, CreationFailsWithItsMessage) {
    struct Case {
        const char* what;
        const char* base;
        const char* binary; // none: no file
        bool loadBinary;
        bool created;
        Lines messages;
    };
    const Case cases[]{
        {"no path", "", nullptr, false, false, {}},
        {"no files", "clip", nullptr, false, true, {}},
        {"no binary file", "clip", nullptr, true, false, {"Unable to load zone binary"}},
        {"empty binary file", "clip", "", true, false, {"Unable to load zone binary"}},
        {"one byte", "clip", "E", true, false, {"Unable to read zone binary"}},
        {"seven bytes", "clip", "ENOZENO", true, false, {"Unable to read zone binary"}},
        {"eight bytes", "clip", "ENOZENOZ", true, true, {}},
        {"binary file not asked for", "clip", "E", false, true, {}},
    };
    for (const Case& c : cases) {
        int error = 0;
        m_files.removeFile(kBin, error);
        if (c.binary) {
            writeBytes(kBin, c.binary);
        }
        const auto manager = zone::ZoneManager::create(c.base, 3, c.loadBinary);
        EXPECT_EQ(manager != nullptr, c.created) << c.what;
        EXPECT_EQ(newErrors(), c.messages) << c.what;
    }
    writeBytes(kBin, zoneBytes("Z", {shapeBytes(kOne)}));
    m_files.failOn("read", EIO);
    EXPECT_FALSE(zone::ZoneManager::create("clip", 3, true));
    EXPECT_EQ(newErrors(), Lines{"Unable to load zone binary"});
}

TEST_F(ZoneFilesTest, TheInformationFileIsReadByElementNames) {
    struct Case {
        const char* xml;
        int width, height;
        Lines names;
        Lines messages;
    };
    const std::string far(300, 'n');
    const std::string longName = "<Z><Zone><Name>" + far + "</Name></Zone></Z>";
    const Case cases[]{
        {"", 0, 0, {}, {}},
        {"  \r\n", 0, 0, {}, {}},
        {"<ZoneInfo><Zone>", 0, 0, {}, {}},
        {"<ZoneInfo/>", 0, 0, {}, {}},
        {"<?xml version=\"1.0\"?><ZoneInfo><VideoWidth>5</VideoWidth></ZoneInfo>", 0, 0, {}, {}},
        {"<Any><VideoHeight>9</VideoHeight><Depth>1</Depth><VideoWidth> 7x</VideoWidth></Any>",
         7,
         9,
         {},
         {}},
        {"<Z><VideoWidth>abc</VideoWidth><VideoHeight/></Z>",
         0,
         0,
         {},
         {"convertStringToInt: Error invalid stoi argument"}},
        {"<Z><VideoWidth>99999999999</VideoWidth></Z>",
         0,
         0,
         {},
         {"convertStringToInt: Error stoi argument out of range"}},
        {"<Z><Zone><Name>A</Name></Zone><Zone/><Zone><X/></Zone></Z>",
         0,
         0,
         {"A", "", ""},
         {"Unknown zone node type"}},
        {"<Z><Zone><Name>A&B</Name></Zone></Z>", 0, 0, {"A&B"}, {}},
        {longName.c_str(), 0, 0, {std::string(243, 'n')}, {}},
    };
    for (const Case& c : cases) {
        writeBytes(kXml, c.xml);
        const auto manager = zone::ZoneManager::create("clip", 4, false);
        ASSERT_TRUE(manager) << c.xml;
        EXPECT_EQ(manager->videoWidth, c.width) << c.xml;
        EXPECT_EQ(manager->videoHeight, c.height) << c.xml;
        EXPECT_EQ(names(*manager), c.names) << c.xml;
        EXPECT_EQ(newErrors(), c.messages) << c.xml;
        for (int zone = 0; zone < manager->zoneCount(); ++zone) {
            EXPECT_EQ(manager->zone(zone)->frameCount(), 4) << "named, so it can be edited";
        }
    }
}

TEST_F(ZoneFilesTest, AnInformationFileWithoutATopLevelNodeIsCorrupt) {
    writeBytes(kXml, "</ZoneInfo>");
    writeBytes(kBin, zoneBytes("Z", {shapeBytes(kOne)}));
    EXPECT_FALSE(zone::ZoneManager::create("clip", 1, true));
    EXPECT_EQ(newErrors(), Lines{"Zone info file is corrupt"});
}

TEST_F(ZoneFilesTest, ChunksAreWalkedByTheirStatedSizes) {
    const std::string first = zoneBytes("A", {shapeBytes(kOne), shapeBytes(kTwo)});
    const std::string second = zoneBytes("B", {shapeBytes(kTwo), shapeBytes(kOne)});
    const std::string nameless = namelessBytes({shapeBytes(kTwo), shapeBytes(kOne)});
    const std::string unknown = chunkBytes(0x12345678, std::string(40'000, 'u'));
    struct Case {
        const char* what;
        std::string binary;
        Lines names;
    };
    const Case cases[]{
        {"two zones", first + second, {"A", "B"}},
        {"an unknown chunk between", first + unknown + second, {"A", "B"}},
        {"unknown chunks only", unknown + unknown, {}},
        {"an empty unknown chunk", chunkBytes(1, "") + first, {"A"}},
        {"a zone without a name between", first + nameless + second, {"A", "", "B"}},
        {"zones without a name only", nameless + nameless + nameless, {"", "", ""}},
        {"a name's zero byte where none is",
         chunkBytes(zone::kZoneTag, zoneBody("", {shapeBytes(kTwo)})) + second,
         {"", "B"}},
        {"a zone with spare bytes",
         chunkBytes(zone::kZoneTag, zoneBody("A", {shapeBytes(kOne)}) + "spare") + second,
         {"A", "B"}},
        {"a damaged zone before a good one",
         chunkBytes(zone::kZoneTag, u32(0xFFFF) + "x") + second,
         {"", "B"}},
        {"a zone without a body", chunkBytes(zone::kZoneTag, "") + second, {"", "B"}},
        {"a size beyond the file", chunkBytes(zone::kZoneTag, "", 0xFFFFFFFF) + second, {""}},
        {"an unknown size beyond the file", chunkBytes(7, "", 0xFFFFFFFF) + second, {}},
        {"trailing bytes", first + "ENOZ123", {"A"}},
    };
    for (const Case& c : cases) {
        const auto manager = load(c.binary, 2);
        ASSERT_TRUE(manager) << c.what;
        EXPECT_EQ(names(*manager), c.names) << c.what;
        EXPECT_EQ(manager->currentZone, manager->zoneCount() - 1) << c.what;
        for (int zone = 0; zone < manager->zoneCount(); ++zone) {
            EXPECT_EQ(manager->zone(zone)->frameCount(), 2) << c.what;
        }
        if (!c.names.empty() && c.names.back() == "B") {
            const auto last = manager->zone(manager->zoneCount() - 1);
            EXPECT_EQ(pointsOf(*last, 0), kTwo) << c.what;
            EXPECT_EQ(pointsOf(*last, 1), kOne) << c.what;
        }
    }
    EXPECT_EQ(newErrors(), Lines{});
}

TEST_F(ZoneFilesTest, ZonesOfTheListTakeTheChunksInOrder) {
    writeBytes(kXml, infoBytes({"one", "two"}));
    const auto more = load(zoneBytes("A", {shapeBytes(kOne)}) + zoneBytes("B", {shapeBytes(kTwo)}) +
                               zoneBytes("C", {shapeBytes(kOne), shapeBytes(kTwo)}),
                           2);
    ASSERT_TRUE(more);
    EXPECT_EQ(names(*more), (Lines{"A", "B", "C"}));
    EXPECT_EQ(pointsOf(*more->zone(2), 0), kOne);
    EXPECT_EQ(pointsOf(*more->zone(2), 1), kTwo);
    const auto fewer = load(zoneBytes("A", {shapeBytes(kOne)}), 2);
    ASSERT_TRUE(fewer);
    EXPECT_EQ(names(*fewer), (Lines{"A", "two"}));
    EXPECT_EQ(fewer->currentZone, 0);
    EXPECT_EQ(fewer->zone(1)->frameCount(), 2);
    EXPECT_TRUE(fewer->isActive(1, 1));
    EXPECT_EQ(newErrors(), Lines{});
}

TEST_F(ZoneFilesTest, BothFilesAreOnTheDiskBeforeTheFirstIsReplacedTheListFirst) {
    addZone("Z", {kOne});
    ASSERT_TRUE(m_manager->saveAs("clip"));
    m_files.forgetCalls();
    ASSERT_TRUE(m_manager->saveAs("clip"));
    Lines steps;
    for (const support::Call& call : m_files.calls()) {
        if (call.operation == "sync" || call.operation == "close" ||
            call.operation == "replaceFile" || call.operation == "syncFolder") {
            steps.push_back(call.operation + " " + call.path);
        }
    }
    EXPECT_EQ(steps, (Lines{"sync .quorvel-saving.xml", "close .quorvel-saving.xml",
                            "sync .quorvel-saving.bin", "close .quorvel-saving.bin",
                            "replaceFile clip-ZoneInfo.xml", "syncFolder .",
                            "replaceFile clip-ZoneInfo.bin", "syncFolder ."}));
}

TEST_F(ZoneFilesTest, ASaveThatFailsHasItsResultMessageAndFiles) {
    addZone("Z", {kOne});
    const std::string newXml = infoBytes({"Z"});
    const std::string newBin = zoneBytes("Z", {shapeBytes(kOne)});
    struct Case {
        const char* what;
        std::string operation, path;
        bool result;
        Lines messages;
        bool xmlIsNew, binIsNew;
    };
    const std::string xmlTemporary = ".quorvel-saving.xml";
    const std::string binTemporary = ".quorvel-saving.bin";
    const Lines infoFailed{"Unable to save zone info file"};
    const Lines binaryFailed{"Unable to save zone binary file"};
    const Case cases[]{
        {"list read-only", "open", kXml, false, infoFailed, false, false},
        {"list not opened", "open", xmlTemporary, false, infoFailed, false, false},
        {"list not written", "write", xmlTemporary, false, infoFailed, false, false},
        {"list not flushed", "sync", xmlTemporary, false, infoFailed, false, false},
        {"list not replaced", "replaceFile", kXml, false, infoFailed, false, false},
        {"binary read-only", "open", kBin, false, binaryFailed, true, false},
        {"binary not opened", "open", binTemporary, false, binaryFailed, true, false},
        {"binary not written", "write", binTemporary, true, {}, true, false},
        {"binary not flushed", "sync", binTemporary, true, {}, true, false},
        {"binary not closed", "close", binTemporary, true, {}, true, false},
        {"binary not replaced", "replaceFile", kBin, true, {}, true, false},
    };
    for (const Case& c : cases) {
        writeBytes(kXml, "old list");
        writeBytes(kBin, "old shapes");
        m_files.setRule(
            [&](const support::Call& call) {
                const bool hit = call.operation == c.operation && call.path == c.path;
                return hit ? support::Fault::fail : support::Fault::none;
            },
            ENOSPC);
        testing::internal::CaptureStderr();
        EXPECT_EQ(m_manager->saveAs("clip"), c.result) << c.what;
        const std::string told = testing::internal::GetCapturedStderr();
        m_files.heal();
        EXPECT_EQ(newErrors(), c.messages) << c.what;
        const std::string reason = m_manager->lastSaveFailure();
        EXPECT_NE(reason, "") << c.what;
        EXPECT_NE(told.find("Not saved: " + reason), std::string::npos) << c.what << ": " << told;
        EXPECT_EQ(readBytes(kXml), c.xmlIsNew ? newXml : "old list") << c.what;
        EXPECT_EQ(readBytes(kBin), c.binIsNew ? newBin : "old shapes") << c.what;
        EXPECT_FALSE(exists(xmlTemporary) || exists(binTemporary)) << c.what;
    }
    EXPECT_TRUE(m_manager->saveAs("clip"));
    EXPECT_EQ(m_manager->lastSaveFailure(), "") << "the next good save clears it";
}

TEST_F(ZoneFilesTest, AStopAtAnyCallLeavesEachFileOldOrNew) {
    addZone("Z", std::vector<Points>(3, kTwo));
    ASSERT_TRUE(m_manager->saveAs("clip"));
    const std::string newXml = readBytes(kXml);
    const std::string newBin = readBytes(kBin);
    const int calls = static_cast<int>(m_files.calls().size());
    for (const auto plan : {&support::FaultyFileSystem::stopAt, &support::FaultyFileSystem::failAt,
                            &support::FaultyFileSystem::shortenAt}) {
        for (int number = 1; number <= calls + 4; ++number) {
            m_files.heal();
            writeBytes(kXml, "old list");
            writeBytes(kBin, "old shapes");
            m_files.forgetCalls();
            (m_files.*plan)(number);
            testing::internal::CaptureStderr();
            const bool good = m_manager->saveAs("clip") && m_manager->lastSaveFailure().empty();
            (void)testing::internal::GetCapturedStderr();
            const std::string xml = readBytes(kXml);
            const std::string bin = readBytes(kBin);
            EXPECT_TRUE(xml == newXml || xml == "old list") << number;
            EXPECT_TRUE(bin == newBin || bin == "old shapes") << number;
            EXPECT_TRUE(bin != newBin || xml == newXml) << "the list is replaced first: " << number;
            EXPECT_EQ(good, bin == newBin) << number;
        }
    }
}

TEST_F(ZoneFilesTest, ShapesThatCannotBeConvertedKeepTheOldBinaryFile) {
    addZone("Z", {kOne});
    writeBytes(kBin, "old shapes");
    zone::clearZoneView();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(m_manager->saveAs("clip"));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Not saved: clip-ZoneInfo.bin"),
              std::string::npos);
    EXPECT_NE(m_manager->lastSaveFailure(), "");
    EXPECT_EQ(readBytes(kBin), "old shapes");
}

TEST_F(ZoneFilesTest, AFileKeepsItsPlaceBehindALinkAndAFolderIsNoFile) {
    support::makeFolder(kXml);
    EXPECT_FALSE(m_manager->saveAs("clip"));
    EXPECT_FALSE(exists(kBin));
    EXPECT_EQ(newErrors(), Lines{"Unable to save zone info file"});
}

} // namespace
} // namespace zone_tests
