// What is done to picture and sound on their way into a clip, as the converter is told. Used by
// Plan.cpp.
#pragma once

#include <string>

#include "import/Plan.h"
#include "import/Source.h"

namespace imports {

/// The filters of the picture, behind which it is turned already.
[[nodiscard]] std::string videoFilters(const VideoStream& video, const Ratio& rate,
                                       const Framing& framing);
[[nodiscard]] std::string soundFilters(const SoundStream& sound);

} // namespace imports
