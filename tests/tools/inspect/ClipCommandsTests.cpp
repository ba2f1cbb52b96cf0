// video and frames on clips made here: what is printed, in which order, and how refusals end.
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"
#include "tests/tools/inspect/CommandTest.h"

namespace {

using Lines = std::vector<std::pair<int, std::string>>;

/// "N HASH" lines.
Lines lines(const std::string& text) {
    Lines result;
    std::istringstream in(text);
    int number = 0;
    for (std::string hash; in >> number >> hash;) {
        result.emplace_back(number, hash);
    }
    return result;
}

class ClipCommands : public inspect_tests::CommandTest {
protected:
    void SetUp() override {
        support::ClipSpec spec;
        spec.frames = 30;
        spec.sound = support::Sound::after;
        m_clip = support::makeClip(spec);
        support::writeBytes("clip.ogv", m_clip);
        support::writeBytes("bad.ogv", std::string("no clip at all"));
    }

    /// What a command that succeeds prints.
    std::string printed(const inspect::Arguments& arguments) {
        EXPECT_EQ(run(arguments), inspect::kGood);
        return m_output;
    }

    support::Bytes m_clip;
};

TEST_F(ClipCommands, VideoPrintsOneObject) {
    EXPECT_EQ(printed({"video", "clip.ogv"}),
              "{\"file\":\"clip.ogv\",\"width\":64,\"height\":48,\"fps\":25,"
              "\"frameCount\":30,\"duration\":1.2000000476837158,\"audio\":true}\n");
}

TEST_F(ClipCommands, PlayingAndSeeksPrintTheHashesOfThePictures) {
    const auto expected = reference::decode(m_clip);
    ASSERT_EQ(expected.size(), 30U);
    std::ostringstream text;
    text << std::hex << std::setfill('0');
    for (std::size_t frame = 0; frame < expected.size(); ++frame) {
        text << std::to_string(frame) << ' ' << std::setw(16) << expected[frame] << '\n';
    }
    EXPECT_EQ(printed({"frames", "clip.ogv"}), text.str());
    EXPECT_EQ(printed({"frames", "clip.ogv", "--sequential"}), text.str());
}

TEST_F(ClipCommands, FramesComeInTheOrderAskedFor) {
    const Lines all = lines(printed({"frames", "clip.ogv"}));
    const Lines got = lines(printed({"frames", "clip.ogv", "20", "3-5", "20", "random:7:4"}));
    ASSERT_EQ(got.size(), 9U);
    EXPECT_EQ(Lines(got.begin(), got.begin() + 5),
              (Lines{all[20], all[3], all[4], all[5], all[20]}));
    for (const auto& line : got) {
        EXPECT_EQ(line, all.at(static_cast<std::size_t>(line.first)));
    }
    EXPECT_EQ(lines(printed({"frames", "clip.ogv", "random:7:4"})),
              Lines(got.begin() + 5, got.end()))
        << "the same seed, the same frames";
    EXPECT_EQ(lines(printed({"frames", "clip.ogv", "9", "--sequential", "4", "9"})),
              (Lines{all[9], all[4], all[9]}));
    EXPECT_EQ(lines(printed({"frames", "clip.ogv", "random:4294967295:3"})).size(), 3U);
}

TEST_F(ClipCommands, AFrameThatPlayingDoesNotReachIsAFinding) {
    EXPECT_EQ(run({"frames", "clip.ogv", "--sequential", "99", "29"}), inspect::kFindings);
    const Lines got = lines(m_output);
    ASSERT_EQ(got.size(), 2U);
    EXPECT_EQ(got[0], std::pair(99, std::string("-")));
    EXPECT_EQ(got[1].second.size(), 16U);
}

TEST_F(ClipCommands, ASeekBehindTheEndPrintsTheLastPictureAndSaysSo) {
    const Lines got = lines(printed({"frames", "clip.ogv", "29", "99"}));
    EXPECT_EQ(m_errors, "clip.ogv [seek]: fineseeking failed, _readData failed!\n");
    ASSERT_EQ(got.size(), 2U);
    EXPECT_EQ(got[1], std::pair(99, got[0].second));
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
                                        {"frames", "clip.ogv", "0-999999999"}};
    for (const auto& arguments : cases) {
        EXPECT_EQ(run(arguments), inspect::kUnreadable) << arguments.back();
        EXPECT_EQ(m_output, "") << arguments.back();
    }
}

} // namespace
