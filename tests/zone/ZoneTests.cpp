#include <functional>

#include <tinyxml2.h>

#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/Zone.h"

namespace zone_tests {
namespace {

using Lines = std::vector<std::string>;

class ZoneEditTest : public ZoneTest {};

/// What a zone counts as equal by: each frame as text.
Lines framesOf(const zone::Zone& zone) {
    Lines frames;
    for (int frame = 0; frame < zone.frameCount(); ++frame) {
        const auto shape = zone.shape(frame);
        std::string text = shape ? (shape->active ? "on" : "off") : "none";
        for (const platform::Point& point : pointsOf(zone, frame)) {
            text += " " + std::to_string(point.x) + "," + std::to_string(point.y);
        }
        frames.push_back(text);
    }
    return frames;
}

TEST_F(ZoneEditTest, AFrameThatIsNotThereIsReportedWithItsPlace) {
    using Call = std::function<void(zone::Zone&, int)>;
    struct Case {
        int line;
        Call call;
    };
    RecordingCanvas canvas;
    const Case cases[]{
        {62, [](zone::Zone& z, int f) { EXPECT_FALSE(z.isActive(f)); }},
        {75, [](zone::Zone& z, int f) { z.setActive(f, false); }},
        {102, [&](zone::Zone& z, int f) { z.draw(f, canvas, 0, 0); }},
        {112, [](zone::Zone& z, int f) { EXPECT_FALSE(z.hitTest(f, 1, 1)); }},
        {126, [](zone::Zone& z, int f) { z.endMove(f, 1, 1); }},
        {136, [](zone::Zone& z, int f) { z.moveSelectedPoint(f, 9, 9); }},
        {171, [](zone::Zone& z, int f) { z.addPoint(f, 9, 9); }},
        {203, [](zone::Zone& z, int f) { z.deletePoint(f, 1, 1); }},
    };
    const auto zone = makeZone({{{1, 1}}, {{1, 1}}});
    zone->setSelectedPoint(0);
    const Lines before = framesOf(*zone);
    for (const Case& c : cases) {
        for (const int frame : {-1, 2, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
            const std::size_t lines = m_log.errors().size();
            c.call(*zone, frame);
            ASSERT_EQ(m_log.errors().size(), lines + 1) << c.line;
            EXPECT_EQ(m_log.errors().back(),
                      "..\\Zone.cpp:" + std::to_string(c.line) + " Frame index is invalid");
        }
    }
    EXPECT_EQ(framesOf(*zone), before);
    EXPECT_TRUE(canvas.calls.empty());
}

TEST_F(ZoneEditTest, TheActiveFlagSpreadsForwardOnlyWhenProgressChangesIsOn) {
    const auto zone = zone::Zone::create(5);
    EXPECT_TRUE(zone->isActive(3)) << "a frame without a shape is active";
    m_manager->progressChanges = false;
    zone->setActive(1, false);
    EXPECT_EQ(framesOf(*zone), (Lines{"none", "off", "none", "none", "none"}));
    m_manager->progressChanges = true;
    zone->setActive(3, false);
    EXPECT_EQ(framesOf(*zone), (Lines{"none", "off", "none", "off", "off"}));
    zone->setActive(2, true);
    EXPECT_EQ(framesOf(*zone), (Lines{"none", "off", "on", "on", "on"}));
    EXPECT_FALSE(zone->isActive(1));
}

TEST_F(ZoneEditTest, APointMovesOnLaterFramesOnlyWhenProgressChangesIsOn) {
    const std::vector<Points> start(4, Points{{10, 10}, {20, 20}});
    auto zone = makeZone(start);
    EXPECT_TRUE(zone->hitTest(1, 20, 20));
    m_manager->progressChanges = false;
    zone->moveSelectedPoint(1, 30, 31);
    EXPECT_EQ(framesOf(*zone),
              (Lines{"on 10,10 20,20", "on 10,10 30,31", "on 10,10 20,20", "on 10,10 20,20"}));
    m_manager->progressChanges = true;
    zone->moveSelectedPoint(2, -7, 5000);
    EXPECT_EQ(framesOf(*zone),
              (Lines{"on 10,10 20,20", "on 10,10 30,31", "on 10,10 0,719", "on 10,10 0,719"}));
    zone->setSelectedPoint(-1);
    zone->moveSelectedPoint(0, 1, 1);
    EXPECT_EQ(pointsOf(*zone, 0), start[0]);
}

TEST_F(ZoneEditTest, AShapeDraggedByItsCentreTakesLaterFramesAlongByTheSameDistance) {
    // Nothing has been drawn, so the centre is at (0, 0).
    auto zone = makeZone({{{1, 1}, {2, 2}, {3, 3}}, {{5, 5}}, {}, {{1270, 710}, {0, 0}}});
    zone->setSelectedPoint(3);
    zone->moveSelectedPoint(0, 100, -50);
    EXPECT_EQ(framesOf(*zone),
              (Lines{"on 101,-49 102,-48 103,-47", "on 105,-45", "on", "on 1370,660 100,-50"}));
    m_manager->progressChanges = false;
    zone->moveSelectedPoint(0, 1, 1);
    EXPECT_EQ(pointsOf(*zone, 3), (Points{{1370, 660}, {100, -50}}));
}

TEST_F(ZoneEditTest, LaterFramesWithOtherCountsShiftByTheirOwnCentreOrStay) {
    auto zone = makeZone({{{1, 1}, {2, 2}, {3, 3}}, {{5, 5}, {6, 6}}, {{7, 7}}, {{8, 8}}});
    zone->setSelectedPoint(2);
    zone->moveSelectedPoint(0, 40, 50);
    EXPECT_EQ(framesOf(*zone), (Lines{"on 1,1 2,2 40,50", "on 45,55 46,56", "on 7,7", "on 8,8"}));
    EXPECT_EQ(m_log.errors(), Lines{"..\\ZoneShape.cpp:368 Invalid point index"})
        << "one line for all frames";
}

TEST_F(ZoneEditTest, MovingOnAFrameWithoutAShapeGivesItAnEmptyOne) {
    auto zone = zone::Zone::create(3);
    zone->setSelectedPoint(0);
    zone->moveSelectedPoint(1, 40, 50);
    EXPECT_EQ(framesOf(*zone), (Lines{"none", "on", "on"}));
    EXPECT_EQ(zone->shape(1)->recordSize, 0U) << "created, not edited";
}

TEST_F(ZoneEditTest, AddingAPointAddsItToEveryFrameBehindTheSelectedOne) {
    auto zone = zone::Zone::create(3);
    zone->addPoint(1, 10, 10);
    EXPECT_EQ(zone->selectedPoint(), 0);
    zone->addPoint(1, 20, 20);
    EXPECT_EQ(zone->selectedPoint(), 1);
    m_manager->progressChanges = false;
    zone->setSelectedPoint(0);
    zone->addPoint(2, 5000, -5);
    EXPECT_EQ(zone->selectedPoint(), 1);
    EXPECT_EQ(framesOf(*zone), Lines(3, "on 10,10 5000,-5 20,20"));
    zone->setSelectedPoint(3); // the centre handle is no point
    zone->addPoint(0, 1, 1);
    EXPECT_EQ(zone->selectedPoint(), 3);
    EXPECT_EQ(framesOf(*zone), Lines(3, "on 10,10 5000,-5 20,20"));
    EXPECT_EQ(zone->shape(0)->recordSize, 32U);
}

TEST_F(ZoneEditTest, AddingToFramesOfDifferentCountsSelectsTheIndexOnTheGivenFrame) {
    auto zone = makeZone({{{1, 1}, {2, 2}, {3, 3}}, {}, {{4, 4}}});
    zone->setSelectedPoint(1);
    zone->addPoint(2, 9, 9);
    EXPECT_EQ(framesOf(*zone), (Lines{"on 1,1 2,2 9,9 3,3", "on", "on 4,4"}));
    EXPECT_EQ(zone->selectedPoint(), 1) << "nothing was inserted on frame 2";
    zone->setSelectedPoint(-1);
    zone->addPoint(0, 8, 8);
    EXPECT_EQ(framesOf(*zone), (Lines{"on 1,1 2,2 9,9 3,3 8,8", "on 8,8", "on 4,4 8,8"}));
    EXPECT_EQ(zone->selectedPoint(), 4);
}

TEST_F(ZoneEditTest, DeletingRemovesThePointUnderThePositionOnEveryFrame) {
    const Points here{{100, 100}, {300, 300}};
    const Points elsewhere{{200, 200}, {300, 300}};
    auto zone = makeZone({elsewhere, here, here, {{300, 300}, {93, 107}, {104, 104}}, {}});
    zone->setSelectedPoint(1);
    zone->deletePoint(4, 100, 100);
    EXPECT_EQ(framesOf(*zone), (Lines{"on 200,200 300,300", "on 300,300", "on 300,300",
                                      "on 300,300 104,104", "on"}));
    EXPECT_EQ(zone->selectedPoint(), 1) << "the selection stays";
    EXPECT_EQ(zone->shape(1)->recordSize, 16U);
    EXPECT_EQ(zone->shape(4)->recordSize, 8U);
}

TEST_F(ZoneEditTest, TheCentreHandleIsNoPointToDelete) {
    auto zone = makeZone({{{100, 100}, {200, 100}, {100, 200}}});
    zone->deletePoint(0, 0, 0); // where the centre is before the first draw
    EXPECT_EQ(pointsOf(*zone, 0).size(), 3U);
    EXPECT_TRUE(zone->hitTest(0, 0, 0));
    EXPECT_EQ(zone->selectedPoint(), 3);
}

TEST_F(ZoneEditTest, AMissClearsTheSelectionAndAFrameWithoutAShapeKeepsIt) {
    auto zone = makeZone({{{100, 100}}});
    zone->fillTo(2);
    EXPECT_TRUE(zone->hitTest(0, 100, 100));
    EXPECT_FALSE(zone->hitTest(1, 100, 100));
    EXPECT_EQ(zone->selectedPoint(), 0);
    EXPECT_FALSE(zone->hitTest(0, 300, 300));
    EXPECT_EQ(zone->selectedPoint(), -1);
}

TEST_F(ZoneEditTest, ANameEndsAtTheLastCharacterThatFitsItsLine) {
    auto zone = zone::Zone::create(0);
    struct Case {
        std::string given, kept;
    };
    const Case cases[]{
        {"A&B <c>", "A&B <c>"},
        {std::string(243, 'x'), std::string(243, 'x')},
        {std::string(244, 'x'), std::string(243, 'x')},
        {std::string(242, 'x') + "\xC3\xA4", std::string(242, 'x')},
        {std::string(241, 'x') + "\xC3\xA4z", std::string(241, 'x') + "\xC3\xA4"},
        {std::string("ab\0cd", 5), "ab"},
        {"", ""},
    };
    for (const Case& c : cases) {
        zone->setName(c.given);
        EXPECT_EQ(zone->name(), c.kept);
    }
}

TEST_F(ZoneEditTest, AnElementGivesItsNameAndReportsOtherChildren) {
    struct Case {
        const char* xml;
        const char* name;
        std::size_t reports;
    };
    const Case cases[]{
        {"<Zone><Name>Door</Name></Zone>", "Door", 0},
        {"<Zone><Name>A</Name><Color>red</Color><Name>B</Name><X/></Zone>", "B", 2},
        {"<Zone><Name/></Zone>", "", 0},
        {"<Zone><Name><b>x</b></Name></Zone>", "", 0},
        {"<Other/>", "", 0},
    };
    for (const Case& c : cases) {
        const std::size_t before = m_log.errors().size();
        tinyxml2::XMLDocument document;
        ASSERT_EQ(document.Parse(c.xml), tinyxml2::XML_SUCCESS);
        const auto zone = zone::Zone::createFromXml(*document.RootElement());
        EXPECT_EQ(zone->name(), c.name);
        EXPECT_EQ(zone->frameCount(), 0);
        ASSERT_EQ(m_log.errors().size(), before + c.reports);
        if (c.reports > 0) {
            EXPECT_EQ(m_log.errors().back(), "Unknown zone node type");
        }
    }
}

TEST_F(ZoneEditTest, AZoneOfTwoBillionFramesTakesEditsAtOnce) {
    constexpr int kFrames = 0x7FFFFFFF;
    auto zone = zone::Zone::create(kFrames);
    zone->addPoint(0, 10, 10);
    zone->moveSelectedPoint(kFrames - 1, 20, 20);
    zone->setActive(1'000'000, false);
    EXPECT_EQ(pointsOf(*zone, kFrames - 2), (Points{{10, 10}}));
    EXPECT_EQ(pointsOf(*zone, kFrames - 1), (Points{{20, 20}}));
    EXPECT_FALSE(zone->isActive(kFrames - 1));
    EXPECT_TRUE(zone->isActive(999'999));
}

} // namespace
} // namespace zone_tests
