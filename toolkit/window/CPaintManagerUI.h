// The core of a window: owns its controls, sends events to them, lays them out, paints them and
// forwards their notifications. One per window. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/layout/SizeRanges.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/ControlTimers.h"
#include "toolkit/window/IMessageFilterUI.h"
#include "toolkit/window/INotifyUI.h"
#include "toolkit/window/Popup.h"

namespace toolkit {

class ToolTipWindow;

/// Whether the key opens a menu: the menu key, or Shift+F10.
[[nodiscard]] bool isMenuKey(const platform::Event& event);

class CPaintManagerUI {
public:
    using Rect = platform::Rect;
    using Point = platform::Point;
    using Size = platform::Size;

    /// Marks that control code is running: while one exists, removed controls stay in memory;
    /// with the last one they are destroyed and a pending layout is made. A null manager does
    /// nothing.
    class Busy {
    public:
        explicit Busy(CPaintManagerUI* manager);
        ~Busy();
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

    private:
        CPaintManagerUI* m_manager;
    };

    /// `gui` must outlive the manager.
    explicit CPaintManagerUI(platform::Gui& gui);
    ~CPaintManagerUI();
    CPaintManagerUI(const CPaintManagerUI&) = delete;
    CPaintManagerUI& operator=(const CPaintManagerUI&) = delete;

    [[nodiscard]] platform::Gui& Gui() const { return m_gui; }
    /// Null before the native window is made and after it is gone. Not owned.
    [[nodiscard]] platform::NativeWindow* GetWindow() const { return m_window; }
    /// A native window was made: the manager starts over, without anything from an
    /// earlier layout.
    void Init(platform::NativeWindow* window);
    /// The window is closing: no control gets input any more.
    void stopInput() { m_closing = true; }
    [[nodiscard]] bool takesInput() const { return !m_closing && m_window != nullptr; }
    /// The native window is gone.
    void windowDestroyed();

    /// Takes the tree of controls; it fills the window.
    void AttachRoot(std::unique_ptr<CControlUI> root);
    [[nodiscard]] CControlUI* GetRoot() const { return m_root.get(); }
    void SetWindowSize(Size size);
    [[nodiscard]] Size GetWindowSize() const { return m_windowSize; }
    /// The part that drags the window: left, top and right are distances from the window's edges,
    /// bottom is its lower end from the top.
    void SetCaption(const Rect& caption) { m_caption = caption; }
    [[nodiscard]] Rect captionRect() const;

    /// The first control with `name` in layout order; null when there is none. Not owned.
    [[nodiscard]] CControlUI* FindControl(std::u16string_view name) const;
    /// The topmost visible control at a point of the window; null when there is none.
    [[nodiscard]] CControlUI* FindControl(Point at, Meeting kind = Meeting::mouse) const;

    [[nodiscard]] WindowLook& look() { return m_look; }
    [[nodiscard]] const WindowLook& look() const { return m_look; }
    /// What follows the window's size.
    [[nodiscard]] SizeRanges& ranges() { return m_ranges; }
    [[nodiscard]] platform::FontSet& fonts() const { return m_gui.fonts(); }

    /// The focus ring of controls that have none of their own.
    [[nodiscard]] const std::u16string& focusedImageFor(const CControlUI& control) const;

    void Invalidate(const Rect& rect);
    /// Asks for a layout pass: before the running event ends, the next one begins or the window
    /// paints, whichever comes first.
    void NeedUpdate() { m_needsLayout = true; }
    void UpdateLayout();

    [[nodiscard]] CControlUI* GetFocus() const { return m_focus.focused(); }
    void SetFocus(CControlUI* control) { m_focus.set(control); }
    [[nodiscard]] FocusKeeper& focusKeeper() { return m_focus; }
    [[nodiscard]] MouseInput& mouse() { return m_mouse; }
    /// All mouse events come to this window until the release.
    void SetCapture();
    void ReleaseCapture();
    /// `id` is the control's own; the control gets UIEVENT_TIMER every `intervalMs`.
    bool SetTimer(CControlUI& control, unsigned id, int intervalMs);
    /// False when there was none.
    bool KillTimer(CControlUI& control, unsigned id);

    void AddNotifier(INotifyUI* notifier) { m_notifiers.push_back(notifier); }
    void AddMessageFilter(IMessageFilterUI* filter) { m_filters.push_back(filter); }
    /// Calls the notifiers now. Nothing happens for a control of another or no window.
    void SendNotify(CControlUI& control, std::u16string_view type, int wParam = 0, int lParam = 0);
    /// True when a filter handled the event.
    bool filter(const platform::Event& event);

    /// Takes a control that left its container and destroys it as soon as no control code runs.
    void Retire(std::unique_ptr<CControlUI> control);
    /// Drops every reference to a control that leaves the window.
    void forget(CControlUI& control);
    /// A control was hidden or disabled: neither it nor anything inside it keeps the focus or the
    /// mouse.
    void leaveInput(CControlUI& control);

    /// True when the event was handled.
    bool MessageHandler(const platform::Event& event);
    void Paint(platform::Canvas& canvas, const Rect& dirty);

    /// The open popup; null when none is.
    [[nodiscard]] Popup* popup() const;
    void closePopup();
    /// The window's popup of kind T, open or closed; replaces one of another kind.
    template <class T>
    [[nodiscard]] T& popupOf() {
        if (dynamic_cast<T*>(m_popup.get()) == nullptr) {
            closePopup();
            m_popup = std::make_unique<T>(*this);
        }
        return dynamic_cast<T&>(*m_popup);
    }
    [[nodiscard]] ToolTipWindow& toolTip() { return *m_toolTip; }
    /// A point of the window in screen pixels.
    [[nodiscard]] Point toScreen(Point at) const;

private:
    bool dispatch(const platform::Event& event);
    bool handleKey(const platform::Event& event);
    void handleTimer(const platform::Event& event);
    [[nodiscard]] platform::WindowTimers* nativeTimers() const;
    void leaveBusy() noexcept;
    static void forgetInputIn(CControlUI& control);
    void paintFocusRing(platform::Canvas& canvas);
    static void paintAbove(platform::Canvas& canvas, const CControlUI& control, const Rect& area);

    platform::Gui& m_gui;
    platform::NativeWindow* m_window = nullptr;
    WindowLook m_look;
    SizeRanges m_ranges;
    std::unique_ptr<CControlUI> m_root;
    std::vector<std::unique_ptr<CControlUI>> m_retired;
    std::vector<INotifyUI*> m_notifiers;
    std::vector<IMessageFilterUI*> m_filters;
    ControlTimers m_timers;
    FocusKeeper m_focus{*this};
    MouseInput m_mouse{*this};
    std::unique_ptr<Popup> m_popup;
    std::unique_ptr<ToolTipWindow> m_toolTip;
    Rect m_caption;
    Size m_windowSize;
    int m_busy = 0;
    bool m_needsLayout = false;
    bool m_closing = false;
};

/// The control `name` of a window as a T; null when it is missing or of another kind.
template <class T>
[[nodiscard]] T* FindControl(const CPaintManagerUI& manager, std::u16string_view name) {
    return controlCast<T>(manager.FindControl(name));
}

} // namespace toolkit
