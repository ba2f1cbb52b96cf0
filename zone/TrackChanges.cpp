#include "zone/TrackChanges.h"

#include <algorithm>
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

template <class Stretches>
std::size_t runsIn(const Stretches& stretches) {
    std::size_t total = 0;
    for (const auto& stretch : stretches) {
        total += stretch.runs;
    }
    return total;
}

} // namespace

std::size_t TrackChanges::splitAt(ShapeTrack& track, int frame) {
    const std::size_t before = track.runCount();
    const std::size_t index = track.splitAt(frame);
    if (track.runCount() != before && m_keep == Keep::all) {
        m_changes.emplace_back(Split{frame});
    }
    return index;
}

void TrackChanges::keepFlags(const ShapeTrack& track, RunRange range) {
    if (m_keep == Keep::all) {
        m_changes.emplace_back(Flags(track, range));
    }
}

void TrackChanges::keepPoint(const ShapeTrack& track, RunRange range, std::size_t index) {
    if (m_keep == Keep::nothingTwice) {
        return;
    }
    if (haveShapes(track, range, index + 1)) {
        m_changes.emplace_back(Column(track, range, index));
    } else {
        keepRuns(track, range);
    }
}

void TrackChanges::keepShift(const ShapeTrack& track, RunRange range, Point delta) {
    if (m_keep == Keep::nothingTwice || haveShapes(track, range, 0)) {
        m_changes.emplace_back(Shift{range, delta});
    } else {
        keepRuns(track, range);
    }
}

void TrackChanges::keepInsert(const ShapeTrack& track, int afterIndex, Point point) {
    const RunRange all{0, track.runCount()};
    // A shape with a point has its record's size; one without would need that kept as well.
    const std::size_t least = static_cast<std::size_t>(std::max(afterIndex, 0)) + 1;
    if (afterIndex >= -1 && haveShapes(track, all, least)) {
        m_changes.emplace_back(Insert{afterIndex, point});
    } else {
        keepRuns(track, all);
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

void TrackChanges::keepRuns(const ShapeTrack& track, RunRange range) {
    if (m_keep == Keep::all && range.first < range.end) {
        m_changes.emplace_back(Runs{track.run(range.first).firstFrame,
                                    track.endFrame(range.end - 1), track.slice(range)});
    }
}

TrackChanges::Flags::Flags(const ShapeTrack& track, RunRange range) : first(range.first) {
    for (std::size_t run = range.first; run < range.end; ++run) {
        const bool present = track.run(run).present != 0;
        const bool active = track.run(run).active != 0;
        if (!stretches.empty() && stretches.back().present == present &&
            stretches.back().active == active) {
            ++stretches.back().runs;
        } else {
            stretches.push_back({1, present, active});
        }
    }
}

void TrackChanges::Flags::swap(ShapeTrack& track) {
    Flags now(track, {first, first + runsIn(stretches)});
    std::size_t run = first;
    for (const Stretch& stretch : stretches) {
        for (std::uint32_t left = stretch.runs; left > 0; --left, ++run) {
            track.setPresent(run, stretch.present);
            track.setActive(run, stretch.active);
        }
    }
    stretches = std::move(now.stretches);
}

TrackChanges::Column::Column(const ShapeTrack& track, RunRange range, std::size_t pointIndex)
    : first(range.first), index(pointIndex) {
    stretches.reserve(range.end - range.first);
    for (std::size_t run = range.first; run < range.end; ++run) {
        const Point point = track.points(run)[index];
        if (!stretches.empty() && stretches.back().point == point) {
            ++stretches.back().runs;
        } else {
            stretches.push_back({1, point});
        }
    }
    if (stretches.size() < stretches.capacity() / 2) {
        stretches.shrink_to_fit();
    }
}

void TrackChanges::Column::swap(ShapeTrack& track) {
    Column now(track, {first, first + runsIn(stretches)}, index);
    std::size_t run = first;
    for (const Stretch& stretch : stretches) {
        for (std::uint32_t left = stretch.runs; left > 0; --left, ++run) {
            track.points(run)[index] = stretch.point;
        }
    }
    stretches = std::move(now.stretches);
}

void TrackChanges::Shift::revert(ShapeTrack& track) const {
    track.shift(range, {wrappedDifference(0, delta.x), wrappedDifference(0, delta.y)});
}

void TrackChanges::Insert::revert(ShapeTrack& track) const {
    for (std::size_t run = 0; run < track.runCount(); ++run) {
        track.removePoint(run, afterIndex == -1 ? track.points(run).size() - 1
                                                : static_cast<std::size_t>(afterIndex) + 1);
    }
}

void TrackChanges::Removal::redo(ShapeTrack& track) const {
    for (const PlacedPoint& placed : points) {
        track.removePoint(placed.run, placed.index);
    }
}

void TrackChanges::Runs::swap(ShapeTrack& track) {
    const std::size_t end =
        endFrame < track.frameCount() ? track.indexOf(endFrame) : track.runCount();
    track.exchange({track.indexOf(firstFrame), end}, slice);
}

void TrackChanges::revert(ShapeTrack& track) {
    for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change) {
        std::visit([&](auto& kind) { kind.revert(track); }, *change);
    }
}

void TrackChanges::redo(ShapeTrack& track) {
    for (Change& change : m_changes) {
        std::visit([&](auto& kind) { kind.redo(track); }, change);
    }
}

void TrackChanges::absorb(const TrackChanges& next) {
    for (const Change& change : next.m_changes) {
        // A repeated change of another kind lies inside what was kept.
        auto* own = m_changes.empty() ? nullptr : std::get_if<Shift>(&m_changes.back());
        const auto* further = std::get_if<Shift>(&change);
        if (own && further) {
            own->delta = {wrappedSum(own->delta.x, further->delta.x),
                          wrappedSum(own->delta.y, further->delta.y)};
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
