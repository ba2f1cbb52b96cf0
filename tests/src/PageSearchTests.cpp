// Decoding starts at the last keyframe before the frame, found by few probes of the file.
#include <cstddef>
#include <iterator>

#include <gtest/gtest.h>

#include "src/Theora/PageSearch.h"
#include "tests/src/OpenedStream.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr int kMaxProbes = 20;

TEST(PageSearch, StartsAtTheLastKeyframeWithFewProbesWhateverThePagesHold) {
    const support::PageLayout layouts[] = {
        {1, 255},
        {1, 4},
        {1, 4, true}, // pages inside a packet repeat an outdated position
        {40, 255},
    };
    for (const support::PageLayout& pages : layouts) {
        SCOPED_TRACE(testing::Message() << pages.packetsPerPage << ' ' << pages.segmentsPerPage
                                        << (pages.repeatsGranule ? " repeated" : ""));
        const auto file = support::makeClip({.width = 128,
                                             .height = 96,
                                             .frames = 200,
                                             .keyframeDistance = 20,
                                             .quality = 63,
                                             .pages = pages});
        MemorySource bytes(file);
        OpenedStream stream(bytes);
        const theora::StopCheck never;
        theora::PageSearch again(stream.source, never, stream.layout, *stream.format);
        const auto expected = reference::decode(file);
        int keyframe = 0; // the last one up to the frame
        for (int frame = 0; frame < std::ssize(expected); ++frame) {
            keyframe = expected[static_cast<std::size_t>(frame)].isKeyframe ? frame : keyframe;
            theora::PageSearch first(stream.source, never, stream.layout, *stream.format);
            for (theora::PageSearch* search : {&first, &again}) {
                const int probesBefore = search->probeCount();
                const theora::DecodeStart start = search->startFor(frame);
                EXPECT_TRUE(start.isKeyframe);
                EXPECT_EQ(start.keyframe, keyframe);
                EXPECT_LE(search->probeCount() - probesBefore, kMaxProbes) << frame;
            }
        }
    }
}

} // namespace
