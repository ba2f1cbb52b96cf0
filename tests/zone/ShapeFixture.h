// One zone whose shapes are given frame by frame.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/NewShapes.h"
#include "zone/StepLabel.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zone_tests {

struct Frame {
    Points points;
    bool active = true;
};

class ShapeTest : public ZoneTest {
protected:
    void begin(const std::vector<Frame>& frames) {
        m_plain = frames;
        Lines shapes;
        for (const Frame& frame : frames) {
            shapes.push_back(shapeBytes(frame.points, frame.active ? 1 : 0));
        }
        m_manager = load(zoneBytes("Z", shapes), count());
        m_session = std::make_unique<zone::ZoneSession>(m_manager);
        m_session->setArea({1280, 720});
    }
    [[nodiscard]] int count() const { return static_cast<int>(m_plain.size()); }
    Frame& plain(int frame) { return m_plain.at(static_cast<std::size_t>(frame)); }
    [[nodiscard]] const zone::Zone& held() const { return *m_manager->zone(0); }
    std::string saved() {
        EXPECT_TRUE(m_session->save("clip.ogv"));
        return file("clip-ZoneInfo.bin");
    }
    std::string plainBytes() {
        Lines shapes;
        for (Frame frame : m_plain) {
            for (platform::Point& point :
                 frame.points) { // as files round: one half up, then toward zero
                point = {point.x + (point.x < 0 ? 1 : 0), point.y + (point.y < 0 ? 1 : 0)};
            }
            shapes.push_back(shapeBytes(frame.points, frame.active ? 1 : 0));
        }
        return zoneBytes("Z", shapes);
    }
    void replace(zone::StepLabel::Name name, const zone::NewShapes& shapes) {
        m_session->replaceShapes({name, 0, shapes.stretch.frames().first}, shapes);
    }

    std::vector<Frame> m_plain;
    std::unique_ptr<zone::ZoneSession> m_session;
};

} // namespace zone_tests
