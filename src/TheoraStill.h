// One small picture of a clip and what its headers say, for lists of clips that are not open.
#pragma once

#include <functional>
#include <string>

#include "platform/Bitmap.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"

namespace theora {

struct ClipStill {
    bool isPlayable = false;
    platform::Size frame{};     ///< of a playable clip
    double seconds = -1;        ///< -1 = unknown
    platform::Bitmap picture{}; ///< empty if none decodes, or if frames are very large
};

/// Reads the clip at `path` (UTF-8): its first picture or, if that is of one colour, a later one,
/// reduced to fit into `box`. `stop` is asked between reads and between packets; once it says true,
/// the rest of the work is left out. Never throws. Any thread.
[[nodiscard]] ClipStill readClipStill(const std::string& path, platform::FileSystem& files,
                                      platform::Size box, const std::function<bool()>& stop);

/// `picture` reduced to fit into `box` with its sides in proportion; never enlarged.
[[nodiscard]] platform::Bitmap reduced(const platform::Bitmap& picture, platform::Size box);

} // namespace theora
