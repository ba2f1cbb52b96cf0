// All shapes of one zone, frame by frame, without an object for each: neighbouring frames of equal
// shape share one run, and the points of all runs lie in one array. An hour of video with a
// different shape on every frame takes 16 bytes a frame beside its coordinates, and a shape that
// stands still takes nothing at all. This module's sources only.
//
// Edits come in pairs that undo each other exactly, runs included: TrackChanges.h keeps what the
// other half needs.
#pragma once

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
    std::size_t offset = 0; ///< of the first point in the track's array
    std::int32_t firstFrame = 0;
    std::uint32_t pointCount : 29 = 0;
    std::uint32_t present : 1 = 0; ///< 0: these frames have no shape, and no points
    std::uint32_t active : 1 = 1;
    std::uint32_t edited : 1 = 0; ///< 0: created empty, record size still 0

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

/// Whole runs with their points, apart from any track.
struct TrackSlice {
    std::vector<ShapeRun> runs; ///< offsets are into `points`
    TrackPoints points;

    [[nodiscard]] std::size_t bytes() const {
        return runs.capacity() * sizeof(ShapeRun) + points.capacity() * sizeof(platform::Point);
    }
};

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
    /// Makes a run start at `frame` and returns its index; runCount() for frameCount().
    std::size_t splitAt(int frame);
    /// Undoes a splitAt that made a run at `frame`.
    void joinAt(int frame);

    void clear();
    /// Drops surplus frames, or adds frames without a shape.
    void resize(int frameCount);
    /// Adds copies of the last frame; of none, frames without a shape.
    void extendLast(int frameCount);
    /// Makes room for at most as many runs and points as `bytes` of records can hold.
    void reserveFor(std::size_t records, std::size_t bytes);
    void append(const ShapeRecord& record, Scale scale);
    void appendSame() { ++m_frameCount; }
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
    /// Inserts behind the point `afterIndex` of every run, by insertPosition's rule; creates
    /// missing shapes.
    void insertPointEverywhere(int afterIndex, platform::Point point);
    /// By run, at most one for each; the index is where the point will be.
    void insertPoints(std::span<const PlacedPoint> placed);
    void shift(RunRange range, platform::Point delta);
    void removePoint(std::size_t index, std::size_t point);

    /// Roughly what the track takes in memory.
    [[nodiscard]] std::size_t bytes() const {
        return m_runs.capacity() * sizeof(ShapeRun) + m_points.capacity() * sizeof(platform::Point);
    }
    [[nodiscard]] TrackSlice slice(RunRange range) const;
    /// The runs of `range` and those of `slice`, which fill the same frames, change places.
    void exchange(RunRange range, TrackSlice& slice);

private:
    /// Gives every run new room with `extra` further points. `grow` is called with each run and its
    /// old points, and appends what the run is to hold.
    template <typename Grow>
    void rebuild(std::size_t extra, Grow grow);
    /// Moves all points together once less than half of the array is in use.
    void compact();

    std::vector<ShapeRun> m_runs; ///< by firstFrame, from 0; none when there is no frame
    TrackPoints m_points;
    int m_frameCount = 0;
};

} // namespace zone
