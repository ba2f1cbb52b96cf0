// What the zone tests share: bytes of zone files, a view with a scale, a current manager.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Geometry.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "zone/ZoneManager.h"

namespace zone_tests {

using Lines = std::vector<std::string>;
using Points = std::vector<platform::Point>;

[[nodiscard]] std::string u32(std::uint32_t value);
/// One shape as it stands in a file.
[[nodiscard]] std::string shapeBytes(const Points& videoPixels, std::uint32_t active = 1);
/// Any chunk: tag, size, body. The size is the body's unless given.
[[nodiscard]] std::string chunkBytes(std::uint32_t tag, const std::string& body);
[[nodiscard]] std::string chunkBytes(std::uint32_t tag, const std::string& body,
                                     std::uint32_t size);
/// The body of a zone's chunk, its zero-terminated name first.
[[nodiscard]] std::string zoneBody(const std::string& name, const std::vector<std::string>& shapes);
[[nodiscard]] std::string zoneBytes(const std::string& name,
                                    const std::vector<std::string>& shapes);
/// A zone without a name: both sizes count a byte that is not there.
[[nodiscard]] std::string namelessBytes(const std::vector<std::string>& shapes);
[[nodiscard]] std::span<const std::uint8_t> asBytes(const std::string& text);

/// The points of a frame's shape; none as well for a frame without a shape.
[[nodiscard]] Points pointsOf(const zone::Zone& zone, int frame);
/// A zone with these shapes, one for each frame, in display pixels at scale 1.
[[nodiscard]] std::shared_ptr<zone::Zone> makeZone(const std::vector<Points>& frames);

/// A folder, the log's lines, a view of scale 1 and an area of 1280 x 720.
class ZoneTest : public support::TempFolderTest {
protected:
    ZoneTest();
    ~ZoneTest() override;

    /// Loads "clip-ZoneInfo.bin" with these bytes.
    std::shared_ptr<zone::ZoneManager> load(const std::string& binary, int frameCount);

    /// The error lines since the last call.
    Lines newErrors();

    std::shared_ptr<zone::ZoneManager> m_manager = zone::ZoneManager::createEmpty();

private:
    std::optional<support::LogCapture> m_log{std::in_place};
};

} // namespace zone_tests
