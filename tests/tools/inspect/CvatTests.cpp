#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "tests/tools/inspect/CommandTest.h"
#include "tests/zone/ZoneFixture.h"
#include "tools/inspect/Cvat.h"

namespace {

using zone_tests::shapeBytes;

class CvatTest : public inspect_tests::CommandTest {
protected:
    int exchange(const std::string& base, const std::string& way, int frames = 6) {
        return run({"zones", base, way, "cvat", "A/tracks.xml", "--video", "640x360", "--frames",
                    std::to_string(frames)});
    }
    void givePair(const std::string& binary, const zone_tests::Lines& names) {
        support::writeBytes("A/clip-ZoneInfo.xml", zone_tests::infoBytes(names));
        support::writeBytes("A/clip-ZoneInfo.bin", binary);
    }
};

TEST_F(CvatTest, APairComesBackByteForByte) {
    const std::string still = shapeBytes({{10, 20}, {640, 360}, {0, 0}});
    const std::string moved = shapeBytes({{30, 20}, {600, 310}, {90, 0}});
    const std::string hidden = shapeBytes({{30, 20}, {600, 310}, {90, 0}}, 0);
    const std::string four = shapeBytes({{1, 2}, {3, 4}, {5, 6}, {7, 9}});
    const std::string none = shapeBytes({});
    const std::string binary =
        zone_tests::zoneBytes("Door & \"<Exit>\"", {still, still, moved, hidden, hidden, still}) +
        zone_tests::zoneBytes("T\xC3\xBCr", {none, none, four, moved, four, four}) +
        zone_tests::zoneBytes("Empty", {none, none, none, none, none, none}) +
        zone_tests::namelessBytes({hidden, hidden, hidden, hidden, hidden, moved});
    givePair(binary, {"Door & \"<Exit>\"", "T\xC3\xBCr", "Empty", ""});
    const std::string info = support::readBytes("A/clip-ZoneInfo.xml");
    ASSERT_EQ(exchange("A/clip", "--export"), inspect::kSuccess) << m_errors;
    EXPECT_EQ(m_errors, "");
    ASSERT_EQ(exchange("A/copy", "--import"), inspect::kSuccess) << m_errors;
    EXPECT_EQ(support::readBytes("A/copy-ZoneInfo.bin"), binary);
    EXPECT_EQ(support::readBytes("A/copy-ZoneInfo.xml"), info);
}

TEST_F(CvatTest, WhatTheFormatCannotHoldIsListed) {
    const std::string two = shapeBytes({{1, 1}, {9, 9}});
    const std::string out = shapeBytes({{1, 1}, {9, 9}, {700, 5}});
    givePair(zone_tests::zoneBytes("Do\ror", {two, two, out, two, out, out}) +
                 zone_tests::zoneBytes("T\xFCr", {}),
             {"Door", "T"});
    EXPECT_EQ(exchange("A/clip", "--export"), inspect::kSuccess);
    EXPECT_EQ(
        m_errors,
        "not in the file: zone \"Do or\": characters of the name that are no text\n"
        "not in the file: zone \"Do or\": 3 frames with fewer than three points\n"
        "not in the file: zone \"Do or\": 4 frames with points outside of the picture\n"
        "not in the file: zone \"T\xEF\xBF\xBDr\": characters of the name that are no text\n");
    EXPECT_EQ(support::readBytes("A/tracks.xml").find('\xFC'), std::string::npos);
    EXPECT_EQ(exchange("A/clip", "--import"), inspect::kSuccess) << "at the edge of the picture";
}

TEST_F(CvatTest, FramesBehindTheClipAndPartsThatCannotBeReadAreListedToo) {
    const std::string still = shapeBytes({{10, 20}, {640, 360}, {0, 0}});
    const std::string six =
        zone_tests::zoneBytes("Six", {still, still, still, still, still, still});
    const std::string one = zone_tests::zoneBytes("One", {still});
    const struct {
        std::string binary;
        const char* listed;
    } cases[] = {
        {six + one, "zone \"Six\": 2 frames behind the end of the clip\n"},
        {one + six.substr(0, six.size() - 40),
         "parts of the pair that cannot be read; whole zones: 1 of 2\n"},
        {one + zone_tests::chunkBytes(7, "foreign", 7), "parts of the pair that are no zones\n"},
    };
    for (const auto& item : cases) {
        givePair(item.binary, {});
        EXPECT_EQ(exchange("A/clip", "--export", 4), inspect::kSuccess);
        EXPECT_EQ(m_errors, std::string("not in the file: ") + item.listed);
    }
    givePair(one + six, {"One", "Six"}); // a zone of fewer frames keeps its last shape
    EXPECT_EQ(exchange("A/clip", "--export"), inspect::kSuccess);
    EXPECT_EQ(m_errors, "");
    ASSERT_EQ(exchange("A/copy", "--import"), inspect::kSuccess) << m_errors;
    EXPECT_EQ(support::readBytes("A/copy-ZoneInfo.bin"),
              zone_tests::zoneBytes("One", {still, still, still, still, still, still}) + six);
}

TEST_F(CvatTest, FilesOfMoreThanThirtyTwoMegabytesAreNamedAsSuch) {
    support::writeBytes("A/tracks.xml", "<annotations>" + std::string(inspect::kMaxCvatBytes, ' ') +
                                            "</annotations>");
    EXPECT_EQ(exchange("A/copy", "--import"), inspect::kUnreadable);
    EXPECT_NE(m_errors.find("A/tracks.xml: the file is larger than 32 MB\n"), std::string::npos)
        << m_errors;
    zone_tests::Lines shapes; // a polygon on each frame
    for (int frame = 0; frame < 170'000; ++frame) {
        shapes.push_back(shapeBytes({{frame % 100, 0}, {640, 360}, {0, 340}}));
    }
    const int frames = static_cast<int>(shapes.size());
    givePair(zone_tests::zoneBytes("A", shapes) + zone_tests::zoneBytes("B", shapes), {"A", "B"});
    EXPECT_EQ(exchange("A/clip", "--export", frames), inspect::kSuccess);
    EXPECT_EQ(m_errors, "the file is larger than 32 MB, which no import takes\n");
}

TEST_F(CvatTest, ShapesBetweenPolygonsAreMixedUnlessOneIsOutside) {
    const std::string text =
        "<annotations><version>1.1</version><track id=\"0\" label=\"Door\">\n"
        "<polygon frame=\"1\" points=\"0,0;10.4,0;0,100\" outside=\"0\" keyframe=\"1\"/>\n"
        "<polygon frame=\"3\" points=\"20,0;31,0;20,100\"/>\n"
        "<polygon frame=\"5\" points=\"0,0;2,0;2,2;0,2\" occluded=\"1\"/>\n"
        "<polygon frame=\"7\" points=\"40,0;42,0;42,2;40,2\" outside=\"1\"/>\n"
        "</track></annotations>";
    const auto result = inspect::readCvat(text, {{640, 360}, 10});
    const auto& track = std::get<std::vector<inspect::CvatTrack>>(result).at(0);
    inspect::CvatCourse course(track);
    std::vector<std::string> shapes;
    for (int frame = 0; frame < 10; ++frame) {
        const auto shape = course.next();
        shapes.push_back(!shape ? "-"
                                : std::to_string(shape->points[0].x) + "," +
                                      std::to_string(shape->points[1].x) +
                                      (shape->isOutside ? "!" : ""));
    }
    EXPECT_EQ(shapes, (std::vector<std::string>{"-", "0,10", "10,21", "20,31", "20,31", "0,2",
                                                "0,2", "40,42!", "40,42!", "40,42!"}));
}

TEST_F(CvatTest, WhatDoesNotFitIsRefusedByItsLineAndNothingIsWritten) {
    const std::string head = "<annotations>\n<track label=\"Door\">\n";
    const std::string tail = "</track>\n</annotations>";
    const auto polygon = [&](const std::string& attributes) {
        return head + "<polygon " + attributes + "/>\n" + tail;
    };
    const std::string good = "points=\"1,1;2,2;3,1\"";
    std::string wide = "<annotations";
    for (int i = 0; i < 257; ++i) {
        wide += " a" + std::to_string(i) + "=''";
    }
    const struct {
        std::string text;
        const char* error;
    } cases[] = {
        {"<annotations>\n<track>", ":2: this is no well-formed XML"},
        {"", "this is no well-formed XML"},
        {wide + "/>", "a tag has too many attributes"},
        {"\n<tracks/>", ":2: <annotations> is missing"},
        {"<annotations>\n<image/></annotations>", ":2: <image> cannot be read"},
        {"<annotations>\n\n<track/></annotations>", ":3: the attribute \"label\" is missing"},
        {"<annotations>\n<track label=\"T\xFCr\"/></annotations>",
         ":2: the label is no UTF-8 text"},
        {head + "<box/>" + tail, ":3: <box> in a track is no polygon"},
        {polygon(good), ":3: the attribute \"frame\" is missing"},
        {polygon("frame=\"1x\" " + good), ":3: \"1x\" is no whole number"},
        {polygon("frame=\"6\" " + good), ":3: frame 6 is none of the clip's 6"},
        {polygon("frame=\"-1\" " + good), ":3: frame -1 is none"},
        {polygon("frame=\"1\" outside=\"2\" " + good), ":3: \"outside\" is neither"},
        {polygon("frame=\"1\" points=\"1,1;2,2\""), ":3: a polygon has at least three points"},
        {polygon("frame=\"1\" points=\"1,1;2 2;3,3\""), ":3: \"2 2\" is no point"},
        {polygon("frame=\"1\" points=\"1,1;2,nan;3,3\""), ":3: \"nan\" is no coordinate"},
        {polygon("frame=\"1\" points=\"1,1;2,1e99;3,3\""), ":3: the coordinate 1e99 lies outside"},
        {polygon("frame=\"1\" points=\"1,1;2,361;3,3\""), ":3: the coordinate 361 lies outside"},
        {head + "<polygon frame=\"2\" " + good + "/>\n<polygon frame=\"2\" " + good + "/>" + tail,
         ":4: frame 2 does not follow frame 2"},
        {"<annotations><meta><task>\n<size>7</size></task></meta></annotations>",
         ":2: the number of frames is 7, the clip's 6"},
        {"<annotations><meta><original_size>\n<width>9</width></original_size></meta></"
         "annotations>",
         ":2: the width is 9, the clip's 640"},
        {"<annotations/>\n<annotations>\n<track label=\"Door\"/></annotations>",
         ":2: <annotations> stands behind <annotations>"},
        {"<annotations><meta><project><tasks><task/>\n<task/></tasks></project></meta>"
         "</annotations>",
         ":2: a project of several tasks cannot be read"},
        {"<annotations><meta><project><tasks><task>\n<size>7</size></task></tasks></project></meta>"
         "</annotations>",
         ":2: the number of frames is 7, the clip's 6"},
    };
    for (const auto& item : cases) {
        support::writeBytes("A/tracks.xml", item.text);
        EXPECT_EQ(exchange("A/new", "--import"), inspect::kUnreadable) << item.error;
        EXPECT_NE(m_errors.find(item.error), std::string::npos) << m_errors;
    }
    // A small file for a long clip: it would take more than a pair may.
    support::writeBytes("A/tracks.xml", polygon("frame=\"0\" " + good));
    EXPECT_EQ(exchange("A/new", "--import", 9'000'000), inspect::kUnreadable);
    EXPECT_NE(m_errors.find("too many points"), std::string::npos) << m_errors;
    EXPECT_ANY_THROW(static_cast<void>(support::readBytes("A/new-ZoneInfo.bin")))
        << "it was written";
    // Without a clip its size and length must be given.
    EXPECT_EQ(run({"zones", "A/new", "--import", "cvat", "A/tracks.xml"}), inspect::kUnreadable);
    EXPECT_NE(m_errors.find("there is no A/new.ogv or .ogg"), std::string::npos) << m_errors;
    EXPECT_EQ(run({"zones", "A/new", "--import", "other", "A/tracks.xml"}), inspect::kUnreadable);
    EXPECT_NE(m_errors.find("the format \"other\" is unknown"), std::string::npos) << m_errors;
}

} // namespace
