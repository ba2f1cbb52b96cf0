// When scenes were opened last: a file beside the scenes, never one of theirs. It can be lost
// without harm. Main thread only.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace recovery {

/// By the scene's name in the list, as Clock::now(). Empty if nothing is known; odd lines of the
/// file are passed over.
[[nodiscard]] std::map<std::string, std::int64_t> openedScenes();

/// Notes that this scene has been opened now. Only the last 500 are kept. Failures are passed over.
void noteOpenedScene(const std::string& name);

} // namespace recovery
