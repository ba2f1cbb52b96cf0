#include "zone/ZoneOperations.h"

#include <algorithm>
#include <utility>

#include "zone/Zone.h"

namespace zone {

Zone& ZoneModel::changing(int zone) noexcept {
    ++changeCount;
    return *zones->zone(zone);
}

EditShapes::EditShapes(int zone, FrameRange frames, Edit edit, TrackChanges::Keep keep,
                       const ShapedFrames& shaped)
    : m_zone(zone), m_frames(frames), m_edit(std::move(edit)), m_changes(keep),
      m_isRepetition(keep == TrackChanges::Keep::nothingTwice), m_shaped(shaped) {}

void EditShapes::apply(ZoneModel& model) {
    Zone& zone = model.changing(m_zone);
    ZoneEditing& editing = model.context.zone(m_zone);
    int& selected = editing.selectedPoint;
    if (m_edit) {
        m_selectedBefore = selected;
        m_shapedChange.prepare(editing.shapedFrames, m_shaped);
        m_gaps = gapsOf(editing);
        m_tellsGaps = !m_gaps.gaps.empty();
        m_makesNew = !editing.isNew && !zone.hasPoints();
        editing.filled.reserve(editing.filled.size() + 1);
        editing.followed.reserve(editing.followed.size() + 1);
        note(editing);
        m_shapedChange.swap(editing.shapedFrames);
        try {
            std::exchange(m_edit, nullptr)(*model.zones, model.context, &m_changes);
        } catch (...) {
            revert(model);
            throw;
        }
        m_selectedAfter = selected;
        model.counts += m_changes.counts();
    } else {
        zone.redo(m_changes);
        note(editing);
        selected = m_selectedAfter;
        m_shapedChange.swap(editing.shapedFrames);
    }
    model.context.noteShown(*model.zones);
}

void EditShapes::revert(ZoneModel& model) noexcept {
    model.changing(m_zone).revert(m_changes);
    ZoneEditing& editing = model.context.zone(m_zone);
    editing.selectedPoint = m_selectedBefore;
    m_shapedChange.swap(editing.shapedFrames);
    if (tellsFollowed()) {
        editing.followed.pop_back();
    }
    if (m_tellsGaps) {
        m_gaps = std::move(editing.filled.back());
        editing.filled.pop_back();
    }
    editing.isNew = editing.isNew && !m_makesNew;
    model.context.noteShown(*model.zones);
}

// Needs no memory: there is room, which revert() leaves.
void EditShapes::note(ZoneEditing& editing) noexcept {
    if (tellsFollowed()) {
        const bool isFollowed = m_shaped.followed.count() > 0;
        editing.followed.push_back({isFollowed ? m_shaped.followed : m_shaped.leave, isFollowed});
    }
    if (m_tellsGaps) {
        editing.filled.push_back(std::move(m_gaps));
    }
    editing.isNew = editing.isNew || m_makesNew;
}

FilledGaps EditShapes::gapsOf(const ZoneEditing& editing) const {
    if (m_isRepetition) {
        return {};
    }
    if (!m_shaped.filled.empty()) {
        return {m_shaped.filled, true};
    }
    if (editing.filled.empty()) {
        return {};
    }
    // Beside its frames the course may jump now.
    const FrameRange all{m_frames.first - 1, m_frames.end};
    if (tellsFollowed()) {
        return {{all}, false};
    }
    if (m_shaped.joins >= 0) {
        return {{{all.first, m_frames.first}, {m_frames.end - 1, all.end}}, false};
    }
    return {};
}

std::vector<ZoneChange> EditShapes::changes() const {
    return {{ZoneChange::What::shapes, m_zone, m_frames}};
}

bool EditShapes::absorb(EditShapes& next) noexcept {
    if (!next.m_isRepetition) {
        return false;
    }
    m_changes.absorb(next.m_changes);
    m_selectedAfter = next.m_selectedAfter;
    return true;
}

void RenameZone::swapName(ZoneModel& model) noexcept {
    model.changing(m_zone).swapName(m_name);
}

std::vector<ZoneChange> RenameZone::changes() const {
    return {{ZoneChange::What::name, m_zone, {}}};
}

void ListZone::apply(ZoneModel& model) {
    m_currentBefore = model.context.currentZone;
    if (m_adds) {
        insert(model);
        model.context.currentZone = m_index;
    } else {
        remove(model);
        model.context.currentZone = std::min(m_index, model.zones->zoneCount() - 1);
    }
    model.context.noteShown(*model.zones);
}

void ListZone::revert(ZoneModel& model) noexcept {
    if (m_adds) {
        remove(model);
    } else {
        insert(model);
    }
    model.context.currentZone = m_currentBefore;
    model.context.noteShown(*model.zones);
}

void ListZone::insert(ZoneModel& model) {
    model.context.insertZone(m_index, std::move(m_editing));
    model.zones->insertZone(m_index, std::move(m_zone));
    ++model.changeCount;
}

void ListZone::remove(ZoneModel& model) {
    ++model.changeCount;
    m_zone = model.zones->zone(m_index);
    m_editing = std::move(model.context.zone(m_index));
    model.zones->removeZone(m_index);
    model.context.removeZone(m_index);
}

std::vector<ZoneChange> ListZone::changes() const {
    return {{ZoneChange::What::list, m_index, {}}};
}

std::size_t ListZone::bytes() const {
    return sizeof *this + (m_zone ? m_zone->bytes() : 0);
}

void ReplaceZones::swap(ZoneModel& model) noexcept {
    ++model.changeCount;
    model.zones->swapZones(m_zones);
    model.context.zones.swap(m_editing);
    std::swap(model.context.currentZone, m_current);
    model.context.noteShown(*model.zones);
}

std::vector<ZoneChange> ReplaceZones::changes() const {
    return {{ZoneChange::What::list, 0, {}}};
}

std::size_t ReplaceZones::bytes() const {
    std::size_t total = sizeof *this;
    for (const std::shared_ptr<Zone>& zone : m_zones) {
        total += zone->bytes();
    }
    return total;
}

} // namespace zone
