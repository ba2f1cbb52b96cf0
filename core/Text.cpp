#include "core/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <system_error>

#include <utf8.h>

#include "core/Log.h"

namespace core {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr const char* kNoDigits = "invalid stoi argument";
constexpr const char* kOutOfRange = "stoi argument out of range";

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isTrail(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

int conversionError(const char* description) {
    Log::get()->Error("convertStringToInt: Error %s", description);
    return 0;
}

} // namespace

std::u16string narrowToWide(std::string_view text) {
    std::u16string result;
    utf8::utf8to16(text.begin(), text.end(), std::back_inserter(result));
    return result;
}

std::string wideToNarrow(std::u16string_view text) {
    std::string result;
    utf8::utf16to8(text.begin(), text.end(), std::back_inserter(result));
    return result;
}

std::string validUtf8(std::string_view text) {
    std::string result;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(result), kReplacement);
    return result;
}

std::u16string displayText(std::string_view text) {
    // Most names are: lists show thousands.
    const bool isAscii = std::all_of(text.begin(), text.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return isAscii ? std::u16string(text.begin(), text.end()) : narrowToWide(validUtf8(text));
}

std::string storedText(std::u16string_view text) {
    std::u16string paired;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool lead = text[i] >= 0xD800 && text[i] <= 0xDBFF;
        const bool surrogate = text[i] >= 0xD800 && text[i] <= 0xDFFF;
        const bool followed = i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (lead && followed) {
            paired += text.substr(i, 2);
            ++i;
        } else {
            paired += surrogate ? static_cast<char16_t>(kReplacement) : text[i];
        }
    }
    return wideToNarrow(paired);
}

std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    std::size_t end = maxBytes;
    for (int step = 0; step < 3 && end > 0 && isTrail(text[end]); ++step) {
        --end;
    }
    // Four trail bytes in a row are not valid UTF-8: there is nothing to keep together.
    return text.substr(0, isTrail(text[end]) ? maxBytes : end);
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

int convertStringToInt(const std::string& text) {
    if (text.empty()) {
        return 0;
    }
    const char* first = text.data();
    const char* const last = first + text.size();
    while (first != last && isBlank(*first)) {
        ++first;
    }
    if (last - first > 1 && *first == '+' && first[1] != '-') {
        ++first;
    }
    int value = 0;
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (result.ec == std::errc::invalid_argument) {
        return conversionError(kNoDigits);
    }
    if (result.ec == std::errc::result_out_of_range) {
        return conversionError(kOutOfRange);
    }
    return value;
}

int convertStringToInt(const std::u16string& text) {
    std::string narrow;
    for (const char16_t unit : text) {
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?'; // ends a number, like any letter
    }
    return convertStringToInt(narrow);
}

namespace {

/// Latin with its accents, Greek and Cyrillic.
char16_t lowered(char16_t c) {
    struct Range {
        char16_t first;
        char16_t last;
        char16_t distance;
    };
    static constexpr std::array kRanges{
        Range{u'A', u'Z', 32},           Range{u'\u00C0', u'\u00D6', 32},
        Range{u'\u00D8', u'\u00DE', 32}, Range{u'\u0391', u'\u03A9', 32},
        Range{u'\u0410', u'\u042F', 32}, Range{u'\u0400', u'\u040F', 80},
    };
    for (const Range& range : kRanges) {
        if (c >= range.first && c <= range.last) {
            return static_cast<char16_t>(c + range.distance);
        }
    }
    const bool isOddLarge =
        (c >= u'\u0139' && c <= u'\u0148') || (c >= u'\u0179' && c <= u'\u017E');
    if (c == u'\u0178') {
        return u'\u00FF';
    }
    const bool hasNoLarge = c == u'\u0138' || c == u'\u0149';
    if (c >= u'\u0100' && c <= u'\u017E' && !hasNoLarge && (c % 2 != 0) == isOddLarge) {
        return static_cast<char16_t>(c + 1);
    }
    return c;
}

} // namespace

std::u16string foldCase(std::u16string_view text) {
    std::u16string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), lowered);
    return folded;
}

std::string lowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

bool toBool(std::string_view text) {
    return lowerCase(text) == "true";
}

} // namespace core
