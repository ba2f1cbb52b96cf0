#include "toolkit/skin/JpegTables.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <optional>

namespace toolkit {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t kMarker = 0xFF;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;
constexpr std::uint8_t kStartOfScan = 0xDA;
constexpr std::uint8_t kHuffmanTables = 0xC4;
constexpr std::size_t kTableHead = 17; // class and number, then the codes of each length, 1 to 16
constexpr unsigned kMaxCodes = 256;

/// The tables of one segment, which must fill it.
bool tablesAreSound(Bytes segment) {
    while (!segment.empty()) {
        if (segment.size() < kTableHead) {
            return false;
        }
        const Bytes counts = segment.subspan(1, kTableHead - 1);
        const unsigned codes = std::accumulate(counts.begin(), counts.end(), 0U);
        if (codes > kMaxCodes || codes > segment.size() - kTableHead) {
            return false;
        }
        segment = segment.subspan(kTableHead + codes);
    }
    return true;
}

/// Takes the next marker off `rest`; fill bytes may stand before it.
std::optional<std::uint8_t> takeMarker(Bytes& rest) {
    if (rest.empty() || rest.front() != kMarker) {
        return std::nullopt;
    }
    const auto code = std::find_if(rest.begin(), rest.end(), [](auto b) { return b != kMarker; });
    if (code == rest.end()) {
        return std::nullopt;
    }
    const std::uint8_t marker = *code;
    rest = rest.subspan(static_cast<std::size_t>(code - rest.begin()) + 1);
    return marker;
}

/// Takes the next segment off `rest`, without its two bytes of length.
std::optional<Bytes> takeSegment(Bytes& rest) {
    if (rest.size() < 2) {
        return std::nullopt;
    }
    const std::size_t length = static_cast<std::size_t>(rest[0]) << 8U | rest[1];
    if (length < 2 || length > rest.size()) {
        return std::nullopt;
    }
    const Bytes segment = rest.subspan(2, length - 2);
    rest = rest.subspan(length);
    return segment;
}

/// Whether the byte behind a marker byte belongs to the coded picture: a stuffed zero or a restart.
bool isPictureData(std::uint8_t code) {
    return code == 0 || (code >= 0xD0 && code <= 0xD7);
}

/// Drops the coded picture: all up to the next marker that starts a segment or ends the image.
void skipScan(Bytes& rest) {
    while (!rest.empty()) {
        rest = rest.subspan(
            static_cast<std::size_t>(std::find(rest.begin(), rest.end(), kMarker) - rest.begin()));
        Bytes behind = rest;
        const std::optional<std::uint8_t> code = takeMarker(behind);
        if (code && !isPictureData(*code)) {
            return;
        }
        rest = code ? behind : Bytes{};
    }
}

} // namespace

bool jpegTablesAreSound(std::span<const std::uint8_t> bytes) {
    if (takeMarker(bytes) != kStartOfImage) {
        return true;
    }
    while (!bytes.empty()) {
        const std::optional<std::uint8_t> marker = takeMarker(bytes);
        if (marker == kEndOfImage) {
            return true;
        }
        const std::optional<Bytes> segment = marker ? takeSegment(bytes) : std::nullopt;
        if (!segment || (marker == kHuffmanTables && !tablesAreSound(*segment))) {
            return false;
        }
        if (marker == kStartOfScan) {
            skipScan(bytes);
        }
    }
    return true; // a picture cut in its data still shows what is there
}

} // namespace toolkit
