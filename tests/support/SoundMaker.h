// The sound track of a made clip: one channel of Vorbis whose pitch rises all the time, so that no
// two places sound alike.
#pragma once

#include <vector>

#include "tests/support/OggPager.h"

namespace support {

struct SoundStream {
    std::vector<OggPacketData> headers; ///< three
    std::vector<OggPacketData> data;
};

[[nodiscard]] SoundStream encodeSound(double seconds, int samplesPerSecond);

} // namespace support
