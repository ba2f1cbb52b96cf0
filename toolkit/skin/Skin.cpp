#include "toolkit/skin/Skin.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/FileSystem.h"

namespace toolkit {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<Bytes> readFile(const std::string& path, std::size_t limit) {
    platform::FileSystem& files = *core::services().fileSystem;
    const auto info = files.info(path);
    if (!info || info->isFolder || info->size > limit) {
        return std::nullopt;
    }
    int error = 0;
    const auto stream = files.open(path, platform::OpenMode::read, error);
    if (stream == nullptr) {
        return std::nullopt;
    }
    Bytes bytes(static_cast<std::size_t>(info->size));
    if (stream->read(bytes.data(), bytes.size()) != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

/// Relative and without "..": only the skin's own files.
bool staysInside(const std::string& file) {
    if (file.empty() || file.front() == '/' || file.find('\\') != std::string::npos ||
        file.find(':') != std::string::npos || file.find('\0') != std::string::npos) {
        return false;
    }
    for (std::size_t begin = 0; begin <= file.size();) {
        const std::size_t end = std::min(file.find('/', begin), file.size());
        if (file.compare(begin, end - begin, "..") == 0) {
            return false;
        }
        begin = end + 1;
    }
    return true;
}

} // namespace

std::shared_ptr<const Skin> Skin::open(const std::string& folder) {
    static std::map<std::string, std::weak_ptr<const Skin>> opened;
    std::string bare = folder;
    while (bare.size() > 1 && (bare.back() == '/' || bare.back() == '\\')) {
        bare.pop_back();
    }
    platform::FileSystem& files = *core::services().fileSystem;
    std::string path = files.fullPath(bare);
    if (path.empty()) {
        path = bare;
    }
    const auto info = files.info(path);
    const bool isFolder = info && info->isFolder;
    const std::string identity = isFolder ? path + '/' : path + ".zip";
    if (auto known = opened[identity].lock()) {
        return known;
    }
    std::shared_ptr<Skin> skin(new Skin);
    skin->m_folder = bare + '/';
    skin->m_identity = identity;
    if (!isFolder) {
        if (auto bytes = readFile(identity, kMaxZipBytes)) {
            skin->m_zip = ZipArchive::open(std::move(*bytes));
        }
    }
    skin->m_canBeDark = skin->has("Dark/Icons.txt");
    opened[identity] = skin;
    return skin;
}

std::optional<Bytes> Skin::read(const std::string& file) const {
    if (!staysInside(file)) {
        return std::nullopt;
    }
    if (m_zip) {
        return m_zip->read(file);
    }
    if (m_identity.back() != '/') {
        return std::nullopt; // neither folder nor archive
    }
    return readFile(m_identity + file, kMaxFileBytes);
}

bool Skin::has(const std::string& file) const {
    return m_zip ? m_zip->contains(file)
                 : m_identity.back() == '/' && core::isFile(m_identity + file);
}

std::string Skin::darkFile(const std::string& file) const {
    std::string dark = "Dark/" + file;
    return m_canBeDark && has(dark) ? dark : file;
}

std::string Skin::describe(const std::string& file) const {
    return m_folder + file;
}

} // namespace toolkit
