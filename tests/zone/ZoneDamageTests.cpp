#include <random>

#include "core/Services.h"
#include "tests/support/MemoryFileSystem.h"
#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

class ZoneDamageTest : public ZoneTest {
protected:
    static constexpr int kFrames = 4;

    std::shared_ptr<zone::ZoneManager> load(const std::string& binary, int frameCount) {
        m_files.files["/home/clip-ZoneInfo.bin"] = binary;
        return zone::ZoneManager::create("clip", frameCount, true);
    }

    /// Whatever was read can be edited, drawn, saved and loaded again without a loss.
    void expectUsable(const std::shared_ptr<zone::ZoneManager>& manager) {
        zone::setCurrentZoneManager(manager);
        RecordingCanvas canvas;
        for (int zone = 0; zone < manager->zoneCount(); ++zone) {
            ASSERT_EQ(manager->zone(zone)->frameCount(), kFrames);
            manager->draw(zone, 0, canvas, 0, 0);
            manager->addPoint(zone, kFrames - 1, 5, 5);
            manager->moveSelectedPoint(zone, 0, 6, 6);
            manager->deletePoint(zone, 1, 6, 6);
        }
        ASSERT_TRUE(manager->saveAs("again"));
        ASSERT_EQ(manager->lastSaveFailure(), "");
        const auto again = zone::ZoneManager::create("again", kFrames, true);
        ASSERT_EQ(again != nullptr, manager->zoneCount() > 0);
        if (again) {
            EXPECT_EQ(again->zoneCount(), manager->zoneCount());
        }
    }

    support::MemoryFileSystem m_files;
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    const std::vector<std::vector<Points>> m_frames{
        {{{1, 2}, {3, 4}}, {{5, 6}}, {}, {{7, 8}}},
        {{{9, 10}}, {{11, 12}}, {{13, 14}, {15, 16}}, {{17, 18}}},
        {{{19, 20}}, {{19, 20}}, {{21, 22}}, {{21, 22}, {23, 24}, {25, 26}}}};

    std::vector<std::string> shapesOf(std::size_t zone) const {
        std::vector<std::string> shapes;
        for (const Points& points : m_frames[zone]) {
            shapes.push_back(shapeBytes(points));
        }
        return shapes;
    }
    const std::string m_binary =
        zoneBytes("First", shapesOf(0)) + namelessBytes(shapesOf(1)) + zoneBytes("3", shapesOf(2));
};

TEST_F(ZoneDamageTest, AFileCutAnywhereKeepsWhatStandsBeforeTheCut) {
    for (std::size_t size = 1; size <= m_binary.size(); ++size) {
        const auto manager = load(m_binary.substr(0, size), kFrames);
        ASSERT_EQ(manager != nullptr, size >= 8) << size;
        if (!manager) {
            continue;
        }
        std::size_t start = 0; // of the zone's chunk
        for (std::size_t index = 0; index < m_frames.size() && start + 8 <= size; ++index) {
            const auto zone = manager->zone(static_cast<int>(index));
            ASSERT_TRUE(zone) << size;
            const std::vector<std::string> shapes = shapesOf(index);
            const std::string head = index == 0 ? "First" : index == 1 ? "" : "3";
            std::size_t end = start + 12 + head.size() + (head.empty() ? 0 : 1) + 4;
            Points last;
            for (std::size_t frame = 0; frame < kFrames; ++frame) {
                end += shapes[frame].size();
                if (end <= size) {
                    last = m_frames[index][frame];
                }
                EXPECT_EQ(pointsOf(*zone, static_cast<int>(frame)), last) << size << ": " << index;
            }
            start = end;
        }
        expectUsable(manager);
    }
}

TEST_F(ZoneDamageTest, AnyBytesLoadOrAreRefused) {
    std::mt19937 random(7);
    for (int round = 0; round < 1500; ++round) {
        std::string bytes = m_binary;
        const auto flips = 1 + random() % 4;
        for (unsigned flip = 0; flip < flips; ++flip) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        if (random() % 4 == 0) {
            bytes.erase(random() % bytes.size(), random() % 20);
        }
        if (const auto manager = load(bytes, kFrames)) {
            expectUsable(manager);
        }
    }
}

TEST_F(ZoneDamageTest, HugeCountsAreLimitedByTheBytesThatAreThere) {
    const std::string name = u32(2) + std::string("Z\0", 2);
    const std::string records[]{
        name + u32(0xFFFFFFFF),
        name + u32(0x7FFFFFFF) + shapeBytes({{1, 1}}),
        name + u32(0xFFFFFFFF) + u32(0xFFFFFFFF) + u32(1),
        name + u32(2) + u32(0x80000000) + u32(1) + u32(0),
        u32(0xFFFFFFFF),
        u32(1) + u32(0xFFFFFFFF),
        u32(1) + std::string(1, '\0') + u32(0xFFFFFFFF),
    };
    for (const std::string& record : records) {
        for (const std::uint32_t size : {0U, 8U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
            const auto manager = load(chunkBytes(zone::kZoneTag, record, size), kFrames);
            ASSERT_TRUE(manager);
            expectUsable(manager);
        }
    }
}

TEST_F(ZoneDamageTest, ALargeShapeCopiedToAllFramesIsHeldOnce) {
    // Held apart, the copies would take 34 terabytes.
    constexpr int kMany = 0x7FFFFFFF;
    const auto manager =
        load(zoneBytes("Z", {shapeBytes({{1, 1}}), shapeBytes(Points(2000, {2, 2}))}), kMany);
    ASSERT_TRUE(manager);
    EXPECT_EQ(manager->zone(0)->frameCount(), kMany);
    EXPECT_EQ(pointsOf(*manager->zone(0), kMany - 1).size(), 2000U);
    EXPECT_EQ(pointsOf(*manager->zone(0), 0).size(), 1U);
}

TEST_F(ZoneDamageTest, ManyChunksAndManyEmptyRecordsAreReadAtOnce) {
    std::string chunks;
    for (int i = 0; i < 20'000; ++i) {
        chunks += chunkBytes(zone::kZoneTag, "");
    }
    const auto zones = load(chunks, kFrames);
    ASSERT_TRUE(zones);
    EXPECT_EQ(zones->zoneCount(), 20'000);
    const auto frames =
        load(zoneBytes("Z", std::vector<std::string>(50'000, u32(0) + u32(1))), 60'000);
    ASSERT_TRUE(frames);
    EXPECT_EQ(frames->zone(0)->frameCount(), 60'000);
}

TEST_F(ZoneDamageTest, NestedNonsenseInTheInformationFileGivesNoZones) {
    std::string nested;
    for (int i = 0; i < 100'000; ++i) {
        nested += "<Zone>";
    }
    for (const std::string& text : {nested, std::string("<a><![CDATA["), std::string(100, '\0'),
                                    std::string("\xEF\xBB\xBF"), std::string("<!--")}) {
        m_files.files["/home/clip-ZoneInfo.xml"] = text;
        const auto manager = zone::ZoneManager::create("clip", kFrames, false);
        ASSERT_TRUE(manager);
        EXPECT_EQ(manager->zoneCount(), 0);
    }
}

} // namespace
} // namespace zone_tests
