// Edits of whole shapes, and of many frames at once: each works out what ZoneSession::replaceShapes
// is to put in place of what a zone holds. Only reads the zone; no window.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/Geometry.h"
#include "zone/NewShapes.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeStretch.h"

namespace zone {

class Zone;

/// Where an edit of the shape on one frame leads to.
struct EditReach {
    int frame = 0;
    /// That change as `frame` does, which is among them.
    FrameRange frames;
    /// `frame` and those of its neighbouring keys up to which shapes are blended anew; empty: none.
    std::vector<int> keys;
    /// Whether a later frame in `frames` that had another shape is worth a word.
    bool isCarried = false;
};

/// An edit of one frame, and of all behind it if changes are carried forward.
[[nodiscard]] EditReach plainReach(const Zone& zone, int frame, bool carries);
/// An edit that blends up to the neighbouring ones of `keys`; behind the last key, or the last one
/// before keys of other numbers of points, it is carried.
[[nodiscard]] EditReach fillReach(const Zone& zone, int frame, std::span<const int> keys,
                                  bool carries);

using Points = std::vector<platform::Point>;
using Reshape = std::function<void(Points&)>;

/// The zone after `reshape` was called for the shapes that the edit reaches. Keys with another
/// number of points are not blended to. Frames without a shape stay without.
[[nodiscard]] NewShapes reshaped(const Zone& zone, const EditReach& reach, const Reshape& reshape);

// What the author does to a shape.
/// Nothing for an index that is no point.
[[nodiscard]] Reshape movedPoint(int index, platform::Point to);
[[nodiscard]] Reshape shifted(platform::Point delta);
/// Both about the middle of the shape; the angle in degrees, clockwise on the screen.
[[nodiscard]] Reshape scaled(double factor);
[[nodiscard]] Reshape rotated(double degrees);
[[nodiscard]] Reshape replaced(Points points);

/// The frames with the shape of `frame`, which is one of them or next to them; active flags stay.
[[nodiscard]] NewShapes applied(const Zone& zone, int frame, FrameRange frames);
/// The flag of `frames`; with `only`, all others get the opposite one.
[[nodiscard]] NewShapes flagged(const Zone& zone, FrameRange frames, bool active,
                                bool only = false);
/// The keys on either side that shape the frames of `range` once those within it are gone. None
/// where a side has no key.
[[nodiscard]] std::vector<int> keysBeside(std::span<const int> keys, FrameRange range);
/// Without the keys in `range`: frames from the key in front of it to the one behind it are blended
/// anew; where there is none, the other one is held. None when there is neither, when those beside
/// it have other numbers of points, or when there would be too many: see canBlend().
[[nodiscard]] std::optional<NewShapes> withoutKeys(const Zone& zone, std::span<const int> keys,
                                                   FrameRange range, BlendWay way);
/// A point behind point `index` of `frame`, at `at`, and on every other frame: where the line
/// between its neighbours takes it, or as the last one, at `at`, where these are missing.
[[nodiscard]] NewShapes withPointEverywhere(const Zone& zone, int frame, int index,
                                            platform::Point at);
/// The frames on which point number `index`, which `frame` has, is not where its neighbours would
/// take it from there.
[[nodiscard]] int strayFrames(const Zone& zone, int frame, int index);
/// Without point number `index`, on every frame that has one.
[[nodiscard]] NewShapes withoutPoint(const Zone& zone, int index);
/// Whether the zone's frames have these points and flags already.
[[nodiscard]] bool holdsShapes(const Zone& zone, const ShapeStretch& stretch);

/// The edge whose line passes within `reach` pixels of `at`, as the index of its first point; -1
/// when none does.
[[nodiscard]] int edgeAt(std::span<const platform::Point> points, platform::Point at, double reach);

} // namespace zone
