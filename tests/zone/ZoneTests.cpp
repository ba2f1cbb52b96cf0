#include <tinyxml2.h>

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

TEST_F(ZoneEditTest, LaterFramesWithOtherCountsShiftByTheirOwnCentreOrStay) {
    auto zone = makeZone({{{1, 1}, {2, 2}, {3, 3}}, {{5, 5}, {6, 6}}, {{7, 7}}, {{8, 8}}});
    zone->setSelectedPoint(2);
    zone->moveSelectedPoint(0, 40, 50);
    EXPECT_EQ(framesOf(*zone), (Lines{"on 1,1 2,2 40,50", "on 45,55 46,56", "on 7,7", "on 8,8"}));
    EXPECT_EQ(m_log.errors(), Lines{"..\\ZoneShape.cpp:368 Invalid point index"})
        << "one line for all frames";
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

TEST_F(ZoneEditTest, TheCurrentManagersSwitchAndAreaDecide) {
    const auto other = zone::ZoneManager::createEmpty();
    EXPECT_EQ(other->currentZone, -1);
    EXPECT_EQ(other->frameCount, 0);
    EXPECT_EQ(other->videoWidth, 0);
    EXPECT_TRUE(other->progressChanges);
    other->progressChanges = false;
    m_manager->addZone(nullptr);
    m_manager->addZone(makeZone(std::vector<Points>(2, {{10, 10}})));
    m_manager->hitTest(0, 0, 10, 10);
    zone::setCurrentZoneManager(other);
    m_manager->moveSelectedPoint(0, 0, 9000, 9000);
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 0), (Points{{9000, 9000}}));
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 1), (Points{{10, 10}}));
    m_manager->currentZone = 7;
    m_manager->removeZone(0);
    EXPECT_EQ(m_manager->currentZone, 7) << "the window chooses the next one";
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
