#include "src/TheoraFileDataSource.h"

#include <algorithm>
#include <utility>

#include "src/TheoraException.h"

namespace theora {
namespace {

constexpr const char* kSource = "src\\TheoraDataSource";
constexpr int kOpenLine = 40;
constexpr int kReadLine = 52;

} // namespace

TheoraFileDataSource::TheoraFileDataSource(std::string name, platform::FileSystem& files)
    : m_name(std::move(name)), m_files(files) {}

void TheoraFileDataSource::openIfNeeded() {
    if (m_stream) {
        return;
    }
    int error = 0;
    // Some systems open a folder and fail only on the first read.
    const auto info = m_files.info(m_name);
    if (!info || !info->isFolder) {
        m_stream = m_files.open(m_name, platform::OpenMode::read, error);
    }
    if (!m_stream) {
        throw TheoraGenericException("Can't open video file: " + m_name, kSource, kOpenLine);
    }
    m_size = std::max<std::int64_t>(m_stream->size(), 0);
}

std::size_t TheoraFileDataSource::read(void* buffer, std::size_t count) {
    openIfNeeded();
    const std::size_t got = m_lost ? 0 : m_stream->read(buffer, count);
    if (m_lost || (got < count && m_stream->lastError() != 0)) {
        m_stream.reset(); // reopened by the next access
        m_lost = false;
        throw TheoraGenericException("Can't read video file: " + m_name, kSource, kReadLine);
    }
    return got;
}

void TheoraFileDataSource::seek(std::int64_t offset) {
    openIfNeeded();
    m_lost = !m_stream->seek(offset);
}

std::int64_t TheoraFileDataSource::size() {
    openIfNeeded();
    return m_size;
}

std::int64_t TheoraFileDataSource::tell() const {
    return m_stream ? std::max<std::int64_t>(m_stream->tell(), 0) : 0;
}

} // namespace theora
