// What the zone tests share: bytes of zone files, a view with a scale, a current manager.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Services.h"
#include "platform/Geometry.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/MemoryFileSystem.h"
#include "zone/ZoneManager.h"

namespace zone_tests {

using Lines = std::vector<std::string>;
using Points = std::vector<platform::Point>;

[[nodiscard]] std::string u32(std::uint32_t value);
/// One shape as it stands in a file.
[[nodiscard]] std::string shapeBytes(const Points& videoPixels, std::uint32_t active = 1);
/// A chunk that says it has `size` bytes.
[[nodiscard]] std::string chunkBytes(std::uint32_t tag, const std::string& body, std::size_t size);
/// The body of a zone's chunk, its zero-terminated name first.
[[nodiscard]] std::string zoneBody(const std::string& name, const Lines& shapes);
[[nodiscard]] std::string zoneBytes(const std::string& name, const Lines& shapes);
/// A zone without a name: both sizes count a byte that is not there.
[[nodiscard]] std::string namelessBytes(const Lines& shapes);
/// The information file of a picture area of 1280 x 720.
[[nodiscard]] std::string infoBytes(const Lines& names);

[[nodiscard]] std::span<const std::uint8_t> asBytes(const std::string& text);
/// The points as "3,4;5,6", "-" for none, "." for no shape; "!" behind one that is not active.
[[nodiscard]] std::string shown(const zone::ZoneShape* shape);
/// The name, then the shape of each frame.
[[nodiscard]] std::string shown(const zone::Zone& zone);

/// Files in memory, the log's lines, and a manager of 1280 x 720 with a scale of 1.
class ZoneTest : public ::testing::Test {
protected:
    ZoneTest();

    [[nodiscard]] std::string& file(const std::string& name) {
        return m_disk.files["/home/" + name];
    }
    /// Loads "clip-ZoneInfo.bin" with these bytes.
    std::shared_ptr<zone::ZoneManager> load(const std::string& binary, int frameCount);

    support::MemoryFileSystem m_disk;
    support::FaultyFileSystem m_files{m_disk};
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
    support::LogCapture m_log;
    std::shared_ptr<zone::ZoneManager> m_manager = zone::ZoneManager::createEmpty();
};

} // namespace zone_tests
