// Hands a text to the INI parser line by line. The parser's own reader takes the rest of an
// over-long line for another line; here the line is cut instead and reported to stderr.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace core {

/// Called for each "key = text" with the section's name. Must not keep the views.
using IniEntry =
    std::function<void(std::string_view section, std::string_view key, std::string_view text)>;

/// The parser skips a leading UTF-8 byte order mark; a line that is no INI is passed over. `origin`
/// names the text in reports. Format: https://github.com/benhoyt/inih
void readIniText(std::string_view text, const std::string& origin, const IniEntry& entry);

} // namespace core
