#include "ui/commands/Command.h"

#include <cstddef>
#include <utility>

namespace ui {

using platform::Key;

namespace {

constexpr std::pair<Key, std::u16string_view> kNames[] = {
    {Key::left, u"Left"},           {Key::right, u"Right"},        {Key::up, u"Up"},
    {Key::down, u"Down"},           {Key::home, u"Home"},          {Key::end, u"End"},
    {Key::pageUp, u"Page Up"},      {Key::pageDown, u"Page Down"}, {Key::tab, u"Tab"},
    {Key::enter, u"Enter"},         {Key::escape, u"Esc"},         {Key::space, u"Space"},
    {Key::backspace, u"Backspace"}, {Key::del, u"Delete"},         {Key::insert, u"Insert"},
    {Key::menu, u"Menu"},
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

} // namespace

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

std::u16string toolTipOf(const Command& command, std::u16string_view subject) {
    constexpr std::u16string_view kSubject = u": %s";
    std::u16string text(command.toolTip);
    if (const std::size_t at = text.find(kSubject); at != std::u16string::npos) {
        text.replace(at, kSubject.size(),
                     subject.empty() ? std::u16string() : u": " + std::u16string(subject));
    }
    return text;
}

std::u16string labelOf(const Command& command, std::u16string_view subject) {
    std::u16string text = toolTipOf(command, subject);
    const std::u16string key = u" (" + keyText(command.keys[0]) + u")";
    if (text.ends_with(key)) {
        text.resize(text.size() - key.size());
    }
    return text;
}

} // namespace ui
