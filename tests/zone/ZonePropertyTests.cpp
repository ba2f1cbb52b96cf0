// Random calls, valid and invalid, on a manager and on a plain model of the same rules, with saves
// and loads between them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "tests/support/Random.h"
#include "tests/zone/PlainZones.h"
#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

using platform::Point;
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
    Point at;
    int handle;
    std::string name;
};

/// A manager with its editing context, called as PlainZones is.
struct EditedZones {
    ZoneManager& zones;
    zone::EditContext& context;

    bool isActive(int zone, int frame) const { return zones.isActive(zone, frame); }
    bool hitTest(int zone, int frame, int x, int y) const {
        return zones.hitTest(context, zone, frame, x, y);
    }
    std::string getZoneName(int zone) const { return zones.getZoneName(zone); }
    void setActive(int zone, int frame, bool active) const {
        zones.setActive(context, zone, frame, active);
    }
    void endMove(int zone, int frame, int x, int y) const { zones.endMove(zone, frame, x, y); }
    void moveSelectedPoint(int zone, int frame, int x, int y) const {
        zones.moveSelectedPoint(context, zone, frame, x, y);
    }
    void addPoint(int zone, int frame, int x, int y) const {
        zones.addPoint(context, zone, frame, x, y);
    }
    void deletePoint(int zone, int frame, int x, int y) const {
        zones.deletePoint(context, zone, frame, x, y);
    }
    void setZoneName(int zone, const std::string& name) const { zones.setZoneName(zone, name); }
    void show(int zone, int frame) const {
        if (const auto found = zones.zone(zone)) {
            context.zone(zone).noteShown(*found, frame);
        }
    }
    void select(int zone, int handle) const {
        if (zones.zone(zone)) {
            context.zone(zone).selectedPoint = handle;
        }
    }
    void removeZone(int zone) const {
        const bool isThere = zones.zone(zone) != nullptr;
        zones.removeZone(zone);
        if (isThere) {
            context.removeZone(zone);
        }
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
        [&] { m.select(g.zone, g.handle); }, // as a window may have kept the handle
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
    void saveAndLoad();
    void expectEqual();

    PlainZones m_plain;
    zone::EditContext m_context;
    zone::Scale m_scale;
    support::Random m_random{2024};
};

void ZonePropertyTest::begin() {
    m_manager = ZoneManager::createEmpty();
    m_context = {};
    m_plain = {};
    m_plain.frameCount = 1 + m_random.below(9);
    for (int zone = 1 + m_random.below(3); zone > 0; --zone) {
        m_manager->addZone(zone::Zone::create(m_plain.frameCount));
        m_plain.zones.emplace_back().frames.resize(static_cast<std::size_t>(m_plain.frameCount));
    }
    m_manager->scale =
        zone::scaleBetween({m_random.oneOf({1280, 1024}), 720},
                           {m_random.oneOf({1280, 1920}), m_random.oneOf({720, 1080})});
    m_scale = m_manager->scale.value_or(zone::Scale{});
}

/// One random call on both.
void ZonePropertyTest::step() {
    if (m_random.below(8) == 0) {
        m_context.progressChanges = m_plain.progressChanges = m_random.below(2) == 0;
        m_plain.area = {m_random.oneOf({1280, 20, 0}), m_random.oneOf({720, 20, -3})};
        m_manager->videoWidth = m_plain.area.width;
        m_manager->videoHeight = m_plain.area.height;
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
    if (zoneLine == 0) {
        reports.clear();
    }
    EditedZones edited{*m_manager, m_context};
    ASSERT_EQ(perform(edited, g), expected) << g.operation;
    ASSERT_EQ(m_log.newErrors(), reports) << g.operation;
}

void ZonePropertyTest::expectEqual() {
    ASSERT_EQ(m_manager->zoneCount(), static_cast<int>(m_plain.zones.size()));
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        const zone::Zone& zone = *m_manager->zone(index);
        const PlainZone& plain = m_plain.zones.begin()[index];
        ASSERT_EQ(zone.name(), plain.name);
        const zone::ZoneEditing& editing = m_context.zone(index);
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

/// Both files byte for byte; then what a load makes of them takes the place of what was saved.
void ZonePropertyTest::saveAndLoad() {
    m_plain.area = {m_manager->videoWidth = 1280, m_manager->videoHeight = 720};
    std::string bytes;
    Lines names;
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        PlainZone& zone = m_plain.zone(index);
        Lines shapes;
        for (int frame = 0; frame < m_plain.frameCount; ++frame) {
            PlainShape& shape = m_plain.shape(index, frame);
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
    ASSERT_TRUE(m_manager->saveAs("clip"));
    ASSERT_EQ(file("clip-ZoneInfo.bin"), bytes);
    ASSERT_EQ(file("clip-ZoneInfo.xml"), infoBytes(names));
    if (!names.empty()) { // an empty file cannot be loaded
        m_manager = ZoneManager::create("clip", m_plain.frameCount, true, m_scale);
        m_context.zones.clear();
        ASSERT_TRUE(m_manager);
        ASSERT_EQ(m_manager->videoWidth * 1000 + m_manager->videoHeight, 1280720);
        ASSERT_EQ(m_manager->lastZoneRead, m_manager->zoneCount() - 1);
        ASSERT_EQ(m_manager->frameCount, m_plain.frameCount);
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
