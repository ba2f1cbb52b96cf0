// Random calls, valid and invalid, on a session and on a plain model of the same rules, with saves
// and loads between them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Random.h"
#include "tests/zone/PlainZones.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneSession.h"

namespace zone_tests {
namespace {

using platform::Point;
using zone::ZoneManager;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kOperations = 11;
/// Where each operation reports a zone and a frame that are not there. With 0 for the zone it is
/// silent, with 0 for the frame it takes none.
constexpr int kLines[kOperations][2] = {{70, 62},   {142, 112}, {127, 0},   {78, 75},
                                        {149, 126}, {157, 136}, {164, 171}, {171, 203},
                                        {135, 0},   {0, 1},     {119, 0}};

/// One call and what it is given.
struct Given {
    int operation;
    int zone;
    int frame;
    Point at;
    int handle;
    std::string name;
};

/// A session, called as PlainZones is.
struct EditedZones {
    zone::ZoneSession& session;

    bool isActive(int zone, int frame) const { return session.zones().isActive(zone, frame); }
    bool hitTest(int zone, int frame, int x, int y) const {
        return session.hitTest(zone, frame, x, y);
    }
    std::string getZoneName(int zone) const { return session.zones().getZoneName(zone); }
    void setActive(int zone, int frame, bool active) const {
        session.setActive(zone, frame, active);
    }
    void endMove(int zone, int frame, int x, int y) const { session.endMove(zone, frame, x, y); }
    void moveSelectedPoint(int zone, int frame, int x, int y) const {
        session.moveSelectedPoint(zone, frame, x, y);
    }
    void addPoint(int zone, int frame, int x, int y) const { session.addPoint(zone, frame, x, y); }
    void deletePoint(int zone, int frame, int x, int y) const {
        session.deletePoint(zone, frame, x, y);
    }
    void setZoneName(int zone, const std::string& name) const { session.renameZone(zone, name); }
    void removeZone(int zone) const { session.removeZone(zone); }
    void show(int zone, int frame) const {
        session.chooseZone(zone);
        session.showFrame(frame);
    }
};

/// The call on EditedZones or on PlainZones, with its result where it has one.
template <typename Zones>
bool perform(Zones& m, const Given& g) {
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
        [&] { m.show(g.zone, g.frame); },
        [&] { m.removeZone(g.zone); },
    };
    calls[g.operation]();
    return result;
}

template <typename Shape>
std::string details(const std::optional<Shape>& shape, Point center) {
    std::ostringstream text;
    if (shape) {
        text << shape->recordSize << " bytes, centre " << center.x << "," << center.y << ", "
             << shown(&*shape);
    }
    return text.str();
}

/// Rounded as files are: one half up, then toward zero, in single precision.
int scaled(int value, float factor) {
    const float result = static_cast<float>(value) * factor + 0.5F;
    return result >= 2147483648.0F    ? kHighest
           : result <= -2147483648.0F ? kLowest
                                      : static_cast<int>(result);
}
Points scaled(const Points& points, float x, float y) {
    Points result;
    for (const Point& point : points) {
        result.push_back({scaled(point.x, x), scaled(point.y, y)});
    }
    return result;
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
    void save();
    void expectEqual();

    zone::ZoneEditing editing(int zone) const {
        const auto at = static_cast<std::size_t>(zone);
        const std::vector<zone::ZoneEditing>& all = m_session->context().zones;
        return at < all.size() ? all[at] : zone::ZoneEditing();
    }
    void edit(std::shared_ptr<ZoneManager> zones) {
        m_manager = std::move(zones);
        m_session = std::make_unique<zone::ZoneSession>(m_manager);
        m_plain.current = m_session->context().currentZone;
        m_plain.shown = -1;
        m_session->setProgressChanges(m_plain.progressChanges);
    }

    PlainZones m_plain;
    std::unique_ptr<zone::ZoneSession> m_session;
    zone::Scale m_scale;
    support::Random m_random{2024};
};

void ZonePropertyTest::begin() {
    const std::shared_ptr<ZoneManager> zones = ZoneManager::createEmpty();
    m_plain = {};
    m_plain.frameCount = 1 + m_random.below(9);
    for (int zone = 1 + m_random.below(3); zone > 0; --zone) {
        zones->addZone(zone::Zone::create(m_plain.frameCount));
        m_plain.zones.emplace_back().frames.resize(static_cast<std::size_t>(m_plain.frameCount));
    }
    zones->scale = zone::scaleBetween({m_random.oneOf({1280, 1024}), 720},
                                      {m_random.oneOf({1280, 1920}), m_random.oneOf({720, 1080})});
    m_scale = zones->scale.value_or(zone::Scale{});
    edit(zones);
}

/// One random call on both.
void ZonePropertyTest::step() {
    if (m_random.below(8) == 0) {
        m_plain.progressChanges = m_random.below(2) == 0;
        m_session->setProgressChanges(m_plain.progressChanges);
        m_plain.area = {m_random.oneOf({1280, 20, 0}), m_random.oneOf({720, 20, -3})};
        m_session->setArea(m_plain.area);
    }
    const Given g{m_random.below(60) == 0 ? kOperations - 1 : m_random.below(kOperations - 1),
                  m_random.nearly(m_manager->zoneCount()),
                  m_random.nearly(m_plain.frameCount),
                  {coordinate(), coordinate()},
                  m_random.below(8) - 3,
                  m_random.oneOf<4, std::string>({"", "a", "R&D \xC3\xA4", std::string(300, 'n')})};
    const auto [zoneLine, frameLine] = kLines[g.operation];
    Lines reports;
    bool expected = false;
    if (g.zone < 0 || g.zone >= m_manager->zoneCount()) {
        reports = {"..\\ZoneManager.cpp:" + std::to_string(zoneLine) +
                   (frameLine == 0 ? " Invalid zone index" : " Zone index is invalid")};
    } else if (frameLine > 0 && (g.frame < 0 || g.frame >= m_plain.frameCount)) {
        reports = {"..\\Zone.cpp:" + std::to_string(frameLine) + " Frame index is invalid"};
    } else {
        expected = perform(m_plain, g);
        reports = m_log.newErrors(); // a move reports once, on however many frames
        reports.erase(std::unique(reports.begin(), reports.end()), reports.end());
    }
    if (zoneLine == 0) { // shows a frame
        if (!reports.empty()) {
            return;
        }
        m_plain.current = g.zone;
        m_plain.showCurrent();
        m_plain.shown = g.frame;
    }
    EditedZones edited{*m_session};
    ASSERT_EQ(perform(edited, g), expected) << g.operation;
    ASSERT_EQ(m_log.newErrors(), reports) << g.operation;
    m_plain.showCurrent();
}

void ZonePropertyTest::expectEqual() {
    ASSERT_EQ(m_manager->zoneCount(), static_cast<int>(m_plain.zones.size()));
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        const zone::Zone& zone = *m_manager->zone(index);
        const PlainZone& plain = m_plain.zones.begin()[index];
        ASSERT_EQ(zone.name(), plain.name);
        const zone::ZoneEditing editing = this->editing(index);
        ASSERT_EQ(editing.selectedPoint, plain.selected);
        ASSERT_EQ(zone.frameCount(), m_plain.frameCount);
        for (int frame = 0; frame < m_plain.frameCount; ++frame) {
            const std::optional<PlainShape>& expected = plain.frames.begin()[frame];
            ASSERT_EQ(details(zone.shape(frame), editing.centerOf(frame)),
                      details(expected, expected ? expected->center : Point{}))
                << frame;
        }
    }
}

/// Both files byte for byte; every other time, what a load makes of them takes the place of what
/// was saved.
void ZonePropertyTest::save() {
    PlainZones loaded = m_plain;
    loaded.area = m_plain.area = {1280, 720};
    m_session->setArea(m_plain.area);
    std::string bytes;
    Lines names;
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        PlainZone& zone = loaded.zone(index);
        Lines shapes;
        for (int frame = 0; frame < m_plain.frameCount; ++frame) {
            PlainShape& shape = loaded.shape(index, frame);
            const Points stored = scaled(shape.points, 1.0F / m_scale.x, 1.0F / m_scale.y);
            shapes.push_back(shapeBytes(stored, shape.active ? 1 : 0));
            shape.points = scaled(stored, m_scale.x, m_scale.y);
            shape.recordSize = static_cast<std::uint32_t>(shapes.back().size());
            shape.center = {};
        }
        bytes += zone.name.empty() ? namelessBytes(shapes) : zoneBytes(zone.name, shapes);
        names.push_back(zone.name);
        zone.selected = -1;
    }
    ASSERT_TRUE(m_session->save("clip.ogv"));
    ASSERT_FALSE(m_session->isModified());
    ASSERT_EQ(file("clip-ZoneInfo.bin"), bytes);
    ASSERT_EQ(file("clip-ZoneInfo.xml"), infoBytes(names));
    if (!names.empty() && m_random.below(2) == 0) { // an empty file cannot be loaded
        const auto zones = ZoneManager::create("clip", m_plain.frameCount, true, m_scale);
        ASSERT_TRUE(zones);
        ASSERT_EQ(zones->videoWidth * 1000 + zones->videoHeight, 1280720);
        ASSERT_EQ(zones->lastZoneRead, zones->zoneCount() - 1);
        ASSERT_EQ(zones->frameCount, m_plain.frameCount);
        m_plain = loaded;
        edit(zones);
    }
}

TEST_F(ZonePropertyTest, RandomEditsLeaveTheZonesAsAPlainModelOfTheirRules) {
    for (int round = 0; round < 300; ++round) {
        begin();
        testing::internal::CaptureStderr(); // a line for each invalid call
        for (int call = 1; call <= 200 && !HasFatalFailure(); ++call) {
            step();
            if (!HasFatalFailure() && call % 50 == 0) {
                save();
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
