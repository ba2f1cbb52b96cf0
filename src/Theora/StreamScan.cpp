#include "src/Theora/StreamScan.h"

#include <algorithm>
#include <cstdint>

#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"

namespace theora {
namespace {

constexpr std::int64_t kBackOff = 4096;
constexpr std::int64_t kMaxBackOff = 204800;
constexpr std::int64_t kFirstFrameLimit = std::int64_t{16} << 20U; // a page has at most 64 kB

int countFrames(ogg_stream_state* stream, ogg_page& page) {
    ogg_stream_pagein(stream, &page);
    int count = 0;
    ogg_packet packet;
    for (int got = 0; (got = ogg_stream_packetout(stream, &packet)) != 0;) {
        if (got > 0 && !isHeaderPacket(packet)) {
            ++count;
        }
    }
    return count;
}

/// Sets firstFrame, negative or not, and firstPage; the serial number and dataStart are set.
void findFirstFrame(SharedSource& source, const GranuleFormat& format, StreamLayout& layout) {
    const StopCheck never;
    PageReader pages(source, never);
    OggStream stream(layout.serial);
    pages.seek(layout.dataStart);
    layout.firstFrame = 0;
    layout.firstPage = layout.dataStart;
    std::int64_t frames = 0;
    ogg_page page;
    while (pages.next(page, layout.dataStart + kFirstFrameLimit)) {
        if (ogg_page_serialno(&page) != layout.serial) {
            continue;
        }
        const int onPage = countFrames(stream.get(), page);
        if (onPage == 0) {
            continue;
        }
        if (frames == 0) {
            layout.firstPage = pages.pageOffset();
        }
        frames += onPage;
        const std::int64_t granule = ogg_page_granulepos(&page);
        if (granule >= 0) {
            layout.firstFrame = format.frameOf(granule) - frames + 1;
            return;
        }
    }
}

/// Intended: a page without granule position after a counted one adds a frame, whether it completes
/// one or not, since players count that way and the editor's totals must agree.
std::int64_t findFrameCount(SharedSource& source, int serial, const GranuleFormat& format) {
    const StopCheck never;
    PageReader pages(source, never);
    std::int64_t count = -1;
    for (std::int64_t backOff = kBackOff; backOff <= kMaxBackOff && count <= 0;
         backOff += kBackOff) {
        pages.seek(std::max<std::int64_t>(source.size() - backOff, 0));
        ogg_page page;
        while (pages.next(page)) {
            if (ogg_page_serialno(&page) != serial) {
                continue;
            }
            const std::int64_t granule = ogg_page_granulepos(&page);
            if (granule >= 0) {
                count = format.frameOf(granule) + 1;
            } else if (count >= 1) {
                ++count;
            }
        }
    }
    return count > 0 ? count : -1;
}

} // namespace

StreamLayout scanStream(SharedSource& source, const StreamHeaders& headers, GranuleFormat& format) {
    StreamLayout layout;
    layout.serial = headers.theora.serial;
    layout.dataStart = headers.dataStart;
    findFirstFrame(source, format, layout);
    if (layout.firstFrame < 0) {
        format.shiftNumbers(-layout.firstFrame);
        layout.firstFrame = 0;
    }
    layout.frameCount = findFrameCount(source, layout.serial, format);
    return layout;
}

} // namespace theora
