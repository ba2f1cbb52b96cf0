#include <string>

#include <gtest/gtest.h>

#include "tests/tools/inspect/CommandTest.h"
#include "tests/zone/ZoneFixture.h"

namespace {

using zone_tests::shapeBytes;

class ZonesCommandTest : public inspect_tests::CommandTest {
protected:
    ZonesCommandTest() {
        support::writeBytes("A/clip-ZoneInfo.xml", kInfo);
        support::writeBytes("A/clip-ZoneInfo.bin", m_binary);
    }

    const std::string kInfo = "<ZoneInfo>\r\n\t<VideoWidth>1280</VideoWidth>\r\n"
                              "\t<VideoHeight>720</VideoHeight>\r\n\t<Zone>\r\n"
                              "\t\t<Name>Door</Name>\r\n\t</Zone>\r\n</ZoneInfo>\r\n";
    const std::string m_binary =
        zone_tests::zoneBytes("Door", {shapeBytes({{150, 300}, {30, 60}}), shapeBytes({}, 0)});
};

TEST_F(ZonesCommandTest, PrintsThePairAndRewritesTheSameBytes) {
    EXPECT_EQ(run({"zones", "A/clip", "--rewrite", "A/copy"}), inspect::kSuccess);
    EXPECT_EQ(m_output, R"({"videoWidth":1280,"videoHeight":720,"zones":[{"name":"Door",)"
                        R"("frames":[{"active":true,"points":[[150,300],[30,60]]},)"
                        R"({"active":false,"points":[]}]}]})"
                        "\n");
    EXPECT_EQ(m_errors, "");
    EXPECT_EQ(support::readBytes("A/copy-ZoneInfo.xml"), kInfo);
    EXPECT_EQ(support::readBytes("A/copy-ZoneInfo.bin"), m_binary);
}

TEST_F(ZonesCommandTest, EitherSizeMayBeLeftOut) {
    const struct {
        inspect::Arguments options;
        const char* points;
    } cases[] = {
        // The display is the editor's usual area, a video as large as the display.
        {{"--video", "640x360"}, "[[300,600],[60,120]]"},
        {{"--display", "640x360"}, "[[150,300],[30,60]]"},
        {{"--display", "1280x720", "--video", "1920x1080", "--frames", "1"},
         R"("frames":[{"active":true,"points":[[100,200],[20,40]]}]}]})"},
    };
    for (const auto& item : cases) {
        inspect::Arguments arguments = {"zones", "A/clip"};
        arguments.insert(arguments.end(), item.options.begin(), item.options.end());
        EXPECT_EQ(run(arguments), inspect::kSuccess);
        EXPECT_NE(m_output.find(item.points), std::string::npos) << m_output;
    }
}

TEST_F(ZonesCommandTest, ErrorsAreReportedOnStderr) {
    struct Case {
        inspect::Arguments arguments;
        const char* error;
    };
    const Case cases[]{
        {{"zones"}, "one base path is needed"},
        {{"zones", "A/clip", "B"}, "one base path is needed"},
        {{"zones", "A/clip", "--frames"}, "one base path is needed"},
        {{"zones", "A/clip", "--frames", "-1"}, "0 or more"},
        {{"zones", "A/clip", "--frames", "2147483647"}, "at most"},
        {{"zones", "A/clip", "--video", "0x1", "--display", "1x1"}, "WIDTHxHEIGHT"},
        {{"zones", "A/clip", "--video", "12", "--display", "1x1"}, "WIDTHxHEIGHT"},
        {{"zones", "A/none"}, "Unable to load zone binary"},
        {{"zones", "A/clip", "--rewrite", "missing/clip"}, "Unable to save zone info file"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(run(c.arguments), inspect::kUnreadable) << c.error;
        EXPECT_NE(m_errors.find(c.error), std::string::npos) << m_errors;
    }
}

} // namespace
