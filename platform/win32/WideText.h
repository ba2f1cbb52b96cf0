// Text between our UTF-8 and UTF-16 and the system's wide characters, which are UTF-16 as well.
#pragma once

#include <string>
#include <string_view>

namespace platform::win32 {

/// Bad UTF-8 becomes U+FFFD.
[[nodiscard]] std::wstring wide(std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
[[nodiscard]] std::string narrow(std::wstring_view text);
[[nodiscard]] std::wstring toWide(std::u16string_view text);
[[nodiscard]] std::u16string fromWide(std::wstring_view text);

} // namespace platform::win32
