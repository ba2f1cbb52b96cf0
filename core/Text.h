// Conversion between the program's narrow text (UTF-8) and the wide text of windows (UTF-16), and
// from decimal text to integers.
#pragma once

#include <string>
#include <string_view>

namespace core {

/// Strict forms: throw utf8::exception ("Invalid UTF-8", "Invalid UTF-16", ...) on bad input.
[[nodiscard]] std::u16string narrowToWide(std::string_view text);
[[nodiscard]] std::string wideToNarrow(std::u16string_view text);

/// For a window's edge: bad sequences become U+FFFD; never throw.
[[nodiscard]] std::u16string displayText(std::string_view text);
[[nodiscard]] std::string storedText(std::u16string_view text);
/// `text` with every bad sequence replaced by U+FFFD.
[[nodiscard]] std::string validUtf8(std::string_view text);
/// At most `maxBytes` bytes of `text`, cut between UTF-8 sequences.
[[nodiscard]] std::string_view cutUtf8(std::string_view text, std::size_t maxBytes);

/// Decimal, 32-bit; leading white space and a sign accepted, trailing text ignored. Empty: 0. No
/// digits or out of range: 0 and the log line "convertStringToInt: Error ...".
[[nodiscard]] int convertStringToInt(const std::string& text);
[[nodiscard]] int convertStringToInt(const std::u16string& text);

/// ASCII letters only.
[[nodiscard]] std::string lowerCase(std::string_view text);
/// True for "true" in any case.
[[nodiscard]] bool toBool(std::string_view text);

} // namespace core
