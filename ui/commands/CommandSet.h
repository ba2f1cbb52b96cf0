// The commands of one window: its table, what runs each of them, and the way from a button or a
// key to that. UI thread only.
//
//   m_commands.bind(command::kSave, [this] { save(); });
//
// Which keys reach a command: those that the focused control does not claim for itself
// (CControlUI::claimsKey), and, where the window limits them, letters, digits and Space. Before a
// command of a function key or Ctrl runs, a focused text field commits what was typed, as if it
// were left.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "ui/commands/Command.h"

namespace toolkit {
class CControlUI;
class CPaintManagerUI;
} // namespace toolkit

namespace ui {

class KeyMap;

class CommandSet {
public:
    /// All outlive the set; `table` is one of the constants.
    CommandSet(toolkit::CPaintManagerUI& manager, std::span<const Command> table,
               const KeyMap& keys)
        : m_manager(manager), m_table(table), m_keys(keys) {}

    /// What runs a command of the table. Commands without a handler do nothing. `subject`: what it
    /// would act on now, for the tool tip of its button.
    void bind(std::string_view id, std::function<void()> run, std::function<bool()> enabled = {},
              std::function<std::u16string()> subject = {});

    /// The same for a command that turns something on and off, or chooses one of several.
    void bindSwitch(std::string_view id, std::function<void()> run, std::function<bool()> isOn,
                    std::function<bool()> enabled = {});
    /// Whether what it switches is on; none for a command that is no switch.
    [[nodiscard]] std::optional<bool> isOn(std::string_view id) const;
    /// Limits the keys that type: they act while nothing or one of these controls has the focus.
    /// The names are constants.
    void setTypingControls(std::span<const std::u16string_view> names) { m_typingControls = names; }

    /// The command, if it has a handler; else null.
    [[nodiscard]] const Command* bound(std::string_view id) const;
    /// Whether it can run now: it has a handler, its condition holds, and its button, if the window
    /// has it, can be pressed.
    [[nodiscard]] bool isEnabled(std::string_view id) const;
    /// Runs the command as a key or a menu does: by pressing its button if the window has it. False
    /// when the command is not enabled.
    bool run(std::string_view id);
    /// For the notification that a control was clicked. False when no command has that control.
    bool runOf(std::u16string_view control);
    /// For a window's message filter. True when the key was a command's, run or not.
    bool handleKey(const platform::Event& event);
    /// The first key of the command, as menus show it; empty: none.
    [[nodiscard]] std::u16string keyOf(const Command& command) const;
    /// Has the tool tips of all buttons name the keys that the commands have now.
    void showKeys();
    /// Enables the buttons of all commands with a condition by it, and has them say what the
    /// command would act on.
    void showEnabled();

private:
    struct Binding {
        std::function<void()> run;
        std::function<bool()> enabled;
        std::function<std::u16string()> subject;
        std::function<bool()> isOn;
    };

    [[nodiscard]] const Command* find(std::string_view id) const;
    [[nodiscard]] bool has(const Command& command, const KeyChord& chord) const;
    [[nodiscard]] const Command* commandOf(const platform::Event& event) const;
    [[nodiscard]] bool isForFocus(const platform::Event& event) const;
    [[nodiscard]] bool mayRun(const Command& command) const;
    [[nodiscard]] toolkit::CControlUI* controlOf(const Command& command) const;
    bool run(const Command& command);

    toolkit::CPaintManagerUI& m_manager;
    std::span<const Command> m_table;
    const KeyMap& m_keys;
    std::span<const std::u16string_view> m_typingControls;
    std::set<std::string_view> m_rekeyed; ///< tool tips that do not name the key of the table
    std::map<std::string_view, Binding> m_bindings;
};

} // namespace ui
