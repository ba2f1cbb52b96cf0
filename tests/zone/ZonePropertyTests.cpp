// Random calls, valid and invalid, on a zone and on a plain model of the same rules: one object for
// each frame, nothing shared.

#include <algorithm>
#include <optional>
#include <random>

#include "core/File.h"
#include "core/Services.h"
#include "tests/support/MemoryFileSystem.h"
#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

using platform::Point;

struct PlainShape {
    Points points;
    Point center;
    bool active = true;
    bool edited = false;

    [[nodiscard]] int count() const { return static_cast<int>(points.size()); }

    /// The index, the count or -1.
    [[nodiscard]] int hit(Point at) const {
        const auto inBox = [&](Point p) {
            return at.x >= p.x - 8 && at.x < p.x + 8 && at.y >= p.y - 8 && at.y < p.y + 8;
        };
        for (int i = 0; i < count(); ++i) {
            if (inBox(points[static_cast<std::size_t>(i)])) {
                return i;
            }
        }
        return count() >= 3 && inBox(center) ? count() : -1;
    }
    void shift(Point delta) {
        for (Point& p : points) {
            p = {p.x + delta.x, p.y + delta.y};
        }
    }
    /// True and `delta` for a shift of the whole. `reports` is set by an index that is no handle.
    bool move(int index, Point to, Point& delta, bool& reports) {
        if (index == count()) {
            delta = {to.x - center.x, to.y - center.y};
            shift(delta);
            return true;
        }
        if (index < -1 || index >= count()) {
            reports = true;
        } else if (index >= 0) {
            points[static_cast<std::size_t>(index)] = {std::clamp(to.x, 0, 1279),
                                                       std::clamp(to.y, 0, 719)};
        }
        return false;
    }
    int insert(int after, Point p) {
        if (after < -1 || after >= count()) {
            return -1;
        }
        const int at = after == -1 ? count() : after + 1;
        points.insert(points.begin() + at, p);
        edited = true;
        return at;
    }
    void drawn() {
        Point sum;
        for (const Point& p : points) {
            sum = {sum.x + p.x, sum.y + p.y};
        }
        center = count() > 2 ? Point{sum.x / count(), sum.y / count()} : sum;
    }
};

struct PlainZone {
    std::vector<std::optional<PlainShape>> frames;
    int selected = -1;
    int reports = 0;

    PlainShape& at(std::size_t frame) {
        if (!frames[frame]) {
            frames[frame].emplace();
        }
        return *frames[frame];
    }
    [[nodiscard]] std::size_t reach(std::size_t frame, bool spreads) const {
        return spreads ? frames.size() : frame + 1;
    }
    void setActive(std::size_t frame, bool active, bool spreads) {
        for (std::size_t i = frame; i < reach(frame, spreads); ++i) {
            at(i).active = active;
        }
    }
    void move(std::size_t frame, Point to, bool spreads) {
        if (selected == -1) {
            return;
        }
        Point delta;
        bool complains = false;
        const bool whole = at(frame).move(selected, to, delta, complains);
        for (std::size_t i = frame + 1; i < reach(frame, spreads); ++i) {
            Point own;
            if (whole) {
                at(i).shift(delta);
            } else {
                at(i).move(selected, to, own, complains);
            }
        }
        reports += complains ? 1 : 0; // once for all frames
    }
    void add(std::size_t frame, Point p) {
        int added = -1;
        for (std::size_t i = 0; i < frames.size(); ++i) {
            const int index = at(i).insert(selected, p);
            if (i == frame) {
                added = index;
            }
        }
        if (added != -1) {
            selected = added;
        }
    }
    void remove(Point p) {
        for (std::optional<PlainShape>& shape : frames) {
            const int index = shape ? shape->hit(p) : -1;
            if (index == -1 || index == shape->count()) {
                continue;
            }
            shape->points.erase(shape->points.begin() + index);
            shape->edited = true;
        }
    }
};

class ZonePropertyTest : public ZoneTest {
protected:
    static void expectEqual(const zone::Zone& zone, const PlainZone& plain,
                            const support::LogCapture& log) {
        ASSERT_EQ(zone.selectedPoint(), plain.selected);
        ASSERT_EQ(zone.frameCount(), static_cast<int>(plain.frames.size()));
        ASSERT_EQ(static_cast<int>(log.errors().size()), plain.reports);
        for (int frame = 0; frame < zone.frameCount(); ++frame) {
            const auto shape = zone.shape(frame);
            const auto& expected = plain.frames[static_cast<std::size_t>(frame)];
            ASSERT_EQ(shape != nullptr, expected.has_value()) << frame;
            if (!shape) {
                continue;
            }
            ASSERT_EQ(shape->points, expected->points) << frame;
            ASSERT_EQ(shape->active, expected->active) << frame;
            ASSERT_EQ((Point{shape->centerX, shape->centerY}), expected->center) << frame;
            ASSERT_EQ(shape->recordSize, expected->edited ? 8 + 8 * expected->points.size() : 0);
        }
    }

    /// What a save must write for `plain`, at scale 1.
    static std::string recordOf(const PlainZone& plain) {
        std::vector<std::string> shapes;
        for (const std::optional<PlainShape>& shape : plain.frames) {
            Points stored = shape ? shape->points : Points{};
            for (Point& p : stored) { // one half up, then toward zero
                p = {p.x + (p.x < 0 ? 1 : 0), p.y + (p.y < 0 ? 1 : 0)};
            }
            shapes.push_back(shapeBytes(stored, !shape || shape->active ? 1 : 0));
        }
        return zoneBytes("Z", shapes);
    }

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    /// One random call on both.
    void step(zone::Zone& zone, PlainZone& plain) {
        const int count = static_cast<int>(plain.frames.size());
        const int frame = below(14) == 0 ? (below(2) == 0 ? -1 : count) : below(count);
        const auto index = static_cast<std::size_t>(frame);
        const bool valid = frame >= 0 && frame < count;
        // Few positions, so that points meet and are hit; some lie outside the area.
        const Point p{below(9) * 11 - 20, below(9) * 11 - 20};
        const bool flag = below(2) == 0;
        if (below(8) == 0) {
            m_manager->progressChanges = !m_manager->progressChanges;
        }
        const bool spreads = m_manager->progressChanges;
        const int call = below(12);
        RecordingCanvas canvas;
        plain.reports += valid || call == 11 ? 0 : 1;
        switch (call) {
        case 0:
            zone.setActive(frame, flag);
            if (valid) {
                plain.setActive(index, flag, spreads);
            }
            break;
        case 1:
        case 2:
            zone.addPoint(frame, p.x, p.y);
            if (valid) {
                plain.add(index, p);
            }
            break;
        case 3:
            zone.deletePoint(frame, p.x, p.y);
            if (valid) {
                plain.remove(p);
            }
            break;
        case 4:
        case 5:
            zone.draw(frame, canvas, 3, 4);
            if (valid && plain.frames[index]) {
                plain.frames[index]->drawn();
            }
            break;
        case 6:
        case 7: {
            const bool hit = zone.hitTest(frame, p.x, p.y);
            if (valid && plain.frames[index]) {
                plain.selected = plain.frames[index]->hit(p);
            }
            ASSERT_EQ(hit, valid && plain.frames[index] && plain.selected != -1);
            break;
        }
        case 8:
            ASSERT_EQ(zone.isActive(frame),
                      valid && (!plain.frames[index] || plain.frames[index]->active));
            break;
        case 11: // what a window may have kept from another frame
            plain.selected = below(7) - 2;
            zone.setSelectedPoint(plain.selected);
            break;
        default:
            zone.moveSelectedPoint(frame, p.x, p.y);
            if (valid) {
                plain.move(index, p, spreads);
            }
        }
    }

    std::mt19937 m_random{2024};
    support::MemoryFileSystem m_files;
    core::ServicesOverride m_services{
        {&m_files, &platform::nativeClock(), &platform::nativeProcess()}};
};

TEST_F(ZonePropertyTest, RandomCallsLeaveAZoneAsAPlainModelOfItsRules) {
    for (int round = 0; round < 250; ++round) {
        const int frames = 1 + below(9);
        auto zone = zone::Zone::create(frames);
        zone->setName("Z");
        PlainZone plain;
        plain.frames.resize(static_cast<std::size_t>(frames));
        const support::LogCapture log;
        testing::internal::CaptureStderr(); // a line for each invalid call
        for (int call = 0; call < 160 && !HasFatalFailure(); ++call) {
            step(*zone, plain);
            if (call % 4 == 0) {
                expectEqual(*zone, plain, log);
            }
        }
        (void)testing::internal::GetCapturedStderr();
        ASSERT_FALSE(HasFatalFailure()) << round;
        core::File file;
        ASSERT_TRUE(file.open("zone.bin", "wb"));
        ASSERT_TRUE(zone->write(file) && file.close());
        ASSERT_EQ(m_files.files["/home/zone.bin"], recordOf(plain)) << round;
    }
}

} // namespace
} // namespace zone_tests
