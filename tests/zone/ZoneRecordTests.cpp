#include "core/File.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/Zone.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

const Points kOne{{3, 4}};
const Points kTwo{{5, 6}, {7, 8}};

class ZoneRecordTest : public ZoneTest {
protected:
    static std::string written(const zone::Zone& zone, bool expected = true) {
        core::File file;
        EXPECT_TRUE(file.open("zone.bin", "wb"));
        EXPECT_EQ(zone.write(file), expected);
        EXPECT_TRUE(file.close());
        return support::readBytes("zone.bin");
    }

    static std::vector<Points> frames(const zone::Zone& zone) {
        std::vector<Points> all;
        for (int frame = 0; frame < zone.frameCount(); ++frame) {
            all.push_back(pointsOf(zone, frame));
        }
        return all;
    }
};

TEST_F(ZoneRecordTest, ARecordHasItsBytesInOrder) {
    auto zone = makeZone({kOne, kOne, kTwo});
    zone->setName("Door");
    m_manager->progressChanges = false;
    zone->setActive(1, false);
    const std::string body = u32(5) + std::string("Door\0", 5) + u32(3) + u32(16) + u32(1) +
                             u32(3) + u32(4) + u32(16) + u32(0) + u32(3) + u32(4) + u32(24) +
                             u32(1) + u32(5) + u32(6) + u32(7) + u32(8);
    EXPECT_EQ(written(*zone), "ENOZ" + u32(static_cast<std::uint32_t>(body.size())) + body);
}

TEST_F(ZoneRecordTest, LargeRecordsPassTheBufferUnchanged) {
    std::vector<std::string> shapes;
    std::vector<Points> points;
    for (int frame = 0; frame < 40; ++frame) {
        points.emplace_back(static_cast<std::size_t>(frame * frame),
                            platform::Point{frame, 3 * frame});
        shapes.push_back(shapeBytes(points.back()));
    }
    points.emplace_back(100'000, platform::Point{9, 9});
    shapes.push_back(shapeBytes(points.back()));
    auto zone = zone::Zone::create(0);
    ASSERT_TRUE(zone->read(asBytes(zoneBody("Z", shapes)), zone::kStoredFrameCount));
    EXPECT_EQ(frames(*zone), points);
    EXPECT_EQ(written(*zone), zoneBytes("Z", shapes));
}

TEST_F(ZoneRecordTest, FramesAreBroughtToTheVideosCount) {
    struct Case {
        std::vector<Points> stored;
        int frameCount;
        std::vector<Points> kept;
    };
    const Case cases[]{
        {{kOne, kTwo}, 5, {kOne, kTwo, kTwo, kTwo, kTwo}},
        {{kOne, kTwo, kOne}, 2, {kOne, kTwo}},
        {{kOne, kTwo}, 2, {kOne, kTwo}},
        {{kOne}, 0, {}},
        {{kOne}, -5, {}},
        {{}, 3, {}},
        {{kOne, kTwo}, zone::kStoredFrameCount, {kOne, kTwo}},
    };
    for (const Case& c : cases) {
        std::vector<std::string> shapes;
        for (const Points& points : c.stored) {
            shapes.push_back(shapeBytes(points));
        }
        auto zone = zone::Zone::create(7); // entries from before are no part of the result
        zone->setName("old");
        EXPECT_TRUE(zone->read(asBytes(zoneBody("new", shapes)), c.frameCount));
        EXPECT_EQ(frames(*zone), c.kept) << c.frameCount;
        EXPECT_EQ(zone->name(), "new");
    }
    auto zone = zone::Zone::create(0);
    EXPECT_TRUE(zone->read(asBytes(zoneBody("Z", {shapeBytes(kTwo, 0)})), 3));
    EXPECT_FALSE(zone->isActive(2)) << "copies take the flag along";
    EXPECT_EQ(zone->shape(2)->recordSize, 24U);
}

TEST_F(ZoneRecordTest, ADamagedRecordKeepsWhatCameBefore) {
    const std::string start = u32(2) + std::string("Z\0", 2);
    const std::vector<Points> none(3);
    const std::vector<Points> ones(3, kOne);
    struct Case {
        const char* what;
        std::string body;
        std::vector<Points> kept;
    };
    const Case cases[]{
        {"no bytes", "", none},
        {"half a name length", "\x02", none},
        {"name longer than the record", u32(50) + "Z", none},
        {"name length beyond 2^31", u32(0xFFFFFFFF) + std::string(90, 'Z'), none},
        {"no frame count", start + "abc", none},
        {"count without records", start + u32(2), none},
        {"huge count", start + u32(0xFFFFFFFF) + shapeBytes(kOne), ones},
        {"second record cut", start + u32(2) + shapeBytes(kOne) + shapeBytes(kTwo).substr(0, 23),
         ones},
        {"second record larger than the rest",
         start + u32(2) + shapeBytes(kOne) + u32(4000) + u32(1), ones},
    };
    for (const Case& c : cases) {
        auto zone = zone::Zone::create(0);
        EXPECT_FALSE(zone->read(asBytes(c.body), 3)) << c.what;
        EXPECT_EQ(frames(*zone), c.kept) << c.what;
    }
    auto zone = zone::Zone::create(0);
    zone->setName("from the list");
    EXPECT_FALSE(zone->read(asBytes(u32(50) + "Z"), 3));
    EXPECT_EQ(zone->name(), "from the list") << "a name that cannot be read replaces none";
}

TEST_F(ZoneRecordTest, BytesOfANameBecomeTextThatFits) {
    const std::string shapes = u32(1) + shapeBytes(kOne);
    auto zone = zone::Zone::create(0);
    EXPECT_TRUE(zone->read(asBytes(u32(6) + std::string("a\0b\0c\0", 6) + shapes), 1));
    EXPECT_EQ(zone->name(), "abc");
    EXPECT_TRUE(zone->read(asBytes(u32(0) + shapes), 1));
    EXPECT_EQ(zone->name(), "");
    EXPECT_EQ(frames(*zone), std::vector<Points>{kOne});
    EXPECT_TRUE(zone->read(asBytes(u32(1000) + std::string(1000, 'n') + shapes), 1));
    EXPECT_EQ(zone->name(), std::string(243, 'n'));
    EXPECT_EQ(frames(*zone), std::vector<Points>{kOne});
}

TEST_F(ZoneRecordTest, ANamelessRecordIsReadWithAndWithoutItsZeroByte) {
    const std::string records = u32(2) + shapeBytes(kOne) + shapeBytes(kTwo);
    struct Case {
        std::string body;
        std::size_t stated;
        bool complete, endsOneEarly;
    };
    const Case cases[]{
        {u32(1) + records, 4 + 1 + records.size(), true, true},       // as it is written
        {u32(1) + records + "E", 4 + 1 + records.size(), true, true}, // the next chunk's byte
        {u32(1) + '\0' + records, 4 + 1 + records.size(), true, false},
        {u32(1) + records, 4 + records.size(), true, false},
    };
    for (const Case& c : cases) {
        auto zone = zone::Zone::create(0);
        zone->setName("old");
        const zone::ZoneReadResult result = zone->read(asBytes(c.body), c.stated, 2);
        EXPECT_EQ(result.complete, c.complete);
        EXPECT_EQ(result.endsOneEarly, c.endsOneEarly);
        EXPECT_EQ(frames(*zone), (std::vector<Points>{kOne, kTwo}));
        EXPECT_EQ(zone->name(), "");
    }
    // 256 frames: the count's first byte is zero as a name's would be. Empty shapes of size 0 let
    // even the rest pass for a zone, of one frame, that ends too soon.
    for (const std::string& shape : {shapeBytes(kOne), u32(0) + u32(0)}) {
        const std::string bytes = namelessBytes(std::vector<std::string>(256, shape));
        auto zone = zone::Zone::create(0);
        EXPECT_TRUE(zone->read(asBytes(bytes.substr(8)), bytes.size() - 7, 256).endsOneEarly);
        EXPECT_EQ(frames(*zone), std::vector<Points>(256, shape.size() > 8 ? kOne : Points{}));
        EXPECT_EQ(zone->isActive(255), shape.size() > 8);
    }
}

TEST_F(ZoneRecordTest, WithoutAScaleFramesComeEmptyAndNothingIsWritten) {
    zone::clearZoneView();
    auto zone = zone::Zone::create(0);
    EXPECT_FALSE(zone->read(asBytes(zoneBody("Z", {shapeBytes(kOne)})), 2));
    EXPECT_EQ(zone->name(), "Z");
    EXPECT_EQ(zone->frameCount(), 2);
    EXPECT_EQ(zone->shape(0), nullptr);
    EXPECT_EQ(written(*zone, false), "");
}

TEST_F(ZoneRecordTest, ARecordBeyondItsSizeFieldIsRefused) {
    auto zone = makeZone({Points(70, {1, 1})});
    ASSERT_TRUE(zone->read(asBytes(zoneBody("Z", {shapeBytes(Points(70, {1, 1}))})), 8'000'000));
    EXPECT_EQ(written(*zone, false), "");
}

} // namespace
} // namespace zone_tests
