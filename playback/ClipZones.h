// The saved zones of a clip, as the rules of the player take them.
#pragma once

#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "player/Clip.h"

namespace playback {

/// `videoPath`: of a clip of `video` pixels. None where the files are missing or unreadable, which
/// is not logged. Any thread.
[[nodiscard]] std::vector<player::ZoneTrack> readZones(const std::string& videoPath,
                                                       platform::Size video);

} // namespace playback
