// The base of every window: a native window that gets its look from a layout file of the skin;
// the program finds controls by name and reacts to their notifications.
//
//   class Question : public toolkit::WindowImplBase { ... };
//   auto question = std::make_shared<Question>(gui);
//   if (question->Create(owner, u"Title", style, exStyle)) {
//       question->CenterWindow();
//       question->ShowModal();          // until Close, which ends this loop only
//   }
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/layout/IDialogBuilderCallback.h"
#include "toolkit/window/CNotifyPump.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/CWindowWnd.h"
#include "toolkit/window/IMessageFilterUI.h"
#include "toolkit/window/INotifyUI.h"

namespace toolkit {

class CDialogBuilder;

class WindowImplBase : public CWindowWnd,
                       public CNotifyPump,
                       public INotifyUI,
                       public IMessageFilterUI,
                       public IDialogBuilderCallback {
public:
    explicit WindowImplBase(platform::Gui& gui);
    ~WindowImplBase() override;

    /// `destroyed` posts the quit that ends the loop this window runs in, unless it is modeless;
    /// closeRequest closes; the rest goes to the paint manager. An override calls this for what it
    /// does not handle, and posts no quit of its own.
    bool HandleMessage(const platform::Event& event) override;
    /// Called once, after the controls are built and laid out: fills them.
    virtual void InitWindow() {}
    /// Called once, after InitWindow: what all windows of a program do to their controls.
    virtual void controlsReady() {}
    /// UTF-8, relative to the current directory.
    [[nodiscard]] virtual std::string GetSkinFolder() const { return "UI/"; }
    /// The layout's file name in the skin.
    [[nodiscard]] virtual std::string GetSkinFile() const = 0;

    /// Makes the native window and its controls; hidden, of the layout's size. False when the
    /// layout is missing or malformed (the log names the file) or the system refuses; nothing is
    /// left behind then and no quit is posted. May be called again once the native window is gone.
    /// `style` and `exStyle` are Win32 style bits.
    bool Create(platform::NativeWindow* owner, const std::u16string& title, std::uint32_t style,
                std::uint32_t exStyle);
    void Close(int code = 0) override;

    /// Of the layout, once created; empty for a window of a fixed size.
    [[nodiscard]] platform::Size leastSize() const { return m_leastSize; }
    [[nodiscard]] CPaintManagerUI& GetPaintManager() { return m_manager; }
    [[nodiscard]] const CPaintManagerUI& GetPaintManager() const { return m_manager; }
    /// A control of this window by name and kind; null when there is none.
    template <class T>
    [[nodiscard]] T* FindControl(std::u16string_view name) const {
        return toolkit::FindControl<T>(m_manager, name);
    }

    void Notify(TNotifyUI& message) override { NotifyPump(message); }
    bool MessageHandler(const platform::Event& /*event*/) override { return false; }
    std::unique_ptr<CControlUI> CreateControl(std::u16string_view className) override;

protected:
    /// A modeless window runs in the loop of another, which continues when it closes.
    void setModeless() { m_modeless = true; }
    void paint(platform::Canvas& canvas, const platform::Rect& dirty) override;
    [[nodiscard]] bool takesPress(platform::Point at) override {
        return m_manager.mouse().takesPress(at);
    }
    [[nodiscard]] platform::Accessible* accessibleTree() override { return m_manager.GetRoot(); }

private:
    bool readLayout(const Skin& skin, CDialogBuilder& builder) const;
    /// Logs what is wrong with the layout; false.
    bool refuse(const Skin& skin, const CDialogBuilder& builder) const;
    bool buildControls(const std::shared_ptr<const Skin>& skin, CDialogBuilder& builder,
                       const std::u16string& title);

    CPaintManagerUI m_manager;
    platform::Size m_leastSize;
    bool m_modeless = false;
};

} // namespace toolkit
