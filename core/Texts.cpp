#include "core/Texts.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "core/Text.h"
#include "core/Translations.h"

namespace core {
namespace {

constexpr std::size_t kMaxKey = 30;

/// Keys of the keyboard, and a drag, as the English tool tips name them; single characters name
/// themselves.
constexpr std::array kKeyNames{
    "Key.Ctrl|Ctrl"_tr,
    "Key.Shift|Shift"_tr,
    "Key.Alt|Alt"_tr,
    "Key.Left|Left"_tr,
    "Key.Right|Right"_tr,
    "Key.Up|Up"_tr,
    "Key.Down|Down"_tr,
    "Key.Home|Home"_tr,
    "Key.End|End"_tr,
    "Key.PageUp|Page Up"_tr,
    "Key.PageDown|Page Down"_tr,
    "Key.Tab|Tab"_tr,
    "Key.Enter|Enter"_tr,
    "Key.Esc|Esc"_tr,
    "Key.Space|Space"_tr,
    "Key.Backspace|Backspace"_tr,
    "Key.Delete|Delete"_tr,
    "Key.Insert|Insert"_tr,
    "Key.Menu|Menu"_tr,
    "Key.Arrows|Arrows"_tr,
    "Key.Drag|Drag"_tr,
    "Key.Plus|Plus"_tr,
    "Key.Minus|Minus"_tr,
};

/// A text as the chosen language has it, with its places.
struct Prepared {
    std::string one; ///< of a text that names a number
    std::string text;
    std::string keyboard{}; ///< keys in brackets behind it
};
/// By the text in the program.
using PreparedTexts = std::unordered_map<std::string_view, std::shared_ptr<const Prepared>>;

struct Current {
    std::mutex mutex; ///< guards what follows
    std::shared_ptr<const Translations> texts;
    bool isEnglish = true;
    bool countsNone = false; ///< none takes the singular
    // Looking a text up takes far longer than filling it in, and lists show the same one often.
    PreparedTexts plain;
    PreparedTexts counted;
};

Current& current() {
    static Current current;
    return current;
}

std::shared_ptr<const Translations> texts() {
    Current& shared = current();
    const std::lock_guard lock(shared.mutex);
    return shared.texts;
}

bool isDigit(char sign) {
    return sign >= '0' && sign <= '9';
}

bool isWordSign(char sign) {
    return isDigit(sign) || (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
}

std::pair<std::string_view, std::string_view> cut(std::string_view text, char at) {
    const std::size_t end = text.find(at);
    return end == std::string_view::npos ? std::pair(text, std::string_view())
                                         : std::pair(text.substr(0, end), text.substr(end + 1));
}

std::optional<std::string> find(const std::string& key) {
    const auto known = texts();
    return known != nullptr ? known->find(key) : std::nullopt;
}

/// `text` with `parts` in its places.
std::string filled(std::string_view text, std::span<const TextPart> parts) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '{' || i + 2 >= text.size() || !isDigit(text[i + 1]) || text[i + 2] != '}') {
            result += text[i];
            continue;
        }
        const auto place = static_cast<std::size_t>(text[i + 1] - '0');
        result += place < parts.size() ? parts[place].text() : std::string();
        i += 2;
    }
    return result;
}

/// Whether the language has its singular for `count`.
bool isOne(std::size_t count) {
    Current& shared = current();
    const std::lock_guard lock(shared.mutex);
    return count == 1 || (count == 0 && shared.countsNone);
}

/// What `make` makes of `source`, once for each language.
std::shared_ptr<const Prepared> prepared(PreparedTexts Current::*kept, std::string_view source,
                                         Prepared (*make)(std::string_view)) {
    Current& shared = current();
    std::shared_ptr<const Translations> known;
    {
        const std::lock_guard lock(shared.mutex);
        const auto found = (shared.*kept).find(source);
        if (found != (shared.*kept).end()) {
            return found->second;
        }
        known = shared.texts;
    }
    auto made = std::make_shared<const Prepared>(make(source));
    const std::lock_guard lock(shared.mutex);
    if (shared.texts == known) {
        (shared.*kept).emplace(source, made);
    }
    return made;
}

bool isFunctionKey(std::string_view name) {
    return name.size() >= 2 && name.size() <= 3 && name.front() == 'F' &&
           std::all_of(name.begin() + 1, name.end(), isDigit);
}

/// The keys of "Shift + Left", one by one, with what stands between them; none if it is no such
/// text.
std::optional<std::string> keys(std::string_view text) {
    std::string result;
    while (true) {
        const std::size_t end = std::min(text.find('+', 1), text.size());
        const std::string_view part = text.substr(0, end);
        const std::size_t from = std::min(part.find_first_not_of(' '), part.size());
        const std::string_view name = part.substr(from, part.find_last_not_of(' ') + 1 - from);
        const auto* const known =
            std::find_if(kKeyNames.begin(), kKeyNames.end(),
                         [&](const Text& key) { return cut(key.source, '|').second == name; });
        if (known == kKeyNames.end() && name.size() != 1 && !isFunctionKey(name)) {
            return std::nullopt;
        }
        result += part.substr(0, from);
        result += known != kKeyNames.end() ? trStored(*known) : std::string(name);
        result += part.substr(from + name.size());
        if (end == text.size()) {
            return result;
        }
        result += '+';
        text.remove_prefix(end + 1);
    }
}

/// A text, its key, and the keys of the keyboard in brackets behind it, which are apart.
struct Source {
    explicit Source(std::string_view source) {
        const auto [first, rest] = cut(source, '|');
        english = rest.empty() ? source : rest;
        const std::size_t open = english.rfind(" (");
        if (english.ends_with(")") && open != std::string_view::npos) {
            if (auto named = keys(english.substr(open + 2, english.size() - open - 3))) {
                english = english.substr(0, open);
                keyboard = " (" + *named + ")";
            }
        }
        key = rest.empty() ? keyOf(english) : std::string(first);
    }

    std::string key;
    std::string_view english;
    std::string keyboard;
};

Prepared preparePlain(std::string_view text) {
    const Source source(text);
    return {{}, find(source.key).value_or(std::string(source.english)), source.keyboard};
}

Prepared prepareCounted(std::string_view text) {
    auto forms = cut(text, '|');
    std::string key;
    if (forms.second.find('|') != std::string_view::npos) {
        key = forms.first;
        forms = cut(forms.second, '|');
    } else {
        key = keyOf(forms.second);
    }
    return {find(key + ".one").value_or(std::string(forms.first)),
            find(key + ".other").value_or(std::string(forms.second))};
}

std::string shownText(Text text, std::span<const TextPart> parts) {
    const auto shown = prepared(&Current::plain, text.source, preparePlain);
    return filled(shown->text, parts) + shown->keyboard;
}

} // namespace

TextPart::TextPart(std::u16string_view text) : m_text(storedText(text)) {}

std::string keyOf(std::string_view text) {
    std::string key;
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] == '{') {
            i = std::min(text.find('}', i), text.size());
        } else if (isWordSign(text[i])) {
            std::size_t end = i;
            while (end < text.size() && isWordSign(text[end])) {
                ++end;
            }
            if (!key.empty() && key.size() + (end - i) > kMaxKey) {
                break;
            }
            const char first = text[i];
            key += first >= 'a' && first <= 'z' ? static_cast<char>(first - 'a' + 'A') : first;
            key += text.substr(i + 1, end - i - 1);
            i = end;
            continue;
        }
        ++i;
    }
    return key.substr(0, kMaxKey);
}

std::string trFilled(Text text, const std::vector<std::string>& given) {
    const std::vector<TextPart> parts(given.begin(), given.end());
    return shownText(text, parts);
}

std::string trStored(Text text, TextParts given) {
    return shownText(text, {given.begin(), given.size()});
}

std::string trStored(CountedText text, std::size_t count, TextParts given) {
    const auto shown = prepared(&Current::counted, text.source, prepareCounted);
    std::vector<TextPart> parts{count};
    parts.insert(parts.end(), given.begin(), given.end());
    return filled(isOne(count) ? shown->one : shown->text, parts);
}

std::u16string trWide(Text text, TextParts given) {
    return displayText(trStored(text, given));
}

std::u16string trWide(CountedText text, std::size_t count, TextParts given) {
    return displayText(trStored(text, count, given));
}

std::u16string trLayout(std::string_view area, std::u16string_view text) {
    const std::string stored = storedText(text);
    const Source source(stored);
    std::optional<std::string> found = find(std::string(area) + "." + source.key);
    found = found ? found : find(source.key);
    return displayText((found ? *found : std::string(source.english)) + source.keyboard);
}

std::u16string trKeys(std::u16string_view text) {
    const std::optional<std::string> translated = keys(storedText(text));
    return translated ? displayText(*translated) : std::u16string(text);
}

bool isEnglish() {
    Current& shared = current();
    const std::lock_guard lock(shared.mutex);
    return shared.isEnglish;
}

void setTexts(std::shared_ptr<const Translations> texts) {
    Current& shared = core::current();
    const std::lock_guard lock(shared.mutex);
    const std::string language = texts != nullptr ? lowerCase(texts->spelledLanguage()) : "";
    shared.isEnglish = language.empty() || language == "english";
    shared.countsNone = language == "french";
    shared.plain.clear();
    shared.counted.clear();
    shared.texts = std::move(texts);
}

} // namespace core
