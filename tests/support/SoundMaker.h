// The sound track of a made clip: one channel of Vorbis whose pitch rises all the time, so that no
// two places sound alike.
#pragma once

#include "tests/support/OggPager.h"

namespace support {

inline constexpr int kClipSoundRate = 8000;

/// The track before it is coded, from -0.5 to 0.5.
[[nodiscard]] float soundAt(double seconds);
[[nodiscard]] EncodedStream encodeSound(double seconds);

} // namespace support
