// All shapes of one zone, frame by frame, without an object for each: neighbouring frames of equal
// shape share one run, and the points of all runs lie in one array. An hour of video with a
// different shape on every frame takes 16 bytes a frame beside its coordinates, and a shape that
// stands still takes nothing at all. This module's sources only.
//
// Edits come in pairs that undo each other exactly, runs included: TrackChanges.h keeps what the
// other half needs. Undoing needs no memory: a run keeps the room of the points that are taken out
// of it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeRecord.h"

namespace zone {

/// Frames from `firstFrame` up to the next run's: without a shape, or with equal shapes.
struct ShapeRun {
    std::uint64_t offset : 40 = 0; ///< of the first point in the track's array
    std::uint64_t spare : 24 = 0;  ///< points that have room behind the last one
    std::int32_t firstFrame = 0;
    std::uint32_t pointCount : 29 = 0;
    std::uint32_t present : 1 = 0; ///< 0: these frames have no shape, and no points
    std::uint32_t active : 1 = 1;
    std::uint32_t edited : 1 = 0; ///< 0: created empty, record size still 0

    void setOffset(std::size_t first) { offset = first & 0xFFFFFFFFFF; }
    void setSpare(std::size_t points) {
        spare = std::min<std::size_t>(points, 0xFFFFFF) & 0xFFFFFF;
    }
    void setPointCount(std::size_t count) { pointCount = count & 0x1FFFFFFF; }
};
static_assert(sizeof(ShapeRun) == 16, "a quarter of eight points' coordinates");

/// Leaves new elements uninitialized: setting an array this large to 0 first takes too long.
template <typename T>
struct UnsetAllocator : std::allocator<T> {
    template <typename U>
    struct rebind {
        using other = UnsetAllocator<U>;
    };
    template <typename U>
    void construct(U*) noexcept {}
};

/// Runs of a track, `end` excluded.
struct RunRange {
    std::size_t first = 0;
    std::size_t end = 0;

    bool operator==(const RunRange&) const = default;
};

/// A point and the place in a run that it has, or had.
struct PlacedPoint {
    std::uint32_t run = 0;
    std::uint32_t index = 0;
    platform::Point point;
};

using TrackPoints = std::vector<platform::Point, UnsetAllocator<platform::Point>>;

class ShapeTrack {
public:
    ShapeTrack() = default;
    /// The copy has room for the next edits.
    ShapeTrack(const ShapeTrack& other);
    ShapeTrack& operator=(const ShapeTrack&) = delete;
    ~ShapeTrack() = default;

    [[nodiscard]] int frameCount() const { return m_frameCount; }
    [[nodiscard]] std::size_t runCount() const { return m_runs.size(); }
    [[nodiscard]] const ShapeRun& run(std::size_t index) const { return m_runs[index]; }
    [[nodiscard]] int endFrame(std::size_t index) const {
        return index + 1 < m_runs.size() ? m_runs[index + 1].firstFrame : m_frameCount;
    }
    /// Valid until points are inserted or a run is split.
    [[nodiscard]] std::span<platform::Point> points(std::size_t index) {
        return {m_points.data() + m_runs[index].offset, m_runs[index].pointCount};
    }
    [[nodiscard]] std::span<const platform::Point> points(std::size_t index) const {
        return {m_points.data() + m_runs[index].offset, m_runs[index].pointCount};
    }
    /// The run that holds `frame`, which must be one of the track's.
    [[nodiscard]] std::size_t indexOf(int frame) const;
    /// Makes a run start at `frame` and returns its index; runCount() for frameCount(). Changes
    /// nothing when it throws.
    std::size_t splitAt(int frame);
    /// Undoes a splitAt that made a run at `frame`.
    void joinAt(int frame) noexcept;

    void clear();
    /// Drops surplus frames, or adds frames without a shape.
    void resize(int frameCount);
    /// Adds copies of the last frame; of none, frames without a shape.
    void extendLast(int frameCount);
    /// Makes room for at most as many runs and points as `bytes` of records can hold.
    void reserveFor(std::size_t records, std::size_t bytes);
    void append(const ShapeRecord& record, Scale scale);
    void appendSame() { ++m_frameCount; }
    /// Appends frames of one shape, as one run with the last frame where that is alike.
    void append(std::span<const platform::Point> points, bool active, int frames);
    /// The frames from `first` on become those of `other`, all of which the track has. When it
    /// throws, all frames look as before.
    void replace(int first, const ShapeTrack& other);
    /// Frees most of the room that reserveFor made in excess.
    void trim();

    /// Gives a frame without a shape an empty one.
    void makePresent(std::size_t index) {
        if (!m_runs[index].present) {
            m_runs[index].present = 1;
        }
    }
    void setPresent(std::size_t index, bool present) { m_runs[index].present = present ? 1 : 0; }
    void setActive(std::size_t index, bool active) { m_runs[index].active = active ? 1 : 0; }
    void setEdited(std::size_t index, bool edited) { m_runs[index].edited = edited ? 1 : 0; }
    [[nodiscard]] int framesOf(std::size_t index) const {
        return endFrame(index) - m_runs[index].firstFrame;
    }
    /// Gives every run room for one more point.
    void makeRoom();
    /// Inserts behind the point `afterIndex` of every run, by insertPosition's rule; where that is
    /// no point, at the end or not at all. Creates missing shapes. Needs the room. Returns on how
    /// many frames.
    int insertPointEverywhere(int afterIndex, platform::Point point) noexcept;
    void shift(RunRange range, platform::Point delta) noexcept;
    void removePoint(std::size_t index, std::size_t point) noexcept;
    /// Puts a point back where removePoint took it from.
    void putBack(const PlacedPoint& placed) noexcept;

    /// Roughly what the track takes in memory.
    [[nodiscard]] std::size_t bytes() const {
        return m_runs.capacity() * sizeof(ShapeRun) + m_points.capacity() * sizeof(platform::Point);
    }

private:
    /// Whether the runs of `range` start as those of `other` do and have room for their points.
    [[nodiscard]] bool isFit(RunRange range, const ShapeTrack& other) const;
    /// Makes those of `range` such runs, without points yet.
    void makeRuns(RunRange range, int first, const ShapeTrack& other);
    /// Drops what no run holds, and gives each run room for at least `spare` more points.
    void repack(std::size_t spare);
    /// Inserts one point into the room that the run has to spare.
    void insert(ShapeRun& run, std::size_t index, platform::Point point) noexcept;
    std::vector<ShapeRun> m_runs; ///< by firstFrame, from 0; none when there is no frame
    TrackPoints m_points;
    int m_frameCount = 0;
};

} // namespace zone
