// Finds where in a file to start decoding for a frame, by probing pages: interpolation, bisection
// where that does not shrink the interval, and a short linear walk at the end.
#pragma once

#include <cstdint>
#include <map>

#include "src/Theora/PacketReader.h"
#include "src/Theora/PageReader.h"

namespace theora {

/// Where to start so that a wanted frame can be decoded.
struct DecodeStart {
    PagePosition position;     ///< at or before the keyframe
    std::int64_t keyframe = 0; ///< the first frame to decode; packets before it are skipped
    bool isKeyframe = false;   ///< false: no keyframe before the frame, decoding starts blank
};

/// One thread. Has its own readers, so a decoder's position is unaffected.
class PageSearch {
public:
    /// All references outlive the search.
    PageSearch(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
               const GranuleFormat& format);

    /// The last page whose granule position is of a frame before `frame`; the start when there is
    /// none. When stopped: any page before `frame`.
    [[nodiscard]] PagePosition lastPageBefore(std::int64_t frame);
    /// The last keyframe at or before `frame`. When stopped the result is undefined.
    [[nodiscard]] DecodeStart startFor(std::int64_t frame);
    /// Probes of all searches so far.
    [[nodiscard]] int probeCount() const { return m_probes; }

private:
    struct Interval {
        PagePosition low;
        std::int64_t high = 0;
        std::int64_t highFrame = 0;
    };

    void startFromKnownPages(Interval& interval, std::int64_t frame) const;
    void remember(const PagePosition& position);
    [[nodiscard]] bool isNear(const Interval& interval, std::int64_t frame) const;
    void narrow(Interval& interval, std::int64_t frame, bool trustRate);
    [[nodiscard]] bool walk(Interval& interval, std::int64_t frame, std::int64_t limit);
    [[nodiscard]] double bytesPerFrame() const;
    [[nodiscard]] std::int64_t guess(const Interval& interval, std::int64_t frame,
                                     std::int64_t margin) const;
    [[nodiscard]] bool nextNumberedPage(PagePosition& position, std::int64_t limit);
    [[nodiscard]] DecodeStart lastKeyframeBetween(const PagePosition& position, std::int64_t frame);
    [[nodiscard]] DecodeStart searchBackwards(std::int64_t frame);

    const StreamLayout& m_layout;
    const GranuleFormat& m_format;
    PageReader m_pages;
    PacketReader m_packets;
    std::map<std::int64_t, PagePosition> m_known; ///< numbered pages seen so far, by frame
    int m_probes = 0;
};

} // namespace theora
