// video and frames on clips made here: what is printed, in which order, and how refusals end.
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"
#include "tools/inspect/Command.h"

namespace {

struct Outcome {
    int code = 0;
    std::string text;
};

Outcome run(const inspect::Arguments& arguments) {
    std::ostringstream out;
    const int code = inspect::runCommand(arguments, out);
    return {code, out.str()};
}

/// "N HASH" lines.
std::vector<std::pair<int, std::string>> lines(const std::string& text) {
    std::vector<std::pair<int, std::string>> result;
    std::istringstream in(text);
    int number = 0;
    for (std::string hash; in >> number >> hash;) {
        result.emplace_back(number, hash);
    }
    return result;
}

class ClipCommands : public support::TempFolderTest {
protected:
    void SetUp() override {
        support::ClipSpec spec;
        spec.frames = 30;
        spec.sound = support::Sound::after;
        m_clip = support::makeClip(spec);
        support::writeBytes("clip.ogv", m_clip);
        support::writeBytes("bad.ogv", std::string("no clip at all"));
    }

    support::Bytes m_clip;
};

TEST_F(ClipCommands, VideoPrintsOneObject) {
    const Outcome outcome = run({"video", "clip.ogv"});
    EXPECT_EQ(outcome.code, inspect::kGood);
    EXPECT_EQ(outcome.text, "{\"file\":\"clip.ogv\",\"width\":64,\"height\":48,\"fps\":25,"
                            "\"frameCount\":30,\"duration\":1.2000000476837158,\"audio\":true}\n");
}

TEST_F(ClipCommands, SeeksPrintWhatPlayingPrints) {
    const Outcome played = run({"frames", "clip.ogv", "--sequential"});
    const Outcome sought = run({"frames", "clip.ogv"});
    EXPECT_EQ(played.code, inspect::kGood);
    EXPECT_EQ(sought.code, inspect::kGood);
    EXPECT_EQ(lines(played.text).size(), 30U);
    EXPECT_EQ(played.text, sought.text);
}

TEST_F(ClipCommands, HashesAreThoseOfThePicturesInSixteenLowerCaseDigits) {
    const auto expected = reference::decode(m_clip);
    std::ostringstream text;
    text << std::hex << std::setfill('0');
    for (std::size_t frame = 0; frame < expected.size(); ++frame) {
        text << std::to_string(frame) << ' ' << std::setw(16) << expected[frame] << '\n';
    }
    EXPECT_EQ(run({"frames", "clip.ogv"}).text, text.str());
}

TEST_F(ClipCommands, FramesComeInTheOrderAskedFor) {
    std::map<int, std::string> hashes;
    for (const auto& [number, hash] : lines(run({"frames", "clip.ogv", "--sequential"}).text)) {
        hashes[number] = hash;
    }
    const auto got = lines(run({"frames", "clip.ogv", "20", "3-5", "20", "random:7:4"}).text);
    ASSERT_EQ(got.size(), 9U);
    const int expected[] = {20, 3, 4, 5, 20};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(got[i].first, expected[i]);
    }
    for (const auto& [number, hash] : got) {
        EXPECT_EQ(hash, hashes[number]) << number;
    }
    EXPECT_EQ(lines(run({"frames", "clip.ogv", "random:7:4"}).text),
              std::vector(got.begin() + 5, got.end())); // the same seed, the same frames
    const auto played = run({"frames", "clip.ogv", "9", "--sequential", "4", "9"});
    EXPECT_EQ(played.code, inspect::kGood);
    EXPECT_EQ(lines(played.text), (std::vector<std::pair<int, std::string>>{
                                      {9, hashes[9]}, {4, hashes[4]}, {9, hashes[9]}}));
    EXPECT_EQ(lines(run({"frames", "clip.ogv", "random:4294967295:3"}).text).size(), 3U);
}

TEST_F(ClipCommands, AFrameThatPlayingDoesNotReachIsAFinding) {
    const Outcome played = run({"frames", "clip.ogv", "--sequential", "99", "29"});
    EXPECT_EQ(played.code, inspect::kFindings);
    const auto got = lines(played.text);
    ASSERT_EQ(got.size(), 2U);
    EXPECT_EQ(got[0], std::pair(99, std::string("-")));
    EXPECT_EQ(got[1].second.size(), 16U);
}

TEST_F(ClipCommands, ASeekBehindTheEndPrintsTheLastPictureAndSaysSo) {
    testing::internal::CaptureStderr();
    const Outcome sought = run({"frames", "clip.ogv", "29", "99"});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "clip.ogv [seek]: fineseeking failed, _readData failed!\n");
    EXPECT_EQ(sought.code, inspect::kGood);
    const auto got = lines(sought.text);
    ASSERT_EQ(got.size(), 2U);
    EXPECT_EQ(got[1], std::pair(99, got[0].second));
}

TEST_F(ClipCommands, WhatCannotBeReadOrUnderstoodPrintsNothing) {
    const inspect::Arguments cases[] = {
        {"video"},
        {"video", "bad.ogv"},
        {"video", "missing.ogv"},
        {"video", "clip.ogv", "more"},
        {"frames"},
        {"frames", "bad.ogv"},
        {"frames", "clip.ogv", "x"},
        {"frames", "clip.ogv", "5-3"},
        {"frames", "clip.ogv", "-1"},
        {"frames", "clip.ogv", "random:1"},
        {"frames", "clip.ogv", "0-999999999"},
    };
    for (const auto& arguments : cases) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, inspect::kUnreadable) << arguments.back();
        EXPECT_EQ(outcome.text, "") << arguments.back();
    }
}

} // namespace
