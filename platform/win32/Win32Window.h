// A native window. The parts stand in files by subject: life and geometry (Win32Window.cpp), the
// window procedure (Win32WindowProc.cpp), mouse (Win32Mouse.cpp), keyboard (Win32Keys.cpp) and
// painting (Win32Paint.cpp).
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "platform/Window.h"
#include "platform/raster/DirtyRegion.h"
#include "platform/raster/TextPainter.h"
#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

/// What windows share with the rest of the back end. Not owned by them.
struct WindowServices {
    raster::TextPainter* text = nullptr;
    std::function<void()> endProgram; ///< the session ends
};

class Win32Window final : public NativeWindow {
public:
    /// `services` and `events` must outlive the window. Without a handle() the system refused.
    Win32Window(const WindowServices& services, const WindowOptions& options, WindowEvents& events);
    ~Win32Window() override;
    Win32Window(const Win32Window&) = delete;
    Win32Window& operator=(const Win32Window&) = delete;

    void show(bool visible) override;
    void center() override;
    void setGeometry(const Rect& screenRect) override;
    [[nodiscard]] Rect geometry() const override;
    void setTitle(const std::u16string& title) override;
    void setEnabled(bool enabled) override;
    void activate() override;
    void close() override;
    void invalidate(const Rect& dirty) override;
    void repaintNow() override;
    [[nodiscard]] Bitmap snapshot() override;
    void setCapture() override;
    void releaseCapture() override;
    void setPointer(PointerShape shape) override;
    bool startTimer(unsigned id, int intervalMs) override;
    bool stopTimer(unsigned id) override;
    void beginMove() override;
    void setTextInput(bool enabled, const Rect& caret) override;
    [[nodiscard]] FrameBufferResult createFrameBuffer(Size size) override;
    void accessibleChanged(Accessible& node, AccessibleChange change) override;

    [[nodiscard]] HWND handle() const { return m_handle.get(); }
    /// Not while a dialog of its own asks, nor when it is closing.
    [[nodiscard]] bool takesInput() const { return m_enabled && !m_closing; }
    /// Sent to the window itself: a screen reader presses the node whose number is the message's
    /// second parameter.
    static constexpr UINT kPressMessage = WM_APP + 3;
    /// The living window of a handle; null for foreign handles and windows that are gone.
    [[nodiscard]] static Win32Window* fromHandle(HWND handle);
    /// What an input method reports: text that is not committed yet, and text that is.
    void compose(const std::u16string& preedit, const std::u16string& committed);
    /// The root of the accessibility tree that the owner offers; null without one.
    [[nodiscard]] Accessible* accessibleRoot() const;

private:
    /// Sent by close() to its own window: the time has come.
    static constexpr UINT kFinishMessage = WM_APP + 2;

    static LRESULT CALLBACK receive(HWND handle, UINT message, WPARAM wide, LPARAM wideLong);
    static const wchar_t* registerClass(const std::wstring& name);

    /// Empty: the system handles the message as well. May destroy this object.
    std::optional<LRESULT> handleMessage(UINT message, WPARAM wide, LPARAM wideLong);
    std::optional<LRESULT> handleEnd(UINT message, WPARAM wide);
    std::optional<LRESULT> handleFrame(UINT message, WPARAM wide, LPARAM wideLong);
    std::optional<LRESULT> handleInput(UINT message, WPARAM wide, LPARAM wideLong);
    void handleMouse(UINT message, WPARAM wide, LPARAM wideLong);
    bool followMove(UINT message, LPARAM wideLong);
    bool handleWheel(WPARAM wide, LPARAM wideLong);
    void handleLeave();
    void loseCapture();
    bool handleKey(UINT message, WPARAM virtualKey, LPARAM details);
    bool handleCharacter(wchar_t unit);
    bool handleComposition(LPARAM flags);
    void allowMinimizing();
    void handleCloseRequest();
    void handleActivation(bool active);
    void handleTimer(WPARAM id);
    bool handleSetCursor(LPARAM details) const;

    bool send(const Event& event);
    void sendSimple(EventKind kind);
    void finish();

    void paint();
    void paintDirty();
    [[nodiscard]] Rect clientRect() const;
    bool resizeBack();

    const WindowServices& m_services;
    WindowEvents& m_events;
    UniqueWindow m_handle;
    HWND m_owner = nullptr;
    WindowKind m_kind;
    int m_cornerRadius;
    bool m_enabled = true;
    bool m_closing = false;
    bool m_destroyedSent = false;

    Win32BackBuffer m_back;
    raster::DirtyRegion m_dirty;

    std::set<unsigned> m_timers;
    PointerShape m_pointer = PointerShape::arrow;
    bool m_captured = false;
    std::optional<Point> m_moveGrip; ///< pointer within the window while we move it ourselves
    bool m_tracksLeave = false;
    char16_t m_highSurrogate = u'\0';
    bool m_preedit = false;
};

} // namespace platform::win32
