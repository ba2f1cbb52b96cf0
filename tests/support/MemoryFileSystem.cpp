#include "tests/support/MemoryFileSystem.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace support {
namespace {

class MemoryStream final : public platform::FileStream {
public:
    explicit MemoryStream(std::string& bytes) : m_bytes(bytes) {}

    std::size_t read(void* buffer, std::size_t count) override {
        const bool any = m_open && m_position < m_bytes.size();
        const std::size_t done =
            any ? m_bytes.copy(static_cast<char*>(buffer), count, m_position) : 0;
        m_position += done;
        return done;
    }
    std::size_t write(const void* buffer, std::size_t count) override {
        if (!m_open || count == 0) {
            return 0;
        }
        m_bytes.resize(std::max(m_bytes.size(), m_position + count));
        m_bytes.replace(m_position, count, static_cast<const char*>(buffer), count);
        m_position += count;
        return count;
    }
    bool seek(std::int64_t /*position*/) override { return false; } // not needed
    std::int64_t tell() const override {
        return m_open ? static_cast<std::int64_t>(m_position) : -1;
    }
    std::int64_t size() const override {
        return m_open ? static_cast<std::int64_t>(m_bytes.size()) : -1;
    }
    bool sync() override { return m_open; }
    bool close() override { return std::exchange(m_open, false); }
    int lastError() const override { return 0; }

private:
    std::string& m_bytes;
    std::size_t m_position = 0;
    bool m_open = true;
};

class MemoryLock final : public platform::FileLock {
public:
    MemoryLock(MemoryFileSystem& files, std::string path)
        : m_files(files), m_path(std::move(path)) {}

    bool isIntact() const override { return m_files.files.contains(m_path); }
    void remove() override { m_files.files.erase(m_path); }

private:
    MemoryFileSystem& m_files;
    std::string m_path;
};

std::string parentOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

} // namespace

std::string MemoryFileSystem::fullPath(const std::string& path) {
    std::string text = path;
    std::replace(text.begin(), text.end(), '\\', '/');
    if (text.empty() || text.front() != '/') {
        text = currentFolder() + "/" + text;
    }
    std::string result;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('/', start), text.size());
        const std::string piece = text.substr(start, end - start);
        if (piece == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
        } else if (!piece.empty() && piece != ".") {
            result += "/" + piece;
        }
        start = end + 1;
    }
    return result.empty() ? "/" : result;
}

std::unique_ptr<platform::FileStream> MemoryFileSystem::open(const std::string& path,
                                                             platform::OpenMode mode, int& error) {
    const std::string full = fullPath(path);
    const bool creates = mode == platform::OpenMode::write;
    const bool reachable = creates ? folders.contains(parentOf(full)) : files.contains(full);
    error = folders.contains(full) ? kIsFolder : reachable ? 0 : kNotFound;
    if (error != 0) {
        return nullptr;
    }
    std::string& bytes = files[full];
    if (creates) {
        bytes.clear();
    }
    return std::make_unique<MemoryStream>(bytes);
}

std::optional<platform::FileInfo> MemoryFileSystem::info(const std::string& path) {
    const std::string full = fullPath(path);
    platform::FileInfo result;
    result.file = std::hash<std::string>{}(full);
    result.isFolder = folders.contains(full);
    const auto file = files.find(full);
    if (!result.isFolder && file == files.end()) {
        return std::nullopt;
    }
    result.size = result.isFolder ? 0 : file->second.size();
    return result;
}

bool MemoryFileSystem::createFolder(const std::string& path, int& error) {
    const std::string full = fullPath(path);
    const bool taken = folders.contains(full) || files.contains(full);
    error = taken ? kExists : !folders.contains(parentOf(full)) ? kNotFound : 0;
    if (error == 0) {
        folders.insert(full);
    }
    return error == 0;
}

bool MemoryFileSystem::removeFolder(const std::string& path, int& error) {
    std::vector<platform::FolderEntry> entries;
    const bool removed = list(path, entries) && entries.empty();
    error = removed ? 0 : kNotFound;
    if (removed) {
        folders.erase(fullPath(path));
    }
    return removed;
}

std::unique_ptr<platform::FileLock> MemoryFileSystem::lockFile(const std::string& path,
                                                               int& error) {
    const auto stream = open(path, platform::OpenMode::write, error);
    return stream ? std::make_unique<MemoryLock>(*this, fullPath(path)) : nullptr;
}

bool MemoryFileSystem::list(const std::string& folder,
                            std::vector<platform::FolderEntry>& entries) {
    const std::string full = fullPath(folder);
    entries.clear();
    for (const std::string& path : folders) {
        if (path != "/" && parentOf(path) == full) {
            entries.push_back({path.substr(path.rfind('/') + 1), true});
        }
    }
    for (const auto& [path, bytes] : files) {
        if (parentOf(path) == full) {
            entries.push_back({path.substr(path.rfind('/') + 1), false});
        }
    }
    return folders.contains(full);
}

bool MemoryFileSystem::removeFile(const std::string& path, int& error) {
    const bool removed = files.erase(fullPath(path)) == 1;
    error = removed ? 0 : kNotFound;
    return removed;
}

bool MemoryFileSystem::replaceFile(const std::string& from, const std::string& to, int& error) {
    const auto source = files.find(fullPath(from));
    const std::string target = fullPath(to);
    error = source == files.end() ? kNotFound : folders.contains(target) ? kIsFolder : 0;
    if (error != 0) {
        return false;
    }
    std::string bytes = std::move(source->second);
    files.erase(source);
    files[target] = std::move(bytes);
    return true;
}

} // namespace support
