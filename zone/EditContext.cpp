#include "zone/EditContext.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "zone/ShapeGeometry.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zone {

using platform::Point;

Point ZoneEditing::centerOf(int frame) const {
    const auto found = centers.find(frame);
    return found == centers.end() ? Point{} : found->second;
}

int ZoneEditing::sameCenterUntil(int frame, int end) const {
    const Point center = centerOf(frame);
    auto next = centers.upper_bound(frame);
    for (++frame; frame < end; ++frame) {
        const bool wasShown = next != centers.end() && next->first == frame;
        if ((wasShown ? next->second : Point{}) != center) {
            return frame;
        }
        if (wasShown) {
            ++next;
        } else { // all frames up to the next one shown are as this one
            frame = next == centers.end() ? end : std::min(end, next->first) - 1;
        }
    }
    return end;
}

std::set<int> ZoneEditing::knownKeys() const {
    std::set<int> keys = shapedFrames;
    for (const FilledGaps& step : filled) {
        for (const FrameRange& gap : step.gaps) {
            for (const int end : {gap.first, gap.end}) {
                if (step.isFilled && !keys.contains(end) && placeOf(end) == Place::atEnd) {
                    keys.insert(end);
                }
            }
        }
    }
    return keys;
}

ZoneEditing::Place ZoneEditing::placeOf(int frame) const {
    for (auto step = filled.rbegin(); step != filled.rend(); ++step) {
        const auto gap = std::ranges::lower_bound(step->gaps, frame, {}, &FrameRange::end);
        if (gap != step->gaps.end() && gap->first <= frame) {
            if (!step->isFilled) {
                return Place::anywhere;
            }
            return gap->first < frame && frame < gap->end ? Place::inside : Place::atEnd;
        }
    }
    return Place::anywhere;
}

void ZoneEditing::noteShown(const Zone& zone, int frame) {
    if (const auto points = zone.points(frame)) {
        centers[frame] = shapeCenter(*points);
    }
}

ZoneEditing& EditContext::zone(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (at >= zones.size()) {
        zones.resize(at + 1);
    }
    return zones[at];
}

void EditContext::insertZone(int index, ZoneEditing editing) {
    if (index < static_cast<int>(zones.size())) {
        zones.insert(zones.begin() + index, std::move(editing));
    } else {
        zone(index) = std::move(editing);
    }
}

void EditContext::removeZone(int index) {
    (void)zone(index);
    zones.erase(zones.begin() + index);
}

void EditContext::noteShown(const ZoneManager& manager) noexcept {
    try {
        if (const auto found = manager.zone(currentZone)) {
            zone(currentZone).noteShown(*found, shownFrame);
        }
    } catch (const std::bad_alloc&) { // worth no step
    }
}

} // namespace zone
