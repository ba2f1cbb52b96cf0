#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

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

TEST_F(ZoneReadTest, ARecordIsReadAsFarAsItFitsAndBroughtToTheVideosFrames) {
    constexpr int kStored = zone::kStoredFrameCount;
    const std::string name = u32(2) + std::string("Z\0", 2);
    const std::string one = u32(1) + kShapeOne;
    const std::string n243(243, 'n');
    struct Case {
        std::string body;
        int frames;
        bool complete;
        std::string shown;
    };
    const Case cases[]{
        {zoneBody("Z", {kShapeOne, kShapeTwo}), kStored, true, "Z: 3,4 5,6;7,8"},
        {zoneBody("Z", {kShapeOne, kShapeTwo}), 4, true, "Z: 3,4 5,6;7,8 5,6;7,8 5,6;7,8"},
        {zoneBody("Z", {kShapeOne, kShapeTwo}), 1, true, "Z: 3,4"},
        {zoneBody("Z", {kShapeOne}), -5, true, "Z:"},
        {zoneBody("Z", {}), 3, true, "Z:"},
        {zoneBody("Z", {shapeBytes({}), shapeBytes(kOne, 0), shapeBytes({}, 0x101)}), 4, true,
         "Z: - 3,4! -! -!"},
        // Sizes without room for their own header, and one that is no whole number of points.
        {name + u32(3) + u32(0) + u32(1) + u32(7) + u32(1) + kShapeOne, 3, true, "Z: - - 3,4"},
        {name + u32(2) + u32(21) + kShapeOne.substr(4) + "spare" + kShapeTwo, 2, true,
         "Z: 3,4 5,6;7,8"},
        {u32(6) + std::string("a\0b\0c\0", 6) + one, 1, true, "abc: 3,4"},
        {u32(0) + one, 1, true, ": 3,4"},
        {u32(1000) + std::string(1000, 'n') + one, 1, true, n243 + ": 3,4"},
        {u32(244) + n243.substr(1) + "\xC3\xA4" + one, 1, true, n243.substr(1) + ": 3,4"},
        {"", 2, false, "old: . ."}, // a name that cannot be read replaces none
        {"\x02", 2, false, "old: . ."},
        {u32(50) + "Z", 2, false, "old: . ."},
        {u32(0xFFFFFFFF) + std::string(90, 'Z'), 2, false, "old: . ."},
        {u32(1) + u32(0xFFFFFFFF), 2, false, ": . ."},
        {u32(1) + '\0' + u32(0xFFFFFFFF), 2, false, ": . ."},
        {name + "abc", 2, false, "Z: . ."},
        {name + u32(0xFFFFFFFF) + kShapeOne, 3, false, "Z: 3,4 3,4 3,4"},
        {name + u32(2) + kShapeOne + kShapeTwo.substr(0, 23), 3, false, "Z: 3,4 3,4 3,4"},
        {name + u32(2) + kShapeOne + u32(0xFFFFFFFF) + u32(1), 3, false, "Z: 3,4 3,4 3,4"},
    };
    RecordingCanvas canvas;
    for (const Case& c : cases) {
        const auto zone = zone::Zone::create(7); // entries from before are no part of the result
        zone->setName("old");
        zone->addPoint(0, 9, 9);
        zone->draw(0, canvas, 0, 0);
        EXPECT_EQ(zone->read(asBytes(c.body), c.frames), c.complete) << c.shown;
        EXPECT_EQ(shown(*zone), c.shown);
        EXPECT_EQ(zone->shape(0) ? zone->shape(0)->centerX : 0, 0) << "not drawn yet";
    }
    zone::setZoneView({{1280, 720}, {1280, 0}});
    const auto zone = zone::Zone::create(0);
    EXPECT_FALSE(zone->read(asBytes(zoneBody("Z", {kShapeOne})), 2)) << "there is no scale";
    EXPECT_EQ(shown(*zone), "Z: . .");
}

TEST_F(ZoneReadTest, ChunksAreWalkedByTheirStatedSizes) {
    const std::string a = zoneBytes("A", {kShapeOne, kShapeTwo});
    const std::string b = zoneBytes("B", {kShapeTwo, kShapeOne});
    const std::string nameless = namelessBytes({kShapeTwo, kShapeOne});
    const std::string unstated = u32(1) + u32(2) + kShapeTwo + kShapeOne;
    const std::string other = chunkBytes(0x12345678, std::string(40'000, 'u'), 40'000);
    // The count's first byte is zero, as a name's would be; read so, even the rest passes for a
    // zone of one frame, that ends too soon.
    const std::string zero(256 * 8, '\0');
    const std::string many = chunkBytes(zone::kZoneTag, u32(1) + u32(256) + zero, 9 + 256 * 8);
    const auto zoneChunk = [](const std::string& body) {
        return chunkBytes(zone::kZoneTag, body, body.size());
    };
    const std::string shownA = "A: 3,4 5,6;7,8";
    const std::string shownB = "B: 5,6;7,8 3,4";
    const std::string rest = shownB.substr(1);
    struct Case {
        std::string binary;
        std::string shown;
    };
    const Case cases[]{
        {a + other + b, shownA + " | " + shownB},
        {other + other + "ENOZ123", ""},
        {chunkBytes(1, "", 0) + a, shownA},
        {a + nameless + b, shownA + " | " + rest + " | " + shownB},
        {nameless + nameless, rest + " | " + rest},
        {zoneBytes("", {kShapeTwo, kShapeOne}) + b, rest + " | " + shownB},
        {zoneChunk(unstated) + b, rest + " | " + shownB},
        {many + b, ": -! -! | " + shownB},
        {zoneChunk(zoneBody("A", {kShapeOne, kShapeTwo}) + "spare") + b, shownA + " | " + shownB},
        {zoneChunk(u32(0xFFFF) + "x") + zoneChunk("") + b, ": . . | : . . | " + shownB},
        {chunkBytes(zone::kZoneTag, "", 0xFFFFFFFF) + b, ": . ."},
        {chunkBytes(7, "", 0xFFFFFFFF) + b, ""},
    };
    for (const Case& c : cases) {
        const auto manager = load(c.binary, 2);
        ASSERT_TRUE(manager) << c.shown;
        EXPECT_EQ(shownAll(*manager), c.shown);
        EXPECT_EQ(manager->currentZone, manager->zoneCount() - 1);
    }
    file("clip-ZoneInfo.xml") = infoBytes({"one", "two"});
    EXPECT_EQ(shownAll(*load(a + b + b, 2)), shownA + " | " + shownB + " | " + shownB);
    const auto fewer = load(a, 2);
    EXPECT_EQ(shownAll(*fewer), shownA + " | two: . .") << "so that it can be edited";
    EXPECT_EQ(fewer->currentZone, 0);
    EXPECT_EQ(m_log.errors(), Lines{});
}

TEST_F(ZoneReadTest, TheInformationFileIsReadByElementNames) {
    std::string nested;
    for (int i = 0; i < 100'000; ++i) {
        nested += "<Zone>";
    }
    struct Case {
        std::string xml;
        platform::Size size;
        std::string zones;
        Lines messages;
    };
    const std::string invalid = "convertStringToInt: Error invalid stoi argument";
    const std::string tooLarge = "convertStringToInt: Error stoi argument out of range";
    const std::string unknown = "Unknown zone node type";
    const Case cases[]{
        {"", {}, "", {}},
        {"<ZoneInfo><Zone>", {}, "", {}},
        {nested, {}, "", {}},
        {"<a><![CDATA[", {}, "", {}},
        {"<?xml version=\"1.0\"?><Z><VideoWidth>5</VideoWidth></Z>", {}, "", {}},
        {"<Any><VideoHeight>9</VideoHeight><X/><VideoWidth> 7x</VideoWidth></Any>", {7, 9}, "", {}},
        {"<Z><VideoWidth>abc</VideoWidth><VideoHeight/></Z>", {}, "", {invalid}},
        {"<Z><VideoWidth>99999999999</VideoWidth></Z>", {}, "", {tooLarge}},
        {"<Z><Zone><Name>A&B</Name></Zone><Zone/><Zone><X/><Name>B</Name><Y/></Zone></Z>",
         {},
         "A&B: . | : . | B: .",
         {unknown, unknown}},
        {"<Z><Zone><Name>A</Name><Name><b>x</b></Name></Zone></Z>", {}, ": .", {}},
        {"<Z><Zone><Name>" + std::string(300, 'n') + "</Name></Zone></Z>",
         {},
         std::string(243, 'n') + ": .",
         {}},
    };
    for (const Case& c : cases) {
        file("clip-ZoneInfo.xml") = c.xml;
        const auto manager = zone::ZoneManager::create("clip", 1, false);
        ASSERT_TRUE(manager) << c.xml;
        EXPECT_EQ((platform::Size{manager->videoWidth, manager->videoHeight}), c.size) << c.xml;
        EXPECT_EQ(shownAll(*manager), c.zones);
        EXPECT_EQ(m_log.newErrors(), c.messages) << c.xml;
        EXPECT_EQ(manager->currentZone, -1);
    }
}

TEST_F(ZoneReadTest, CreationFailsWithItsMessage) {
    EXPECT_FALSE(zone::ZoneManager::create("", 1, false));
    EXPECT_TRUE(zone::ZoneManager::create("clip", 1, false)) << "a video without zones is normal";
    EXPECT_FALSE(zone::ZoneManager::create("clip", 1, true)) << "no binary file";
    EXPECT_FALSE(load("", 1));
    m_files.failOn("read", 5);
    EXPECT_FALSE(load(zoneBytes("Z", {kShapeOne}), 1));
    m_files.heal();
    EXPECT_EQ(m_log.newErrors(), Lines(3, "Unable to load zone binary"));
    EXPECT_FALSE(load("E", 1) || load("ENOZENO", 1));
    EXPECT_EQ(m_log.newErrors(), Lines(2, "Unable to read zone binary"));
    EXPECT_TRUE(load("ENOZENOZ", 1));
    file("clip-ZoneInfo.xml") = "</ZoneInfo>"; // no node and no error of the parser
    EXPECT_FALSE(load(zoneBytes("Z", {kShapeOne}), 1));
    EXPECT_EQ(m_log.newErrors(), Lines{"Zone info file is corrupt"});
}

} // namespace
} // namespace zone_tests
