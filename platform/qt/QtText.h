// Text between our UTF-16 and Qt's.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace platform::qt {

/// Unpaired surrogates become U+FFFD; the length stays the same.
[[nodiscard]] QString toQt(std::u16string_view text);
[[nodiscard]] std::u16string fromQt(const QString& text);

} // namespace platform::qt
