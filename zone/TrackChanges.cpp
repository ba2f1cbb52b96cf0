#include "zone/TrackChanges.h"

#include <algorithm>
#include <span>
#include <utility>

#include "zone/ShapeGeometry.h"

namespace zone {
namespace {

using platform::Point;

/// Whether every run has a shape, and at least so many points.
bool haveShapes(const ShapeTrack& track, RunRange range, std::size_t points) {
    for (std::size_t run = range.first; run < range.end; ++run) {
        if (!track.run(run).present || track.run(run).pointCount < points) {
            return false;
        }
    }
    return true;
}

} // namespace

std::size_t TrackChanges::splitAt(ShapeTrack& track, int frame) {
    m_changes.reserve(m_changes.size() + 1);
    const std::size_t before = track.runCount();
    const std::size_t index = track.splitAt(frame);
    if (track.runCount() != before && m_keep == Keep::all) {
        m_changes.emplace_back(Split{frame});
    }
    return index;
}

void TrackChanges::keepFlags(const ShapeTrack& track, RunRange range, bool active) {
    if (m_keep == Keep::all) {
        m_changes.emplace_back(Flags(track, range, active));
    }
}

void TrackChanges::keepPoint(const SharedTrack& track, RunRange range, std::size_t index,
                             Point to) {
    if (m_keep == Keep::nothingTwice) {
        m_changes.emplace_back(Column{range, index, to, {}});
    } else if (haveShapes(track.get(), range, index + 1)) {
        Column column{range, index, to, {}};
        column.keepBefore(track.get());
        m_changes.emplace_back(std::move(column));
    } else {
        keepTrack(track);
    }
}

void TrackChanges::keepShift(const SharedTrack& track, RunRange range, Point delta) {
    if (m_keep == Keep::nothingTwice || haveShapes(track.get(), range, 0)) {
        m_changes.emplace_back(Shift{range, delta});
    } else {
        keepTrack(track);
    }
}

void TrackChanges::keepInsert(const SharedTrack& track, int afterIndex, Point point) {
    // A shape with a point has its record's size; one without would need that kept as well.
    const std::size_t least = static_cast<std::size_t>(std::max(afterIndex, 0)) + 1;
    if (afterIndex >= -1 && haveShapes(track.get(), {0, track->runCount()}, least)) {
        m_changes.emplace_back(Insert{afterIndex, point});
    } else {
        keepTrack(track);
    }
}

void TrackChanges::keepRemoval(const ShapeTrack& track, std::size_t run, std::size_t index) {
    if (m_changes.empty() || !std::holds_alternative<Removal>(m_changes.back())) {
        m_changes.emplace_back(Removal{});
    }
    std::get<Removal>(m_changes.back())
        .points.push_back({static_cast<std::uint32_t>(run), static_cast<std::uint32_t>(index),
                           track.points(run)[index]});
}

void TrackChanges::keepTrack(const SharedTrack& track) {
    if (m_keep == Keep::all) {
        m_changes.emplace_back(Whole{track.copy()});
    }
}

void TrackChanges::keepShape(const ShapeTrack& track, std::size_t run) {
    const std::span<const Point> points = track.points(run);
    m_changes.emplace_back(Shape{run, track.run(run), {points.begin(), points.end()}});
}

TrackChanges::Flags::Flags(const ShapeTrack& track, RunRange runs, bool willBeActive)
    : range(runs), active(willBeActive) {
    for (std::size_t run = range.first; run < range.end; ++run) {
        const bool wasPresent = track.run(run).present != 0;
        const bool wasActive = track.run(run).active != 0;
        if (!before.empty() && before.back().present == wasPresent &&
            before.back().active == wasActive) {
            ++before.back().runs;
        } else {
            before.push_back({1, wasPresent, wasActive});
        }
    }
}

void TrackChanges::Flags::revert(SharedTrack& track) const noexcept {
    ShapeTrack& own = track.own();
    std::size_t run = range.first;
    for (const Stretch& stretch : before) {
        for (std::uint32_t left = stretch.runs; left > 0; --left, ++run) {
            own.setPresent(run, stretch.present);
            own.setActive(run, stretch.active);
        }
    }
}

void TrackChanges::Flags::redo(SharedTrack& track) const {
    ShapeTrack& own = track.own();
    for (std::size_t run = range.first; run < range.end; ++run) {
        own.setPresent(run, true);
        own.setActive(run, active);
    }
}

void TrackChanges::Column::keepBefore(const ShapeTrack& track) {
    before.reserve(range.end - range.first);
    for (std::size_t run = range.first; run < range.end; ++run) {
        const Point point = track.points(run)[index];
        if (!before.empty() && before.back().point == point) {
            ++before.back().runs;
        } else {
            before.push_back({1, point});
        }
    }
    if (before.size() < before.capacity() / 2) {
        before.shrink_to_fit();
    }
}

void TrackChanges::Column::revert(SharedTrack& track) const noexcept {
    ShapeTrack& own = track.own();
    std::size_t run = range.first;
    for (const Stretch& stretch : before) {
        for (std::uint32_t left = stretch.runs; left > 0; --left, ++run) {
            own.points(run)[index] = stretch.point;
        }
    }
}

void TrackChanges::Column::redo(SharedTrack& track) const {
    ShapeTrack& own = track.own();
    for (std::size_t run = range.first; run < range.end; ++run) {
        own.points(run)[index] = after;
    }
}

void TrackChanges::Shift::revert(SharedTrack& track) const noexcept {
    track.own().shift(range, {wrappedDifference(0, delta.x), wrappedDifference(0, delta.y)});
}

void TrackChanges::Insert::revert(SharedTrack& track) const noexcept {
    ShapeTrack& own = track.own();
    for (std::size_t run = 0; run < own.runCount(); ++run) {
        own.removePoint(run, afterIndex == -1 ? own.points(run).size() - 1
                                              : static_cast<std::size_t>(afterIndex) + 1);
    }
}

void TrackChanges::Insert::redo(SharedTrack& track) const {
    ShapeTrack& own = track.own();
    own.makeRoom();
    own.insertPointEverywhere(afterIndex, point);
}

void TrackChanges::Removal::revert(SharedTrack& track) const noexcept {
    ShapeTrack& own = track.own();
    for (const PlacedPoint& placed : points) {
        own.putBack(placed);
    }
}

void TrackChanges::Removal::redo(SharedTrack& track) const {
    ShapeTrack& own = track.own();
    for (const PlacedPoint& placed : points) {
        own.removePoint(placed.run, placed.index);
    }
}

void TrackChanges::Shape::swap(SharedTrack& track) noexcept {
    ShapeTrack& own = track.own();
    const ShapeRun now = own.run(run);
    own.setPresent(run, flags.present != 0);
    own.setActive(run, flags.active != 0);
    own.setEdited(run, flags.edited != 0);
    flags = now;
    std::swap_ranges(points.begin(), points.end(), own.points(run).begin());
}

void TrackChanges::revert(SharedTrack& track) noexcept {
    for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change) {
        std::visit([&](auto& kind) { kind.revert(track); }, *change);
    }
}

void TrackChanges::redo(SharedTrack& track) {
    std::size_t done = 0;
    try {
        for (; done < m_changes.size(); ++done) {
            std::visit([&](auto& kind) { kind.redo(track); }, m_changes[done]);
        }
    } catch (...) {
        while (done > 0) {
            std::visit([&](auto& kind) { kind.revert(track); }, m_changes[--done]);
        }
        throw;
    }
}

void TrackChanges::absorb(const TrackChanges& next) noexcept {
    for (const Change& change : next.m_changes) {
        // A repeated change of another kind lies inside what was kept.
        if (m_changes.empty() || m_changes.back().index() != change.index()) {
            continue;
        }
        if (auto* shift = std::get_if<Shift>(&m_changes.back())) {
            const auto& further = *std::get_if<Shift>(&change);
            shift->delta = {wrappedSum(shift->delta.x, further.delta.x),
                            wrappedSum(shift->delta.y, further.delta.y)};
        } else if (auto* column = std::get_if<Column>(&m_changes.back())) {
            column->after = std::get_if<Column>(&change)->after;
        }
    }
}

std::size_t TrackChanges::bytes() const {
    std::size_t total = m_changes.capacity() * sizeof(Change);
    for (const Change& change : m_changes) {
        total += std::visit([](const auto& kind) { return kind.bytes(); }, change);
    }
    return total;
}

} // namespace zone
