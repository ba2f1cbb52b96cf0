// Brings a window's mouse events to its controls: who is under the pointer, who was pressed, and
// where the caption drags the window.
#pragma once

#include <vector>

#include "platform/Event.h"

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
    /// Nothing inside `control` is under the pointer any more, until the pointer moves; no control
    /// hears of it.
    void coolDown(const CControlUI& control);
    /// The press is over without a release; the pressed control hears captureLost.
    void cancelPress();
    /// The pointer left the window.
    void leave();
    [[nodiscard]] CControlUI* hot() const { return m_hot.empty() ? nullptr : m_hot.front(); }
    /// The control that was pressed, until the release. Null when none.
    [[nodiscard]] CControlUI* pressed() const { return m_pressed; }

private:
    bool press(const platform::Event& event);
    void notePress(CControlUI* hit, bool second);
    bool release(const platform::Event& event);
    bool move(const platform::Event& event);
    bool wheel(const platform::Event& event);
    void setHot(CControlUI* control, const platform::Event& event);
    bool dragsCaption(const CControlUI* hit, platform::Point at) const;

    CPaintManagerUI& m_manager;
    std::vector<CControlUI*> m_hot; ///< the control under the pointer, then what it stands in
    CControlUI* m_pressed = nullptr;
};

} // namespace toolkit
