// Feeds a text to the INI parser line by line. The parser's own reader would treat the rest of an
// overlong line as another line; here the line is cut and reported on stderr.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace core {

/// Called for each "key = text" with the section's name. Must not keep the views.
using IniEntry =
    std::function<void(std::string_view section, std::string_view key, std::string_view text)>;

/// Skips a leading UTF-8 byte order mark and lines that are not valid INI. `origin` names the text
/// in reports. Format: https://github.com/benhoyt/inih
void readIniText(std::string_view text, const std::string& origin, const IniEntry& entry);

} // namespace core
