#include "platform/win32/WideText.h"

#include <climits>
#include <cstddef>

#include <windows.h>

namespace platform::win32 {

namespace {

/// The longest text that the system's converters count.
int lengthOf(std::size_t size) {
    return size > INT_MAX / 4 ? INT_MAX / 4 : static_cast<int>(size);
}

constexpr bool isSurrogate(wchar_t unit) {
    return (unit & 0xF800U) == 0xD800U;
}

constexpr bool isPair(std::wstring_view text, std::size_t at) {
    return at + 1 < text.size() && (text[at] & 0xFC00U) == 0xD800U &&
           (text[at + 1] & 0xFC00U) == 0xDC00U;
}

/// Where the next surrogate without a partner stands; the text's size when there is none.
std::size_t findLoneSurrogate(std::wstring_view text, std::size_t from) {
    while (from < text.size() && (!isSurrogate(text[from]) || isPair(text, from))) {
        from += isPair(text, from) ? 2 : 1;
    }
    return from;
}

constexpr std::size_t kSurrogateBytes = 3;

/// Where the next surrogate stands that narrow() wrote; the text's size when there is none.
std::size_t findWrittenSurrogate(std::string_view text, std::size_t from) {
    for (; from + kSurrogateBytes <= text.size(); ++from) {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[from + i]); };
        if (byte(0) == 0xED && (byte(1) & 0xE0U) == 0xA0U && (byte(2) & 0xC0U) == 0x80U) {
            return from;
        }
    }
    return text.size();
}

void appendWide(std::wstring& result, std::string_view utf8) {
    const int length = lengthOf(utf8.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
    const std::size_t start = result.size();
    result.resize(start + static_cast<std::size_t>(needed));
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, result.data() + start, needed);
}

void appendNarrow(std::string& result, std::wstring_view text) {
    const int length = lengthOf(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    const std::size_t start = result.size();
    result.resize(start + static_cast<std::size_t>(needed));
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data() + start, needed, nullptr,
                        nullptr);
}

} // namespace

std::wstring wide(std::string_view utf8) {
    std::wstring result;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t lone = findWrittenSurrogate(utf8, at);
        appendWide(result, utf8.substr(at, lone - at));
        if (lone == utf8.size()) {
            break;
        }
        result +=
            static_cast<wchar_t>(0xD000U | (static_cast<unsigned>(utf8[lone + 1]) & 0x3FU) << 6U |
                                 (static_cast<unsigned>(utf8[lone + 2]) & 0x3FU));
        at = lone + kSurrogateBytes;
    }
    return result;
}

std::string narrow(std::wstring_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t lone = findLoneSurrogate(text, at);
        appendNarrow(result, text.substr(at, lone - at));
        if (lone == text.size()) {
            break;
        }
        const unsigned unit = text[lone];
        result += {static_cast<char>(0xED), static_cast<char>(0x80U | (unit >> 6U & 0x3FU)),
                   static_cast<char>(0x80U | (unit & 0x3FU))};
        at = lone + 1;
    }
    return result;
}

std::wstring toWide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

std::u16string fromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

} // namespace platform::win32
