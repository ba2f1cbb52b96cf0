#include "zone/ShapeRecord.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

namespace zone {
namespace {

using platform::Point;

static_assert(std::endian::native == std::endian::little, "words are copied as they lie");
static_assert(sizeof(Point) == kPointSize);

constexpr std::size_t kBufferSize = std::size_t{256} * 1024;
constexpr std::size_t kPointsAtOnce = 64;

/// `value` * `factor`, rounded as the files always were: one half up, then toward zero. Written
/// without branches so that compilers turn loops over it into vector code.
int scaled(int value, float factor) {
    constexpr float kBelow = -2147483648.0F; // the lowest int
    constexpr float kAbove = 2147483648.0F;  // one past the highest
    constexpr float kLast = 2147483520.0F;   // the highest float below it
    const float result = static_cast<float>(value) * factor + 0.5F;
    const int whole = static_cast<int>(std::min(std::max(result, kBelow), kLast));
    return result >= kAbove ? std::numeric_limits<int>::max() : whole;
}

void scalePoints(const Point* from, Point* to, std::size_t count, Scale scale) {
    for (std::size_t i = 0; i < count; ++i) {
        to[i].x = scaled(from[i].x, scale.x);
        to[i].y = scaled(from[i].y, scale.y);
    }
}

} // namespace

std::uint32_t loadU32(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

std::optional<ShapeRecord> findShapeRecord(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kShapeHeaderSize)
        return std::nullopt;
    const std::size_t stated = loadU32(bytes.data());
    const bool active = loadU32(bytes.data() + 4) == 1;
    if (stated < kShapeHeaderSize)
        return ShapeRecord{kShapeHeaderSize, active, {}};
    if (stated > bytes.size())
        return std::nullopt;
    const std::size_t count = (stated - kShapeHeaderSize) / kPointSize;
    return ShapeRecord{stated, active, bytes.subspan(kShapeHeaderSize, count * kPointSize)};
}

void appendPoints(const ShapeRecord& record, Scale scale, std::vector<Point>& points) {
    std::array<Point, kPointsAtOnce> piece;
    const std::size_t count = record.pointCount();
    for (std::size_t done = 0; done < count;) {
        const std::size_t now = std::min(count - done, piece.size());
        std::memcpy(piece.data(), record.points.data() + done * kPointSize, now * kPointSize);
        scalePoints(piece.data(), piece.data(), now, scale);
        points.insert(points.end(), piece.data(), piece.data() + now);
        done += now;
    }
}

RecordWriter::RecordWriter(core::File& file, Scale scale)
    : m_file(file), m_inverse{1.0F / scale.x, 1.0F / scale.y}, m_buffer(kBufferSize) {}

void RecordWriter::bytes(std::span<const std::uint8_t> data) {
    while (!data.empty()) {
        if (room() == 0)
            flush();
        const std::size_t now = std::min(room(), data.size());
        std::memcpy(m_buffer.data() + m_used, data.data(), now);
        m_used += now;
        data = data.subspan(now);
    }
}

void RecordWriter::u32(std::uint32_t value) {
    std::array<std::uint8_t, sizeof value> raw;
    std::memcpy(raw.data(), &value, sizeof value);
    bytes(raw);
}

void RecordWriter::shape(bool active, std::span<const Point> points) {
    u32(static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * points.size()));
    u32(active ? 1 : 0);
    std::array<Point, kPointsAtOnce> piece;
    while (!points.empty()) {
        const std::size_t now = std::min(points.size(), piece.size());
        scalePoints(points.data(), piece.data(), now, m_inverse);
        bytes({reinterpret_cast<const std::uint8_t*>(piece.data()), now * kPointSize});
        points = points.subspan(now);
    }
}

void RecordWriter::flush() {
    m_good = m_good && (m_used == 0 || m_file.write(m_buffer.data(), m_used));
    m_used = 0;
}

bool RecordWriter::finish() {
    flush();
    return m_good;
}

} // namespace zone
