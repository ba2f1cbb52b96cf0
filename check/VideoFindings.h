// The findings of one video and its zones. This module's sources only.
#pragma once

#include <string>
#include <vector>

#include "check/Facts.h"
#include "check/Finding.h"

namespace check {

/// `isZoneUsed`: for each of its zones, whether an action waits for it.
[[nodiscard]] std::vector<Finding> findingsOf(const std::string& video, const VideoFacts& facts,
                                              const std::vector<bool>& isZoneUsed);

} // namespace check
