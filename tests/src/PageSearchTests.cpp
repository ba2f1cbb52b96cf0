// Where decoding starts for a frame: at the last keyframe before it, found by few looks at the
// file.
#include <gtest/gtest.h>

#include "src/Theora/PageSearch.h"
#include "tests/src/OpenedStream.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr int kMostProbes = 20;

/// For every frame the last keyframe up to it.
std::vector<std::int64_t> keyframesOf(const support::Bytes& file) {
    std::vector<std::int64_t> keyframes;
    for (reference::Packet& item : reference::packetsOf(file, "\x80theora")) {
        const bool isKeyframe = th_packet_iskeyframe(&item.packet) == 1;
        if (th_packet_isheader(&item.packet) == 0) {
            keyframes.push_back(isKeyframe ? std::ssize(keyframes) : keyframes.back());
        }
    }
    return keyframes;
}

TEST(PageSearch, StartsAtTheLastKeyframeWithFewProbesWhateverThePagesHold) {
    const support::PageLayout layouts[] = {
        {1, 255},
        {1, 4},
        {1, 4, true}, // pages inside a packet repeat a position that is no longer true
        {40, 255},
    };
    for (const support::PageLayout& pages : layouts) {
        SCOPED_TRACE(testing::Message() << pages.packetsPerPage << ' ' << pages.segmentsPerPage
                                        << (pages.repeatsGranule ? " repeated" : ""));
        support::ClipSpec spec;
        spec.width = 128;
        spec.height = 96;
        spec.frames = 200;
        spec.keyframeDistance = 20;
        spec.quality = 63;
        spec.pages = pages;
        const auto file = support::makeClip(spec);
        const auto keyframes = keyframesOf(file);
        MemorySource bytes(file);
        OpenedStream stream(bytes);
        const theora::StopCheck never;
        theora::PageSearch again(stream.source, never, stream.layout, *stream.format);
        for (int frame = 0; frame < spec.frames; ++frame) {
            theora::PageSearch first(stream.source, never, stream.layout, *stream.format);
            for (theora::PageSearch* search : {&first, &again}) {
                const int probesBefore = search->probeCount();
                const theora::DecodeStart start = search->startFor(frame);
                EXPECT_TRUE(start.isKeyframe);
                EXPECT_EQ(start.keyframe, keyframes[static_cast<std::size_t>(frame)]);
                EXPECT_LE(search->probeCount() - probesBefore, kMostProbes) << frame;
            }
        }
    }
}

} // namespace
