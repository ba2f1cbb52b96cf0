#include "ZoneEdit/RangeActions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "zone/NewShapes.h"
#include "zone/PointMatching.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeEdits.h"
#include "zone/ShapeKeys.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {
namespace {

using Name = zone::StepLabel::Name;

constexpr core::Text kNeedsKeys = "Interpolate needs a key at both ends of the range."_tr;
constexpr core::Text kTooManyPoints = "These shapes have too many points for so many frames."_tr;
constexpr core::Text kNoShape = "There is no shape to copy on this frame."_tr;

bool hasEmptyKey(const zone::Zone& zone, const std::vector<int>& keys) {
    return std::ranges::any_of(keys, [&zone](int key) { return zone.outline(key).empty(); });
}

} // namespace

RangeActions::RangeActions(zone::ZoneSession& session, ShapeEditor& editor, NoticePresenter& notice)
    : m_session(session), m_editor(editor), m_notice(notice),
      m_changes(session.observe([this](const auto&) { m_offered.clear(); })) {}

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
        const int ends[] = {range->first, range->end - 1};
        std::ranges::copy_if(all, std::back_inserter(keys),
                             [&](int key) { return ends[0] < key && key < ends[1]; });
        const auto isKey = [&](int frame) {
            return std::ranges::binary_search(all, frame) || m_editor.markedKeys().contains(frame);
        };
        if (ends[0] == ends[1] || !std::ranges::all_of(ends, isKey)) {
            return std::nullopt;
        }
        keys.insert(keys.begin(), ends[0]);
        keys.push_back(ends[1]);
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
    } else if (const auto blend =
                   zone::blendedShapes(zone(), *keys, m_editor.way(), m_editor.keys())) {
        replace(Name::interpolate, {.stretch = *blend, .filled = zone::blendedGaps(zone(), *keys)});
    } else {
        refuse(*keys);
    }
}

void RangeActions::refuse(const std::vector<int>& keys) {
    const auto numbers = zone::unequalKeys(zone(), keys);
    if (!numbers) {
        m_notice.refuse(core::tr(kTooManyPoints));
        return;
    }
    const std::u16string text =
        core::tr("The keys have {0} and {1} points: give them the same number first."_tr,
                 numbers->first, numbers->second);
    if (hasEmptyKey(zone(), keys)) { // nothing can be made of no point
        m_notice.refuse(text);
        return;
    }
    m_offered = keys;
    m_offeredAt = m_editor.place().value();
    m_notice.offer(text, {kMatchPointsButton});
}

void RangeActions::interpolateAll() {
    if (!hasPlace()) {
        return;
    }
    const std::vector<int> keys = m_editor.keys();
    if (keys.size() < 2) {
        m_notice.refuse(core::tr(kNeedsKeys));
        return;
    }
    const bool canBlend = zone::canBlend(zone(), keys);
    if (canBlend) {
        replace(Name::interpolate, {.stretch = zone::filledGaps(zone(), keys, m_editor.way()),
                                    .filled = zone::blendedGaps(zone(), keys)});
    }
    if (!canBlend || zone::unequalKeys(zone(), keys)) {
        refuse(keys);
    }
}

void RangeActions::matchPoints() {
    if (!hasPlace()) {
        return;
    }
    const std::vector<int> all = m_editor.keys();
    std::vector<int> keys;
    if (const auto range = m_editor.range()) {
        keys = {range->first};
        std::ranges::copy_if(all, std::back_inserter(keys),
                             [&](int key) { return range->first < key && key < range->end - 1; });
        keys.push_back(range->end - 1);
    } else {
        keys = zone::keysAround(all, m_editor.place().value().frame);
    }
    match(m_editor.place().value(), keys);
}

void RangeActions::matchOffered() {
    const std::vector<int> keys = std::exchange(m_offered, {});
    m_notice.close();
    if (!keys.empty()) {
        match(m_offeredAt, keys);
    }
}

void RangeActions::match(ShapeEditor::Place place, const std::vector<int>& keys) {
    const zone::Zone& zone = *m_session.zones().zone(place.zone);
    if (const auto shapes = zone::matched(zone, keys)) {
        m_session.endGesture();
        m_session.replaceShapes({Name::matchPoints, place.zone, place.frame}, *shapes);
        const auto count = zone.outline(keys.front()).size();
        m_notice.offer(core::tr("Point counts made equal: {0}."_tr, count), {kNoticeUndoButton});
    } else if (zone::unequalKeys(zone, keys) && !hasEmptyKey(zone, keys)) {
        m_notice.refuse(core::tr(kTooManyPoints));
    }
}

void RangeActions::deleteKeys() {
    if (!hasRange()) {
        return;
    }
    const std::vector<int> keys = m_editor.keys();
    const zone::FrameRange range = *m_editor.range();
    const auto isInRange = [&range](int key) { return range.contains(key); };
    if (std::ranges::none_of(keys, isInRange) &&
        std::ranges::none_of(m_editor.markedKeys().frames(), isInRange)) {
        return;
    }
    if (const auto shapes = zone::withoutKeys(zone(), keys, range, m_editor.way())) {
        replace(Name::interpolate, *shapes);
    } else if (const std::vector<int> beside = zone::keysBeside(keys, range); !beside.empty()) {
        refuse(beside);
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
    if (isEmptyZone) { // everywhere; it may be switched off on some frames already
        const int frame = m_editor.place()->frame;
        replace(Name::paste, zone::reshaped(zone(), {frame, {0, zone().frameCount()}, {}},
                                            zone::replaced(*copiedShape())));
    } else if (here == copiedShape()->size()) {
        m_session.endGesture();
        m_editor.reshapeAll(Name::paste, zone::replaced(*copiedShape()));
    } else {
        m_notice.offer(
            core::tr("The copied shape has {0} point, this zone {1}: paste it as a new zone?|"
                     "The copied shape has {0} points, this zone {1}: paste it as a new zone?"_trn,
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
