// Findings about files: of clips and zones as they are on the disk.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "check/FactsReader.h"
#include "core/Services.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FixedClock.h"
#include "tests/tools/inspect/CommandTest.h"
#include "tests/zone/ZoneFixture.h"

namespace {

using check::VideoFacts;
using zone_tests::shapeBytes;
using zone_tests::zoneBytes;

std::string branch(const std::string& name, const std::string& video, const std::string& zone,
                   const std::string& target) {
    return "<Branch><ID>" + name + "</ID><Filename>" + video +
           "</Filename><Action><Type>ZoneAction</Type><Parameter>" + zone +
           "</Parameter><BranchID>" + target + "</BranchID></Action><Action><BranchID>" + target +
           "</BranchID></Action></Branch>";
}

class CheckCommandTest : public inspect_tests::CommandTest {
protected:
    void saveScene(const std::string& branches) {
        support::writeBytes("S/Scene.xml", "<Scene><Name>S</Name>" + branches + "</Scene>");
    }
    VideoFacts factsOf(const std::string& video) {
        return *m_reader.read({video}, {}, [] { return false; }).videos.at(video);
    }

    platform::FileSystem& m_files = *core::services().fileSystem;
    support::FixedClock m_clock; ///< behind that of the files: all are read every time
    check::FactsReader m_reader{m_files, m_clock, "S/"};
};

TEST_F(CheckCommandTest, PrintsOneObjectForEachFindingAndExitsWithOneForErrors) {
    support::writeBytes("S/a.ogv", support::makeClip({.frames = 30}));
    support::writeBytes("S/b.OGG", support::makeClip({.frames = 200, .keyframeDistance = 200}));
    support::writeBytes("S/notes.txt", std::string("no video"));
    support::writeBytes("S/a-ZoneInfo.bin",
                        zoneBytes("Door\xFF", {shapeBytes({}), shapeBytes({}), shapeBytes({}, 0)}));
    saveScene(branch("A", "a.ogv", "Door\xFF", "caf\xE9\"") +
              branch("caf\xE9\"", "b.OGG", "x&lt;", "no"));
    EXPECT_EQ(run({"check", "S"}), inspect::kFindings);
    EXPECT_EQ(m_errors, "");
    const std::string bad = "\xEF\xBF\xBD";
    const std::string second = R"("branch":"caf)" + bad + R"(\"","action":)";
    const std::string target = R"("text":"An action of \"caf)" + bad +
                               R"(\"\" leads to \"no\", which is not in the scene."})";
    EXPECT_EQ(m_output,
              R"({"severity":"warning","kind":"zone-frames","branch":"A","video":"a.ogv",)"
              R"("text":"The zones of \"a.ogv\" count 3 frames, the video 30."})"
              "\n"
              R"({"severity":"warning","kind":"zone-few-points","branch":"A","video":"a.ogv",)"
              R"("zone":"Door)" +
                  bad + R"(","frames":[0,1],"text":"The zone \"Door)" + bad +
                  R"(\" has fewer than 3 points on 2 frames."})"
                  "\n"
                  R"({"severity":"error","kind":"missing-target",)" +
                  second + "1," + target + "\n" +
                  R"({"severity":"error","kind":"unreadable-name",)" + second +
                  R"(1,"text":"The name \"x<\" holds a \"<\": the scene will not load again."})"
                  "\n"
                  R"({"severity":"error","kind":"missing-target",)" +
                  second + "2," + target + "\n");
    saveScene(branch("A", "a.ogv", "Door\xFF", "A"));
    EXPECT_EQ(run({"check", "S/"}), inspect::kSuccess);
    EXPECT_NE(m_output.find(R"({"severity":"note","kind":"video-unused","video":"b.OGG")"),
              std::string::npos);
    EXPECT_EQ(run({"check", "none"}), inspect::kUnreadable);
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(run({"check", "--help"}), inspect::kSuccess);
    for (const check::KindInfo& info : check::kinds()) {
        EXPECT_NE(m_output.find(std::string("\n  ") + info.name + " "), std::string::npos);
    }
}

TEST_F(CheckCommandTest, ClipsAreReadAsFarAsNeeded) {
    const support::Bytes clip = support::makeClip({});
    const struct {
        support::Bytes bytes;
        VideoFacts::State state;
        int frames;
        double seconds;
    } cases[] = {
        {support::makeClip({.frames = 30}), VideoFacts::State::good, 30, 0.0},
        {support::makeClip({.frames = 200,
                            .keyframeDistance = 200,
                            .isEmpty = [](int frame) { return frame > 0; }}),
         VideoFacts::State::good, 200, 8.0},
        {support::makeClip({.frames = 200, .granuleShift = 20}), VideoFacts::State::good, 200,
         0.32},
        {support::makeClip({.frames = 3, .damagedFrame = 0}), VideoFacts::State::good, 3, 0.0},
        {support::makeClip({.frames = 1, .damagedFrame = 0}), VideoFacts::State::unreadable, -1,
         0.0},
        {{clip.begin(), clip.begin() + 200}, VideoFacts::State::unreadable, -1, 0.0},
        {{'n', 'o'}, VideoFacts::State::unreadable, -1, 0.0},
        {{}, VideoFacts::State::unreadable, -1, 0.0},
    };
    for (const auto& test : cases) {
        support::writeBytes("S/a.ogv", test.bytes);
        const VideoFacts facts = factsOf("a.ogv");
        EXPECT_EQ(facts.state, test.state);
        EXPECT_EQ(facts.frameCount, test.frames);
        EXPECT_DOUBLE_EQ(facts.keyFrameSeconds, test.seconds);
    }
    EXPECT_EQ(factsOf("gone.ogv").state, VideoFacts::State::missing);
    EXPECT_EQ(factsOf(".").state, VideoFacts::State::missing);
}

TEST_F(CheckCommandTest, ZonesAreTheSavedOnesBroughtToTheLengthOfTheClip) {
    using check::FrameTally;
    const std::string inside = shapeBytes({{1, 1}, {9, 1}, {9, 9}});
    const std::string line = shapeBytes({{1, 1}, {9, 9}});
    const std::string outside = shapeBytes({{-1, 0}, {-9, 0}, {-9, 40}});
    const std::string off = shapeBytes({}, 0);
    support::writeBytes("S/a.ogv", support::makeClip({.frames = 6})); // of 64 x 48
    const struct {
        std::vector<std::string> frames;
        int active;
        FrameTally fewPoints;
        FrameTally outside;
    } cases[] = {
        {{inside}, 6, {}, {}},
        {{inside, off}, 1, {}, {}},
        {{inside, off, line, line, off, line, outside}, 4, {3, {2, 5}}, {}},
        {{inside, outside}, 6, {}, {5, {1, 5}}},
        {{shapeBytes({{64, 0}, {70, 0}, {70, 48}})}, 6, {}, {6, {0, 5}}},
        {{shapeBytes({{63, 0}, {70, 0}, {70, 48}})}, 6, {}, {}},
        {{shapeBytes({{-9, -9}, {99, -9}, {99, 99}, {-9, 99}})}, 6, {}, {}}, // around it
        {{shapeBytes({{-9, 25}, {25, -9}, {-9, -9}})}, 6, {}, {}},           // over a corner
        {{shapeBytes({{-20, 9}, {9, -20}, {-20, -20}})}, 6, {}, {6, {0, 5}}},
        {{}, 6, {6, {0, 5}}, {}},
    };
    for (const auto& test : cases) {
        support::writeBytes("S/a-ZoneInfo.bin", zoneBytes("Z", test.frames));
        const VideoFacts facts = factsOf("a.ogv");
        ASSERT_EQ(facts.zones.size(), 1U);
        EXPECT_EQ(facts.zones[0], (check::ZoneFacts{"Z", true, static_cast<int>(test.frames.size()),
                                                    test.active, test.fewPoints, test.outside}));
    }
    support::writeBytes("S/a-ZoneInfo.bin", std::string("damaged"));
    support::writeBytes("S/a-ZoneInfo.xml",
                        std::string("<ZoneInfo><Zone><Name>Z</Name></Zone></ZoneInfo>"));
    EXPECT_EQ(factsOf("a.ogv").zones, std::vector{check::ZoneFacts{"Z"}});
}

TEST_F(CheckCommandTest, FilesAreReadAgainOnlyWhenTheyHaveChanged) {
    support::writeBytes("S/a.ogv", support::makeClip({.frames = 6}));
    const auto read = [&](bool isStopped) {
        return m_reader.read({"a.ogv", ""}, {}, [isStopped] { return isStopped; });
    };
    EXPECT_TRUE(read(true).videos.empty());
    const auto changing = read(false);
    m_clock.time += std::int64_t{1} << 40;
    const auto first = read(false);
    EXPECT_NE(first.videos, changing.videos);
    EXPECT_EQ(read(false).videos, first.videos); // the very same values
    EXPECT_EQ(first.files.size(), 1U);
    support::writeBytes("S/a.ogv", support::makeClip({.frames = 60}));
    EXPECT_EQ(read(false).videos.at("a.ogv")->frameCount, 60);
    EXPECT_TRUE(m_reader.read({"a.ogv"}, {"a.ogv"}, [] { return false; }).videos.empty());

    saveScene(branch("A", "a.ogv", "Z", "A"));
    const auto counts = check::countFindings(m_files, m_clock, "S/", [] { return false; });
    EXPECT_EQ(counts, (check::Counts{1, 0, 0}));
    EXPECT_FALSE(check::countFindings(m_files, m_clock, "S/", [] { return true; }));
    EXPECT_FALSE(check::countFindings(m_files, m_clock, "T/", [] { return false; }));
}

} // namespace
