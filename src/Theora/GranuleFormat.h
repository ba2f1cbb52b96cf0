// Frame numbers from the granule positions of a Theora stream: the last keyframe's number in the
// high bits, the frames since then in the low bits. Since version 3.2.1, streams count from 1.
// https://www.theora.org/doc/Theora.pdf, A.2.3
#pragma once

#include <cstdint>

#include <theora/theoradec.h>

namespace theora {

class GranuleFormat {
public:
    explicit GranuleFormat(const th_info& info);

    /// 0-based number of the frame with a granule position (>= 0). -1 for position 0, of the header
    /// pages, in streams that count from 1.
    [[nodiscard]] std::int64_t frameOf(std::int64_t granule) const;
    /// Number of the keyframe the frame depends on.
    [[nodiscard]] std::int64_t keyframeOf(std::int64_t granule) const;
    /// How far apart keyframes can be.
    [[nodiscard]] std::int64_t longestGroup() const { return std::int64_t{1} << m_shift; }
    /// Adds `count` to every number: for streams whose first frame number would be negative.
    void shiftNumbers(std::int64_t count) { m_offset += count; }

private:
    int m_shift;
    std::int64_t m_offset;
};

} // namespace theora
