// What the pictures show of the demo scenes.
#pragma once

namespace screenshots {

inline constexpr const char* kScene = "Fire Drill Level 1";
inline constexpr const char* kVideo = "alarm-corridor.ogv";
/// Of the video: its first zone is large there.
inline constexpr int kFrame = 62;

} // namespace screenshots
