// What a command of an editor is, apart from what runs it: buttons, keys, menus and the list of
// keys all refer to an entry of one table for each editor.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Texts.h"
#include "platform/Event.h"

namespace ui {

struct KeyChord {
    platform::Key key = platform::Key::other; ///< other: no key
    platform::Modifiers modifiers;
    bool operator==(const KeyChord&) const = default;
};

/// Of a key that is held with these. Plus is the same with Shift, which many keyboards need for it.
[[nodiscard]] KeyChord chordOf(platform::Key key, platform::Modifiers modifiers);
/// As settings hold it: "Ctrl+Shift+Z", "Esc", "Left". Empty for no key.
[[nodiscard]] std::u16string keyText(const KeyChord& chord);
/// The same as shown to the user, in the chosen language.
[[nodiscard]] std::u16string shownKey(const KeyChord& chord);
/// The key of a keyText, whose letters may be small and capital; empty when it is none.
[[nodiscard]] std::optional<KeyChord> parseKey(std::u16string_view text);
/// The texts between commas, without spaces around them; none of them is empty.
[[nodiscard]] std::vector<std::u16string> splitKeys(std::u16string_view text);

struct Command {
    /// Unique in its table; also the name under which a key can be set.
    std::string_view id;
    core::Text group{};            ///< its heading in the list of keys
    core::Text text{};             ///< in menus and in the list of keys
    std::u16string_view control{}; ///< the button that runs it; empty: none
    /// Of that button, with the first key behind it in brackets where it names one.
    core::Text toolTip{};
    std::array<KeyChord, 2> keys{};
    bool repeats = false; ///< runs again and again while its key is held
    /// Ctrl and Alt held as well make no difference, unless another command has that chord.
    bool anyModifiers = false;
    /// One of the skin's icons, in menus.
    std::u16string_view icon{};
    /// In the list of keys, if that is not `text`.
    core::Text listed{};
    bool isFixed = false; ///< the author cannot choose its key
    /// The tool tip while it would act on something, whose name is "{0}".
    core::Text subjectTip{};
    /// In place of keys, written like them: what a control answers to itself, "Ctrl+Drag".
    std::u16string_view gesture{};

    [[nodiscard]] std::u16string shownText() const { return core::tr(text); }
    [[nodiscard]] std::u16string listedText() const {
        return core::tr(listed.empty() ? text : listed);
    }
};

/// One that is listed only: the control that it concerns runs it.
constexpr Command gestureCommand(std::string_view id, core::Text group, core::Text text,
                                 std::u16string_view gesture) {
    return {.id = id, .group = group, .text = text, .isFixed = true, .gesture = gesture};
}

/// The command's tool tip for `subject` (empty: for none), with the key that runs the command if
/// that is not the first one of the table.
[[nodiscard]] std::u16string toolTipOf(const Command& command, std::u16string_view subject = {},
                                       const std::optional<KeyChord>& key = {});
/// The same without the key, as a screen reader names the button.
[[nodiscard]] std::u16string labelOf(const Command& command, std::u16string_view subject = {});

} // namespace ui
