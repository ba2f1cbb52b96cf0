// A native window and the object that owns it. UI thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Accessible.h"
#include "platform/Gui.h"
#include "platform/Window.h"

namespace toolkit {

class CWindowWnd : public platform::WindowEvents {
public:
    explicit CWindowWnd(platform::Gui& gui) : m_gui(gui) {}
    ~CWindowWnd() override;
    CWindowWnd(const CWindowWnd&) = delete;
    CWindowWnd& operator=(const CWindowWnd&) = delete;

    [[nodiscard]] virtual std::u16string GetWindowClassName() const = 0;
    [[nodiscard]] virtual std::u16string GetSuperClassName() const { return {}; }
    [[nodiscard]] virtual std::uint32_t GetClassStyle() const { return 0; }
    /// Every event of the native window. True when it was handled.
    virtual bool HandleMessage(const platform::Event& event);
    /// The native window is gone; the last call. Does nothing: the owner of this object, a shared
    /// pointer that must outlive the event, releases it.
    virtual void OnFinalMessage() {}

    /// Null before Create and after the native window's end. Not owned.
    [[nodiscard]] platform::NativeWindow* GetNative() const {
        return m_alive ? m_native.get() : nullptr;
    }
    [[nodiscard]] platform::Gui& Gui() const { return m_gui; }

    void CenterWindow();
    void ShowWindow(bool show = true);
    /// Shows the window and handles events until it is gone (or the loop is ended otherwise).
    /// Returns the loop's code.
    int ShowModal();
    /// Ends the native window soon. No control gets input any more; safe inside any handler.
    virtual void Close(int code = 0);
    [[nodiscard]] bool IsClosing() const { return m_closing; }

protected:
    /// False, with a log line, when the system refuses.
    bool createNative(const platform::WindowOptions& options);
    /// Ends the native window now, without any event to HandleMessage.
    void destroyNative();
    virtual void paint(platform::Canvas& /*canvas*/, const platform::Rect& /*dirty*/) {}
    [[nodiscard]] virtual platform::Accessible* accessibleTree() { return nullptr; }

private:
    bool onEvent(const platform::Event& event) final;
    void onPaint(platform::Canvas& canvas, const platform::Rect& dirty) final;
    platform::Accessible* accessibleRoot() final { return m_alive ? accessibleTree() : nullptr; }

    platform::Gui& m_gui;
    std::unique_ptr<platform::NativeWindow> m_native;
    bool m_alive = false;
    bool m_closing = false;
    bool m_silent = false;
};

} // namespace toolkit
