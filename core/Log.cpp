#include "core/Log.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <utility>

#include "core/File.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "core/Text.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Immortal.h"

namespace core {
namespace {

constexpr const char* kPageName = "Log.html";
constexpr std::size_t kMaxMessageBytes = 8191;
/// A hostile file can cause a message for every few of its bytes.
constexpr std::size_t kMaxPageBytes = std::size_t{64} * 1024 * 1024;

std::string formatMessage(const char* format, std::va_list arguments) {
    // One byte more than a message may have shows whether the cut would split a sequence.
    std::array<char, kMaxMessageBytes + 2> buffer{};
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    if (length < 0) {
        return {};
    }
    return std::string(cutUtf8(buffer.data(), kMaxMessageBytes));
}

const char* opening(Log::Level level) {
    switch (level) {
    case Log::Level::warning:
        return "<FONT COLOR=#FFFF00>Warning: ";
    case Log::Level::error:
        return "<FONT COLOR=#FF0000>Error: ";
    case Log::Level::information:
        break;
    }
    return "<FONT COLOR=#00FF00>";
}

void writePage(const std::string& path, const std::vector<std::string>& pieces) {
    File file;
    if (!file.open(path, "wt")) {
        return;
    }
    for (const std::string& piece : pieces) {
        if (!file.writeString(piece)) {
            break;
        }
    }
    file.close();
}

thread_local LogCollector* t_collector = nullptr;

} // namespace

LogCollector::LogCollector() : m_outer(std::exchange(t_collector, this)) {}

LogCollector::~LogCollector() {
    t_collector = m_outer;
}

struct Log::Holder {
    std::shared_ptr<Log> log;
    bool ended = false;
    bool standardErrorOnly = false;
};

Log::Holder& Log::holder() {
    static platform::Immortal<Holder> instance;
    return instance.value;
}

std::shared_ptr<Log> Log::get() {
    Holder& place = holder();
    if (!place.log && (place.ended || place.standardErrorOnly)) {
        place.log = std::shared_ptr<Log>(new Log(StandardErrorOnly{}));
    } else if (!place.log) {
        static const int registered = std::atexit([] { release(); });
        (void)registered; // if that fails, the page is written only by release()
        place.log = std::make_shared<Log>();
    }
    return place.log;
}

void Log::release() {
    Holder& place = holder();
    // Detach it first: messages logged by its destructor must not find it here.
    const std::shared_ptr<Log> last = std::move(place.log);
    place.log.reset();
    place.ended = true;
}

std::shared_ptr<Log> Log::exchange(std::shared_ptr<Log> log) {
    Holder& place = holder();
    place.ended = false;
    return std::exchange(place.log, std::move(log));
}

void Log::useStandardErrorOnly() {
    holder().standardErrorOnly = true;
}

Log::Log() : Log(currentDirectory() + kPageName) {}

Log::Log(const std::string& pagePath) : m_pagePath(pagePath) {
    int error = 0;
    if (!m_pagePath.empty()) {
        services().fileSystem->removeFile(m_pagePath, error);
    }
    m_pieces = {"<HTML><HEAD><TITLE>", "Log Output", "</TITLE></HEAD><BODY BGCOLOR=#00001F>"};
    Write(Level::information, "Logging started");
}

Log::Log(StandardErrorOnly) : m_keepsPage(false) {}

Log::~Log() {
    if (!m_keepsPage) {
        return;
    }
    try {
        append(Level::information, "Logging ended");
        m_pieces.emplace_back("</BODY></HTML>\n");
        if (!m_pagePath.empty()) {
            writePage(m_pagePath, m_pieces);
        }
    } catch (const std::exception&) {
        writeStandardError("The log could not be written.");
    }
}

void Log::Error(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = formatMessage(format, arguments);
    va_end(arguments);
    append(Level::error, message);
}

void Log::Write(Level level, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string message = formatMessage(format, arguments);
    va_end(arguments);
    append(level, message);
}

void Log::append(Level level, const std::string& message) {
    if (t_collector != nullptr) {
        t_collector->m_first = t_collector->m_first.empty() ? message : t_collector->m_first;
        return;
    }
    if (level == Level::error) {
        writeStandardError("Error: " + message);
    }
    if (!m_keepsPage || (m_pageBytes > kMaxPageBytes && level != Level::information)) {
        return;
    }
    m_pieces.push_back("<FONT COLOR=#FFFFFF>[" + services().clock->localTimeText() + "]</FONT> " +
                       opening(level) + message + "</FONT><BR>");
    m_pageBytes += m_pieces.back().size();
}

std::string Log::page() const {
    std::string result;
    for (const std::string& piece : m_pieces) {
        result += piece;
    }
    return result;
}

} // namespace core
