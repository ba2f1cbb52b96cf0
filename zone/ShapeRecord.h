// One shape in the zone binary file: a header of two little-endian 32-bit words (record size,
// active) and the points in video pixels. This module's sources only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include "core/File.h"
#include "platform/Geometry.h"
#include "zone/Scale.h"

namespace zone {

inline constexpr std::size_t kShapeHeaderSize = 8;
inline constexpr std::size_t kPointSize = 8;
/// What the 32-bit record size has room for.
inline constexpr std::size_t kMaxPoints = 0x1FFFFFFF - 1;

[[nodiscard]] inline std::uint32_t loadU32(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

/// A record as it lies in a file; points into the bytes it was found in.
struct ShapeRecord {
    std::size_t size = 0; ///< to the next record
    bool active = true;
    std::span<const std::uint8_t> points;

    [[nodiscard]] std::size_t pointCount() const { return points.size() / kPointSize; }
};
/// The record at the start of `bytes`; none when it does not fit into them. A stated size below 8
/// is a shape without points in 8 bytes, as early versions wrote it.
[[nodiscard]] inline std::optional<ShapeRecord>
findShapeRecord(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kShapeHeaderSize) {
        return std::nullopt;
    }
    const std::size_t stated = loadU32(bytes.data());
    const bool active = loadU32(bytes.data() + 4) == 1;
    if (stated < kShapeHeaderSize) {
        return ShapeRecord{kShapeHeaderSize, active, {}};
    }
    if (stated > bytes.size()) {
        return std::nullopt;
    }
    const std::size_t count = (stated - kShapeHeaderSize) / kPointSize;
    return ShapeRecord{stated, active, bytes.subspan(kShapeHeaderSize, count * kPointSize)};
}
/// Stores the record's points at `to`, which has room for them, in display pixels, truncated
/// toward zero after adding one half. Results beyond 32 bits become the nearest 32-bit value.
void convertPoints(const ShapeRecord& record, Scale scale, platform::Point* to);

/// Whether files would hold the same points. `toFile` turns display into video pixels.
[[nodiscard]] bool areStoredAlike(std::span<const platform::Point> a,
                                  std::span<const platform::Point> b, Scale toFile);

/// Writes through a buffer of its own, so that a file of many small records costs few calls.
class RecordWriter {
public:
    /// `file` is not owned. Points are converted by `scale` to video pixels.
    RecordWriter(core::File& file, Scale scale);

    void bytes(std::span<const std::uint8_t> data);
    void u32(std::uint32_t value);
    void shape(bool active, std::span<const platform::Point> points);
    /// Writes out what is left. False when any write failed; nothing is written after the first.
    [[nodiscard]] bool finish();

private:
    [[nodiscard]] std::size_t room() const { return m_buffer.size() - m_used; }
    void flush();

    core::File& m_file;
    Scale m_inverse;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_used = 0;
    bool m_good = true;
};

} // namespace zone
