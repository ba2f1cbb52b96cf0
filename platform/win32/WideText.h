// Text between our UTF-8 and UTF-16 and the system's wide characters, which are UTF-16 as well, but
// for names that the system took unchecked: an unpaired surrogate in one is kept as the three bytes
// of its number (https://simonsapin.github.io/wtf-8/), so that the file is found again.
#pragma once

#include <string>
#include <string_view>

namespace platform::win32 {

/// Bad UTF-8 that narrow() never writes becomes U+FFFD.
[[nodiscard]] std::wstring wide(std::string_view utf8);
[[nodiscard]] std::string narrow(std::wstring_view text);
[[nodiscard]] std::wstring toWide(std::u16string_view text);
[[nodiscard]] std::u16string fromWide(std::wstring_view text);

} // namespace platform::win32
