#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

class ZoneDamageTest : public ZoneTest {
protected:
    static constexpr int kFrames = 4;

    const std::string m_one = shapeBytes({{1, 2}});
    const std::string m_two = shapeBytes({{3, 4}, {5, 6}});
    const Lines m_shapes{m_one, m_two, shapeBytes({}), m_one};
    const std::string m_binary =
        zoneBytes("First", m_shapes) + namelessBytes(m_shapes) + zoneBytes("3", m_shapes);
};

TEST_F(ZoneDamageTest, AFileCutAnywhereKeepsWhatStandsBeforeTheCut) {
    constexpr std::size_t kHeads[]{22, 16, 18}; // bytes of a zone before its first shape
    const char* const words[]{" 1,2", " 3,4;5,6", " -", " 1,2"};
    for (std::size_t size = 8; size <= m_binary.size(); ++size) {
        const auto manager = load(m_binary.substr(0, size), kFrames);
        ASSERT_TRUE(manager) << size;
        std::size_t start = 0; // of the zone's chunk
        for (int zone = 0; zone < 3 && start + 8 <= size; ++zone) {
            start += kHeads[zone];
            std::string expected;
            const char* last = " .";
            for (std::size_t frame = 0; frame < kFrames; ++frame) {
                start += m_shapes[frame].size();
                last = start <= size ? words[frame] : last;
                expected += last;
            }
            ASSERT_TRUE(manager->zone(zone)) << size;
            const std::string text = shown(*manager->zone(zone));
            EXPECT_EQ(text.substr(text.find(':') + 1), expected) << size;
        }
    }
}

TEST_F(ZoneDamageTest, TwoBillionFramesAreHeldAndEditedAtOnce) {
    // Held apart, the copies of the last shape would take 34 terabytes.
    constexpr int kMany = 0x7FFFFFFF;
    const auto manager = load(zoneBytes("Z", {m_one, shapeBytes(Points(2000, {2, 2}))}), kMany);
    ASSERT_TRUE(manager);
    zone::Zone& zone = *manager->zone(0);
    ASSERT_EQ(zone.frameCount(), kMany);
    zone.addPoint(0, 9, 9);
    zone.moveSelectedPoint(kMany - 1, 20, 30);
    zone.setActive(1'000'000, false);
    EXPECT_EQ(zone.shape(0)->points, (Points{{1, 2}, {9, 9}}));
    EXPECT_EQ(zone.shape(kMany - 2)->points.back(), (platform::Point{9, 9}));
    EXPECT_EQ(zone.shape(kMany - 1)->points[1], (platform::Point{20, 30}));
    EXPECT_TRUE(zone.isActive(999'999));
    EXPECT_FALSE(zone.isActive(kMany - 1));
}

TEST_F(ZoneDamageTest, ManyChunksManyEmptyRecordsAndLongOnesPassEveryBuffer) {
    std::string chunks;
    for (int i = 0; i < 20'000; ++i) {
        chunks += chunkBytes(zone::kZoneTag, "", 0);
    }
    EXPECT_EQ(load(chunks, kFrames)->zoneCount(), 20'000);
    Lines shapes(50'000, u32(0) + u32(1));
    EXPECT_EQ(load(zoneBytes("Z", shapes), 60'000)->zone(0)->frameCount(), 60'000);
    shapes = {shapeBytes(Points(100'000, {9, 8}))};
    for (int frame = 0; frame < 40; ++frame) {
        shapes.push_back(shapeBytes(Points(static_cast<std::size_t>(frame * frame), {frame, 3})));
    }
    const std::string binary = zoneBytes("Z", shapes);
    EXPECT_TRUE(load(binary, zone::kStoredFrameCount)->saveAs("again"));
    EXPECT_TRUE(file("again-ZoneInfo.bin") == binary) << "megabytes are not worth printing";
}

} // namespace
} // namespace zone_tests
