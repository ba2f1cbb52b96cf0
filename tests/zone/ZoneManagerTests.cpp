#include <functional>

#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneManager.h"

namespace zone_tests {
namespace {

using Lines = std::vector<std::string>;

class ZoneManagerTest : public ZoneTest {};

TEST_F(ZoneManagerTest, AZoneThatIsNotThereIsReportedWithItsPlace) {
    m_manager->addZone(makeZone({{{1, 1}}}));
    m_manager->addZone(nullptr);
    EXPECT_EQ(m_manager->zoneCount(), 1);
    using Call = std::function<void(zone::ZoneManager&, int)>;
    struct Case {
        const char* message;
        Call call;
    };
    const Case cases[]{
        {"70 Zone index is invalid",
         [](zone::ZoneManager& m, int z) { EXPECT_FALSE(m.isActive(z, 0)); }},
        {"78 Zone index is invalid", [](zone::ZoneManager& m, int z) { m.setActive(z, 0, false); }},
        {"119 Invalid zone index", [](zone::ZoneManager& m, int z) { m.removeZone(z); }},
        {"127 Invalid zone index",
         [](zone::ZoneManager& m, int z) { EXPECT_EQ(m.getZoneName(z), ""); }},
        {"135 Invalid zone index", [](zone::ZoneManager& m, int z) { m.setZoneName(z, "N"); }},
        {"142 Zone index is invalid",
         [](zone::ZoneManager& m, int z) { EXPECT_FALSE(m.hitTest(z, 0, 1, 1)); }},
        {"157 Zone index is invalid",
         [](zone::ZoneManager& m, int z) { m.moveSelectedPoint(z, 0, 9, 9); }},
        {"164 Zone index is invalid", [](zone::ZoneManager& m, int z) { m.addPoint(z, 0, 9, 9); }},
        {"171 Zone index is invalid",
         [](zone::ZoneManager& m, int z) { m.deletePoint(z, 0, 1, 1); }},
    };
    for (const Case& c : cases) {
        for (const int index : {-1, 1, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
            const std::size_t before = m_log.errors().size();
            c.call(*m_manager, index);
            ASSERT_EQ(m_log.errors().size(), before + 1) << c.message;
            EXPECT_EQ(m_log.errors().back(), std::string("..\\ZoneManager.cpp:") + c.message);
            EXPECT_EQ(m_manager->zone(index), nullptr);
        }
    }
    EXPECT_EQ(m_manager->getZoneName(0), "Z");
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 0), (Points{{1, 1}}));
}

TEST_F(ZoneManagerTest, ZonesKeepTheirOrderAndMoveDownWhenOneGoes) {
    for (const char* name : {"A", "B", "C"}) {
        m_manager->addZone(zone::Zone::create(2));
        m_manager->setZoneName(m_manager->zoneCount() - 1, name);
    }
    m_manager->currentZone = 2;
    m_manager->removeZone(1);
    EXPECT_EQ(m_manager->zoneCount(), 2);
    EXPECT_EQ(m_manager->getZoneName(1), "C");
    EXPECT_EQ(m_manager->currentZone, 2) << "the window chooses the next one";
}

TEST_F(ZoneManagerTest, OperationsReachTheZoneTheyName) {
    m_manager->addZone(makeZone(std::vector<Points>(3, {{10, 10}})));
    m_manager->addZone(makeZone(std::vector<Points>(3, {{10, 10}})));
    EXPECT_TRUE(m_manager->hitTest(1, 0, 10, 10));
    m_manager->moveSelectedPoint(1, 1, 40, 40);
    m_manager->endMove(1, 1, 40, 40);
    m_manager->addPoint(1, 0, 60, 60);
    m_manager->setActive(1, 2, false);
    m_manager->deletePoint(1, 2, 40, 40);
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 2), (Points{{10, 10}}));
    EXPECT_EQ(pointsOf(*m_manager->zone(1), 0), (Points{{10, 10}, {60, 60}}));
    EXPECT_EQ(pointsOf(*m_manager->zone(1), 2), (Points{{60, 60}}));
    EXPECT_TRUE(m_manager->isActive(1, 1));
    EXPECT_FALSE(m_manager->isActive(1, 2));
    EXPECT_TRUE(m_manager->isActive(0, 2));
}

TEST_F(ZoneManagerTest, TheCurrentManagersSwitchAndAreaDecide) {
    const auto other = zone::ZoneManager::createEmpty();
    EXPECT_EQ(other->currentZone, -1);
    EXPECT_EQ(other->frameCount, 0);
    EXPECT_EQ(other->videoWidth, 0);
    EXPECT_TRUE(other->progressChanges);
    other->progressChanges = false;
    m_manager->addZone(makeZone(std::vector<Points>(2, {{10, 10}})));
    m_manager->hitTest(0, 0, 10, 10);
    zone::setCurrentZoneManager(other);
    m_manager->moveSelectedPoint(0, 0, 9000, 9000);
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 0), (Points{{9000, 9000}}));
    EXPECT_EQ(pointsOf(*m_manager->zone(0), 1), (Points{{10, 10}}));
}

} // namespace
} // namespace zone_tests
