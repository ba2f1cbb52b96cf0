#include "src/Theora/PageSearch.h"

#include <algorithm>

namespace theora {
namespace {

constexpr int kMaxProbes = 64;                 // a damaged file may never settle
constexpr std::int64_t kWalkBytes = 64 * 1024; // intervals below this are walked page by page
constexpr std::int64_t kAimBefore =
    48 * 1024; // aim short of the frame: pages behind it are useless
constexpr std::int64_t kFirstBackwardStep = 64; // frames; doubled until a keyframe is found

} // namespace

PageSearch::PageSearch(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
                       const GranuleFormat& format)
    : m_layout(layout), m_format(format), m_pages(source, stop),
      m_packets(source, stop, layout, format) {}

bool PageSearch::nextNumberedPage(PagePlace& place, std::int64_t limit) {
    ogg_page page;
    while (m_pages.next(page, limit)) {
        const std::int64_t granule = ogg_page_granulepos(&page);
        if (ogg_page_serialno(&page) != m_layout.serial || granule < 0 ||
            m_pages.pageOffset() < m_layout.firstPage)
            continue;
        place = {m_pages.pageOffset(), m_format.frameOf(granule), m_format.keyframeOf(granule),
                 false};
        return true;
    }
    return false;
}

std::int64_t PageSearch::guess(const Interval& interval, std::int64_t frame, bool bisect) const {
    const std::int64_t span = interval.high - interval.low.offset;
    std::int64_t aim = interval.low.offset + span / 2;
    const std::int64_t lowFrame = std::max(interval.low.frame, m_layout.firstFrame - 1);
    if (!bisect && interval.highFrame > lowFrame) {
        const double share = static_cast<double>(frame - lowFrame) /
                             static_cast<double>(interval.highFrame - lowFrame);
        const auto offset =
            static_cast<std::int64_t>(static_cast<double>(span) * std::clamp(share, 0.0, 1.0));
        aim = interval.low.offset + offset - kAimBefore;
    }
    return std::clamp(aim, interval.low.offset + 1, interval.high - 1);
}

void PageSearch::narrow(Interval& interval, std::int64_t frame) {
    bool bisect = false;
    for (int round = 0; round < kMaxProbes && !m_pages.stopped(); ++round) {
        const std::int64_t before = interval.high - interval.low.offset;
        if (before <= kWalkBytes)
            return;
        const std::int64_t at = guess(interval, frame, bisect);
        ++m_probes;
        m_pages.seek(at);
        PagePlace found;
        if (!nextNumberedPage(found, interval.high)) {
            interval.high = at; // the stream has no page from here to the upper end
        } else if (found.frame < frame) {
            interval.low = found;
        } else {
            interval.high = at;
            interval.highFrame = found.frame;
        }
        bisect = interval.high - interval.low.offset > before / 2;
    }
}

PagePlace PageSearch::lastPageBefore(std::int64_t frame) {
    Interval interval;
    interval.low = {m_layout.dataStart, -1, -1, true};
    if (frame <= m_layout.firstFrame)
        return interval.low;
    interval.high = m_pages.sourceSize();
    interval.highFrame = m_layout.frameCount;
    narrow(interval, frame);
    PagePlace best = interval.low;
    PagePlace next;
    m_pages.seek(best.offset);
    while (nextNumberedPage(next, INT64_MAX) && next.frame < frame)
        best = next;
    return best;
}

DecodeStart PageSearch::lastKeyframeBetween(const PagePlace& place, std::int64_t frame) {
    DecodeStart start{place, -1, false};
    m_packets.start(place);
    for (const FramePacket* packet = m_packets.peek(); packet != nullptr && packet->number <= frame;
         packet = m_packets.peek()) {
        if (packet->isKeyframe) {
            start.keyframe = packet->number;
            start.isKeyframe = true;
        }
        m_packets.drop();
    }
    return start;
}

DecodeStart PageSearch::startFor(std::int64_t frame) {
    const PagePlace before = lastPageBefore(frame);
    DecodeStart start = lastKeyframeBetween(before, frame);
    if (start.isKeyframe)
        return start;
    // None between that page and the frame, so both depend on the same keyframe, which the page
    // names.
    if (!before.isStart && before.keyframe >= m_layout.firstFrame &&
        before.keyframe <= before.frame) {
        start = lastKeyframeBetween(lastPageBefore(before.keyframe), before.keyframe);
        if (start.isKeyframe && start.keyframe == before.keyframe)
            return start;
    }
    return searchBackwards(before.isStart ? frame : before.frame);
}

// The page lied or the keyframe is damaged: look at the packets themselves.
DecodeStart PageSearch::searchBackwards(std::int64_t frame) {
    for (std::int64_t step = kFirstBackwardStep;; step *= 2) {
        const PagePlace place = lastPageBefore(frame - step);
        DecodeStart start = lastKeyframeBetween(place, frame);
        if (start.isKeyframe || m_packets.stopped())
            return start;
        if (place.isStart)
            return {place, m_layout.firstFrame, false};
    }
}

} // namespace theora
