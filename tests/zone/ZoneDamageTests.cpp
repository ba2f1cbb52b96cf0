#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

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
        zone::LoadReport report;
        for (int zone = 0; zone < 3 && start + 8 <= size; ++zone) {
            start += kHeads[zone];
            std::string expected;
            const char* last = " .";
            std::uint32_t frames = 0;
            for (std::size_t frame = 0; frame < kFrames; ++frame) {
                start += m_shapes[frame].size();
                last = start <= size ? words[frame] : last;
                frames += start <= size ? 1 : 0;
                expected += last;
            }
            ++report.zones;
            report.wholeZones += start <= size ? 1 : 0;
            if (start > size && frames > 0) {
                report.partZones = 1;
                report.partFrames = frames;
                report.storedFrames = kFrames;
            }
            ASSERT_TRUE(manager->zone(zone)) << size;
            const std::string text = shown(*manager->zone(zone));
            EXPECT_EQ(text.substr(text.find(':') + 1), expected) << size;
        }
        report.problem = start == size ? zone::LoadProblem::none : zone::LoadProblem::binaryDamaged;
        EXPECT_EQ(manager->loadReport(), report) << size;
    }
}

TEST_F(ZoneDamageTest, WhatIsWrongWithAPairIsToldWithHowMuchWasRead) {
    using enum zone::LoadProblem;
    using Bytes = std::optional<std::string>; // none: no such file
    const Bytes two = infoBytes({"A", "B"});
    const std::string odd = u32(2) + std::string("Z\0", 2) + u32(2) + u32(21) + m_one.substr(4) +
                            std::string(5, ' ') + m_one;
    const std::string manyFrames = u32(2) + std::string("Z\0", 2) + u32(0xFFFFFFFF) + m_one;
    const auto chunk = [](const std::string& body) {
        return chunkBytes(zone::kZoneTag, body, body.size());
    };
    std::string wide = "<ZoneInfo";
    for (int i = 0; i < 257; ++i) {
        wide += " a" + std::to_string(i) + "=''";
    }
    constexpr const char* kLoad = "Unable to load zone binary";
    constexpr const char* kRead = "Unable to read zone binary";
    const struct {
        Bytes list;
        Bytes binary;
        zone::LoadReport report;
        const char* message = nullptr; ///< with one, plain creation fails
    } cases[] = {
        {{}, {}, {}, kLoad},
        {"", {}, {listDamaged}, kLoad},
        {wide + "/>", {}, {listDamaged}, kLoad},
        {two, {}, {binaryMissing, 2}, kLoad},
        {infoBytes({}), {}, {}, kLoad},
        {infoBytes({}), "", {}, kLoad},
        {two, "", {binaryDamaged, 2}, kLoad},
        {{}, "E", {binaryDamaged}, kRead},
        {two, "ENOZENO", {binaryDamaged, 2}, kRead},
        {"</Z>", m_binary, {listDamaged}, "Zone info file is corrupt"},
        {"<Z>", m_binary, {none, 3, 3}, nullptr},
        {two, m_binary, {none, 3, 3}, nullptr},
        {two, zoneBytes("A", m_shapes), {binaryDamaged, 2, 1}, nullptr},
        {two, m_binary + "rest", {binaryDamaged, 3, 3}, nullptr},
        {{}, m_binary + chunkBytes(7, "foreign", 7), {binaryForeign, 3, 3}, nullptr},
        {{}, m_binary + chunkBytes(7, "foreign", 8), {binaryDamaged, 3, 3}, nullptr},
        {{}, chunk(odd) + m_binary, {binaryDamaged, 4, 3, 1, 2, 2}, nullptr},
        {{}, chunk(zoneBody("A", m_shapes) + "rest"), {binaryDamaged, 1, 0, 1, 4, 4}, nullptr},
        {{}, chunk(manyFrames), {binaryDamaged, 1, 0, 1, 1, 0}, nullptr},
    };
    const auto expect = [this](const zone::LoadReport& report, const char* message) {
        EXPECT_EQ(zone::ZoneManager::createForEditing("clip", kFrames, zone::Scale{})->loadReport(),
                  report);
        EXPECT_EQ(m_log.newErrors(), message ? Lines{message} : Lines{});
        EXPECT_EQ(!zone::ZoneManager::create("clip", kFrames, true, zone::Scale{}),
                  message != nullptr);
        (void)m_log.newErrors();
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        m_disk.files.clear();
        if (c.list) {
            file("clip-ZoneInfo.xml") = *c.list;
        }
        if (c.binary) {
            file("clip-ZoneInfo.bin") = *c.binary;
        }
        expect(c.report, c.message);
        EXPECT_TRUE(zone::ZoneManager::create("clip", 1, false) || c.list == "</Z>");
        (void)m_log.newErrors();
    }
    m_files.failOn("read", 5);
    expect({binaryUnreadable}, kLoad);
    EXPECT_FALSE(zone::ZoneManager::create("", 1, false));
}

TEST_F(ZoneDamageTest, TwoBillionFramesAreHeldAndEditedAtOnce) {
    // Held apart, the copies of the last shape would take 34 terabytes.
    constexpr int kMany = 0x7FFFFFFF;
    const auto manager = load(zoneBytes("Z", {m_one, shapeBytes(Points(2000, {2, 2}))}), kMany);
    ASSERT_TRUE(manager);
    zone::Zone& zone = *manager->zone(0);
    ASSERT_EQ(zone.frameCount(), kMany);
    zone::ZoneEditing editing;
    const zone::EditScope scope{editing};
    zone.addPoint(scope, 0, 9, 9);
    zone.moveSelectedPoint(scope, kMany - 1, 20, 30);
    zone.setActive(scope, 1'000'000, false);
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
