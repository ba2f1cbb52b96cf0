// The texts that the program shows. Each stands in the code (or a layout) in English, marked as
// such, and is looked up in the catalogue "Translations.ini" when it is shown:
//
//   tr("Following \"{0}\": frame {1} of {2}"_tr, zone, frame, last)
//   tr("{0} frame|{0} frames"_trn, count)
//
// The key in the catalogue is made of the text's words (keyOf); a text that needs one of its own
// has it in front: "Month.May|May"_tr. What a language lacks is shown in English. tools/texts
// collects the texts and checks the catalogue. Any thread.
#pragma once

#include <concepts> // IWYU pragma: keep
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace core {

class Translations;

/// One text in English. Places for what is put in are "{0}" to "{9}".
struct Text {
    std::string_view source{}; ///< "text" or "Key|text"; lives as long as the program
    [[nodiscard]] constexpr bool empty() const { return source.empty(); }
};

/// A text that names a number, which is its place "{0}".
struct CountedText {
    std::string_view source{}; ///< "one|other" or "Key|one|other"
};

/// What is put into a place.
class TextPart {
public:
    TextPart(std::string_view text) : m_text(text) {}
    TextPart(const std::string& text) : m_text(text) {}
    TextPart(const char* text) : m_text(text) {}
    TextPart(std::u16string_view text);
    TextPart(const char16_t* text) : TextPart(std::u16string_view(text)) {}
    TextPart(const std::u16string& text) : TextPart(std::u16string_view(text)) {}
    template <std::integral Number>
    TextPart(Number number) : m_text(std::to_string(number)) {}

    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

using TextParts = std::initializer_list<TextPart>;

/// In the chosen language, as UTF-8. Places without a part are left out.
[[nodiscard]] std::string trStored(Text text, TextParts parts = {});
[[nodiscard]] std::string trFilled(Text text, const std::vector<std::string>& parts);
/// `parts` go into "{1}" and on.
[[nodiscard]] std::string trStored(CountedText text, std::size_t count, TextParts parts = {});

/// The same for windows.
[[nodiscard]] std::u16string trWide(Text text, TextParts parts);
[[nodiscard]] std::u16string trWide(CountedText text, std::size_t count, TextParts parts);
template <class... Parts>
[[nodiscard]] std::u16string tr(Text text, const Parts&... parts) {
    return trWide(text, {TextPart(parts)...});
}
template <class... Parts>
[[nodiscard]] std::u16string tr(CountedText text, std::size_t count, const Parts&... parts) {
    return trWide(text, count, {TextPart(parts)...});
}

/// A text of a layout. A key "`area`.Key" in the catalogue stands before "Key". Keys at its end in
/// brackets are translated apart: "Redo (Ctrl+Y)".
[[nodiscard]] std::u16string trLayout(std::string_view area, std::u16string_view text);
/// "Ctrl+Shift+Left" as the chosen language names the keys.
[[nodiscard]] std::u16string trKeys(std::u16string_view keys);

/// The words of `text` (ASCII letters and digits), each with a capital, of at most 30 characters;
/// what stands in braces does not count.
[[nodiscard]] std::string keyOf(std::string_view text);

/// What all texts are looked up in from now on; null: English as it stands in the code.
void setTexts(std::shared_ptr<const Translations> texts);
/// Whether that is English, as it is for a language without any text.
[[nodiscard]] bool isEnglish();

} // namespace core

constexpr core::Text operator""_tr(const char* text, std::size_t size) {
    return {{text, size}};
}
constexpr core::CountedText operator""_trn(const char* text, std::size_t size) {
    return {{text, size}};
}
