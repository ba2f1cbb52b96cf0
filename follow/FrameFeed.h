// The grey pictures of a clip, frame by frame in either direction. Backwards, some frames at a time
// are decoded forwards and kept, so that each is decoded once.
#pragma once

#include <cstdint>
#include <vector>

#include "src/LumaReader.h"
#include "track/Picture.h"

namespace follow {

class FrameFeed {
public:
    /// The reader outlives it.
    FrameFeed(theora::LumaReader& reader, bool backwards)
        : m_reader(reader), m_backwards(backwards) {}

    /// Valid until the next call; no pixels when the frame does not come.
    [[nodiscard]] track::GreyView frame(int number);

private:
    [[nodiscard]] bool fill(int last);

    theora::LumaReader& m_reader;
    bool m_backwards;
    int m_first = 0; ///< of the kept frames
    std::vector<std::vector<std::uint8_t>> m_kept;
};

} // namespace follow
