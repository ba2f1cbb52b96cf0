#include "src/Theora/PageSearch.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "src/Theora/GranuleFormat.h"

namespace theora {
namespace {

constexpr int kMaxProbes = 64; // on damaged files the search may not converge
constexpr int kTrustedProbes = 8;
constexpr std::int64_t kWalkBytes = 96 * 1024; // intervals below this are walked page by page
constexpr std::int64_t kMaxWalk = 512 * 1024;  // after that the rate is not trusted
constexpr std::int64_t kAimBefore = 48 * 1024; // aim short of the frame: pages after it are useless
constexpr double kMaxDistance = 1e15;          // bytes; frame numbers may be damaged
constexpr std::size_t kMaxKnown = 4096;
constexpr std::int64_t kFirstBackwardStep = 64; // frames; doubled until a keyframe is found

} // namespace

PageSearch::PageSearch(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
                       const GranuleFormat& format)
    : m_layout(layout), m_format(format), m_pages(source, stop),
      m_packets(source, stop, layout, format) {}

bool PageSearch::nextNumberedPage(PagePosition& position, std::int64_t limit) {
    ogg_page page;
    while (m_pages.next(page, limit)) {
        const std::int64_t granule = ogg_page_granulepos(&page);
        // On a page in the middle of a packet, old encoders repeat the position of the previous
        // packet. Reading from there would miss the packet.
        if (ogg_page_serialno(&page) != m_layout.serial || granule < 0 ||
            ogg_page_packets(&page) == 0 || m_pages.pageOffset() < m_layout.firstPage) {
            continue;
        }
        position = {m_pages.pageOffset(), m_format.frameOf(granule), m_format.keyframeOf(granule),
                    false};
        return true;
    }
    return false;
}

double PageSearch::bytesPerFrame() const {
    const auto frames = std::max<std::int64_t>(m_layout.frameCount - m_layout.firstFrame, 1);
    return static_cast<double>(m_pages.sourceSize() - m_layout.dataStart) /
           static_cast<double>(frames);
}

// Extrapolates from the nearer end of the interval by the file's average rate, stopping short of
// the frame by `margin`.
std::int64_t PageSearch::guess(const Interval& interval, std::int64_t frame,
                               std::int64_t margin) const {
    const std::int64_t lowFrame = std::max(interval.low.frame, m_layout.firstFrame - 1);
    const auto up = static_cast<double>(frame - lowFrame);
    const auto down = static_cast<double>(interval.highFrame - frame);
    const double distance = up <= down ? up * bytesPerFrame() : -down * bytesPerFrame();
    const std::int64_t aim =
        (up <= down ? interval.low.offset : interval.high) - margin +
        static_cast<std::int64_t>(std::clamp(distance, -kMaxDistance, kMaxDistance));
    if (interval.highFrame > lowFrame && aim > interval.low.offset && aim < interval.high) {
        return aim;
    }
    return interval.low.offset + (interval.high - interval.low.offset) / 2;
}

void PageSearch::startFromKnownPages(Interval& interval, std::int64_t frame) const {
    const auto above = m_known.lower_bound(frame);
    if (above != m_known.end() && above->second.offset < interval.high) {
        interval.high = above->second.offset;
        interval.highFrame = above->first;
    }
    if (above != m_known.begin() && std::prev(above)->second.offset < interval.high) {
        interval.low = std::prev(above)->second;
    }
}

void PageSearch::remember(const PagePosition& position) {
    if (position.isStart) {
        return;
    }
    if (m_known.size() >= kMaxKnown) {
        m_known.clear();
    }
    m_known.insert_or_assign(position.frame, position);
}

// Whether the frame, by the interval's average rate, is a short walk from the lower end.
bool PageSearch::isNear(const Interval& interval, std::int64_t frame) const {
    const std::int64_t lowFrame = std::max(interval.low.frame, m_layout.firstFrame - 1);
    const std::int64_t frames = std::max<std::int64_t>(interval.highFrame - lowFrame, 1);
    const double bytesPerFrame =
        static_cast<double>(interval.high - interval.low.offset) / static_cast<double>(frames);
    return static_cast<double>(frame - lowFrame) * bytesPerFrame <= static_cast<double>(kWalkBytes);
}

void PageSearch::narrow(Interval& interval, std::int64_t frame, bool trustRate) {
    std::int64_t margin = kAimBefore;
    for (int round = 0; round < kMaxProbes && !m_pages.stopped(); ++round) {
        const std::int64_t before = interval.high - interval.low.offset;
        if (before <= kWalkBytes ||
            (trustRate && (round > 0 || !interval.low.isStart) && isNear(interval, frame))) {
            return;
        }
        // Bisect when rates keep misleading.
        const std::int64_t at = round < kTrustedProbes ? guess(interval, frame, margin)
                                                       : interval.low.offset + before / 2;
        ++m_probes;
        m_pages.seek(at);
        PagePosition found;
        if (nextNumberedPage(found, interval.high) && found.frame < frame) {
            interval.low = found;
            margin = kAimBefore;
        } else { // too far, or inside a large frame: step back further next time
            interval.high = at;
            interval.highFrame = std::max(found.frame, frame);
            margin *= 4;
        }
        remember(found);
    }
}

// Moves the lower end page by page to the last page before the frame. False when that is too far.
bool PageSearch::walk(Interval& interval, std::int64_t frame, std::int64_t limit) {
    m_pages.seek(interval.low.offset);
    const std::int64_t end = interval.low.offset + limit;
    PagePosition next;
    while (nextNumberedPage(next, INT64_MAX)) {
        if (next.frame >= frame) {
            return true;
        }
        interval.low = next;
        remember(next);
        if (next.offset > end) {
            return false;
        }
    }
    return true;
}

PagePosition PageSearch::lastPageBefore(std::int64_t frame) {
    Interval interval;
    interval.low = {m_layout.dataStart, -1, -1, true};
    if (frame <= m_layout.firstFrame) {
        return interval.low;
    }
    interval.high = m_pages.sourceSize();
    interval.highFrame = m_layout.frameCount;
    startFromKnownPages(interval, frame);
    narrow(interval, frame, true);
    if (!walk(interval, frame, kMaxWalk)) { // the rate misled
        narrow(interval, frame, false);
        (void)walk(interval, frame, INT64_MAX / 2);
    }
    return interval.low;
}

DecodeStart PageSearch::lastKeyframeBetween(const PagePosition& position, std::int64_t frame) {
    DecodeStart start{position, -1, false};
    m_packets.start(position);
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
    const PagePosition before = lastPageBefore(frame);
    DecodeStart start = lastKeyframeBetween(before, frame);
    if (start.isKeyframe) {
        return start;
    }
    // None in between, so the frame depends on the keyframe that the page names.
    if (!before.isStart && before.keyframe >= m_layout.firstFrame &&
        before.keyframe <= before.frame) {
        start = lastKeyframeBetween(lastPageBefore(before.keyframe), before.keyframe);
        if (start.isKeyframe && start.keyframe == before.keyframe) {
            return start;
        }
    }
    return searchBackwards(before.isStart ? frame : before.frame);
}

// The page is wrong or the keyframe damaged: check the packets themselves.
DecodeStart PageSearch::searchBackwards(std::int64_t frame) {
    for (std::int64_t step = kFirstBackwardStep;; step *= 2) {
        const PagePosition position = lastPageBefore(frame - step);
        DecodeStart start = lastKeyframeBetween(position, frame);
        if (start.isKeyframe || m_packets.stopped()) {
            return start;
        }
        if (position.isStart) {
            return {position, m_layout.firstFrame, false};
        }
    }
}

} // namespace theora
