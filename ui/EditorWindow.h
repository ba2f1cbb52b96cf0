// What all windows of the editor share: skin, commands and keys, menus, where they stand, and how
// they end the message loop that runs them. Base of all screens and dialogs. UI thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "edit/Observers.h"
#include "toolkit/window/WindowImplBase.h"
#include "ui/Companions.h"
#include "ui/Controls.h"
#include "ui/Panes.h"
#include "ui/WindowContext.h"
#include "ui/WindowPlace.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/KeyMap.h"

namespace ui {

class ConfirmCallback;

/// Style bits of the screens: pop-up, visible, clip siblings and children, caption, system menu;
/// application window, static edge.
inline constexpr std::uint32_t kScreenStyle = 0x96C80000;
inline constexpr std::uint32_t kScreenExtendedStyle = 0x00060000;
/// Style bits of dialogs: pop-up; static edge.
inline constexpr std::uint32_t kDialogStyle = 0x80000000;
inline constexpr std::uint32_t kDialogExtendedStyle = 0x00020000;

class EditorWindow : public toolkit::WindowImplBase {
public:
    /// Everything in `context` outlives the window, which binds the commands of its tables.
    explicit EditorWindow(const WindowContext& context, const WindowTables& tables = {});

    /// Creates the native window with its layout, shows it, and runs a message loop until it is
    /// closed. It stands where the author left it, else in the middle. The outcome stands in shared
    /// flags by then. False, and nothing was shown, when the window or its layout cannot be made
    /// (the log names the layout).
    [[nodiscard]] bool runScreen(std::u16string_view title);

    /// Creates and shows the window above `owner`, to work in the loop that runs. `onEnd` is called
    /// once its native window is gone. False when the window or its layout cannot be made.
    [[nodiscard]] bool showBeside(platform::NativeWindow* owner, std::u16string_view title,
                                  std::function<void()> onEnd);
    /// Shows the window above the asker's and runs a message loop until it is closed. Meanwhile
    /// neither that one nor those beside it take input. False when the window or its layout cannot
    /// be made.
    [[nodiscard]] bool runAbove(ConfirmCallback& asker, std::u16string_view title);
    /// What it opens beside itself is opened in `host`, as one of the windows there. Null: alone.
    void joinCompanions(Companions* host) { m_host = host; }
    [[nodiscard]] std::string GetSkinFolder() const override;
    /// The owner's shared pointer releases the window, not the end of its native window.
    void OnFinalMessage() override;
    bool HandleMessage(const platform::Event& event) override;
    void Close(int code = 0) override;
    /// Runs the command of the clicked control.
    void OnClick(toolkit::TNotifyUI& message) override;
    /// Runs the command of a key, and follows the window's size.
    bool MessageHandler(const platform::Event& event) override;

protected:
    /// The window has another size; before the controls are laid out for it.
    virtual void windowSized() {}
    /// Tool tips name the keys that the author has chosen, now and when these change.
    void controlsReady() override;
    /// Shows the created window and runs its message loop. When the system ends the program
    /// meanwhile, the quit flag is set: every screen is left as by Exit then.
    void runLoop();
    [[nodiscard]] const WindowContext& context() const { return m_context; }
    [[nodiscard]] CommandSet& commands() { return m_commands; }
    [[nodiscard]] KeyMap& keys() { return m_keys; }
    /// Opens the menu of these commands at the button of the command "menu".
    void showMenu(std::span<const std::string_view> ids);
    /// Lets the command "find" go to this text field, while it is there.
    void bindFind(std::u16string_view field);
    /// The modeless windows beside this one, or beside the window that this one belongs to.
    [[nodiscard]] Companions& companions() { return m_host != nullptr ? *m_host : m_companions; }

    [[nodiscard]] Controls controls() { return Controls(GetPaintManager()); }

    // controls(), in short.
    template <class T>
    [[nodiscard]] T* find(std::u16string_view name) {
        return controls().find<T>(name);
    }
    [[nodiscard]] toolkit::CControlUI* findControl(std::u16string_view name) {
        return controls().find(name);
    }
    void setTextOf(std::u16string_view name, std::u16string_view text) {
        controls().setText(name, text);
    }
    void setEnabledOf(std::u16string_view name, bool enabled) {
        controls().setEnabled(name, enabled);
    }
    void setVisibleOf(std::u16string_view name, bool visible) {
        controls().setVisible(name, visible);
    }
    bool showProblem(std::u16string_view text, std::u16string_view usual) {
        return controls().showProblem(text, usual);
    }

private:
    /// Opens the menu of what was pressed or has the focus. False: there is none.
    bool openContextMenu(const platform::Event& event);
    /// Names the window in the settings and in the manual.
    [[nodiscard]] std::string layoutName() const;
    void bindCommonCommands();
    void bindWindowCommands();
    /// The button that maximises the window restores it while it is.
    void showState();
    void enableAsker(bool enabled);

    WindowContext m_context;
    WindowTables m_tables;
    std::optional<WindowPlace> m_place; ///< a screen's
    KeyMap& m_keys;
    edit::Subscription m_keysChanged;
    CommandSet m_commands;
    CommandSet m_commonCommands;
    Panes m_panes{GetPaintManager()};
    Companions m_companions{*this};
    Companions* m_host = nullptr;       ///< not owned; outlives the window
    ConfirmCallback* m_asker = nullptr; ///< not owned; outlives the window's loop
    std::function<void()> m_onEnd;
};

} // namespace ui
