#include "tests/zone/ZoneFixture.h"

#include <bit>
#include <optional>

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

std::string chunkBytes(std::uint32_t tag, const std::string& body, std::size_t size) {
    return u32(tag) + u32(static_cast<std::uint32_t>(size)) + body;
}

std::string zoneBody(const std::string& name, const Lines& shapes) {
    std::string body = u32(static_cast<std::uint32_t>(name.size()) + 1) + name + '\0' +
                       u32(static_cast<std::uint32_t>(shapes.size()));
    for (const std::string& shape : shapes) {
        body += shape;
    }
    return body;
}

std::string zoneBytes(const std::string& name, const Lines& shapes) {
    const std::string body = zoneBody(name, shapes);
    return chunkBytes(zone::kZoneTag, body, body.size());
}

std::string namelessBytes(const Lines& shapes) {
    return zoneBytes("", shapes).erase(12, 1);
}

std::string infoBytes(const Lines& names) {
    std::string text = "<ZoneInfo>\r\n\t<VideoWidth>1280</VideoWidth>\r\n"
                       "\t<VideoHeight>720</VideoHeight>\r\n";
    for (const std::string& name : names) {
        text += "\t<Zone>\r\n\t\t<Name>" + name + "</Name>\r\n\t</Zone>\r\n";
    }
    return text + "</ZoneInfo>\r\n";
}

std::span<const std::uint8_t> asBytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string shown(const zone::ZoneShape* shape) {
    std::string text = !shape ? "." : shape->points.empty() ? "-" : "";
    for (const platform::Point& point : shape ? shape->points : Points{}) {
        text += (text.empty() ? "" : ";") + std::to_string(point.x) + "," + std::to_string(point.y);
    }
    return text + (shape && !shape->active ? "!" : "");
}

std::string shown(const zone::Zone& zone) {
    std::string text = zone.name() + ":";
    for (int frame = 0; frame < zone.frameCount(); ++frame) {
        const std::optional<zone::ZoneShape> shape = zone.shape(frame);
        text += " " + shown(shape ? &*shape : nullptr);
    }
    return text;
}

ZoneTest::ZoneTest() {
    m_manager->videoWidth = 1280;
    m_manager->videoHeight = 720;
    m_manager->scale = zone::Scale{};
}

std::shared_ptr<zone::ZoneManager> ZoneTest::load(const std::string& binary, int frameCount) {
    file("clip-ZoneInfo.bin") = binary;
    return zone::ZoneManager::create("clip", frameCount, true, zone::Scale{});
}

} // namespace zone_tests
