// A native window: lifetime and geometry (Win32Window.cpp) and the window procedure
// (Win32WindowProc.cpp). Its parts do the rest.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Accessible.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "platform/WindowScale.h"
#include "platform/raster/TextPainter.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Win32SizingFrame.h"
#include "platform/win32/Win32WindowInput.h"
#include "platform/win32/Win32WindowPicture.h"
#include "platform/win32/Win32WindowTimers.h"

namespace platform::win32 {

/// What windows share with the rest of the back end. Not owned by them.
struct WindowServices {
    raster::TextPainter* text = nullptr;
    const double* zoom = nullptr;          ///< the host's
    std::function<void()> endProgram;      ///< called when the session ends
    std::function<void()> settingsChanged; ///< called when the user has changed the system's
};

class Win32Window final : public NativeWindow, private WindowAccessibility {
public:
    /// `services` and `events` must outlive the window. handle() is null when the system refused.
    Win32Window(const WindowServices& services, const WindowOptions& options, WindowEvents& events);
    ~Win32Window() override;
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;

    void show(bool visible) override;
    void center() override;
    void setGeometry(const Rect& screenRect) override;
    [[nodiscard]] Rect geometry() const override;
    [[nodiscard]] Rect workArea(Point point) const override;
    [[nodiscard]] double scale() const override;
    void setState(WindowState state) override;
    [[nodiscard]] WindowState state() const override;
    [[nodiscard]] Rect normalGeometry() const override;
    void setTitle(const std::u16string& title) override;
    void setEnabled(bool enabled) override;
    void activate() override;
    void setTakesFiles(bool takes) override;
    void close() override;
    Win32WindowPicture& picture() override { return m_picture; }
    Win32WindowInput& input() override { return m_input; }
    Win32WindowTimers& timers() override { return m_timers; }
    WindowAccessibility& accessibility() override { return *this; }

    /// The living window of a handle; null for foreign handles and windows that are gone.
    [[nodiscard]] static Win32Window* fromHandle(HWND handle);
    [[nodiscard]] HWND handle() const { return m_handle.get(); }

    /// In pixels of the screen, as the system counts.
    [[nodiscard]] Rect screenGeometry() const;
    /// In layout pixels.
    [[nodiscard]] Size contentSize() const;
    /// From pixels of the window to layout pixels.
    [[nodiscard]] Point toLayout(POINT at) const;
    /// After scale() has changed; `corner` is the place for the window's top left.
    void rescale(Point corner);

    /// What the owner answers; true when the window is closing. May destroy this object.
    bool send(const Event& event);
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    [[nodiscard]] bool isClosing() const { return m_closing; }
    /// Not while it waits for a dialog of its own, nor when it is closing.
    [[nodiscard]] bool takesInput() const { return m_enabled && !m_closing; }
    [[nodiscard]] const WindowServices& services() const { return m_services; }
    [[nodiscard]] WindowEvents& events() const { return m_events; }
    /// The root of the accessibility tree that the owner offers; null without one.
    [[nodiscard]] Accessible* accessibleRoot() const;
    /// Posted by the window to itself: a screen reader pressed the node whose number is the LPARAM.
    static constexpr UINT kPressMessage = WM_APP + 3;

private:
    /// Posted by close(): the window is to be destroyed now.
    static constexpr UINT kFinishMessage = WM_APP + 2;

    static LRESULT CALLBACK receive(HWND handle, UINT message, WPARAM wide, LPARAM wideLong);
    static const wchar_t* registerClass(const std::wstring& name);

    /// Empty: the system handles the message as well. May destroy this object.
    std::optional<LRESULT> handleMessage(UINT message, WPARAM wide, LPARAM wideLong);
    std::optional<LRESULT> handleEnd(UINT message, WPARAM wide);
    std::optional<LRESULT> handleFrame(UINT message, WPARAM wide);
    std::optional<LRESULT> handleSizing(UINT message, WPARAM wide, LPARAM wideLong);
    [[nodiscard]] bool isSizable() const { return m_leastSize != Size{}; }
    void followWithFrame();
    void limitSize(MINMAXINFO& limits) const;
    /// Of other windows on its monitor.
    [[nodiscard]] double usualScale() const;
    /// By how much the window has to be smaller on a monitor.
    [[nodiscard]] double fitOn(const MONITORINFO& monitor) const;
    /// On another monitor, or after it has changed.
    void refit();
    void handleCloseRequest();
    void handleDrop(HDROP drop);
    void handleActivation(bool active);

    void changed(Accessible& node, AccessibleChange change) override;
    void allowStates();
    void noteSize();
    /// In pixels of the screen.
    [[nodiscard]] Size leastSize() const { return toSystem(m_leastSize, scale()); }
    void finish();

    const WindowServices& m_services;
    WindowEvents& m_events;
    UniqueWindow m_handle;
    HWND m_owner = nullptr;
    WindowKind m_kind;
    Size m_leastSize;
    int m_cornerRadius;
    KeptSize m_content;
    UINT m_dpi = 0; ///< of its monitor
    double m_fit = 1;
    bool m_showsMaximized = false;
    bool m_enabled = true;
    bool m_closing = false;
    bool m_destroyedSent = false;
    Win32SizingFrame m_sizingFrame;
    Win32WindowPicture m_picture{*this};
    Win32WindowInput m_input{*this};
    Win32WindowTimers m_timers{*this};
};

} // namespace platform::win32
