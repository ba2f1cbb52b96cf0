#include "tests/support/LogCapture.h"

namespace support {

LogCapture::LogCapture()
    : m_log(std::make_shared<core::Log>("")), m_previous(core::Log::exchange(m_log)) {}

LogCapture::~LogCapture() {
    core::Log::exchange(m_previous);
}

std::vector<std::string> LogCapture::errors() const {
    const std::string opening = "<FONT COLOR=#FF0000>Error: ";
    const std::string closing = "</FONT><BR>";
    std::vector<std::string> messages;
    const std::string text = page();
    for (std::size_t at = text.find(opening); at != std::string::npos;
         at = text.find(opening, at)) {
        at += opening.size();
        messages.push_back(text.substr(at, text.find(closing, at) - at));
    }
    return messages;
}

std::size_t LogCapture::count(std::string_view text) const {
    const std::string all = page();
    std::size_t count = 0;
    for (std::size_t at = 0; (at = all.find(text, at)) != std::string::npos; ++at) {
        ++count;
    }
    return count;
}

std::vector<std::string> LogCapture::newErrors() {
    std::vector<std::string> fresh = errors();
    if (!fresh.empty()) {
        m_log = std::make_shared<core::Log>("");
        core::Log::exchange(m_log);
    }
    return fresh;
}

} // namespace support
