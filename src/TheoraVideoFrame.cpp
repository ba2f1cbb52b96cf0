#include "src/TheoraVideoFrame.h"

#include <cstring>

#include "src/TheoraUtil/ColorConvert.h"

namespace theora {

TheoraVideoFrame::TheoraVideoFrame(const TheoraFrameFormat& format)
    : m_format(format), m_bpp(bytesPerPixel(format.mode)),
      m_buffer(std::make_unique_for_overwrite<std::uint8_t[]>(getBufferSize())) {
    std::memset(m_buffer.get(), 0xFF, getBufferSize());
}

std::size_t TheoraVideoFrame::getBufferSize() const {
    return static_cast<std::size_t>(m_format.stride) * static_cast<std::size_t>(m_format.height) *
           static_cast<std::size_t>(m_bpp);
}

void TheoraVideoFrame::decode(const TheoraPicture& picture) {
    convertPicture(picture, m_format.mode, m_buffer.get(), m_format.width, m_format.height);
}

void TheoraVideoFrame::copyConverted(const std::uint8_t* pixels, std::ptrdiff_t rowBytes) {
    const auto bytes = static_cast<std::size_t>(getRowBytes());
    for (int row = 0; row < m_format.height; ++row) {
        std::memcpy(m_buffer.get() + static_cast<std::size_t>(row) * bytes, pixels + row * rowBytes,
                    bytes);
    }
}

} // namespace theora
