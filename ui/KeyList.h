// The keys of all windows, as the list of keys shows them: taken from the tables that the windows
// run their commands by.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/commands/Command.h"

namespace ui {

struct KeyLine {
    std::u16string_view text; ///< what the key does
    KeyChord chord;
    bool operator==(const KeyLine&) const = default;
};

struct KeyGroup {
    std::u16string_view name; ///< where the keys count
    std::vector<KeyLine> lines;
};

/// The groups that have lines, each line once. With `wanted`, those lines only whose text or key
/// contains it; small and capital letters are alike.
[[nodiscard]] std::vector<KeyGroup> keyGroups(std::u16string_view wanted = {});
/// As plain text, one key a line.
[[nodiscard]] std::u16string keyListText(const std::vector<KeyGroup>& groups);

} // namespace ui
