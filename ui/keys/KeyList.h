// The keys of all windows, as the list of keys shows them: taken from the tables that the windows
// run their commands by, and from what the author has chosen instead.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "ui/commands/Command.h"
#include "ui/commands/KeyMap.h"

namespace ui {

struct KeyLine {
    std::u16string text;              ///< what the key does, or a note
    const Command* command = nullptr; ///< of the tables; null: a note
    std::size_t number = 0;           ///< which of the command's keys
    KeyChord chord{};                 ///< other: it has none
    bool isChosen = false;            ///< by the author
};

/// Its key or gesture, in the chosen language; empty: none.
[[nodiscard]] std::u16string shownKeys(const KeyLine& line);

struct KeyGroup {
    std::u16string name; ///< where the keys count
    std::vector<KeyLine> lines;
    int column = 1; ///< in which it is shown
};

/// The groups that have lines, each line once; last what is wrong with the settings. With `wanted`,
/// those lines only whose text or key contains it (small and capital letters are alike), commands
/// without a key among them.
[[nodiscard]] std::vector<KeyGroup> keyGroups(const KeyMap& keys, std::u16string_view wanted = {});
/// As plain text, one key a line.
[[nodiscard]] std::u16string keyListText(const std::vector<KeyGroup>& groups);

} // namespace ui
