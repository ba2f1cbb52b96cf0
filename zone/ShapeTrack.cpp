#include "zone/ShapeTrack.h"

#include <algorithm>
#include <utility>

#include "zone/ShapeGeometry.h"

namespace zone {
namespace {

using platform::Point;

/// Room for the copies of a few split runs, so that a drag after loading moves no array.
constexpr std::size_t kSplitRoom = 1024;

} // namespace

std::size_t ShapeTrack::indexOf(int frame) const {
    const auto after =
        std::upper_bound(m_runs.begin(), m_runs.end(), frame,
                         [](int wanted, const ShapeRun& run) { return wanted < run.firstFrame; });
    return static_cast<std::size_t>(after - m_runs.begin()) - 1;
}

std::size_t ShapeTrack::splitAt(int frame) {
    if (frame >= m_frameCount) {
        return m_runs.size();
    }
    const std::size_t index = indexOf(frame);
    if (m_runs[index].firstFrame == frame) {
        return index;
    }
    ShapeRun second = m_runs[index];
    second.offset = m_points.size();
    second.firstFrame = frame;
    m_points.resize(second.offset + second.pointCount);
    const std::span<const Point> shared = points(index);
    std::copy(shared.begin(), shared.end(), m_points.data() + second.offset);
    m_runs.insert(m_runs.begin() + static_cast<std::ptrdiff_t>(index) + 1, second);
    return index + 1;
}

void ShapeTrack::clear() {
    m_runs.clear();
    m_points.clear();
    m_frameCount = 0;
}

void ShapeTrack::resize(int frameCount) {
    frameCount = std::max(frameCount, 0);
    if (frameCount > m_frameCount) {
        ShapeRun missing;
        missing.firstFrame = m_frameCount;
        m_runs.push_back(missing);
    }
    while (!m_runs.empty() && m_runs.back().firstFrame >= frameCount) {
        m_runs.pop_back();
    }
    m_frameCount = frameCount;
}

void ShapeTrack::extendLast(int frameCount) {
    if (m_runs.empty()) {
        resize(frameCount);
    } else {
        m_frameCount = std::max(m_frameCount, frameCount);
    }
}

void ShapeTrack::reserveFor(std::size_t records, std::size_t bytes) {
    records = std::min(records, bytes / kShapeHeaderSize);
    m_runs.reserve(records);
    m_points.reserve((bytes - records * kShapeHeaderSize) / kPointSize + kSplitRoom);
}

void ShapeTrack::append(const ShapeRecord& record, Scale scale) {
    ShapeRun run;
    run.offset = m_points.size();
    run.firstFrame = m_frameCount++;
    run.setPointCount(record.pointCount());
    run.present = 1;
    run.active = record.active ? 1 : 0;
    run.edited = 1;
    m_runs.push_back(run);
    m_points.resize(run.offset + record.pointCount());
    convertPoints(record, scale, m_points.data() + run.offset);
}

void ShapeTrack::trim() {
    if (m_runs.size() < m_runs.capacity() - m_runs.capacity() / 16) {
        m_runs.shrink_to_fit();
    }
    if (m_points.size() + kSplitRoom < m_points.capacity() - m_points.capacity() / 16) {
        m_points.shrink_to_fit();
    }
}

void ShapeTrack::insertPointEverywhere(int afterIndex, Point point) {
    Points grown;
    std::size_t total = kSplitRoom;
    for (const ShapeRun& run : m_runs) {
        total += run.pointCount + std::size_t{1};
    }
    grown.reserve(total);
    for (ShapeRun& run : m_runs) {
        const Point* from = m_points.data() + run.offset;
        const std::size_t count = run.pointCount;
        const int at = insertPosition(afterIndex, count);
        run.present = 1;
        run.offset = grown.size();
        grown.insert(grown.end(), from, from + count);
        if (at == -1) {
            continue;
        }
        grown.insert(grown.end() - static_cast<std::ptrdiff_t>(count) + at, point);
        run.setPointCount(count + 1);
        run.edited = 1;
    }
    m_points = std::move(grown);
}

void ShapeTrack::shift(std::size_t first, std::size_t end, Point delta) {
    while (first < end) {
        // Mostly one run's points follow the other's: then they are one stretch of memory.
        const std::size_t from = m_runs[first].offset;
        std::size_t to = from;
        for (; first < end && m_runs[first].offset == to; ++first) {
            makePresent(first);
            to += m_runs[first].pointCount;
        }
        shiftPoints({m_points.data() + from, to - from}, delta);
    }
}

void ShapeTrack::removePoint(std::size_t index, std::size_t point) {
    const std::span<Point> all = points(index);
    std::copy(all.begin() + static_cast<std::ptrdiff_t>(point) + 1, all.end(),
              all.begin() + static_cast<std::ptrdiff_t>(point));
    // The place at the end stays unused until points are inserted: no other run has to move.
    m_runs[index].setPointCount(all.size() - 1);
    m_runs[index].edited = 1;
}

} // namespace zone
