// What is done to picture and sound on their way into a clip, in the converter's notation. This
// module's sources only.
#pragma once

#include <string>

#include "import/Plan.h"
#include "import/Source.h"

namespace imports {

// The clip begins `lead` seconds after the file: what is before that is cut off.

/// The filters of the picture, behind which it is turned already.
[[nodiscard]] std::string videoFilters(const VideoStream& video, const Ratio& rate,
                                       const Framing& framing, double lead);
[[nodiscard]] std::string soundFilters(const SoundStream& sound, double lead);

} // namespace imports
