// All shapes of one zone, frame by frame, without an object for each: neighbouring frames of equal
// shape share one run, and the points of all runs lie in one array. An hour of video with a
// different shape on every frame takes 16 bytes a frame beside its coordinates, and a shape that
// stands still takes nothing at all. This module's sources only.
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

/// Leaves new elements as the memory is: an array this large is not worth setting to 0 first.
template <typename T>
struct UnsetAllocator : std::allocator<T> {
    template <typename U>
    struct rebind {
        using other = UnsetAllocator<U>;
    };
    template <typename U>
    void construct(U*) noexcept {}
};

class ShapeTrack {
public:
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

    void clear();
    /// Drops surplus frames, or adds frames without a shape.
    void resize(int frameCount);
    /// Adds copies of the last frame; of none, frames without a shape.
    void extendLast(int frameCount);
    /// Makes room for at most as many runs and points as `bytes` of records can hold.
    void reserveFor(std::size_t records, std::size_t bytes);
    void append(const ShapeRecord& record, Scale scale);
    void appendSame() { ++m_frameCount; }
    /// Gives back most of what reserveFor took too much.
    void trim();

    /// Gives a frame without a shape an empty one.
    void makePresent(std::size_t index) {
        if (!m_runs[index].present) {
            m_runs[index].present = 1;
        }
    }
    void setActive(std::size_t index, bool active) { m_runs[index].active = active ? 1 : 0; }
    /// Calls insertPoint's rule with `afterIndex` on every run; creates missing shapes.
    void insertPointEverywhere(int afterIndex, platform::Point point);
    /// Runs from `first` up to `end`.
    void shift(std::size_t first, std::size_t end, platform::Point delta);
    void removePoint(std::size_t index, std::size_t point);

private:
    using Points = std::vector<platform::Point, UnsetAllocator<platform::Point>>;

    std::vector<ShapeRun> m_runs; ///< by firstFrame, from 0; none when there is no frame
    Points m_points;
    int m_frameCount = 0;
};

} // namespace zone
