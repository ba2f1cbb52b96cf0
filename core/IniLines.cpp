#include "core/IniLines.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include <ini.h>

#include "core/StandardError.h"
#include "core/Text.h"

namespace core {
namespace {

struct Source {
    std::string_view rest;
    const std::string& origin;
    const IniEntry& entry;
    int line = 0;
};

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

/// Replaces fgets for the parser: `size` includes the line feed and the terminating zero.
char* feedLine(char* buffer, int size, void* user) {
    Source& source = *static_cast<Source*>(user);
    if (source.rest.empty() || size < 3) {
        return nullptr;
    }
    ++source.line;
    const std::string_view line = takeLine(source.rest);
    const std::string_view kept = cutUtf8(line, static_cast<std::size_t>(size) - 2);
    if (kept.size() < line.size()) {
        try {
            writeStandardError(source.origin + ":" + std::to_string(source.line) +
                               ": line is longer than " + std::to_string(size - 2) +
                               " bytes, its end is ignored");
        } catch (const std::exception&) {
            return nullptr; // no exception may pass through the C library
        }
    }
    char* end = std::copy(kept.begin(), kept.end(), buffer);
    *end++ = '\n';
    *end = '\0';
    return buffer;
}

int takeEntry(void* user, const char* section, const char* name, const char* value) {
    const Source& source = *static_cast<const Source*>(user);
    try {
        source.entry(section, name, value == nullptr ? "" : value);
    } catch (const std::exception&) {
        return 0;
    }
    return 1;
}

} // namespace

void readIniText(std::string_view text, const std::string& origin, const IniEntry& entry) {
    Source source{text, origin, entry};
    ini_parse_stream(feedLine, &source, takeEntry, &source);
}

} // namespace core
