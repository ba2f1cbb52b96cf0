#include "ZoneEdit/RangeActions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeEdits.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {
namespace {

using Name = zone::StepLabel::Name;

constexpr core::Text kNeedsKeys = "Interpolate needs a key at both ends of the range."_tr;
constexpr core::Text kNoShape = "There is no shape to copy on this frame."_tr;

} // namespace

const zone::Zone& RangeActions::zone() const {
    return *m_session.zones().zone(m_editor.place().value().zone);
}

void RangeActions::replace(Name name, const zone::NewShapes& shapes) {
    const ShapeEditor::Place place = m_editor.place().value();
    m_session.endGesture();
    m_session.replaceShapes({name, place.zone, place.frame}, shapes);
}

std::optional<std::vector<int>> RangeActions::keysOfGap() const {
    const std::vector<int> all = m_editor.keys();
    std::vector<int> keys;
    if (const auto range = m_editor.range()) {
        std::ranges::copy_if(all, std::back_inserter(keys),
                             [&](int key) { return range->contains(key); });
        if (keys.empty() || keys.front() != range->first || keys.back() != range->end - 1) {
            return std::nullopt;
        }
    } else {
        keys = zone::keysAround(all, m_editor.place().value().frame);
    }
    return keys.size() < 2 ? std::nullopt : std::optional(keys);
}

void RangeActions::interpolate() {
    if (!hasPlace()) {
        return;
    }
    const auto keys = keysOfGap();
    if (!keys) {
        m_notice.refuse(core::tr(kNeedsKeys));
    } else if (const auto blend = zone::blendedShapes(zone(), *keys, m_editor.way())) {
        replace(Name::interpolate, {*blend});
    } else {
        refuseUnequal(*keys);
    }
}

void RangeActions::refuseUnequal(const std::vector<int>& keys) {
    if (const auto numbers = zone::unequalKeys(zone(), keys)) {
        m_notice.offer(
            core::tr("The keys have {0} and {1} points: give them the same number first."_tr,
                     numbers->first, numbers->second),
            {kMatchPointsButton});
    }
}

void RangeActions::interpolateAll() {
    if (!hasPlace()) {
        return;
    }
    const std::vector<int> keys = m_editor.keys();
    if (keys.size() < 2) {
        m_notice.refuse(core::tr(kNeedsKeys));
    } else {
        replace(Name::interpolate, {zone::filledGaps(zone(), keys, m_editor.way())});
    }
}

void RangeActions::matchPoints() {
    if (!hasPlace()) {
        return;
    }
    int first = 0;
    int last = 0;
    if (const auto range = m_editor.range()) {
        first = range->first;
        last = range->end - 1;
    } else {
        // A gap whose ends are alike needs nothing; the frame may be a key between two gaps.
        const std::vector<int> keys =
            zone::keysAround(m_editor.keys(), m_editor.place().value().frame);
        if (keys.size() < 2) {
            return;
        }
        first = keys.front();
        last = keys.back();
        if (keys.size() == 3 && !zone::matched(zone(), first, last)) {
            last = keys[1];
        }
    }
    if (const auto shapes = zone::matched(zone(), first, last)) {
        replace(Name::matchPoints, *shapes);
        const auto count = zone().points(first)->size();
        m_notice.offer(core::tr("Point counts made equal: {0}."_tr, count), {kNoticeUndoButton});
    }
}

void RangeActions::deleteKeys() {
    if (!hasRange()) {
        return;
    }
    const std::vector<int> keys = m_editor.keys();
    if (const auto shapes = zone::withoutKeys(zone(), keys, *m_editor.range(), m_editor.way())) {
        replace(Name::interpolate, *shapes);
    } else {
        refuseUnequal(keys);
    }
}

void RangeActions::copy() {
    const zone::Points points = m_editor.points();
    if (points.empty()) {
        m_notice.refuse(core::tr(kNoShape));
    } else {
        copiedShape() = points;
    }
}

void RangeActions::paste() {
    if (!canPaste()) {
        return;
    }
    const std::size_t here = m_editor.points().size();
    const bool isEmptyZone = !zone().hasPoints();
    if (isEmptyZone) {
        replace(Name::paste, {pastedZone(), m_editor.place()->frame});
    } else if (here == copiedShape()->size()) {
        m_session.endGesture();
        m_editor.reshapeAll(Name::paste, zone::replaced(*copiedShape()));
    } else {
        m_notice.offer(core::tr("The copied shape has {0} points, this zone {1}: paste it as a new "
                                "zone?"_tr,
                                copiedShape()->size(), here),
                       {kNewZoneButton});
    }
}

zone::ShapeStretch RangeActions::pastedZone() const {
    zone::ShapeStretch all(0);
    all.add(*copiedShape(), true, zone().frameCount());
    return all;
}

std::optional<zone::FrameRange> RangeActions::framesOf(Where where) const {
    const int frame = m_editor.place().value().frame;
    switch (where) {
    case Where::onwards:
        return zone::FrameRange{frame, zone().frameCount()};
    case Where::upToHere:
        return zone::FrameRange{0, frame + 1};
    case Where::range:
        break;
    }
    return m_editor.range();
}

void RangeActions::applyShape(Where where) {
    const auto frames = hasPlace() ? framesOf(where) : std::nullopt;
    if (!frames) {
        return;
    }
    if (m_editor.points().empty()) {
        m_notice.refuse(core::tr(kNoShape));
    } else {
        replace(Name::applyShape, zone::applied(zone(), m_editor.place()->frame, *frames));
    }
}

void RangeActions::setActive(Where where, bool active) {
    if (const auto frames = hasPlace() ? framesOf(where) : std::nullopt) {
        replace(Name::active, zone::flagged(zone(), *frames, active));
    }
}

void RangeActions::activeInRangeOnly() {
    if (hasRange()) {
        replace(Name::active, zone::flagged(zone(), *m_editor.range(), true, true));
    }
}

} // namespace zoneedit
