#include "platform/win32/WideText.h"

#include <climits>

#include <windows.h>

namespace platform::win32 {

namespace {

/// The longest text that the system's converters count.
int lengthOf(std::size_t size) {
    return size > INT_MAX / 4 ? INT_MAX / 4 : static_cast<int>(size);
}

} // namespace

std::wstring wide(std::string_view utf8) {
    const int length = lengthOf(utf8.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, result.data(), needed);
    return result;
}

std::string narrow(std::wstring_view text) {
    const int length = lengthOf(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), needed, nullptr, nullptr);
    return result;
}

std::wstring toWide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

std::u16string fromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

} // namespace platform::win32
