// Replaces the log during one test, without a file, and returns its errors.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Log.h"

namespace support {

class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// All messages at error level so far.
    [[nodiscard]] std::vector<std::string> errors() const;
    /// Those since the last call; forgets them.
    [[nodiscard]] std::vector<std::string> newErrors();
    [[nodiscard]] std::string page() const { return m_log->page(); }
    /// How often the page holds a text.
    [[nodiscard]] std::size_t count(std::string_view text) const;

private:
    std::shared_ptr<core::Log> m_log;
    std::shared_ptr<core::Log> m_previous;
};

} // namespace support
