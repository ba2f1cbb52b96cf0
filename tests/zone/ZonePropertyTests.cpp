// Random calls, valid and invalid, on a manager and on a plain model of the same rules, with saves
// and loads between them.
#include <algorithm>
#include <functional>
#include <limits>
#include <sstream>

#include "tests/support/Random.h"
#include "tests/zone/PlainZones.h"
#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

using zone::ZoneManager;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kOperations = 12;
/// Where each operation reports a zone and a frame that are not there. With 0 for the zone it is
/// silent, with 0 for the frame it takes none.
constexpr int kLines[kOperations][2] = {{70, 62},   {142, 112}, {127, 0},   {78, 75},
                                        {149, 126}, {157, 136}, {164, 171}, {171, 203},
                                        {135, 0},   {0, 1},     {0, 0},     {119, 0}};

/// One call and what it is given.
struct Given {
    int operation;
    int zone;
    int frame;
    platform::Point at;
    int handle;
    std::string name;
};

/// The call on a ZoneManager or on PlainZones, with its result where it has one.
template <typename Manager>
bool perform(Manager& m, const Given& g, RecordingCanvas& canvas) {
    bool result = false;
    const std::function<void()> calls[kOperations] = {
        [&] { result = m.isActive(g.zone, g.frame); },
        [&] { result = m.hitTest(g.zone, g.frame, g.at.x, g.at.y); },
        [&] { result = m.getZoneName(g.zone) == g.name && !g.name.empty(); },
        [&] { m.setActive(g.zone, g.frame, g.handle % 2 == 0); },
        [&] { m.endMove(g.zone, g.frame, g.at.x, g.at.y); },
        [&] { m.moveSelectedPoint(g.zone, g.frame, g.at.x, g.at.y); },
        [&] { m.addPoint(g.zone, g.frame, g.at.x, g.at.y); },
        [&] { m.deletePoint(g.zone, g.frame, g.at.x, g.at.y); },
        [&] { m.setZoneName(g.zone, g.name); },
        [&] { m.draw(g.zone, g.frame, canvas, g.at.x, g.at.y); },
        [&] {
            if (const auto zone = m.zone(g.zone)) { // as a window may have kept the handle
                zone->setSelectedPoint(g.handle);
            }
        },
        [&] { m.removeZone(g.zone); },
    };
    calls[g.operation]();
    return result;
}

std::string details(const std::shared_ptr<zone::ZoneShape>& shape) {
    std::ostringstream text;
    if (shape) {
        text << shape->recordSize << " bytes, centre " << shape->centerX << "," << shape->centerY
             << ", " << shown(shape.get());
    }
    return text.str();
}

class ZonePropertyTest : public ZoneTest {
protected:
    /// Few positions, so that handles meet and are hit at their edges; a few lie far outside.
    int coordinate() {
        return m_random.below(40) == 0 ? m_random.oneOf({kLowest, kHighest, 16777217, 5000})
                                       : m_random.below(12) * 4 - 12;
    }
    void begin();
    void step();
    void saveAndLoad();
    void expectEqual() const;

    PlainZones m_plain;
    support::Random m_random{2024};
    std::shared_ptr<ZoneManager> m_window = ZoneManager::createEmpty(); ///< the current one
};

void ZonePropertyTest::begin() {
    zone::setCurrentZoneManager(m_window);
    m_manager = ZoneManager::createEmpty();
    m_plain = {{}, 1 + m_random.below(9)};
    for (int zone = 1 + m_random.below(3); zone > 0; --zone) {
        m_manager->addZone(zone::Zone::create(m_plain.frameCount));
        m_plain.zones.emplace_back().frames.resize(static_cast<std::size_t>(m_plain.frameCount));
    }
    zone::setZoneView({{m_random.oneOf({1280, 1024}), 720},
                       {m_random.oneOf({1280, 1920}), m_random.oneOf({720, 1080})}});
}

/// One random call on both.
void ZonePropertyTest::step() {
    if (m_random.below(8) == 0) { // the current manager's count, whichever one is called
        m_window->progressChanges = m_random.below(2) == 0;
        m_window->videoWidth = m_random.oneOf({1280, 20, 0});
        m_window->videoHeight = m_random.oneOf({720, 20, -3});
    }
    const Given g{m_random.below(60) == 0 ? kOperations - 1 : m_random.below(kOperations - 1),
                  m_random.nearly(m_manager->zoneCount()),
                  m_random.nearly(m_plain.frameCount),
                  {coordinate(), coordinate()},
                  m_random.below(8) - 3,
                  m_random.oneOf<4, std::string>({"", "a", "R&D \xC3\xA4", std::string(300, 'n')})};
    const auto [zoneLine, frameLine] = kLines[g.operation];
    RecordingCanvas plainCanvas;
    Lines reports;
    bool expected = false;
    if (g.zone < 0 || g.zone >= m_manager->zoneCount()) {
        reports = {"..\\ZoneManager.cpp:" + std::to_string(zoneLine) +
                   (frameLine == 0 ? " Invalid zone index" : " Zone index is invalid")};
    } else if (frameLine > 0 && (g.frame < 0 || g.frame >= m_plain.frameCount)) {
        reports = {"..\\Zone.cpp:" + std::to_string(frameLine) + " Frame index is invalid"};
    } else {
        expected = perform(m_plain, g, plainCanvas);
        reports = m_log.newErrors(); // a move reports once, on however many frames
        reports.erase(std::unique(reports.begin(), reports.end()), reports.end());
    }
    if (zoneLine == 0) {
        reports.clear();
    }
    RecordingCanvas canvas;
    ASSERT_EQ(perform(*m_manager, g, canvas), expected) << g.operation;
    ASSERT_EQ(m_log.newErrors(), reports) << g.operation;
    ASSERT_EQ(canvas.calls, plainCanvas.calls);
}

void ZonePropertyTest::expectEqual() const {
    ASSERT_EQ(m_manager->zoneCount(), static_cast<int>(m_plain.zones.size()));
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        const zone::Zone& zone = *m_manager->zone(index);
        const PlainZone& plain = m_plain.zones.begin()[index];
        ASSERT_EQ(zone.name(), plain.name);
        ASSERT_EQ(zone.selectedPoint(), plain.selected);
        ASSERT_EQ(zone.frameCount(), m_plain.frameCount);
        for (int frame = 0; frame < m_plain.frameCount; ++frame) {
            ASSERT_EQ(details(zone.shape(frame)), details(plain.frames.begin()[frame])) << frame;
        }
    }
}

/// Both files byte for byte; then what a load makes of them takes the place of what was saved.
void ZonePropertyTest::saveAndLoad() {
    m_manager->videoWidth = 1280;
    m_manager->videoHeight = 720;
    std::string bytes;
    Lines names;
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        PlainZone& zone = *m_plain.zone(index);
        Lines shapes;
        for (int frame = 0; frame < m_plain.frameCount; ++frame) {
            shapes.push_back(writtenAlone(m_plain.shape(index, frame)));
            m_plain.held(index, frame).reset();
            std::size_t consumed = 0;
            ASSERT_TRUE(m_plain.shape(index, frame).read(asBytes(shapes.back()), consumed));
        }
        bytes += zone.name.empty() ? namelessBytes(shapes) : zoneBytes(zone.name, shapes);
        names.push_back(zone.name);
        zone.selected = -1;
    }
    ASSERT_TRUE(m_manager->saveAs("clip"));
    ASSERT_EQ(file("clip-ZoneInfo.bin"), bytes);
    ASSERT_EQ(file("clip-ZoneInfo.xml"), infoBytes(names));
    if (!names.empty()) { // an empty file cannot be loaded
        m_manager = ZoneManager::create("clip", m_plain.frameCount, true);
        ASSERT_TRUE(m_manager);
        ASSERT_EQ(m_manager->videoWidth * 1000 + m_manager->videoHeight, 1280720);
        ASSERT_EQ(m_manager->currentZone, m_manager->zoneCount() - 1);
        ASSERT_EQ(m_manager->frameCount, m_plain.frameCount);
        ASSERT_TRUE(m_manager->progressChanges);
    }
}

TEST_F(ZonePropertyTest, RandomCallsLeaveTheZonesAsAPlainModelOfTheirRules) {
    for (int round = 0; round < 300; ++round) {
        begin();
        testing::internal::CaptureStderr(); // a line for each invalid call
        for (int call = 1; call <= 200 && !HasFatalFailure(); ++call) {
            step();
            if (!HasFatalFailure() && call % 50 == 0) {
                saveAndLoad();
            }
            if (!HasFatalFailure()) {
                expectEqual();
            }
        }
        (void)testing::internal::GetCapturedStderr();
        ASSERT_FALSE(HasFatalFailure()) << round;
    }
}

} // namespace
} // namespace zone_tests
