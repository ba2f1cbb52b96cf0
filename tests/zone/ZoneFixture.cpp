#include "tests/zone/ZoneFixture.h"

#include <bit>

#include "zone/ZoneView.h"

namespace zone_tests {

std::string u32(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

std::string shapeBytes(const Points& videoPixels, std::uint32_t active) {
    std::string bytes = u32(8 + 8 * static_cast<std::uint32_t>(videoPixels.size())) + u32(active);
    for (const platform::Point& point : videoPixels) {
        bytes +=
            u32(std::bit_cast<std::uint32_t>(point.x)) + u32(std::bit_cast<std::uint32_t>(point.y));
    }
    return bytes;
}

std::string chunkBytes(std::uint32_t tag, const std::string& body) {
    return chunkBytes(tag, body, static_cast<std::uint32_t>(body.size()));
}

std::string chunkBytes(std::uint32_t tag, const std::string& body, std::uint32_t size) {
    return u32(tag) + u32(size) + body;
}

std::string zoneBody(const std::string& name, const std::vector<std::string>& shapes) {
    std::string body = u32(static_cast<std::uint32_t>(name.size()) + 1) + name + '\0' +
                       u32(static_cast<std::uint32_t>(shapes.size()));
    for (const std::string& shape : shapes) {
        body += shape;
    }
    return body;
}

std::string zoneBytes(const std::string& name, const std::vector<std::string>& shapes) {
    return chunkBytes(zone::kZoneTag, zoneBody(name, shapes));
}

std::string namelessBytes(const std::vector<std::string>& shapes) {
    std::string body = zoneBody("", shapes);
    const auto size = static_cast<std::uint32_t>(body.size());
    return chunkBytes(zone::kZoneTag, body.erase(4, 1), size);
}

std::span<const std::uint8_t> asBytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

Points pointsOf(const zone::Zone& zone, int frame) {
    const auto shape = zone.shape(frame);
    return shape ? shape->points : Points{};
}

std::shared_ptr<zone::Zone> makeZone(const std::vector<Points>& frames) {
    std::vector<std::string> shapes;
    for (const Points& points : frames) {
        shapes.push_back(shapeBytes(points));
    }
    auto zone = zone::Zone::create(0);
    EXPECT_TRUE(zone->read(asBytes(zoneBody("Z", shapes)), zone::kStoredFrameCount));
    return zone;
}

ZoneTest::ZoneTest() {
    zone::setZoneView({{1280, 720}, {1280, 720}});
    m_manager->videoWidth = 1280;
    m_manager->videoHeight = 720;
    zone::setCurrentZoneManager(m_manager);
}

ZoneTest::~ZoneTest() {
    zone::setCurrentZoneManager(nullptr);
    zone::clearZoneView();
}

Lines ZoneTest::newErrors() {
    Lines fresh = m_log->errors();
    if (!fresh.empty()) {
        m_log.reset(); // puts back what this one hides
        m_log.emplace();
    }
    return fresh;
}

std::shared_ptr<zone::ZoneManager> ZoneTest::load(const std::string& binary, int frameCount) {
    support::writeBytes("clip-ZoneInfo.bin", binary);
    return zone::ZoneManager::create("clip", frameCount, true);
}

} // namespace zone_tests
