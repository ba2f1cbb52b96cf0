// video and frames on generated clips: output, order and errors.
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"
#include "tests/tools/inspect/CommandTest.h"

namespace {

class ClipCommands : public inspect_tests::CommandTest {
protected:
    ClipCommands() {
        const auto clip = support::makeClip({.sound = support::Sound::after});
        support::writeBytes("clip.ogv", clip);
        support::writeBytes("bad.ogv", std::string("no clip at all"));
        m_decoded = reference::decode(clip);
    }

    /// What a command that succeeds prints.
    std::string printed(const inspect::Arguments& arguments) {
        EXPECT_EQ(run(arguments), inspect::kSuccess);
        return m_output;
    }
    /// The expected lines for these frames, by a plain decode.
    std::string expected(const std::vector<std::size_t>& frames) {
        std::ostringstream text;
        text << std::setfill('0');
        for (const std::size_t frame : frames) {
            text << std::dec << frame << ' ' << std::hex << std::setw(16) << m_decoded[frame].hash
                 << '\n';
        }
        return text.str();
    }

    std::vector<reference::Frame> m_decoded;
};

TEST_F(ClipCommands, VideoPrintsOneObject) {
    EXPECT_EQ(printed({"video", "clip.ogv"}),
              "{\"file\":\"clip.ogv\",\"width\":64,\"height\":48,\"fps\":25,"
              "\"frameCount\":30,\"duration\":1.2000000476837158,\"audio\":true}\n");
}

TEST_F(ClipCommands, FramesPrintsTheHashesOfThePicturesInTheOrderAskedFor) {
    std::vector<std::size_t> all(30);
    std::iota(all.begin(), all.end(), std::size_t{0});
    EXPECT_EQ(printed({"frames", "clip.ogv"}), expected(all));
    EXPECT_EQ(printed({"frames", "clip.ogv", "--sequential"}), expected(all));
    EXPECT_EQ(printed({"frames", "clip.ogv", "20", "3-5", "20"}), expected({20, 3, 4, 5, 20}));
    for (const char* random : {"random:7:4", "random:4294967295:4"}) {
        const std::string first = printed({"frames", "clip.ogv", random});
        EXPECT_EQ(std::count(first.begin(), first.end(), '\n'), 4);
        EXPECT_EQ(printed({"frames", "clip.ogv", random}), first) << "the seed decides";
    }
}

TEST_F(ClipCommands, WhatAClipLacksIsReportedOnceAndEndsARange) {
    const auto claiming = [](std::int64_t frames) {
        return support::makeClip({.emptyLastPage = true, .lastPageGranule = frames << 3});
    };
    support::writeBytes("one-more.ogv", claiming(31));
    support::writeBytes("most.ogv", claiming(INT_MAX));
    auto lengthless = claiming(30);
    lengthless.resize(lengthless.size() + 300'000);
    support::writeBytes("lengthless.ogv", lengthless);
    std::vector<std::size_t> frames(30);
    std::iota(frames.begin(), frames.end(), std::size_t{0});
    const std::string all = expected(frames);
    const std::string lastTwo = expected({28, 29});
    const std::string shownPast = expected({29}).substr(2);
    const std::string atEnd = " [seek]: fineseeking failed, _readData failed!\n";
    const std::string noLength = "lengthless.ogv: unable to determine file duration!\n";
    const struct {
        inspect::Arguments arguments;
        int code;
        std::string output;
        std::string errors;
    } cases[] = {
        {{"clip.ogv", "28-31"}, 1, lastTwo + "30 -\n31 -\n", "clip.ogv: no frames 30 to 31\n"},
        {{"clip.ogv", "28-2147483647"},
         1,
         lastTwo + "30 -\n",
         "clip.ogv: no frames 30 to 2147483647\n"},
        {{"clip.ogv", "9", "--sequential", "99", "28-2147483647"},
         1,
         expected({9}) + "99 -\n" + lastTwo + "30 -\n",
         "clip.ogv: no frame 99\nclip.ogv: no frames 30 to 2147483647\n"},
        {{"one-more.ogv"}, 0, all + "30" + shownPast, "one-more.ogv" + atEnd},
        {{"one-more.ogv", "--sequential"}, 1, all, "one-more.ogv: 30 frames played of 31\n"},
        {{"most.ogv"},
         1,
         all + "30 -\n",
         "most.ogv" + atEnd + "most.ogv: no frames 30 to 2147483646\n"},
        {{"lengthless.ogv"}, 0, all, noLength + "lengthless.ogv" + atEnd},
        {{"lengthless.ogv", "--sequential"}, 0, all, noLength},
        {{"lengthless.ogv", "random:1:1"},
         1,
         "",
         noLength + "lengthless.ogv: no random frames, as its length is not known\n"},
    };
    for (const auto& item : cases) {
        inspect::Arguments arguments = item.arguments;
        arguments.insert(arguments.begin(), "frames");
        EXPECT_EQ(run(arguments), item.code) << arguments[1];
        EXPECT_EQ(m_output, item.output);
        EXPECT_EQ(m_errors, item.errors);
    }
    EXPECT_NE(printed({"video", "lengthless.ogv"}).find(R"("duration":-1,)"), std::string::npos);
    EXPECT_EQ(m_errors, noLength);
}

TEST_F(ClipCommands, WhatCannotBeReadOrUnderstoodPrintsNothing) {
    const inspect::Arguments cases[] = {{"video"},
                                        {"video", "bad.ogv"},
                                        {"video", "missing.ogv"},
                                        {"video", "clip.ogv", "more"},
                                        {"frames"},
                                        {"frames", "bad.ogv"},
                                        {"frames", "clip.ogv", "x"},
                                        {"frames", "clip.ogv", "5-3"},
                                        {"frames", "clip.ogv", "-1"},
                                        {"frames", "clip.ogv", "random:1"},
                                        {"frames", "clip.ogv", "random:4294967296:1"},
                                        {"frames", "clip.ogv", "0-2147483648"}};
    for (const auto& arguments : cases) {
        EXPECT_EQ(run(arguments), inspect::kUnreadable) << arguments.back();
        EXPECT_EQ(m_output, "") << arguments.back();
    }
}

} // namespace
