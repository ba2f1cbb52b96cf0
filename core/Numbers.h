// Numbers in texts that anybody may have written.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace core {

/// The number that all of `text` is: its digits, after "-" for one below 0. None for any other text
/// and for a number out of range. `base`: of a whole number, 10 unless it is given. Any thread.
template <typename Number, typename... Base>
[[nodiscard]] std::optional<Number> parseNumber(std::string_view text, Base... base) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base...);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace core
