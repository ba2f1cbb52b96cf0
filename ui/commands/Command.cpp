#include "ui/commands/Command.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

#include "core/Text.h"

namespace ui {

using platform::Key;

namespace {

constexpr std::pair<Key, std::u16string_view> kNames[] = {
    {Key::left, u"Left"},           {Key::right, u"Right"},        {Key::up, u"Up"},
    {Key::down, u"Down"},           {Key::home, u"Home"},          {Key::end, u"End"},
    {Key::pageUp, u"Page Up"},      {Key::pageDown, u"Page Down"}, {Key::tab, u"Tab"},
    {Key::enter, u"Enter"},         {Key::escape, u"Esc"},         {Key::space, u"Space"},
    {Key::backspace, u"Backspace"}, {Key::del, u"Delete"},         {Key::insert, u"Insert"},
    {Key::menu, u"Menu"},           {Key::openBracket, u"["},      {Key::closeBracket, u"]"},
    {Key::plus, u"Plus"},           {Key::minus, u"Minus"},
};

std::u16string nameOf(Key key) {
    for (const auto& [named, name] : kNames) {
        if (named == key) {
            return std::u16string(name);
        }
    }
    const auto offset = [key](Key first) {
        return static_cast<int>(key) - static_cast<int>(first);
    };
    if (platform::isFunctionKey(key)) {
        const int number = offset(Key::f1) + 1;
        std::u16string name = number < 10 ? u"F" : u"F1";
        name += static_cast<char16_t>(u'0' + number % 10);
        return name;
    }
    if (key >= Key::a && key <= Key::z) {
        return {static_cast<char16_t>(u'A' + offset(Key::a))};
    }
    if (key >= Key::digit0 && key <= Key::digit9) {
        return {static_cast<char16_t>(u'0' + offset(Key::digit0))};
    }
    return {};
}

std::u16string withoutSpaces(std::u16string_view text) {
    std::u16string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result),
                 [](char16_t sign) { return sign != u' ' && sign != u'\t'; });
    return result;
}

/// Small letters, no spaces: for comparison.
std::u16string folded(std::u16string_view text) {
    std::u16string result = withoutSpaces(text);
    for (char16_t& sign : result) {
        sign = sign >= u'A' && sign <= u'Z' ? static_cast<char16_t>(sign - u'A' + u'a') : sign;
    }
    return result;
}

/// All keys with a name, by their folded texts.
std::map<std::u16string, KeyChord> chordsByText() {
    std::map<std::u16string, KeyChord> chords;
    for (int number = static_cast<int>(Key::left); number <= static_cast<int>(Key::z); ++number) {
        for (unsigned held = 0; held < 8; ++held) {
            const KeyChord chord = chordOf(
                static_cast<Key>(number),
                {.shift = (held & 1U) != 0, .control = (held & 2U) != 0, .alt = (held & 4U) != 0});
            if (const std::u16string text = keyText(chord); !text.empty()) {
                chords.emplace(folded(text), chord);
            }
        }
    }
    return chords;
}

/// A tool tip without the key that stands behind it in brackets, if it is this one.
core::Text withoutKey(core::Text toolTip, const KeyChord& key) {
    const std::string_view source = toolTip.source;
    const std::size_t open = source.rfind(" (");
    const bool names =
        source.ends_with(")") && open != std::string_view::npos &&
        folded(core::displayText(source.substr(open))) == folded(u"(" + keyText(key) + u")");
    return names ? core::Text{source.substr(0, open)} : toolTip;
}

const core::Text& tipFor(const Command& command, std::u16string_view subject) {
    return subject.empty() || command.subjectTip.empty() ? command.toolTip : command.subjectTip;
}

} // namespace

KeyChord chordOf(Key key, platform::Modifiers modifiers) {
    modifiers.shift = modifiers.shift && key != Key::plus;
    return {key, modifiers};
}

std::u16string keyText(const KeyChord& chord) {
    std::u16string text = nameOf(chord.key);
    if (text.empty()) {
        return text;
    }
    for (const auto& [held, name] :
         {std::pair{chord.modifiers.shift, u"Shift+"}, std::pair{chord.modifiers.alt, u"Alt+"},
          std::pair{chord.modifiers.control, u"Ctrl+"}}) {
        if (held) {
            text.insert(0, name);
        }
    }
    return text;
}

std::u16string shownKey(const KeyChord& chord) {
    return core::trKeys(keyText(chord));
}

std::vector<std::u16string> splitKeys(std::u16string_view text) {
    std::vector<std::u16string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u','), text.size());
        if (std::u16string part = withoutSpaces(text.substr(0, end)); !part.empty()) {
            parts.push_back(std::move(part));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::optional<KeyChord> parseKey(std::u16string_view text) {
    static const std::map<std::u16string, KeyChord> kChords = chordsByText();
    const auto found = kChords.find(folded(text));
    return found != kChords.end() ? std::optional(found->second) : std::nullopt;
}

std::u16string toolTipOf(const Command& command, std::u16string_view subject,
                         const std::optional<KeyChord>& key) {
    const core::Text tip = tipFor(command, subject);
    if (!key || *key == command.keys[0]) {
        return core::tr(tip, subject);
    }
    return core::tr(withoutKey(tip, command.keys[0]), subject) +
           (key->key != Key::other ? u" (" + shownKey(*key) + u")" : std::u16string());
}

std::u16string labelOf(const Command& command, std::u16string_view subject) {
    return core::tr(withoutKey(tipFor(command, subject), command.keys[0]), subject);
}

} // namespace ui
