#include "toolkit/layout/AttributeText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "toolkit/skin/Palette.h"

namespace toolkit {
namespace {

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

/// Exactly N numbers separated by commas.
template <std::size_t N>
std::optional<std::array<int, N>> parseNumbers(std::u16string_view text) {
    std::array<int, N> numbers{};
    for (std::size_t i = 0; i < N; ++i) {
        const std::size_t comma = text.find(u',');
        const bool last = i + 1 == N;
        if ((comma == std::u16string_view::npos) != last) {
            return std::nullopt;
        }
        const std::optional<int> number = parseInt(text.substr(0, comma));
        if (!number) {
            return std::nullopt;
        }
        numbers[i] = *number;
        text = last ? std::u16string_view() : text.substr(comma + 1);
    }
    return numbers;
}

std::optional<std::uint32_t> hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return static_cast<std::uint32_t>(c - u'0');
    }
    const char16_t lower = static_cast<char16_t>(c | 0x20);
    if (lower >= u'a' && lower <= u'f') {
        return static_cast<std::uint32_t>(lower - u'a' + 10);
    }
    return std::nullopt;
}

} // namespace

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::optional<int> parseInt(std::u16string_view text) {
    text = trimmed(text);
    const bool negative = !text.empty() && text.front() == u'-';
    if (negative || (!text.empty() && text.front() == u'+')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    int value = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        value = std::min(value * 10 + (c - u'0'), kMaxLayoutNumber);
    }
    return negative ? -value : value;
}

std::optional<bool> parseBool(std::u16string_view text) {
    text = trimmed(text);
    if (text == u"true") {
        return true;
    }
    if (text == u"false") {
        return false;
    }
    return std::nullopt;
}

std::optional<platform::Color> parseColor(std::u16string_view text) {
    text = trimmed(text);
    if (text.starts_with(u'#')) {
        text.remove_prefix(1);
    } else if (text.starts_with(u"0x") || text.starts_with(u"0X")) {
        text.remove_prefix(2);
    }
    if (text.size() != 6 && text.size() != 8) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const char16_t c : text) {
        const std::optional<std::uint32_t> digit = hexDigit(c);
        if (!digit) {
            return std::nullopt;
        }
        value = value << 4U | *digit;
    }
    return text.size() == 6 ? value | 0xFF000000U : value;
}

std::optional<SkinColor> parseSkinColor(std::u16string_view text) {
    if (const auto color = parseColor(text)) {
        return *color;
    }
    const auto tone = toneNamed(trimmed(text));
    return tone ? std::optional<SkinColor>(*tone) : std::nullopt;
}

std::optional<platform::Size> parseSize(std::u16string_view text) {
    const auto n = parseNumbers<2>(text);
    return n ? std::optional(platform::Size{(*n)[0], (*n)[1]}) : std::nullopt;
}

std::optional<platform::Rect> parseRect(std::u16string_view text) {
    const auto n = parseNumbers<4>(text);
    return n ? std::optional(platform::Rect{(*n)[0], (*n)[1], (*n)[2], (*n)[3]}) : std::nullopt;
}

std::optional<platform::Rect> parsePlace(std::u16string_view text) {
    const auto n = parseNumbers<4>(text);
    return n ? std::optional(platform::Rect::at((*n)[0], (*n)[1], (*n)[2], (*n)[3])) : std::nullopt;
}

} // namespace toolkit
