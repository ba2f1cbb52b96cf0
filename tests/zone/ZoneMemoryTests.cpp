// Edits when memory runs out at any of their allocations: they change nothing then, and what was
// done before is still undone and redone exactly.
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/support/RefusedMemory.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ShapeEdits.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace zone_tests {
namespace {

using support::allocationsLeft;
using zone::StepLabel;

class ZoneMemoryTest : public ZoneTest {
protected:
    ~ZoneMemoryTest() override { allocationsLeft = -1; }

    Lines contents() const {
        Lines lines;
        for (int index = 0; index < m_manager->zoneCount(); ++index) {
            lines.push_back(shown(*m_manager->zone(index)));
        }
        return lines;
    }
    /// Calls `action` until there is memory for all it needs.
    void runShort(const std::function<void()>& action) {
        const Lines before = contents();
        for (int number = 0;; ++number) {
            // Shapes shared with a snapshot have to be copied before they change.
            m_snapshots.push_back(m_session->snapshot());
            allocationsLeft = number;
            try {
                action();
                allocationsLeft = -1;
                return;
            } catch (const std::bad_alloc&) {
                allocationsLeft = -1;
                ASSERT_EQ(contents(), before) << "allocation " << number;
            }
        }
    }

    std::unique_ptr<zone::ZoneSession> m_session;
    std::vector<std::shared_ptr<const zone::ZoneManager>> m_snapshots;
};

TEST_F(ZoneMemoryTest, AnEditWithoutEnoughChangesNothingAndUndoingNeverLacksIt) {
    Lines shapes;
    for (int frame = 0; frame < 9; ++frame) { // of 2 to 4 points
        Points points{{50 + frame, 0}, {0, 50}, {90, 90}, {60, 0}};
        points.resize(2 + static_cast<std::size_t>(frame) % 3);
        shapes.push_back(shapeBytes(points, frame % 2 == 0 ? 1 : 0));
    }
    m_manager = load(zoneBytes("Z", shapes) + zoneBytes("Y", {shapeBytes({{1, 1}})}), 9);
    m_manager->videoWidth = m_manager->videoHeight = 100;
    m_session = std::make_unique<zone::ZoneSession>(m_manager);
    zone::ZoneSession& s = *m_session;
    const std::shared_ptr<const zone::ZoneManager> version = s.snapshot();
    s.chooseZone(0);
    const std::function<void()> edits[] = {
        [&] { s.addPoint(0, 2, 70, 70); }, // behind the last point: all frames
        [&] { s.deletePoint(0, 2, 0, 50); },
        [&] { // behind one that all frames have
            (void)s.hitTest(0, 2, 52, 0);
            s.addPoint(0, 2, 20, 20);
        },
        [&] {
            (void)s.hitTest(0, 4, 20, 20);
            s.moveSelectedPoint(0, 4, 30, 30);
        },
        [&] { // behind a point that some frames lack
            (void)s.hitTest(0, 2, 90, 90);
            s.addPoint(0, 2, 95, 10);
        },
        [&] { // a drag of the centre, which is a point of some frames
            s.showFrame(1);
            s.beginGesture({StepLabel::Name::movePoint, 0, 1});
            const platform::Point center = s.context().zones.at(0).centerOf(1);
            if (s.hitTest(0, 1, center.x, center.y)) {
                s.moveSelectedPoint(0, 1, center.x + 3, center.y);
                s.moveSelectedPoint(0, 1, center.x + 5, center.y);
            }
            s.endGesture();
        },
        [&] { // a drag that blends, twice over the same frames
            s.beginGesture({StepLabel::Name::fill, 0, 4});
            for (const platform::Point to : {platform::Point{5, 5}, {6, 9}}) {
                const int keys[] = {1, 7};
                s.replaceShapes({StepLabel::Name::fill, 0, 4},
                                zone::reshaped(*m_manager->zone(0),
                                               zone::fillReach(*m_manager->zone(0), 4, keys, true),
                                               zone::shifted(to)));
            }
            s.endGesture();
        },
        [&] { s.setActive(0, 3, true); },
        [&] { s.renameZone(1, std::string(100, 'n')); },
        [&] { s.addZone(std::string(100, 'a'), 9); },
        [&] { s.removeZone(0); },
        [&] { ASSERT_TRUE(s.restore(*version)); },
    };
    std::vector<Lines> states{contents()};
    for (const auto& edit : edits) {
        runShort([&] {
            try {
                edit();
            } catch (...) { // as a window does when an event could not be handled
                s.cancelGesture();
                throw;
            }
        });
        ASSERT_EQ(s.history().position(), states.size());
        states.push_back(contents());
    }
    for (const bool back : {true, false, true}) {
        for (std::size_t step = 1; step < states.size(); ++step) {
            runShort([&] { ASSERT_TRUE(back ? s.undo() : s.redo()); });
            ASSERT_EQ(contents(), states.at(back ? states.size() - 1 - step : step));
        }
    }
}

} // namespace
} // namespace zone_tests
