#include <tinyxml2.h>

#include "tests/zone/ZoneFixture.h"
#include "zone/Zone.h"

namespace zone_tests {
namespace {

class ZoneEditTest : public ZoneTest {};

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
        tinyxml2::XMLDocument document;
        ASSERT_EQ(document.Parse(c.xml), tinyxml2::XML_SUCCESS);
        const auto zone = zone::Zone::createFromXml(*document.RootElement());
        EXPECT_EQ(zone->name(), c.name);
        EXPECT_EQ(zone->frameCount(), 0);
        EXPECT_EQ(newErrors(), Lines(c.reports, "Unknown zone node type"));
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
