// Shapes between keys: what each frame's points are when those of some frames are given. Values, no
// window; everything here only reads. See ShapeEdits.h for the edits made of it.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeStretch.h"

namespace zone {

class Zone;
struct FollowedFrames;

enum class BlendWay {
    straight, ///< each point goes evenly from key to key
    smooth,   ///< through the keys without a jerk, and never beyond a key and back
};

/// Of all shapes that one edit makes; more would take too much memory.
inline constexpr std::size_t kMaxEditedPoints = 32'000'000;

struct KeyShape {
    int frame = 0;
    std::span<const platform::Point> points;
};

/// The points on `frame`, which lies between two of the keys or on one. These are in order of their
/// frames, at least one, and all have as many points. Half a pixel is rounded away from zero.
[[nodiscard]] std::vector<platform::Point> blended(std::span<const KeyShape> keys, int frame,
                                                   BlendWay way);

/// Whether the shapes between these keys, in order, stay within kMaxEditedPoints.
[[nodiscard]] bool canBlend(const Zone& zone, std::span<const int> keys);
/// The zone's frames from the first key to the last, blended; each keeps its active flag. None when
/// there are fewer than two keys, their numbers of points differ (see unequalKeys()) or there would
/// be too many of them (see canBlend()). A smooth course goes on as through those of `all` that are
/// next to them, so that gaps filled one by one are those filled together.
[[nodiscard]] std::optional<ShapeStretch> blendedShapes(const Zone& zone, std::span<const int> keys,
                                                        BlendWay way, std::span<const int> all);
/// The same between all neighbouring keys that have as many points; frames elsewhere stay. There
/// is at least one key.
[[nodiscard]] ShapeStretch filledGaps(const Zone& zone, std::span<const int> keys, BlendWay way);
/// Those gaps, or the ones that blendedShapes() fills.
[[nodiscard]] std::vector<FrameRange> blendedGaps(const Zone& zone, std::span<const int> keys);
/// The numbers of points of the first two neighbouring keys that differ in it.
[[nodiscard]] std::optional<std::pair<int, int>> unequalKeys(const Zone& zone,
                                                             std::span<const int> keys);

/// The frames that an author would call keys: `keys`, as they can be told from the shapes, and
/// those of `shaped`, without frames at which a shape merely stops to be held, or is held again
/// after a frame of its own between equal ones. In order.
[[nodiscard]] std::vector<int> authoredKeys(const Zone& zone, std::span<const int> keys,
                                            const std::set<int>& shaped);
/// Of those, the keys that an author has set. Where something was followed, nearly every frame may
/// be a key; as nobody knows what was followed in an earlier visit, so are keys with two others
/// close by on either side.
[[nodiscard]] std::vector<int> keysSetByHand(std::span<const int> authored,
                                             const std::set<int>& shaped,
                                             std::span<const FollowedFrames> followed);
/// Of keys in order, those around a frame: the last in front of it, itself if it is one, and the
/// first behind it.
[[nodiscard]] std::vector<int> keysAround(std::span<const int> keys, int frame);

} // namespace zone
