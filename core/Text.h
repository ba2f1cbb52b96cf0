// Conversion between the program's narrow text (UTF-8) and the wide text of windows (UTF-16), and
// from decimal text to integers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace core {

/// Strict forms: throw utf8::exception ("Invalid UTF-8", "Invalid UTF-16", ...) on bad input.
[[nodiscard]] std::u16string narrowToWide(std::string_view text);
[[nodiscard]] std::string wideToNarrow(std::u16string_view text);

/// For texts shown in windows and typed there: bad sequences become U+FFFD; never throw.
[[nodiscard]] std::u16string displayText(std::string_view text);
[[nodiscard]] std::string storedText(std::u16string_view text);
/// `text` with every bad sequence replaced by U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view text);
/// At most `maxBytes` bytes of `text`, cut between UTF-8 sequences.
[[nodiscard]] std::string_view cutUtf8(std::string_view text, std::size_t maxBytes);

/// Without the blanks at both ends: spaces, tabs and carriage returns.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Decimal, 32-bit; accepts leading white space and a sign, ignores trailing text. 0 if empty; 0
/// and the log line "convertStringToInt: Error ..." if there are no digits or the number is out of
/// range.
[[nodiscard]] int convertStringToInt(const std::string& text);
[[nodiscard]] int convertStringToInt(const std::u16string& text);

/// For finding: small letters in place of the capital ones of Latin, Greek and Cyrillic.
[[nodiscard]] std::u16string foldCase(std::u16string_view text);

/// Changes ASCII letters only.
[[nodiscard]] std::string lowerCase(std::string_view text);
/// Whether it is an ASCII control character, DEL included.
[[nodiscard]] constexpr bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}
/// Whether it is "true", ignoring case.
[[nodiscard]] bool toBool(std::string_view text);

} // namespace core
