#include "tools/inspect/Json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

#include "core/Text.h"

namespace inspect {
namespace {

std::string escaped(char c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    switch (c) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F) {
        return {c};
    }
    return {'\\', 'u', '0', '0', kDigits[code >> 4], kDigits[code & 0xF]};
}

} // namespace

void Json::separate() {
    if (m_needsComma) {
        m_out << ',';
    }
    m_needsComma = true;
}

Json& Json::open(char bracket) {
    separate();
    m_out << bracket;
    m_needsComma = false;
    return *this;
}

Json& Json::close(char bracket) {
    m_out << bracket;
    m_needsComma = true;
    return *this;
}

void Json::quote(std::string_view text) {
    m_out << '"';
    for (const char c : core::validUtf8(text)) {
        m_out << escaped(c);
    }
    m_out << '"';
}

Json& Json::key(std::string_view name) {
    separate();
    quote(name);
    m_out << ':';
    m_needsComma = false;
    return *this;
}

Json& Json::value(std::string_view text) {
    separate();
    quote(text);
    return *this;
}

Json& Json::value(bool truth) {
    separate();
    m_out << (truth ? "true" : "false");
    return *this;
}

Json& Json::value(std::int64_t number) {
    separate();
    m_out << std::to_string(number); // without the stream's digit grouping
    return *this;
}

Json& Json::value(double number) {
    separate();
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    if (std::isfinite(number)) {
        m_out << std::string_view(text.data(), static_cast<std::size_t>(end - text.data()));
    } else {
        m_out << "null";
    }
    return *this;
}

} // namespace inspect
