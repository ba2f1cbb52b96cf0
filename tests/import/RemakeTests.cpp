// "Convert It" on real clips, by the converter that this system has: what the check complains of is
// gone afterwards, and every zone lies where it lay on its frame. Without a converter, skipped.
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "check/FactsReader.h"
#include "check/Finding.h"
#include "check/SceneCheck.h"
#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "import/ImportJob.h"
#include "import/ImportTypes.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "scene/SceneManager.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

using check::Kind;
using imports::Failure;
using imports::ImportState;
using support::ClipSpec;
using support::writeBytes;
using zone_tests::Points;

class RemakeTest : public support::TempFolderTest {
protected:
    void SetUp() override {
        m_converter = imports::findConverter(m_files, imports::usualPlaces(m_files, {}));
        ASSERT_TRUE(m_converter.isFound()) << "ffmpeg and ffprobe are installed by tools/setup";
    }

    static bool goesOn() { return false; }
    /// Of the folder's scene, in which one branch shows this clip.
    std::vector<Kind> findingsOf(const std::string& clip) {
        const auto scene = scene::SceneManager::create();
        scene->newScene("Fire");
        scene->AddBranch();
        scene->setBranchFilename(0, clip);
        check::FactsReader reader(m_files, platform::nativeClock(), m_folder.path());
        check::SceneCheck check;
        check.setFacts(reader.read({clip}, {}, goesOn));
        check.checkAll(*scene);
        std::vector<Kind> kinds;
        for (const check::Finding* finding : check.findings()) {
            if (finding->video == clip && finding->zone.empty()) {
                kinds.push_back(finding->kind);
            }
        }
        return kinds;
    }
    imports::JobResult remake(const std::string& clip) {
        const imports::JobRequest request{.kind = imports::ImportKind::remake,
                                          .source = m_folder.path() + clip,
                                          .folder = m_folder.path(),
                                          .converter = m_converter};
        return imports::runImport(
            m_files, request, [](int, double) {}, goesOn);
    }
    /// One zone, the same on every frame.
    static void writeZone(const std::string& base, int frames, const Points& points) {
        const std::vector<std::string> shapes(static_cast<std::size_t>(frames),
                                              zone_tests::shapeBytes(points));
        writeBytes(base + "-ZoneInfo.xml", zone_tests::infoBytes({"Exit"}));
        writeBytes(base + "-ZoneInfo.bin", zone_tests::zoneBytes("Exit", shapes));
    }
    /// What no Theora decoder reads, under a clip's name.
    void film(const std::string& name) {
        const std::vector<std::string> arguments{
            "-v",   "error", "-f", "lavfi", "-i", "testsrc2=s=64x48:r=25:d=0.4",
            "-c:v", "mpeg4", "-f", "avi",   "-y", m_folder.path() + name};
        const auto ignore = [](std::string_view) { return imports::Heard::progress; };
        ASSERT_TRUE(
            imports::runConverter(m_converter.ffmpeg, arguments, {}, ignore, goesOn).isGood());
    }

    platform::FileSystem& m_files = platform::nativeFileSystem();
    imports::Converter m_converter;
};

TEST_F(RemakeTest, TakesAwayWhatTheCheckComplainedOf) {
    // Sides make the picture of 64 x 48 80 wide.
    const std::tuple<const char*, ClipSpec, std::vector<Kind>> cases[] = {
        {"slow",
         {.frames = 260, .keyframeDistance = 250, .flatFrames = 260},
         std::vector{Kind::slowSeeks}},
        {"inside a frame",
         {.width = 96,
          .height = 64,
          .pictureWidth = 64,
          .pictureHeight = 48,
          .pictureX = 10,
          .pictureY = 6,
          .frames = 30,
          .isEmpty = [](int frame) { return frame % 8 > 2 || frame > 24; }},
         {}},
        {"unreadable", {.frames = 10}, std::vector{Kind::videoUnreadable}},
    };
    for (const auto& [name, spec, kinds] : cases) {
        const std::string base = name;
        if (kinds == std::vector{Kind::videoUnreadable}) {
            film(base + ".ogv");
        } else {
            const support::Bytes clip = support::makeClip(spec);
            writeBytes(base + ".ogv", std::string(clip.begin(), clip.end()));
        }
        const int x = spec.pictureX;
        const int y = spec.pictureY;
        writeZone(base, spec.frames, {{x, y}, {x + 64, y + 48}, {x + 32, y + 24}});
        EXPECT_EQ(findingsOf(base + ".ogv"), kinds) << base;
        const std::string before = support::readBytes(base + "-ZoneInfo.bin");

        const imports::JobResult result = remake(base + ".ogv");
        ASSERT_EQ(result.state, ImportState::done)
            << base << ": " << imports::failureText(result.failure) << result.failure.details;
        EXPECT_EQ(result.clip.name, base + " 2.ogv");
        EXPECT_EQ(result.clip.frameCount, spec.frames);
        EXPECT_EQ(result.clip.framesPerSecond, 25);
        EXPECT_EQ(findingsOf(base + " 2.ogv"), std::vector<Kind>{}) << base;
        const auto zones = zone::ZoneManager::create(base + " 2", spec.frames, true, zone::Scale{});
        ASSERT_TRUE(zones && zones->zoneCount() == 1);
        EXPECT_EQ(zones->zone(0)->shape(spec.frames - 1)->points,
                  (Points{{8, 0}, {72, 48}, {40, 24}}));
        EXPECT_EQ(support::readBytes(base + "-ZoneInfo.bin"), before);
    }
}

TEST_F(RemakeTest, IsRefusedWhereZonesWouldLeaveTheirFrames) {
    // Its first key frame has got lost: the converter begins with the next.
    const support::Bytes clip = support::makeClip({.frames = 40, .dropFrames = 16});
    writeBytes("cut.ogv", std::string(clip.begin(), clip.end()));
    writeZone("cut", 40, {{0, 0}, {64, 48}, {32, 24}});
    const imports::JobResult result = remake("cut.ogv");
    EXPECT_EQ(result.failure.kind, Failure::framesDiffer) << result.clip.frameCount;
    EXPECT_EQ(support::filesBelow("."),
              (std::vector<std::string>{"cut-ZoneInfo.bin", "cut-ZoneInfo.xml", "cut.ogv"}));
}

} // namespace
