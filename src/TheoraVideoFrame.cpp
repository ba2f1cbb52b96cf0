#include "src/TheoraVideoFrame.h"

#include <cstring>
#include <utility>

#include "src/TheoraUtil/ColorConvert.h"

namespace theora {

TheoraVideoFrame::TheoraVideoFrame(const TheoraFrameFormat& format)
    : m_format(format), m_bpp(bytesPerPixel(format.mode)) {
    m_pixels->bytes = std::make_unique_for_overwrite<std::uint8_t[]>(getBufferSize());
    std::memset(m_pixels->bytes.get(), 0xFF, getBufferSize());
}

std::size_t TheoraVideoFrame::getBufferSize() const {
    return static_cast<std::size_t>(m_format.stride) * static_cast<std::size_t>(m_format.height) *
           static_cast<std::size_t>(m_bpp);
}

void TheoraVideoFrame::ownPixels() {
    if (m_pixels.use_count() > 1) {
        auto own = std::move(m_pixels->spares.back());
        m_pixels->spares.pop_back();
        m_pixels = std::move(own);
    }
}

void TheoraVideoFrame::sharePixels(TheoraVideoFrame& other) {
    if (m_pixels == other.m_pixels) {
        return;
    }
    ownPixels();
    other.m_pixels->spares.push_back(m_pixels);
    m_pixels = other.m_pixels;
}

void TheoraVideoFrame::decode(const TheoraPicture& picture) {
    ownPixels();
    convertPicture(picture, m_format.mode, m_pixels->bytes.get(), m_format.width, m_format.height);
    m_pixels->identity = picture.identity;
}

void TheoraVideoFrame::copyConverted(const std::uint8_t* pixels, std::ptrdiff_t rowBytes) {
    ownPixels();
    m_pixels->identity = 0;
    const auto bytes = static_cast<std::size_t>(getRowBytes());
    for (int row = 0; row < m_format.height; ++row) {
        std::memcpy(m_pixels->bytes.get() + static_cast<std::size_t>(row) * bytes,
                    pixels + row * rowBytes, bytes);
    }
}

} // namespace theora
