#include "core/File.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "core/Log.h"
#include "core/Services.h"

namespace core {
namespace {

/// A hostile file may state any count: beyond this size, no more is allocated than the file holds.
constexpr std::size_t kMaxUncheckedAllocation = std::size_t{16} * 1024 * 1024;
/// What is read at once where reading can be stopped.
constexpr std::size_t kBlockBytes = std::size_t{1024} * 1024;

thread_local StoppableReading* t_reading = nullptr;

std::string withCarriageReturns(const char* bytes, std::size_t count) {
    std::string result;
    result.reserve(count + 16);
    for (std::size_t i = 0; i < count; ++i) {
        if (bytes[i] == '\n') {
            result += '\r';
        }
        result += bytes[i];
    }
    return result;
}

} // namespace

StoppableReading::StoppableReading(std::function<bool()> isStopped)
    : m_isStopped(std::move(isStopped)), m_outer(std::exchange(t_reading, this)) {}

StoppableReading::~StoppableReading() {
    t_reading = m_outer;
}

bool File::open(const std::string& path, const std::string& mode) {
    close();
    const bool writes = mode == "wb" || mode == "wt";
    if (!writes && mode != "rb" && mode != "rt") {
        return false;
    }
    m_textMode = mode == "wt";
    m_error = 0;
    m_stream = services().fileSystem->open(
        path, writes ? platform::OpenMode::write : platform::OpenMode::read, m_error);
    return m_stream != nullptr;
}

bool File::close() {
    if (!m_stream) {
        return true;
    }
    const bool good = m_stream->close();
    m_error = m_stream->lastError();
    m_stream.reset();
    return good;
}

bool File::sync() {
    return isOpen() && m_stream->sync();
}

bool File::isOpen() const {
    if (!m_stream) {
        Log::get()->Error("FILE handle is invalid");
    }
    return m_stream != nullptr;
}

bool File::read(void* buffer, std::size_t count) {
    return isOpen() && readBlocks(buffer, count);
}

bool File::readBlocks(void* buffer, std::size_t count) {
    auto* to = static_cast<std::uint8_t*>(buffer);
    while (t_reading != nullptr && count > 0) {
        const std::size_t now = std::min(count, kBlockBytes);
        if (t_reading->m_isStopped() || m_stream->read(to, now) != now) {
            return false;
        }
        to += now;
        count -= now;
    }
    return count == 0 || m_stream->read(to, count) == count;
}

bool File::readAlloc(std::unique_ptr<std::uint8_t[]>& buffer, std::size_t count) {
    if (!isOpen()) {
        return false;
    }
    if (!buffer) {
        const std::int64_t held = m_stream->size();
        if (count > kMaxUncheckedAllocation &&
            (held < 0 || count > static_cast<std::uint64_t>(held))) {
            return false;
        }
        buffer.reset(new (std::nothrow) std::uint8_t[count]);
    }
    return buffer && readBlocks(buffer.get(), count);
}

bool File::write(const void* buffer, std::size_t count) {
    if (!isOpen()) {
        return false;
    }
    if (!m_textMode) {
        return m_stream->write(buffer, count) == count;
    }
    const std::string text = withCarriageReturns(static_cast<const char*>(buffer), count);
    return m_stream->write(text.data(), text.size()) == text.size();
}

bool File::writeU32(std::uint32_t value) {
    std::array<std::uint8_t, 4> bytes{};
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value & 0xFF);
        value >>= 8;
    }
    return write(bytes.data(), bytes.size());
}

bool File::writeString(const std::string& text) {
    if (!isOpen()) {
        return false;
    }
    if (text.empty()) {
        return true;
    }
    return write(text.data(), text.size()) && (!writeTerminators || write("", 1));
}

std::int64_t File::size() {
    return isOpen() ? m_stream->size() : 0;
}

int File::lastError() const {
    return m_stream ? m_stream->lastError() : m_error;
}

} // namespace core
