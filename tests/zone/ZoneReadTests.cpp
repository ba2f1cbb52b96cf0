#include <string>

#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

const Points kOne{{3, 4}};
const Points kTwo{{5, 6}, {7, 8}};
const std::string kShapeOne = shapeBytes(kOne);
const std::string kShapeTwo = shapeBytes(kTwo);

class ZoneReadTest : public ZoneTest {
protected:
    /// All zones, one behind the other.
    static std::string shownAll(const zone::ZoneManager& manager) {
        std::string text;
        for (int zone = 0; zone < manager.zoneCount(); ++zone) {
            text += (zone > 0 ? " | " : "") + shown(*manager.zone(zone));
        }
        return text;
    }
};

const std::string kName = u32(2) + std::string("Z\0", 2);
const std::string kCountAndOne = u32(1) + kShapeOne;
const std::string kLongName(243, 'n');

struct RecordCase {
    std::string body;
    int frames;
    bool complete;
    std::string shown;
};
const RecordCase kRecords[]{
    {zoneBody("Z", {kShapeOne, kShapeTwo}), zone::kStoredFrameCount, true, "Z: 3,4 5,6;7,8"},
    {zoneBody("Z", {kShapeOne, kShapeTwo}), 4, true, "Z: 3,4 5,6;7,8 5,6;7,8 5,6;7,8"},
    {zoneBody("Z", {kShapeOne, kShapeTwo}), 1, true, "Z: 3,4"},
    {zoneBody("Z", {kShapeOne}), -5, true, "Z:"},
    {zoneBody("Z", {}), 3, true, "Z:"},
    {zoneBody("Z", {shapeBytes({}), shapeBytes(kOne, 0), shapeBytes({}, 0x101)}), 4, true,
     "Z: - 3,4! -! -!"},
    // Sizes without room for their own header, and one that is no whole number of points.
    {kName + u32(3) + u32(0) + u32(1) + u32(7) + u32(1) + kShapeOne, 3, true, "Z: - - 3,4"},
    {kName + u32(2) + u32(21) + kShapeOne.substr(4) + "spare" + kShapeTwo, 2, true,
     "Z: 3,4 5,6;7,8"},
    {u32(6) + std::string("a\0b\0c\0", 6) + kCountAndOne, 1, true, "abc: 3,4"},
    {u32(0) + kCountAndOne, 1, true, ": 3,4"},
    {u32(1000) + std::string(1000, 'n') + kCountAndOne, 1, true, kLongName + ": 3,4"},
    {u32(244) + kLongName.substr(1) + "\xC3\xA4" + kCountAndOne, 1, true,
     kLongName.substr(1) + ": 3,4"},
    {"", 2, false, "old: . ."}, // a name that cannot be read replaces none
    {u32(50) + "Z", 2, false, "old: . ."},
    {u32(0xFFFFFFFF) + std::string(90, 'Z'), 2, false, "old: . ."},
    {u32(1) + u32(0xFFFFFFFF), 2, false, ": . ."},
    {u32(1) + '\0' + u32(0xFFFFFFFF), 2, false, ": . ."},
    {kName + u32(0xFFFFFFFF) + kShapeOne, 3, false, "Z: 3,4 3,4 3,4"},
    {kName + u32(2) + kShapeOne + u32(0xFFFFFFFF) + u32(1), 3, false, "Z: 3,4 3,4 3,4"},
};

TEST_F(ZoneReadTest, ARecordIsReadAsFarAsItFitsAndBroughtToTheVideosFrames) {
    for (const RecordCase& c : kRecords) {
        const auto zone = zone::Zone::create(7); // entries from before are no part of the result
        zone->setName("old");
        zone::ZoneEditing editing;
        zone->addPoint({editing}, 0, 9, 9);
        EXPECT_EQ(zone->read(asBytes(c.body), c.body.size(), c.frames, zone::Scale{}).complete,
                  c.complete)
            << c.shown;
        EXPECT_EQ(shown(*zone), c.shown);
    }
    const auto zone = zone::Zone::create(0);
    const std::string body = zoneBody("Z", {kShapeOne});
    EXPECT_FALSE(zone->read(asBytes(body), body.size(), 2, {}).complete) << "there is no scale";
    EXPECT_EQ(shown(*zone), "Z: . .");
}

const std::string kZoneA = zoneBytes("A", {kShapeOne, kShapeTwo});
const std::string kZoneB = zoneBytes("B", {kShapeTwo, kShapeOne});
const std::string kNameless = namelessBytes({kShapeTwo, kShapeOne});
const std::string kOther = chunkBytes(0x12345678, std::string(40'000, 'u'), 40'000);
const std::string kShownA = "A: 3,4 5,6;7,8";
const std::string kShownB = "B: 5,6;7,8 3,4";
const std::string kShownNameless = kShownB.substr(1);

std::string zoneChunk(const std::string& body) {
    return chunkBytes(zone::kZoneTag, body, body.size());
}

/// The count's first byte is zero, as a name's would be; read so, even the rest passes for a zone
/// of one frame, that ends too soon.
std::string manyEmptyFrames() {
    return chunkBytes(zone::kZoneTag, u32(1) + u32(256) + std::string(256 * 8, '\0'), 9 + 256 * 8);
}

struct ChunkCase {
    std::string binary;
    std::string shown;
};
const ChunkCase kChunks[]{
    {kZoneA + kOther + kZoneB, kShownA + " | " + kShownB},
    {kOther + kOther + "ENOZ123", ""},
    {chunkBytes(1, "", 0) + kZoneA, kShownA},
    {kZoneA + kNameless + kZoneB, kShownA + " | " + kShownNameless + " | " + kShownB},
    {kNameless + kNameless, kShownNameless + " | " + kShownNameless},
    {zoneBytes("", {kShapeTwo, kShapeOne}) + kZoneB, kShownNameless + " | " + kShownB},
    {zoneChunk(u32(1) + u32(2) + kShapeTwo + kShapeOne) + kZoneB, kShownNameless + " | " + kShownB},
    {manyEmptyFrames() + kZoneB, ": -! -! | " + kShownB},
    {zoneChunk(zoneBody("A", {kShapeOne, kShapeTwo}) + "spare") + kZoneB,
     kShownA + " | " + kShownB},
    {zoneChunk(u32(0xFFFF) + "x") + zoneChunk("") + kZoneB, ": . . | : . . | " + kShownB},
    {chunkBytes(zone::kZoneTag, "", 0xFFFFFFFF) + kZoneB, ": . ."},
    {chunkBytes(7, "", 0xFFFFFFFF) + kZoneB, ""},
};

TEST_F(ZoneReadTest, ATinyZoneTakesLittleMemory) {
    const auto manager = load(zoneBytes("a", {shapeBytes({{1, 2}})}), 1);
    ASSERT_TRUE(manager && manager->zone(0));
    EXPECT_LT(manager->zone(0)->bytes(), 1024U) << "a file may hold a million of them";
    zone::Zone copy = *manager->zone(0);
    copy.unshare();
    EXPECT_LT(copy.bytes(), 1024U);
}

TEST_F(ZoneReadTest, ChunksAreWalkedByTheirStatedSizes) {
    for (const ChunkCase& c : kChunks) {
        const auto manager = load(c.binary, 2);
        ASSERT_TRUE(manager) << c.shown;
        EXPECT_EQ(shownAll(*manager), c.shown);
        EXPECT_EQ(manager->lastZoneRead, manager->zoneCount() - 1);
    }
    file("clip-ZoneInfo.xml") = infoBytes({"one", "two"});
    EXPECT_EQ(shownAll(*load(kZoneA + kZoneB + kZoneB, 2)),
              kShownA + " | " + kShownB + " | " + kShownB);
    const auto fewer = load(kZoneA, 2);
    EXPECT_EQ(shownAll(*fewer), kShownA + " | two: . .") << "so that it can be edited";
    EXPECT_EQ(fewer->lastZoneRead, 0);
    EXPECT_EQ(m_log.errors(), Lines{});
}

struct InfoCase {
    std::string xml;
    platform::Size size;
    std::string zones;
    Lines messages;
};
const Lines kUnknown(2, "Unknown zone node type");
const InfoCase kInfos[]{
    {"", {}, "", {}},
    {"<ZoneInfo><Zone>", {}, "", {}},
    {"<?xml version=\"1.0\"?><Z><VideoWidth>5</VideoWidth></Z>", {}, "", {}},
    {"<Any><VideoHeight>9</VideoHeight><X/><VideoWidth> 7x</VideoWidth></Any>", {7, 9}, "", {}},
    {"<Z><VideoWidth>abc</VideoWidth><VideoHeight/></Z>",
     {},
     "",
     {"convertStringToInt: Error invalid stoi argument"}},
    {"<Z><Zone><Name>A&B</Name></Zone><Zone/><Zone><X/><Name>B</Name><Y/></Zone></Z>",
     {},
     "A&B: . | : . | B: .",
     kUnknown},
    {"<Z><Zone><Name>A</Name><Name><b>x</b></Name></Zone></Z>", {}, ": .", {}},
    {"<Z><Zone><Name>" + kLongName + "n</Name></Zone></Z>", {}, kLongName + ": .", {}},
};

TEST_F(ZoneReadTest, TheInformationFileIsReadByElementNames) {
    for (const InfoCase& c : kInfos) {
        file("clip-ZoneInfo.xml") = c.xml;
        const auto manager = zone::ZoneManager::create("clip", 1, false);
        ASSERT_TRUE(manager) << c.xml;
        EXPECT_EQ((platform::Size{manager->videoWidth, manager->videoHeight}), c.size) << c.xml;
        EXPECT_EQ(shownAll(*manager), c.zones);
        EXPECT_EQ(m_log.newErrors(), c.messages) << c.xml;
        EXPECT_EQ(manager->lastZoneRead, -1);
    }
    file("clip-ZoneInfo.xml").clear();
    for (int depth = 0; depth < 100'000; ++depth) {
        file("clip-ZoneInfo.xml") += "<Zone>";
    }
    EXPECT_EQ(zone::ZoneManager::create("clip", 1, false)->zoneCount(), 0);
}

} // namespace
} // namespace zone_tests
