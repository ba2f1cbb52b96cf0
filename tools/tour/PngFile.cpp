#include "tools/tour/PngFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <vector>

#include <zlib.h>

#include "platform/Geometry.h"

namespace tour {

namespace {

using Bytes = std::vector<std::uint8_t>;

void appendWord(Bytes& bytes, std::uint32_t word) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(word >> static_cast<unsigned>(shift)));
    }
}

void appendChunk(Bytes& file, const std::array<char, 4>& type, const Bytes& content) {
    appendWord(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type.begin(), type.end());
    file.insert(file.end(), content.begin(), content.end());
    const auto length = static_cast<uInt>(file.size() - start);
    appendWord(file, static_cast<std::uint32_t>(crc32(0, file.data() + start, length)));
}

/// Each row follows a filter byte of 0: unfiltered.
Bytes scanLines(const platform::Bitmap& picture) {
    Bytes lines;
    for (int y = 0; y < picture.size().height; ++y) {
        lines.push_back(0);
        for (int x = 0; x < picture.size().width; ++x) {
            const std::uint32_t pixel = picture.at(x, y);
            lines.push_back(static_cast<std::uint8_t>(pixel >> 16U));
            lines.push_back(static_cast<std::uint8_t>(pixel >> 8U));
            lines.push_back(static_cast<std::uint8_t>(pixel));
        }
    }
    return lines;
}

Bytes compressed(const Bytes& bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    Bytes result(size);
    if (compress(result.data(), &size, bytes.data(), static_cast<uLong>(bytes.size())) != Z_OK) {
        throw std::runtime_error("no memory for a picture");
    }
    result.resize(size);
    return result;
}

} // namespace

void writePng(const platform::Bitmap& picture, const std::string& path) {
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    appendWord(header, static_cast<std::uint32_t>(picture.size().width));
    appendWord(header, static_cast<std::uint32_t>(picture.size().height));
    header.insert(header.end(), {8, 2, 0, 0, 0});
    appendChunk(file, {'I', 'H', 'D', 'R'}, header);
    appendChunk(file, {'I', 'D', 'A', 'T'}, compressed(scanLines(picture)));
    appendChunk(file, {'I', 'E', 'N', 'D'}, {});
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()),
              static_cast<std::streamsize>(file.size()));
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace tour
