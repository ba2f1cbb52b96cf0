// Writes a picture of a window as a PNG file. Format: https://www.w3.org/TR/png/
#pragma once

#include <string>

#include "platform/Bitmap.h"

namespace tour {

/// 8-bit RGB; alpha is dropped. Throws std::runtime_error when the file cannot be written.
void writePng(const platform::Bitmap& picture, const std::string& path);

} // namespace tour
