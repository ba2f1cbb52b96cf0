#include "core/UnfinishedFile.h"

#include <exception>
#include <utility>

namespace core {

UnfinishedFile::UnfinishedFile(platform::FileSystem& files, std::string path)
    : m_files(files), m_path(std::move(path)) {}

UnfinishedFile::~UnfinishedFile() {
    if (!m_isWatched) {
        return;
    }
    try {
        int error = 0;
        m_files.removeFile(m_path, error);
    } catch (const std::exception&) {
        return; // out of memory: the file stays
    }
}

std::unique_ptr<platform::FileStream> UnfinishedFile::make(int& error) {
    m_files.removeFile(m_path, error);
    std::unique_ptr<platform::FileStream> stream =
        m_files.open(m_path, platform::OpenMode::write, error);
    m_isWatched = stream != nullptr;
    return stream;
}

} // namespace core
