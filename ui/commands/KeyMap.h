// Which keys run the commands: those of the command tables, except where the author has chosen
// others. These stand in the section "keys" of the editor's settings, "save = Ctrl+S" or
// "redo = Ctrl+Y, Ctrl+Shift+Z"; nothing behind the "=" means no key. UI thread only.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "edit/Observers.h"
#include "ui/commands/Command.h"

namespace ui {

class KeyMap {
public:
    using Keys = std::array<KeyChord, 2>;

    /// The one of all windows; made from the settings when the first asks.
    [[nodiscard]] static KeyMap& of(app_state::SharedServices& services);
    /// Reads the settings; without any, all keys are those of the tables.
    explicit KeyMap(std::shared_ptr<core::EditorSettings> settings);

    /// Of two commands with one id, both have the same.
    [[nodiscard]] Keys keysOf(const Command& command) const;
    /// Whether the author has chosen them.
    [[nodiscard]] bool isChosen(const Command& command) const;

    /// Why the command cannot have this key, as a sentence; empty when it can.
    [[nodiscard]] std::u16string refusal(const Command& command, const KeyChord& chord) const;
    /// Gives the command these keys, which nothing refuses, and keeps them in the settings.
    void choose(const Command& command, const Keys& keys);
    /// The command's keys of the tables, but for those that another command has by now.
    [[nodiscard]] Keys usualKeys(const Command& command) const;
    /// All commands have the keys of the tables again.
    void resetAll();

    /// What is wrong with the settings' section, a sentence each: unknown commands, unreadable keys
    /// and refused ones. Nothing else is done about these.
    [[nodiscard]] const std::vector<std::u16string>& problems() const { return m_problems; }
    /// The listener is called after the keys of any command changed.
    [[nodiscard]] edit::Subscription observe(std::function<void()> listener) {
        return m_observers.add(std::move(listener));
    }

private:
    void read();
    /// False when no key of the line counts, though it has some.
    bool readLine(const Command& command, const std::u16string& text);
    void set(const Command& command, const Keys& keys);

    std::shared_ptr<core::EditorSettings> m_settings;
    std::map<std::string, Keys, std::less<>> m_chosen; ///< by the command's id
    std::vector<std::u16string> m_problems;
    edit::Observers<> m_observers;
};

} // namespace ui
