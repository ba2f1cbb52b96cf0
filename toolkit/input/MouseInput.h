// Sends a window's mouse events to its controls: which one is under the pointer, which one was
// pressed, and where the caption drags the window.
#pragma once

#include <vector>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"

namespace toolkit {

class CControlUI;
class CPaintManagerUI;
struct TEventUI;

class MouseInput {
public:
    explicit MouseInput(CPaintManagerUI& manager) : m_manager(manager) {}

    bool handle(const platform::Event& event);
    /// Drops a control that leaves the window.
    void forget(const CControlUI& control);
    /// Nothing inside `control` counts as under the pointer until the pointer moves; no control is
    /// notified.
    void clearHot(const CControlUI& control);
    /// The press ends without a release; the pressed control gets captureLost.
    void cancelPress();
    /// The pointer left the window.
    void leave();
    [[nodiscard]] CControlUI* hot() const { return m_hot.empty() ? nullptr : m_hot.front(); }
    /// Tells a control and what it stands in that it is pressed; a list row is chosen by that.
    /// True when the press reaches nothing else.
    bool notePress(CControlUI* hit, const TEventUI& event);
    /// Shows the shape that the control under the pointer has there now. Called after each event,
    /// which may have changed that.
    void showPointer();
    [[nodiscard]] platform::PointerShape shape() const { return m_shape; }
    /// A native window was made, or is gone.
    void windowChanged() { m_shape = platform::PointerShape::arrow; }
    /// Whether a press there reaches a control that does something with it.
    [[nodiscard]] bool takesPress(platform::Point at) const;
    /// The control that was pressed, until the release. Null when none.
    [[nodiscard]] CControlUI* pressed() const { return m_pressed; }

private:
    bool press(const platform::Event& event);
    bool release(const platform::Event& event);
    bool move(const platform::Event& event);
    bool wheel(const platform::Event& event);
    void setHot(CControlUI* control, const platform::Event& event);
    bool dragsCaption(const CControlUI* hit, platform::Point at) const;

    CPaintManagerUI& m_manager;
    std::vector<CControlUI*> m_hot; ///< the control under the pointer, then what it stands in
    CControlUI* m_pressed = nullptr;
    platform::Point m_at; ///< where the pointer was last
    platform::PointerShape m_shape = platform::PointerShape::arrow;
};

} // namespace toolkit
