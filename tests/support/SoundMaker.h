// The sound track of a made clip: one channel of Vorbis with a rising pitch, so that every position
// sounds different.
#pragma once

#include "tests/support/OggPager.h"

namespace support {

inline constexpr int kClipSoundRate = 8000;

/// The track before encoding, from -0.5 to 0.5.
[[nodiscard]] float soundAt(double seconds);
[[nodiscard]] EncodedStream encodeSound(double seconds);

} // namespace support
