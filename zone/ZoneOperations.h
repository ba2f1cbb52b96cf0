// The reversible changes that a ZoneSession makes, in the form that edit/History.h asks for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/OneOf.h"
#include "zone/EditContext.h"
#include "zone/SavedContent.h"
#include "zone/ShapeStretch.h"
#include "zone/ShapedFrames.h"
#include "zone/StepReach.h"
#include "zone/TrackChanges.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zone {

/// What listeners may have to read again.
struct ZoneChange {
    enum class What {
        list,   ///< the list of zones, from number `zone` on
        name,   ///< of zone `zone`
        shapes, ///< points and active flags of zone `zone` in `frames`
    };
    What what = What::list;
    int zone = 0;
    FrameRange frames;

    bool operator==(const ZoneChange&) const = default;
};

/// What the operations work on.
struct ZoneModel {
    std::shared_ptr<ZoneManager> zones;
    EditContext context;
    SavedContent saved;
    std::uint64_t changeCount = 0; ///< grows with every change
    FrameCounts counts;            ///< of the step that was made last

    /// The zone, about to change; it must be there.
    [[nodiscard]] Zone& changing(int zone) noexcept;
};

/// Changes shapes of one zone.
class EditShapes {
public:
    /// Calls the manager's operation. Runs once.
    using Edit = std::function<void(ZoneManager&, EditContext&, TrackChanges*)>;

    /// A repetition (Keep::nothingTwice) shapes the same frames as what it repeats.
    EditShapes(int zone, FrameRange frames, Edit edit, TrackChanges::Keep keep,
               const ShapedFrames& shaped);

    void apply(ZoneModel& model);
    void prepare(ZoneModel& model) const { model.zones->zone(m_zone)->unshare(); }
    void revert(ZoneModel& model) noexcept;
    [[nodiscard]] std::vector<ZoneChange> changes() const;
    [[nodiscard]] std::size_t bytes() const {
        return sizeof *this + m_changes.bytes() + m_shapedChange.bytes() +
               2 * m_shaped.filled.capacity() * sizeof(FrameRange);
    }
    bool absorb(EditShapes& next) noexcept;

private:
    /// Repetitions tell what the first has told.
    [[nodiscard]] bool tellsFollowed() const { return !m_isRepetition && m_shaped.tellsFollowed(); }
    /// The step's part of what editing remembers beside the shaped frames.
    void note(ZoneEditing& editing) noexcept;
    [[nodiscard]] FilledGaps gapsOf(const ZoneEditing& editing) const;

    int m_zone;
    FrameRange m_frames;
    Edit m_edit; ///< empty once it has run
    TrackChanges m_changes;
    bool m_isRepetition;
    int m_selectedBefore = -1;
    int m_selectedAfter = -1;
    ShapedFrames m_shaped;
    ShapedFramesChange m_shapedChange; ///< made with the first apply
    FilledGaps m_gaps;                 ///< that it tells of, while they are not in the context
    bool m_tellsGaps = false;
    bool m_makesNew = false; ///< the zone
};

class RenameZone {
public:
    RenameZone(int zone, std::string name) : m_zone(zone), m_name(std::move(name)) {}

    void apply(ZoneModel& model) { swapName(model); }
    void revert(ZoneModel& model) noexcept { swapName(model); }
    [[nodiscard]] std::vector<ZoneChange> changes() const;
    [[nodiscard]] std::size_t bytes() const { return sizeof *this + m_name.capacity(); }

private:
    void swapName(ZoneModel& model) noexcept;

    int m_zone;
    std::string m_name;
};

/// Puts a zone into the list and makes it the current one, or takes one out.
class ListZone {
public:
    /// An empty `added` removes the zone at `index`; `isNew` is ZoneEditing's.
    ListZone(int index, std::shared_ptr<Zone> added, bool isNew = false)
        : m_index(index), m_zone(std::move(added)) {
        m_editing.isNew = isNew;
    }

    void apply(ZoneModel& model);
    void revert(ZoneModel& model) noexcept;
    [[nodiscard]] std::vector<ZoneChange> changes() const;
    [[nodiscard]] std::size_t bytes() const;

private:
    void insert(ZoneModel& model);
    void remove(ZoneModel& model);

    int m_index;
    std::shared_ptr<Zone> m_zone; ///< while it is in no list
    ZoneEditing m_editing;
    bool m_adds = m_zone != nullptr;
    int m_currentBefore = -1;
};

/// Replaces all zones; what editing remembers of each goes with them.
class ReplaceZones {
public:
    explicit ReplaceZones(std::vector<std::shared_ptr<Zone>> zones)
        : m_zones(std::move(zones)), m_current(m_zones.empty() ? -1 : 0) {}

    void apply(ZoneModel& model) { swap(model); }
    void revert(ZoneModel& model) noexcept { swap(model); }
    [[nodiscard]] std::vector<ZoneChange> changes() const;
    [[nodiscard]] std::size_t bytes() const;

private:
    void swap(ZoneModel& model) noexcept;

    std::vector<std::shared_ptr<Zone>> m_zones; ///< those that are not in the model
    std::vector<ZoneEditing> m_editing;
    int m_current;
};

using ZoneOperation =
    edit::OneOf<ZoneModel, ZoneChange, EditShapes, RenameZone, ListZone, ReplaceZones>;

} // namespace zone
