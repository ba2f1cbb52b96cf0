// The language "Pseudo": every text of the English catalogue between signs that no text has, and
// two fifths longer. What a text's places are filled with stands outside of its signs. What a
// window shows there has not been looked up.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/Translations.h"

namespace support {

/// The texts of the catalogue at `path` in `language`, which may be the pseudo language. Needs a
/// working directory that it may write to.
[[nodiscard]] std::shared_ptr<core::Translations> textsIn(const std::string& language,
                                                          const std::string& path);
/// What stands outside of the signs in `text`, of which a layout may have cut the end.
[[nodiscard]] std::u16string notTranslated(std::u16string_view text);

} // namespace support
