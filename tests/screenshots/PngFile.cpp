#include "tests/screenshots/PngFile.h"

#include <cstdint>
#include <fstream>
#include <string_view>
#include <vector>

#include <zlib.h>

namespace screenshots {

namespace {

using Bytes = std::vector<std::uint8_t>;

void appendNumber(Bytes& out, std::uint32_t value) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        out.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

void appendChunk(Bytes& out, std::string_view kind, const Bytes& body) {
    appendNumber(out, static_cast<std::uint32_t>(body.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), kind.begin(), kind.end());
    out.insert(out.end(), body.begin(), body.end());
    const uLong sum = crc32(0, out.data() + start, static_cast<uInt>(out.size() - start));
    appendNumber(out, static_cast<std::uint32_t>(sum));
}

/// A premultiplied colour over white: 255 minus alpha is what white adds to each channel.
std::uint8_t onWhite(std::uint32_t pixel, unsigned shift) {
    return static_cast<std::uint8_t>(((pixel >> shift) & 255U) + 255U - (pixel >> 24U));
}

/// Each row as differences to the row above (filter 2): plain areas become zeros.
Bytes filteredRows(const platform::Bitmap& picture) {
    const int width = picture.size().width;
    Bytes above(static_cast<std::size_t>(width) * 3);
    Bytes out;
    out.reserve((above.size() + 1) * static_cast<std::size_t>(picture.size().height));
    for (int y = 0; y < picture.size().height; ++y) {
        out.push_back(2);
        std::size_t place = 0;
        for (int x = 0; x < width; ++x) {
            for (const unsigned shift : {16U, 8U, 0U}) {
                const std::uint8_t value = onWhite(picture.at(x, y), shift);
                out.push_back(static_cast<std::uint8_t>(value - above[place]));
                above[place++] = value;
            }
        }
    }
    return out;
}

Bytes compressed(const Bytes& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    Bytes out(size);
    if (compress2(out.data(), &size, data.data(), static_cast<uLong>(data.size()),
                  Z_BEST_COMPRESSION) != Z_OK) {
        return {};
    }
    out.resize(size);
    return out;
}

} // namespace

bool writePng(const std::string& path, const platform::Bitmap& picture) {
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    appendNumber(header, static_cast<std::uint32_t>(picture.size().width));
    appendNumber(header, static_cast<std::uint32_t>(picture.size().height));
    header.insert(header.end(), {8, 2, 0, 0, 0});
    appendChunk(file, "IHDR", header);
    appendChunk(file, "IDAT", compressed(filteredRows(picture)));
    appendChunk(file, "IEND", {});
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(file.data()),
                 static_cast<std::streamsize>(file.size()));
    return stream.good();
}

} // namespace screenshots
