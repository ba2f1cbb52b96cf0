// What a zone editor knows while it edits: which zone and handle are chosen, how far changes reach,
// and where each frame's centre handle was shown. None of it is part of the zones or their files.
// Owned by the editor, handed to every operation. UI thread only.
#pragma once

#include <map>
#include <set>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeStretch.h"

namespace zone {

class TrackChanges;
class Zone;
class ZoneManager;

/// The last stretch that holds a frame tells.
struct FollowedFrames {
    FrameRange frames;
    bool isFollowed = true; ///< else the author has chosen their shapes
};

/// Gaps that one step has blended, and where one has put other shapes. Of those that hold a frame,
/// the last tells.
struct FilledGaps {
    /// Ascending. Blended ones lead from the key `first` to the key `end`, which the next one may
    /// begin with.
    std::vector<FrameRange> gaps;
    bool isFilled = true;

    bool operator==(const FilledGaps&) const = default;
};

/// What belongs to one zone.
struct ZoneEditing {
    /// A point's index, the point count for the centre handle, or -1; one for all frames.
    int selectedPoint = -1;
    /// Of the frames shown so far.
    std::map<int, platform::Point> centers;
    /// Frames that the author has given a shape since the zones were opened. Steps that are taken
    /// back take back theirs.
    std::set<int> shapedFrames;
    /// Stretches that got their shapes by following, and those that got others at once, in the
    /// order of the steps.
    std::vector<FollowedFrames> followed;
    /// In the order of the steps.
    std::vector<FilledGaps> filled;
    /// Whether it had no points at some time since the zones were opened: no frame has a shape of
    /// an earlier visit then.
    bool isNew = false;

    /// Whether the frame has its shape from the keys on either side of a gap.
    [[nodiscard]] bool isBlended(int frame) const { return placeOf(frame) == Place::inside; }
    /// The frames that are keys whatever the shapes look like: those that the author has shaped,
    /// and the ends of gaps that were blended.
    [[nodiscard]] std::set<int> knownKeys() const;
    /// (0, 0) for a frame that was never shown.
    [[nodiscard]] platform::Point centerOf(int frame) const;
    /// The first frame behind `frame`, at most `end`, whose centre differs from its own.
    [[nodiscard]] int sameCenterUntil(int frame, int end) const;
    /// Notes the centre of a frame that is shown now: clicks and drags of the centre handle use
    /// it until the frame is shown again. Nothing for a frame without a shape.
    void noteShown(const Zone& zone, int frame);

private:
    enum class Place { anywhere, atEnd, inside };
    /// With regard to the gaps.
    [[nodiscard]] Place placeOf(int frame) const;
};

struct EditContext {
    /// The zone that is edited and drawn, -1 for none.
    int currentZone = -1;
    /// Whether changes of points and of the active flag reach all later frames.
    bool progressChanges = true;
    /// Half the side of a handle in display pixels, which is less where the picture is enlarged.
    double handleReach = 8;
    /// The frame on show, -1 for none.
    int shownFrame = -1;
    /// By zone number; as long as the editing needed so far.
    std::vector<ZoneEditing> zones;

    /// `index` must not be negative.
    [[nodiscard]] ZoneEditing& zone(int index);
    void insertZone(int index, ZoneEditing editing);
    void removeZone(int index);
    /// Notes the centre of the frame on show, for the current zone. Without memory it stays where
    /// it was.
    void noteShown(const ZoneManager& manager) noexcept;
};

/// What an operation on one zone depends on.
struct EditScope {
    ZoneEditing& editing;
    bool progressChanges = true;
    /// Points are clamped to it; a side that is not positive clamps negative values alone.
    platform::Size area = {};
    /// Receives what the operation does to the zone's frames; null when it need not be undoable.
    TrackChanges* changes = nullptr;
    double handleReach = 8;
};

} // namespace zone
