// Reads a file of chunks: tag, size (32-bit words, little-endian), that many bytes. Holds one body
// at a time and reuses its memory, so that an hour of zones loads fast. This module's sources only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "core/File.h"

namespace zone {

class ChunkReader {
public:
    static constexpr std::size_t kHeaderSize = 8;

    /// `file` is open, at its start and `size` bytes long; not owned.
    ChunkReader(core::File& file, std::uint64_t size) : m_file(file), m_left(size) {}

    /// Goes to the next chunk, whose body has to be read or skipped afterwards. False at the end,
    /// when too little is left for a header, and when the file cannot be read.
    [[nodiscard]] bool next();
    [[nodiscard]] std::uint32_t tag() const { return m_tag; }
    /// What the header says; the body is shorter when the file is.
    [[nodiscard]] std::size_t statedSize() const { return m_statedSize; }
    /// The chunk reaches beyond the end of the file. Before its body is read or skipped.
    [[nodiscard]] bool isCut() const { return m_size < m_statedSize; }
    /// False when the file cannot be read.
    [[nodiscard]] bool readBody();
    /// Valid until the next body is read.
    [[nodiscard]] std::span<const std::uint8_t> body() const { return {m_body.get(), m_size}; }
    void skip();
    /// The chunk, not cut and of at least one byte, ends before the last one read, which starts the
    /// next.
    void giveBackLast();
    /// After the last chunk: bytes too few for a header follow it.
    [[nodiscard]] bool hasRest() const { return m_left > 0; }

    /// False after the file could not be read.
    [[nodiscard]] bool good() const { return m_good; }

private:
    [[nodiscard]] bool read(std::uint8_t* to, std::size_t count);

    core::File& m_file;
    std::uint64_t m_left; ///< bytes not read yet, one given back included
    std::unique_ptr<std::uint8_t[]> m_body;
    std::size_t m_room = 0;
    std::size_t m_size = 0; ///< of the body, inside the file
    std::size_t m_statedSize = 0;
    std::uint32_t m_tag = 0;
    std::uint8_t m_last = 0;
    bool m_isGivenBack = false;
    bool m_good = true;
};

} // namespace zone
