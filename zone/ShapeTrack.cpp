#include "zone/ShapeTrack.h"

#include <algorithm>
#include <utility>

#include "zone/Scale.h"
#include "zone/ShapeGeometry.h"

namespace zone {
namespace {

using platform::Point;

/// Room for the copies of a few split runs, so that a drag after loading moves no array.
constexpr std::size_t kSplitRoom = 1024;
/// Room for such runs in a copy.
constexpr std::size_t kRunRoom = 16;

} // namespace

ShapeTrack::ShapeTrack(const ShapeTrack& other) : m_frameCount(other.m_frameCount) {
    m_runs.reserve(other.m_runs.size() + kRunRoom);
    m_runs = other.m_runs;
    m_points.reserve(other.m_points.size() + kSplitRoom);
    m_points.insert(m_points.end(), other.m_points.begin(), other.m_points.end());
}

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

void ShapeTrack::joinAt(int frame) {
    const std::size_t index = indexOf(frame);
    if (m_runs[index].offset + m_runs[index].pointCount == m_points.size()) {
        m_points.resize(m_runs[index].offset);
    }
    m_runs.erase(m_runs.begin() + static_cast<std::ptrdiff_t>(index));
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

template <typename Grow>
void ShapeTrack::rebuild(std::size_t extra, Grow grow) {
    TrackPoints grown;
    std::size_t total = kSplitRoom + extra;
    for (const ShapeRun& run : m_runs) {
        total += run.pointCount;
    }
    grown.reserve(total);
    for (ShapeRun& run : m_runs) {
        const std::span<const Point> old{m_points.data() + run.offset, run.pointCount};
        run.offset = grown.size();
        grow(run, old, grown);
    }
    m_points = std::move(grown);
}

void ShapeTrack::insertPointEverywhere(int afterIndex, Point point) {
    rebuild(m_runs.size(), [&](ShapeRun& run, std::span<const Point> old, TrackPoints& grown) {
        const int at = insertPosition(afterIndex, old.size());
        run.present = 1;
        grown.insert(grown.end(), old.begin(), old.end());
        if (at != -1) {
            grown.insert(grown.end() - static_cast<std::ptrdiff_t>(old.size()) + at, point);
            run.setPointCount(old.size() + 1);
            run.edited = 1;
        }
    });
}

void ShapeTrack::insertPoints(std::span<const PlacedPoint> placed) {
    auto next = placed.begin();
    rebuild(placed.size(), [&](ShapeRun& run, std::span<const Point> old, TrackPoints& grown) {
        grown.insert(grown.end(), old.begin(), old.end());
        if (next != placed.end() && &run == &m_runs[next->run]) {
            const auto behind = static_cast<std::ptrdiff_t>(old.size() - next->index);
            grown.insert(grown.end() - behind, next->point);
            run.setPointCount(old.size() + 1);
            ++next;
        }
    });
}

void ShapeTrack::shift(RunRange range, Point delta) {
    std::size_t first = range.first;
    while (first < range.end) {
        // Mostly one run's points follow the other's: then they are one stretch of memory.
        const std::size_t from = m_runs[first].offset;
        std::size_t to = from;
        for (; first < range.end && m_runs[first].offset == to; ++first) {
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

TrackSlice ShapeTrack::slice(RunRange range) const {
    TrackSlice copy;
    copy.runs.assign(m_runs.begin() + static_cast<std::ptrdiff_t>(range.first),
                     m_runs.begin() + static_cast<std::ptrdiff_t>(range.end));
    std::size_t total = 0;
    for (const ShapeRun& run : copy.runs) {
        total += run.pointCount;
    }
    copy.points.reserve(total);
    for (ShapeRun& run : copy.runs) {
        const auto from = m_points.begin() + static_cast<std::ptrdiff_t>(run.offset);
        run.offset = copy.points.size();
        copy.points.insert(copy.points.end(), from, from + run.pointCount);
    }
    return copy;
}

void ShapeTrack::exchange(RunRange range, TrackSlice& slice) {
    TrackSlice old = this->slice(range);
    for (ShapeRun& run : slice.runs) {
        run.offset += m_points.size();
    }
    m_points.insert(m_points.end(), slice.points.begin(), slice.points.end());
    const auto at = m_runs.begin() + static_cast<std::ptrdiff_t>(range.first);
    const auto end = m_runs.begin() + static_cast<std::ptrdiff_t>(range.end);
    m_runs.insert(m_runs.erase(at, end), slice.runs.begin(), slice.runs.end());
    slice = std::move(old);
    compact();
}

void ShapeTrack::compact() {
    std::size_t used = 0;
    for (const ShapeRun& run : m_runs) {
        used += run.pointCount;
    }
    if (m_points.size() > 2 * used + kSplitRoom) {
        rebuild(0, [](ShapeRun&, std::span<const Point> old, TrackPoints& grown) {
            grown.insert(grown.end(), old.begin(), old.end());
        });
    }
}

} // namespace zone
