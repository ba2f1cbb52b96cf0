#include "zone/ShapeTrack.h"

#include <algorithm>
#include <utility>

#include "zone/Scale.h"
#include "zone/ShapeGeometry.h"

namespace zone {
namespace {

using platform::Point;

/// Room for the copies of a few split runs, so that a drag after loading moves no large array.
constexpr std::size_t kSplitRoom = 1024;
/// Room for such runs in a copy.
constexpr std::size_t kRunRoom = 16;

/// Points with room to split: at most as much again, for a file may hold a million tiny zones.
std::size_t withSplitRoom(std::size_t points) {
    return points + std::min(points, kSplitRoom);
}

} // namespace

ShapeTrack::ShapeTrack(const ShapeTrack& other) : m_frameCount(other.m_frameCount) {
    m_runs.reserve(other.m_runs.size() + kRunRoom);
    m_runs = other.m_runs;
    m_points.reserve(withSplitRoom(other.m_points.size()));
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
    second.setOffset(m_points.size());
    second.setSpare(0);
    second.firstFrame = frame;
    m_points.resize(second.offset + second.pointCount);
    const std::span<const Point> shared = points(index);
    std::copy(shared.begin(), shared.end(), m_points.data() + second.offset);
    m_runs.insert(m_runs.begin() + static_cast<std::ptrdiff_t>(index) + 1, second);
    return index + 1;
}

void ShapeTrack::joinAt(int frame) noexcept {
    const std::size_t index = indexOf(frame);
    const ShapeRun& run = m_runs[index];
    if (run.offset + run.pointCount + run.spare == m_points.size()) {
        m_points.resize(run.offset);
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
    m_points.reserve(withSplitRoom((bytes - records * kShapeHeaderSize) / kPointSize));
}

void ShapeTrack::append(const ShapeRecord& record, Scale scale) {
    ShapeRun run;
    run.setOffset(m_points.size());
    run.firstFrame = m_frameCount++;
    run.setPointCount(record.pointCount());
    run.present = 1;
    run.active = record.active ? 1 : 0;
    run.edited = 1;
    m_runs.push_back(run);
    m_points.resize(run.offset + record.pointCount());
    convertPoints(record, scale, m_points.data() + run.offset);
}

void ShapeTrack::append(std::span<const Point> points, bool active, int frames) {
    if (!m_runs.empty()) {
        const ShapeRun& last = m_runs.back();
        const std::span<const Point> held = std::as_const(*this).points(m_runs.size() - 1);
        if ((last.active != 0) == active &&
            std::equal(held.begin(), held.end(), points.begin(), points.end())) {
            m_frameCount += frames;
            return;
        }
    }
    ShapeRun run;
    run.setOffset(m_points.size());
    run.firstFrame = m_frameCount;
    run.setPointCount(points.size());
    run.present = 1;
    run.active = active ? 1 : 0;
    run.edited = points.empty() ? 0 : 1;
    m_points.insert(m_points.end(), points.begin(), points.end());
    m_runs.push_back(run);
    m_frameCount += frames;
}

bool ShapeTrack::isFit(RunRange range, const ShapeTrack& other) const {
    if (range.end - range.first != other.m_runs.size()) {
        return false;
    }
    const int first = m_runs[range.first].firstFrame;
    for (std::size_t index = 0; index < other.m_runs.size(); ++index) {
        const ShapeRun& own = m_runs[range.first + index];
        if (own.firstFrame - first != other.m_runs[index].firstFrame ||
            own.pointCount + own.spare < other.m_runs[index].pointCount) {
            return false;
        }
    }
    return true;
}

void ShapeTrack::makeRuns(RunRange range, int first, const ShapeTrack& other) {
    const std::size_t count = other.m_runs.size();
    std::size_t offset = m_points.size();
    m_points.resize(offset + other.m_points.size());
    m_runs.reserve(m_runs.size() + count);
    const auto at = m_runs.erase(m_runs.begin() + static_cast<std::ptrdiff_t>(range.first),
                                 m_runs.begin() + static_cast<std::ptrdiff_t>(range.end));
    m_runs.insert(at, count, ShapeRun());
    for (std::size_t index = 0; index < count; ++index) {
        ShapeRun& run = m_runs[range.first + index];
        run.firstFrame = first + other.m_runs[index].firstFrame;
        run.setOffset(offset);
        run.setSpare(other.m_runs[index].pointCount);
        offset += other.m_runs[index].pointCount;
    }
}

void ShapeTrack::replace(int first, const ShapeTrack& other) {
    std::size_t held = 0;
    for (const ShapeRun& run : m_runs) {
        held += run.pointCount + run.spare;
    }
    if (m_points.size() > 2 * held + kSplitRoom) { // a drag replaces the same frames many times
        repack(0);
    }
    const std::size_t from = splitAt(first);
    const RunRange range{from, splitAt(first + other.m_frameCount)};
    if (!isFit(range, other)) {
        makeRuns(range, first, other);
    }
    for (std::size_t index = 0; index < other.m_runs.size(); ++index) {
        ShapeRun& run = m_runs[from + index];
        const ShapeRun& wanted = other.m_runs[index];
        run.setSpare(run.pointCount + run.spare - wanted.pointCount);
        run.setPointCount(wanted.pointCount);
        run.present = wanted.present;
        run.active = wanted.active;
        run.edited = wanted.edited;
        const std::span<const Point> source = other.points(index);
        std::copy(source.begin(), source.end(), m_points.data() + run.offset);
    }
}

void ShapeTrack::trim() {
    if (m_runs.size() < m_runs.capacity() - m_runs.capacity() / 16) {
        m_runs.shrink_to_fit();
    }
    if (m_points.size() + kSplitRoom < m_points.capacity() - m_points.capacity() / 16) {
        m_points.shrink_to_fit();
    }
}

void ShapeTrack::makeRoom() {
    if (std::none_of(m_runs.begin(), m_runs.end(),
                     [](const ShapeRun& run) { return run.spare == 0; })) {
        return;
    }
    repack(1);
}

void ShapeTrack::repack(std::size_t spare) {
    TrackPoints grown;
    std::size_t total = kSplitRoom;
    for (const ShapeRun& run : m_runs) {
        total += run.pointCount + std::max<std::size_t>(run.spare, spare);
    }
    grown.reserve(total);
    for (ShapeRun& run : m_runs) {
        const auto old = m_points.begin() + static_cast<std::ptrdiff_t>(run.offset);
        run.setOffset(grown.size());
        run.setSpare(std::max<std::size_t>(run.spare, spare));
        grown.insert(grown.end(), old, old + run.pointCount);
        grown.resize(grown.size() + run.spare);
    }
    m_points = std::move(grown);
}

void ShapeTrack::insert(ShapeRun& run, std::size_t index, Point point) noexcept {
    Point* const first = m_points.data() + run.offset;
    std::copy_backward(first + index, first + run.pointCount, first + run.pointCount + 1);
    first[index] = point;
    run.setPointCount(run.pointCount + std::size_t{1});
    run.setSpare(run.spare - std::size_t{1});
}

int ShapeTrack::insertPointEverywhere(int afterIndex, Point point) noexcept {
    int frames = 0;
    for (std::size_t index = 0; index < m_runs.size(); ++index) {
        ShapeRun& run = m_runs[index];
        const int at = insertPosition(afterIndex, run.pointCount);
        run.present = 1;
        if (at != -1) {
            insert(run, static_cast<std::size_t>(at), point);
            run.edited = 1;
            frames += framesOf(index);
        }
    }
    return frames;
}

void ShapeTrack::putBack(const PlacedPoint& placed) noexcept {
    insert(m_runs[placed.run], placed.index, placed.point);
}

void ShapeTrack::shift(RunRange range, Point delta) noexcept {
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

void ShapeTrack::removePoint(std::size_t index, std::size_t point) noexcept {
    const std::span<Point> all = points(index);
    std::copy(all.begin() + static_cast<std::ptrdiff_t>(point) + 1, all.end(),
              all.begin() + static_cast<std::ptrdiff_t>(point));
    m_runs[index].setPointCount(all.size() - 1);
    m_runs[index].setSpare(m_runs[index].spare + std::size_t{1});
    m_runs[index].edited = 1;
}

} // namespace zone
