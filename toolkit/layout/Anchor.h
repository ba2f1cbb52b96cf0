// How a control with a "pos" follows the size of its container: the edges at which it keeps its
// distance to the container's.
#pragma once

#include <optional>
#include <string_view>

#include "platform/Geometry.h"

namespace toolkit {

struct Anchor {
    bool left = true;
    bool top = true;
    bool right = false;
    bool bottom = false;
};

/// Any of "left", "top", "right" and "bottom", with commas between; empty: none.
[[nodiscard]] std::optional<Anchor> parseAnchor(std::u16string_view text);

/// Where `place`, chosen for a container of the size `designed`, stands in one of the size `now`.
/// Two opposite edges stretch it, never to less than nothing; neither keeps its distance from the
/// middle.
[[nodiscard]] platform::Rect anchored(const platform::Rect& place, const Anchor& anchor,
                                      platform::Size designed, platform::Size now);

} // namespace toolkit
