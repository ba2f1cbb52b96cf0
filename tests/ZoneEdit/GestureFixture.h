// A zone editor that is used with the mouse and with keys held down, wherever the view shows the
// picture.
#pragma once

#include <string>
#include <vector>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/StepLabel.h"
#include "zone/ZoneSession.h"

namespace test {

using Points = std::vector<platform::Point>;

inline constexpr platform::Modifiers kControl{.control = true};
inline constexpr platform::Modifiers kShift{.shift = true};
inline constexpr platform::Modifiers kBoth{.shift = true, .control = true};

class ZoneGestureTest : public ZoneEditTest {
protected:
    ~ZoneGestureTest() override { m_gui.windows().setZoom(1); }

    video::PictureView view() { return m_driver->get<video::CVideoUI>(u"Video").view(); }
    /// Of the window, where a display pixel is shown.
    platform::Point on(int x, int y) { return view().toWindow(platform::Point{x, y}); }
    /// What a press there draws at.
    platform::Point hit(platform::Point window) { return view().toDisplay(window); }
    void mouse(platform::EventKind kind, platform::Point at, platform::Modifiers held) {
        input().mouse(m_driver->native(), kind, at, platform::MouseButton::left, held);
        pump();
    }
    /// Down at the first, up at the last.
    void drag(const Points& window, platform::Modifiers held) {
        mouse(platform::EventKind::mouseDown, window.front(), held);
        for (const platform::Point at : window) {
            mouse(platform::EventKind::mouseMove, at, held);
        }
        mouse(platform::EventKind::mouseUp, window.back(), held);
    }
    void key(platform::EventKind kind, platform::Key key, platform::Modifiers held) {
        input().key(m_driver->native(), kind, key, {}, held);
        pump();
    }
    void press(platform::Key key) {
        m_driver->manager().SetFocus(nullptr);
        m_driver->press(key);
    }
    /// A square on all frames, with no point chosen.
    void drawSquare(int left = 500, int top = 300, int size = 80) {
        m_driver->click(u"OptionAddMultiPoint");
        drag({on(left, top), on(left + size, top + size)}, kControl);
        m_driver->click(u"OptionMovePoint");
        m_driver->click(on(left + 200, top));
    }
    std::string lastStep() {
        const zone::StepLabel* label = m_window->session().undoLabel();
        return label != nullptr ? zone::stepName(label->name) : std::string();
    }
    int selected() { return editing().zones.at(0).selectedPoint; }
    std::u16string hint() { return m_driver->textOf(u"LabelHint"); }
};

} // namespace test
