#include "zone/ShapeRecord.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

namespace zone {
namespace {

using platform::Point;

static_assert(std::endian::native == std::endian::little, "words are copied as they lie");
static_assert(sizeof(Point) == kPointSize);

constexpr std::size_t kBufferSize = std::size_t{256} * 1024;
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

int loadInt(const std::uint8_t* from) {
    int value = 0;
    std::memcpy(&value, from, sizeof value);
    return value;
}

void storeInt(int value, std::uint8_t* to) {
    std::memcpy(to, &value, sizeof value);
}

} // namespace

void convertPoints(const ShapeRecord& record, Scale scale, Point* to) {
    const std::uint8_t* from = record.points.data();
    const std::size_t count = record.pointCount();
    for (std::size_t i = 0; i < count; ++i) {
        to[i].x = scaled(loadInt(from + i * kPointSize), scale.x);
        to[i].y = scaled(loadInt(from + i * kPointSize + 4), scale.y);
    }
}

bool areStoredAlike(std::span<const Point> a, std::span<const Point> b, Scale toFile) {
    // The points are mostly the very same; else rounding may still store them alike.
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0 ||
            std::equal(a.begin(), a.end(), b.begin(), [&](const Point& one, const Point& other) {
                return scaled(one.x, toFile.x) == scaled(other.x, toFile.x) &&
                       scaled(one.y, toFile.y) == scaled(other.y, toFile.y);
            }));
}

RecordWriter::RecordWriter(core::File& file, Scale scale)
    : m_file(file), m_inverse{1.0F / scale.x, 1.0F / scale.y}, m_buffer(kBufferSize) {}

void RecordWriter::bytes(std::span<const std::uint8_t> data) {
    while (!data.empty()) {
        if (room() == 0) {
            flush();
        }
        const std::size_t now = std::min(room(), data.size());
        std::memcpy(m_buffer.data() + m_used, data.data(), now);
        m_used += now;
        data = data.subspan(now);
    }
}

void RecordWriter::u32(std::uint32_t value) {
    if (room() < sizeof value) {
        flush();
    }
    std::memcpy(m_buffer.data() + m_used, &value, sizeof value);
    m_used += sizeof value;
}

void RecordWriter::shape(bool active, std::span<const Point> points) {
    u32(static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * points.size()));
    u32(active ? 1 : 0);
    while (!points.empty()) {
        if (room() < kPointSize) {
            flush();
        }
        const std::size_t now = std::min(points.size(), room() / kPointSize);
        std::uint8_t* to = m_buffer.data() + m_used;
        for (std::size_t i = 0; i < now; ++i) {
            storeInt(scaled(points[i].x, m_inverse.x), to + i * kPointSize);
            storeInt(scaled(points[i].y, m_inverse.y), to + i * kPointSize + 4);
        }
        m_used += now * kPointSize;
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
