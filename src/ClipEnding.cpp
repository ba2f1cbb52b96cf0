// Pages: https://www.rfc-editor.org/rfc/rfc3533#section-6
#include "src/ClipEnding.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <optional>
#include <vector>

#include <ogg/ogg.h>
#include <theora/theoradec.h>

#include "src/StoppableSource.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"

namespace theora {
namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kFlagsAt = 5;
constexpr std::size_t kGranuleAt = 6;
constexpr std::size_t kNumberAt = 18;
constexpr std::size_t kSegmentCountAt = 26;
constexpr std::size_t kHeaderBytes = 27;
constexpr unsigned char kEndOfStream = 4;
/// Pages are of 64 KB at most; sound may follow the last picture.
constexpr std::int64_t kTailBytes = std::int64_t{1} << 20U;

struct LastPage {
    std::int64_t offset = 0;
    std::int64_t granule = -1;
    Bytes header{};
    Bytes body{};
};

void putNumber(Bytes& bytes, std::size_t at, std::int64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes[at + i] = static_cast<unsigned char>(value >> (8 * i));
    }
}

void putChecksum(Bytes& header, Bytes& body) {
    ogg_page page{header.data(), static_cast<long>(header.size()), body.data(),
                  static_cast<long>(body.size())};
    ogg_page_checksum_set(&page);
}

/// A page of so many packets without bytes, which ends the stream.
Bytes emptyPackets(const LastPage& before, std::int64_t count) {
    Bytes header(before.header.begin(), before.header.begin() + kHeaderBytes);
    ogg_page last{};
    last.header = header.data();
    header[kFlagsAt] = kEndOfStream;
    putNumber(header, kGranuleAt, before.granule + count, 8);
    putNumber(header, kNumberAt, ogg_page_pageno(&last) + 1, 4);
    header[kSegmentCountAt] = static_cast<unsigned char>(count);
    header.resize(kHeaderBytes + static_cast<std::size_t>(count));
    Bytes nothing;
    putChecksum(header, nothing);
    return header;
}

class Reader {
public:
    Reader(const std::string& path, platform::FileSystem& files,
           const std::function<bool()>& isStopped)
        : m_stop(isStopped), m_file(path, files, isStopped), m_source(m_file) {
        readStreamHeaders(m_source, m_headers);
        GranuleFormat format(*m_headers.theora.info.get());
        m_layout = scanStream(m_source, m_headers, format);
    }

    [[nodiscard]] std::int64_t frameCount() const { return m_layout.frameCount; }
    [[nodiscard]] std::int64_t fileSize() const { return m_source.size(); }

    /// The last page of pictures, if so many may follow it.
    [[nodiscard]] std::optional<LastPage> lastPageBefore(std::int64_t more) {
        std::optional<LastPage> last;
        PageReader pages(m_source, m_stop);
        pages.seek(std::max(m_layout.firstPage, m_source.size() - kTailBytes));
        ogg_page page;
        while (pages.next(page)) {
            if (ogg_page_serialno(&page) == m_layout.serial) {
                last = LastPage{pages.pageOffset(), ogg_page_granulepos(&page),
                                Bytes(page.header, page.header + page.header_len),
                                Bytes(page.body, page.body + page.body_len)};
            }
        }
        // Positions count the frames since a key frame in so many bits.
        const std::int64_t most =
            (std::int64_t{1} << m_headers.theora.info->keyframe_granule_shift) - 1;
        constexpr std::int64_t kMostOnAPage = 255;
        const bool fits = last && last->granule >= 0 && more <= kMostOnAPage &&
                          (last->granule & most) + more <= most;
        return fits ? last : std::nullopt;
    }

private:
    const StopCheck m_stop;
    StoppableSource m_file;
    SharedSource m_source;
    StreamHeaders m_headers;
    StreamLayout m_layout;
};

bool writeAt(platform::FileStream& stream, std::int64_t offset, const Bytes& bytes) {
    return stream.seek(offset) && stream.write(bytes.data(), bytes.size()) == bytes.size();
}

bool append(platform::FileSystem& files, const std::string& path, std::int64_t fileSize,
            LastPage& last, std::int64_t more) {
    int error = 0;
    const auto stream = files.open(path, platform::OpenMode::writeInPlace, error);
    if (!stream || !writeAt(*stream, fileSize, emptyPackets(last, more))) {
        return false;
    }
    last.header[kFlagsAt] = static_cast<unsigned char>(last.header[kFlagsAt] & ~kEndOfStream);
    putChecksum(last.header, last.body);
    return writeAt(*stream, last.offset, last.header) && stream->close();
}

} // namespace

bool extendClip(const std::string& path, std::int64_t frameCount, platform::FileSystem& files,
                const std::function<bool()>& isStopped) {
    try {
        std::optional<LastPage> last;
        std::int64_t more = 0;
        std::int64_t fileSize = 0;
        {
            Reader reader(path, files, isStopped);
            more = frameCount - reader.frameCount();
            if (more <= 0 || reader.frameCount() < 0) {
                return reader.frameCount() >= 0;
            }
            last = reader.lastPageBefore(more);
            fileSize = reader.fileSize();
        }
        return last && !isStopped() && append(files, path, fileSize, *last, more);
    } catch (const std::exception&) { // the file, or memory
        return false;
    }
}

} // namespace theora
