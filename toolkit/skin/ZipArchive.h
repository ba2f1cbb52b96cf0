// Reads the files of a zip archive held in memory. Stored and deflated entries; no encryption, no
// zip64, no splitting. Built for hostile input: every offset is checked, sizes are limited.
// Format: PKWARE APPNOTE.TXT 6.3.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace toolkit {

class ZipArchive {
public:
    static constexpr std::size_t kMaxEntries = 4096;
    static constexpr std::size_t kMaxEntryBytes = std::size_t{16} << 20U;

    /// Empty when `bytes` is not an archive that this class reads.
    static std::optional<ZipArchive> open(std::vector<std::uint8_t> bytes);

    /// In no particular order.
    [[nodiscard]] std::vector<std::string> names() const;
    [[nodiscard]] bool contains(const std::string& name) const { return m_entries.contains(name); }
    /// The entry's bytes; empty when it is missing, damaged, too large or of a kind not read.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> read(const std::string& name) const;

private:
    struct Entry {
        std::uint32_t headerOffset = 0;
        std::uint32_t packedSize = 0;
        std::uint32_t size = 0;
        std::uint32_t crc = 0;
        std::uint16_t method = 0;
        std::uint16_t flags = 0;
    };

    explicit ZipArchive(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}
    bool readDirectory();
    bool readEntry(std::size_t& offset, std::size_t end);

    std::vector<std::uint8_t> m_bytes;
    std::unordered_map<std::string, Entry> m_entries; ///< by name, "/" between folders
};

} // namespace toolkit
