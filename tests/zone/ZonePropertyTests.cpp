// Random calls, valid and invalid, on a manager and on a plain model of the same rules.

#include <functional>
#include <limits>
#include <random>

#include "core/Services.h"
#include "tests/support/MemoryFileSystem.h"
#include "tests/zone/PlainZone.h"
#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

using platform::Point;
using zone::ZoneManager;

/// What one call is given.
struct Given {
    int zone = 0;
    int frame = 0;
    Point at;
    bool flag = false;
    int handle = -1;
    std::string name;
};

constexpr int kNone = 0;    ///< an operation takes no frame, or reports nothing
constexpr int kSilent = -1; ///< checks without a report

/// An operation, what it reports where, and the same for the plain zone.
struct Operation {
    std::string text;
    int zoneLine;
    int frameLine;
    std::function<bool(ZoneManager&, const Given&)> call;
    std::function<bool(PlainZone&, const Given&, bool spreads, Lines& reports)> expected;
};

std::size_t frameOf(const Given& g) {
    return static_cast<std::size_t>(g.frame);
}

constexpr const char* kZoneText = "Zone index is invalid";
constexpr const char* kNameText = "Invalid zone index";

void drawPlain(PlainZone& plain, const Given& g, bool, Lines&) {
    if (plain.frames[frameOf(g)]) {
        plain.frames[frameOf(g)]->drawn();
    }
}

/// For operations without a result.
template <typename Function>
auto does(Function function) {
    return [function](auto&&... arguments) {
        function(arguments...);
        return false;
    };
}

const Operation kOperations[] = {
    {kZoneText, 70, 62, [](auto& m, auto& g) { return m.isActive(g.zone, g.frame); },
     [](auto& p, auto& g, bool, auto&) {
         return !p.frames[frameOf(g)] || p.frames[frameOf(g)]->active;
     }},
    {kZoneText, 78, 75, does([](auto& m, auto& g) { m.setActive(g.zone, g.frame, g.flag); }),
     does([](auto& p, auto& g, bool spreads, auto&) { p.setActive(frameOf(g), g.flag, spreads); })},
    {kZoneText, 142, 112,
     [](auto& m, auto& g) { return m.hitTest(g.zone, g.frame, g.at.x, g.at.y); },
     [](auto& p, auto& g, bool, auto&) { return p.hit(frameOf(g), g.at); }},
    {kZoneText, 149, 126,
     does([](auto& m, auto& g) { m.endMove(g.zone, g.frame, g.at.x, g.at.y); }),
     does([](auto&, auto&, bool, auto&) {})},
    {kZoneText, 157, 136,
     does([](auto& m, auto& g) { m.moveSelectedPoint(g.zone, g.frame, g.at.x, g.at.y); }),
     does([](auto& p, auto& g, bool spreads, auto& reports) {
         if (p.move(frameOf(g), g.at, spreads)) {
             reports.push_back("..\\ZoneShape.cpp:368 Invalid point index");
         }
     })},
    {kZoneText, 164, 171,
     does([](auto& m, auto& g) { m.addPoint(g.zone, g.frame, g.at.x, g.at.y); }),
     does([](auto& p, auto& g, bool, auto&) { p.add(frameOf(g), g.at); })},
    {kZoneText, 171, 203,
     does([](auto& m, auto& g) { m.deletePoint(g.zone, g.frame, g.at.x, g.at.y); }),
     does([](auto& p, auto& g, bool, auto&) { p.remove(g.at); })},
    {kNameText, 127, kNone, [](auto& m, auto& g) { return m.getZoneName(g.zone) == g.name; },
     [](auto& p, auto& g, bool, auto&) { return p.name == g.name; }},
    {kNameText, 135, kNone, does([](auto& m, auto& g) { m.setZoneName(g.zone, g.name); }),
     does([](auto& p, auto& g, bool, auto&) { p.name = g.name; })},
    // A repaint: silent, and it leaves the centre where moves of the whole start from.
    {"", kSilent, kSilent, does([](auto& m, auto& g) {
         RecordingCanvas canvas;
         m.draw(g.zone, g.frame, canvas, 3, 4);
     }),
     does(drawPlain)},
    {"", kSilent, 102, does([](auto& m, auto& g) {
         RecordingCanvas canvas;
         if (const auto zone = m.zone(g.zone)) {
             zone->draw(g.frame, canvas, 0, 0);
         }
     }),
     does(drawPlain)},
    // What a window may have kept from another frame.
    {"", kSilent, kNone, does([](auto& m, auto& g) {
         if (const auto zone = m.zone(g.zone)) {
             zone->setSelectedPoint(g.handle);
         }
     }),
     does([](auto& p, auto& g, bool, auto&) { p.selected = g.handle; })},
};

class ZonePropertyTest : public ZoneTest {
protected:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    /// Below `count` mostly; else beyond its borders.
    int nearly(int count) {
        const int beyond[] = {-1, count, std::numeric_limits<int>::min(),
                              std::numeric_limits<int>::max()};
        return below(14) == 0 || count == 0 ? beyond[below(4)] : below(count);
    }
    void begin(int frames) {
        m_frames = frames;
        m_manager = ZoneManager::createEmpty();
        m_manager->videoWidth = 1280;
        m_manager->videoHeight = 720;
        zone::setCurrentZoneManager(m_manager);
        m_plain.clear();
    }
    void addZone() {
        m_manager->addZone(zone::Zone::create(m_frames));
        m_plain.emplace_back().frames.resize(static_cast<std::size_t>(m_frames));
    }
    void step();
    void shapeStep(const zone::Zone& zone, const PlainZone& plain);
    void removeZone(int index);
    static void expectEqual(const zone::ZoneShape& shape, const PlainShape& expected);
    void expectEqual() const;
    [[nodiscard]] std::string record() const;

    int m_frames = 0;
    std::vector<PlainZone> m_plain;
    std::mt19937 m_random{2024};
    support::MemoryFileSystem m_files;
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
};

void ZonePropertyTest::removeZone(int index) {
    m_manager->removeZone(index);
    if (index >= 0 && index < static_cast<int>(m_plain.size())) {
        m_plain.erase(m_plain.begin() + index);
    } else {
        ASSERT_EQ(newErrors(), Lines{"..\\ZoneManager.cpp:119 Invalid zone index"});
    }
}

/// One random call on both.
void ZonePropertyTest::step() {
    const int zones = static_cast<int>(m_plain.size());
    // Few positions, so that points meet and are hit; some lie outside the area.
    const Given g{
        nearly(zones), nearly(m_frames), {below(9) * 11 - 20, below(9) * 11 - 20},
        below(2) == 0, below(7) - 2,     std::string(1, static_cast<char>('a' + below(3)))};
    if (below(8) == 0) {
        m_manager->progressChanges = !m_manager->progressChanges;
    }
    if (below(60) == 0) {
        removeZone(g.zone);
        return;
    }
    if (zones < 3 && below(40) == 0) {
        addZone();
    }
    const Operation& operation =
        kOperations[static_cast<std::size_t>(below(std::size(kOperations)))];
    const bool result = operation.call(*m_manager, g);
    Lines reports;
    bool expected = false;
    const auto report = [&](const char* source, int line, const std::string& text) {
        if (line != kSilent) {
            reports.push_back(source + std::to_string(line) + " " + text);
        }
    };
    if (g.zone < 0 || g.zone >= static_cast<int>(m_plain.size())) {
        report("..\\ZoneManager.cpp:", operation.zoneLine, operation.text);
    } else if (operation.frameLine != kNone && (g.frame < 0 || g.frame >= m_frames)) {
        report("..\\Zone.cpp:", operation.frameLine, "Frame index is invalid");
    } else {
        expected = operation.expected(m_plain[static_cast<std::size_t>(g.zone)], g,
                                      m_manager->progressChanges, reports);
    }
    ASSERT_EQ(result, expected) << operation.zoneLine;
    ASSERT_EQ(newErrors(), reports) << operation.zoneLine;
}

/// The operations of a shape that was handed out, on a copy.
void ZonePropertyTest::shapeStep(const zone::Zone& zone, const PlainZone& plain) {
    const int frame = below(m_frames);
    const auto shape = zone.shape(frame);
    if (!shape) {
        return;
    }
    PlainShape expected = *plain.frames[static_cast<std::size_t>(frame)];
    const int index = nearly(expected.count() + 1);
    const Point at{below(9) * 11 - 20, below(9) * 11 - 20};
    Point delta;
    Point expectedDelta;
    bool reports = false;
    switch (below(4)) {
    case 0:
        ASSERT_EQ(shape->movePoint(index, at.x, at.y, delta),
                  expected.move(index, at, expectedDelta, reports));
        break;
    case 1:
        ASSERT_EQ(shape->insertPoint(index, at.x, at.y), expected.insert(index, at));
        break;
    case 2:
        ASSERT_EQ(shape->hitTest(at.x, at.y), expected.hit(at));
        break;
    default:
        shape->removePoint(index);
        expected.erase(index);
    }
    expectEqual(*shape, expected);
    ASSERT_EQ(delta, expectedDelta);
    ASSERT_EQ(newErrors(), Lines(reports ? 1 : 0, "..\\ZoneShape.cpp:368 Invalid point index"));
}

void ZonePropertyTest::expectEqual(const zone::ZoneShape& shape, const PlainShape& expected) {
    ASSERT_EQ(shape.points, expected.points);
    ASSERT_EQ(shape.active, expected.active);
    ASSERT_EQ((Point{shape.centerX, shape.centerY}), expected.center);
    ASSERT_EQ(shape.recordSize, expected.edited ? 8 + 8 * expected.points.size() : 0);
}

void ZonePropertyTest::expectEqual() const {
    ASSERT_EQ(m_manager->zoneCount(), static_cast<int>(m_plain.size()));
    for (int index = 0; index < m_manager->zoneCount(); ++index) {
        const zone::Zone& zone = *m_manager->zone(index);
        const PlainZone& plain = m_plain[static_cast<std::size_t>(index)];
        ASSERT_EQ(zone.selectedPoint(), plain.selected);
        ASSERT_EQ(zone.frameCount(), m_frames);
        for (int frame = 0; frame < m_frames; ++frame) {
            const auto shape = zone.shape(frame);
            const auto& expected = plain.frames[static_cast<std::size_t>(frame)];
            ASSERT_EQ(shape != nullptr, expected.has_value()) << frame;
            if (shape) {
                expectEqual(*shape, *expected);
            }
        }
    }
}

/// What a save must write, at scale 1.
std::string ZonePropertyTest::record() const {
    std::string bytes;
    for (const PlainZone& plain : m_plain) {
        std::vector<std::string> shapes;
        for (const std::optional<PlainShape>& shape : plain.frames) {
            Points stored = shape ? shape->points : Points{};
            for (Point& p : stored) { // one half up, then toward zero
                p = {p.x + (p.x < 0 ? 1 : 0), p.y + (p.y < 0 ? 1 : 0)};
            }
            shapes.push_back(shapeBytes(stored, !shape || shape->active ? 1 : 0));
        }
        bytes += plain.name.empty() ? namelessBytes(shapes) : zoneBytes(plain.name, shapes);
    }
    return bytes;
}

TEST_F(ZonePropertyTest, RandomCallsLeaveTheZonesAsAPlainModelOfTheirRules) {
    for (int round = 0; round < 250; ++round) {
        begin(1 + below(9));
        addZone();
        testing::internal::CaptureStderr(); // a line for each invalid call
        for (int call = 0; call < 200 && !HasFatalFailure(); ++call) {
            step();
            if (!HasFatalFailure()) {
                expectEqual();
            }
            if (!HasFatalFailure() && !m_plain.empty()) {
                shapeStep(*m_manager->zone(0), m_plain.front());
            }
        }
        (void)testing::internal::GetCapturedStderr();
        ASSERT_FALSE(HasFatalFailure()) << round;
        ASSERT_TRUE(m_manager->saveAs("clip"));
        ASSERT_EQ(m_files.files["/home/clip-ZoneInfo.bin"], record()) << round;
        expectEqual();
        ASSERT_FALSE(HasFatalFailure()) << "a save changes nothing";
    }
}

} // namespace
} // namespace zone_tests
