// The tool tip of a window: a native popup that appears when the pointer rests on a control.
#pragma once

#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Window.h"

namespace toolkit {

class CControlUI;
class CPaintManagerUI;

class ToolTipWindow : private platform::WindowEvents {
public:
    static constexpr int kDelayMs = 500;
    static constexpr unsigned kTimerId = 1;

    explicit ToolTipWindow(CPaintManagerUI& manager) : m_manager(manager) {}
    ~ToolTipWindow() override;

    /// The pointer is on `control` (null: on none) at `at`, in window pixels.
    void pointerAt(CControlUI* control, platform::Point at);
    /// The pointer has rested long enough.
    void timeOver();
    /// Hides it, and does not show it again for the control under the pointer.
    void hide();
    /// `control`, and everything inside it, is no longer visible.
    void leave(const CControlUI& control);
    /// The shown text; empty while hidden.
    [[nodiscard]] const std::u16string& shownText() const { return m_text; }
    /// Null before the first showing. Not owned.
    [[nodiscard]] platform::NativeWindow* native() const { return m_native.get(); }

private:
    struct Look;

    bool onEvent(const platform::Event& event) override;
    void onPaint(platform::Canvas& canvas, const platform::Rect& dirty) override;
    bool createNative();
    void close();

    CPaintManagerUI& m_manager;
    std::unique_ptr<platform::NativeWindow> m_native;
    CControlUI* m_control = nullptr;
    platform::Point m_at;
    platform::Size m_size;
    std::u16string m_text;
    bool m_waiting = false;
};

} // namespace toolkit
