#include "toolkit/skin/ZipArchive.h"

#include <array>

#include <zlib.h>

namespace toolkit {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kLocalHeader = 0x04034B50;
constexpr std::uint32_t kDirectoryHeader = 0x02014B50;
constexpr std::uint32_t kDirectoryEnd = 0x06054B50;
constexpr std::size_t kLocalHeaderSize = 30;
constexpr std::size_t kDirectoryHeaderSize = 46;
constexpr std::size_t kDirectoryEndSize = 22;
constexpr std::size_t kMaxComment = 0xFFFF;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kEncrypted = 1;

/// Little-endian numbers; the caller has checked that they lie inside.
std::uint16_t u16(const Bytes& bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8U);
}

std::uint32_t u32(const Bytes& bytes, std::size_t at) {
    return u16(bytes, at) | static_cast<std::uint32_t>(u16(bytes, at + 2)) << 16U;
}

bool inside(const Bytes& bytes, std::size_t at, std::size_t count) {
    return at <= bytes.size() && count <= bytes.size() - at;
}

/// Ends the decompressor on every path.
class Inflater {
public:
    Inflater() { m_ready = inflateInit2(&m_stream, -MAX_WBITS) == Z_OK; }
    ~Inflater() {
        if (m_ready) {
            inflateEnd(&m_stream);
        }
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Raw deflate data that gives exactly `size` bytes; empty otherwise. Never takes more memory
    /// than that, whatever the data claims.
    std::optional<Bytes> run(const std::uint8_t* packed, std::size_t packedSize, std::size_t size) {
        if (!m_ready) {
            return std::nullopt;
        }
        Bytes bytes(size);
        std::array<Bytef, 1> tooMuch{};
        // zlib declares its input without const and does not change it.
        m_stream.next_in = const_cast<Bytef*>(packed);
        m_stream.avail_in = static_cast<uInt>(packedSize);
        m_stream.next_out = size > 0 ? bytes.data() : tooMuch.data();
        m_stream.avail_out = static_cast<uInt>(size);
        int result = inflate(&m_stream, Z_FINISH);
        if (result == Z_BUF_ERROR && m_stream.avail_out == 0) {
            m_stream.next_out = tooMuch.data();
            m_stream.avail_out = 1;
            result = inflate(&m_stream, Z_FINISH);
        }
        const bool good = result == Z_STREAM_END && m_stream.total_out == size;
        return good ? std::optional(std::move(bytes)) : std::nullopt;
    }

private:
    z_stream m_stream{};
    bool m_ready = false;
};

} // namespace

std::optional<ZipArchive> ZipArchive::open(std::vector<std::uint8_t> bytes) {
    ZipArchive archive(std::move(bytes));
    return archive.readDirectory() ? std::optional(std::move(archive)) : std::nullopt;
}

bool ZipArchive::readDirectory() {
    if (m_bytes.size() < kDirectoryEndSize) {
        return false;
    }
    // The end record stands before a comment of unknown length: search it from the back.
    const std::size_t last = m_bytes.size() - kDirectoryEndSize;
    const std::size_t first = last > kMaxComment ? last - kMaxComment : 0;
    for (std::size_t at = last + 1; at-- > first;) {
        if (u32(m_bytes, at) != kDirectoryEnd ||
            u16(m_bytes, at + 20) != m_bytes.size() - at - kDirectoryEndSize) {
            continue;
        }
        const std::size_t count = u16(m_bytes, at + 10);
        const std::size_t size = u32(m_bytes, at + 12);
        std::size_t offset = u32(m_bytes, at + 16);
        const bool oneDisk = u16(m_bytes, at + 4) == 0 && u16(m_bytes, at + 6) == 0;
        if (!oneDisk || count > kMaxEntries || offset > at || size > at - offset) {
            return false;
        }
        const std::size_t end = offset + size;
        for (std::size_t i = 0; i < count; ++i) {
            if (!readEntry(offset, end)) {
                return false;
            }
        }
        return true;
    }
    return false;
}

bool ZipArchive::readEntry(std::size_t& offset, std::size_t end) {
    if (offset > end || end - offset < kDirectoryHeaderSize ||
        u32(m_bytes, offset) != kDirectoryHeader) {
        return false;
    }
    Entry entry;
    entry.flags = u16(m_bytes, offset + 8);
    entry.method = u16(m_bytes, offset + 10);
    entry.crc = u32(m_bytes, offset + 16);
    entry.packedSize = u32(m_bytes, offset + 20);
    entry.size = u32(m_bytes, offset + 24);
    entry.headerOffset = u32(m_bytes, offset + 42);
    const std::size_t nameSize = u16(m_bytes, offset + 28);
    const std::size_t rest = nameSize + u16(m_bytes, offset + 30) + u16(m_bytes, offset + 32);
    const std::size_t nameAt = offset + kDirectoryHeaderSize;
    if (rest > end - nameAt) {
        return false;
    }
    std::string name(m_bytes.begin() + static_cast<std::ptrdiff_t>(nameAt),
                     m_bytes.begin() + static_cast<std::ptrdiff_t>(nameAt + nameSize));
    m_entries.emplace(std::move(name), entry); // the first of two with the same name counts
    offset = nameAt + rest;
    return true;
}

std::vector<std::string> ZipArchive::names() const {
    std::vector<std::string> names;
    for (const auto& entry : m_entries) {
        names.push_back(entry.first);
    }
    return names;
}

std::optional<Bytes> ZipArchive::read(const std::string& name) const {
    const auto found = m_entries.find(name);
    if (found == m_entries.end()) {
        return std::nullopt;
    }
    const Entry& entry = found->second;
    const std::size_t header = entry.headerOffset;
    if ((entry.flags & kEncrypted) != 0 || entry.size > kMaxEntryBytes ||
        !inside(m_bytes, header, kLocalHeaderSize) || u32(m_bytes, header) != kLocalHeader) {
        return std::nullopt;
    }
    const std::size_t data =
        header + kLocalHeaderSize + u16(m_bytes, header + 26) + u16(m_bytes, header + 28);
    if (!inside(m_bytes, data, entry.packedSize)) {
        return std::nullopt;
    }
    const std::uint8_t* packed = m_bytes.data() + data;
    std::optional<Bytes> bytes;
    if (entry.method == kDeflated) {
        bytes = Inflater().run(packed, entry.packedSize, entry.size);
    } else if (entry.method == kStored && entry.packedSize == entry.size) {
        bytes = Bytes(packed, packed + entry.size);
    }
    if (!bytes || crc32(0, bytes->data(), static_cast<uInt>(bytes->size())) != entry.crc) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace toolkit
