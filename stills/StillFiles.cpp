#include "stills/StillFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Paths.h"
#include "core/WholeFile.h"
#include "platform/Bitmap.h"

namespace stills {
namespace {

using platform::OpenMode;
using platform::Size;

/// Every file is: the header, the clip's path, the pixels as B, G, R.
struct Header {
    std::array<char, 8> magic{'Q', 'S', 't', 'i', 'l', 'l', '0', '1'};
    std::uint64_t checksum = 0; ///< of all that follows
    std::uint64_t bytes = 0;
    std::int64_t modified = 0;
    double seconds = -1;
    std::int32_t frameWidth = 0;
    std::int32_t frameHeight = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint64_t pathBytes = 0;
};
static_assert(sizeof(Header) == 64);

constexpr std::size_t kChecked = offsetof(Header, bytes);
constexpr std::string_view kSuffix = ".still";
constexpr std::size_t kDigits = 16;
constexpr std::size_t kColors = 3;
constexpr std::size_t kMaxPathBytes = 1U << 16U;
constexpr std::size_t kMaxFileBytes =
    sizeof(Header) + kMaxPathBytes +
    std::size_t{kLargestBox.width} * std::size_t{kLargestBox.height} * kColors;

/// FNV-1a.
std::uint64_t hashOf(std::string_view bytes) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return hash;
}

std::string hexOf(std::uint64_t number) {
    std::string text(kDigits, '0');
    for (std::size_t i = 0; i < kDigits; ++i) {
        text[kDigits - 1 - i] = "0123456789abcdef"[number >> (4 * i) & 0xFU];
    }
    return text;
}

bool isOurs(const std::string& name) {
    return name.size() == kDigits + kSuffix.size() && name.ends_with(kSuffix) &&
           name.find_first_not_of("0123456789abcdef") == kDigits;
}

std::string bytesOf(const std::string& path, const Still& still) {
    Header header;
    header.bytes = still.bytes;
    header.modified = still.modified;
    header.seconds = still.seconds;
    header.frameWidth = still.frame.width;
    header.frameHeight = still.frame.height;
    header.width = still.picture.size().width;
    header.height = still.picture.size().height;
    header.pathBytes = path.size();
    std::string bytes(sizeof header, '\0');
    bytes += path;
    for (int y = 0; y < header.height; ++y) {
        for (int x = 0; x < header.width; ++x) {
            const std::uint32_t pixel = still.picture.at(x, y);
            for (unsigned shift = 0; shift < 8 * kColors; shift += 8) {
                bytes += static_cast<char>(pixel >> shift & 0xFFU);
            }
        }
    }
    std::memcpy(bytes.data(), &header, sizeof header);
    header.checksum = hashOf(std::string_view(bytes).substr(kChecked));
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

platform::Bitmap pictureFrom(std::string_view pixels, Size size) {
    platform::Bitmap picture(size);
    auto at = pixels.begin();
    for (int y = 0; y < size.height; ++y) {
        std::uint32_t* row = picture.row(y);
        for (int x = 0; x < size.width; ++x) {
            row[x] = 0xFF000000U;
            for (unsigned shift = 0; shift < 8 * kColors; shift += 8) {
                row[x] |= std::uint32_t{static_cast<unsigned char>(*at++)} << shift;
            }
        }
    }
    return picture;
}

/// Of a file that holds just what write() would write for this path, size and time.
bool parse(std::string_view bytes, const std::string& path, Still& still) {
    Header header;
    if (bytes.size() < sizeof header) {
        return false;
    }
    std::memcpy(&header, bytes.data(), sizeof header);
    const std::string_view rest = bytes.substr(sizeof header);
    const bool isSame = header.magic == Header().magic && header.bytes == still.bytes &&
                        header.modified == still.modified && rest.starts_with(path) &&
                        header.pathBytes == path.size() &&
                        header.checksum == hashOf(bytes.substr(kChecked));
    const bool isSized = header.width >= 1 && header.width <= kLargestBox.width &&
                         header.height >= 1 && header.height <= kLargestBox.height &&
                         header.frameWidth >= 1 && header.frameHeight >= 1 &&
                         std::isfinite(header.seconds);
    if (!isSame || !isSized) {
        return false;
    }
    const Size size{header.width, header.height};
    const std::string_view pixels = rest.substr(path.size());
    if (pixels.size() !=
        static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * kColors) {
        return false;
    }
    still.picture = pictureFrom(pixels, size);
    still.frame = {header.frameWidth, header.frameHeight};
    still.seconds = header.seconds;
    return true;
}

} // namespace

StillFiles::StillFiles(platform::FileSystem& files, std::string folder, std::uint64_t maxBytes)
    : m_files(files), m_folder(std::move(folder)), m_maxBytes(maxBytes), m_written(maxBytes) {}

std::string StillFiles::fileOf(const std::string& path) const {
    return m_folder + hexOf(hashOf(path)) + std::string(kSuffix);
}

bool StillFiles::read(const std::string& path, Still& still) {
    if (m_folder.empty()) {
        return false;
    }
    int error = 0;
    const auto stream = m_files.open(fileOf(path), OpenMode::read, error);
    if (!stream || stream->size() < 0 ||
        static_cast<std::uint64_t>(stream->size()) > kMaxFileBytes) {
        return false;
    }
    std::string bytes(static_cast<std::size_t>(stream->size()), '\0');
    return stream->read(bytes.data(), bytes.size()) == bytes.size() && parse(bytes, path, still);
}

void StillFiles::write(const std::string& path, const Still& still) {
    if (m_folder.empty() || path.size() > kMaxPathBytes) {
        return;
    }
    const std::string bytes = bytesOf(path, still);
    m_written += bytes.size();
    if (m_written > m_maxBytes / 8) {
        removeOldest();
    }
    core::createFolders(m_files, m_folder);
    core::replaceWholeFile(m_files, fileOf(path), bytes);
}

void StillFiles::removeOldest() {
    m_written = 0;
    std::vector<platform::FolderEntry> entries;
    if (!m_files.list(m_folder, entries)) {
        return;
    }
    struct Kept {
        std::int64_t modified;
        std::uint64_t size;
        std::string path;
    };
    std::vector<Kept> kept;
    std::uint64_t total = 0;
    for (const platform::FolderEntry& entry : entries) {
        const auto info = isOurs(entry.name) ? m_files.info(m_folder + entry.name) : std::nullopt;
        if (info && !info->isFolder) {
            kept.push_back({info->modified, info->size, m_folder + entry.name});
            total += info->size;
        }
    }
    std::sort(kept.begin(), kept.end(),
              [](const Kept& a, const Kept& b) { return a.modified < b.modified; });
    for (const Kept& oldest : kept) {
        if (total <= m_maxBytes - m_maxBytes / 4) {
            return;
        }
        int error = 0;
        m_files.removeFile(oldest.path, error);
        total -= oldest.size;
    }
}

} // namespace stills
