// Writes a bitmap as a PNG file (8-bit RGB, https://www.w3.org/TR/png/).
#pragma once

#include "platform/Bitmap.h"

#include <string>

namespace screenshots {

/// The picture as it looks on white. False when the file cannot be written; nothing is logged.
[[nodiscard]] bool writePng(const std::string& path, const platform::Bitmap& picture);

} // namespace screenshots
