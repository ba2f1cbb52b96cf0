#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

Win32BackBuffer::~Win32BackBuffer() {
    clear();
}

void Win32BackBuffer::clear() {
    if (m_former != nullptr) {
        SelectObject(m_context.get(), m_former);
        m_former = nullptr;
    }
    m_bitmap.reset();
    m_context.reset();
    m_pixels = nullptr;
    m_size = {};
}

bool Win32BackBuffer::resize(Size size) {
    clear();
    if (size.width < 1 || size.height < 1) {
        return false;
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    m_context.reset(CreateCompatibleDC(nullptr));
    void* bits = nullptr;
    m_bitmap.reset(CreateDIBSection(m_context.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!m_context || !m_bitmap || bits == nullptr) {
        clear();
        return false;
    }
    m_former = SelectObject(m_context.get(), m_bitmap.get());
    m_pixels = static_cast<std::uint32_t*>(bits);
    m_size = size;
    return true;
}

raster::PixelView Win32BackBuffer::pixels() const {
    GdiFlush(); // GDI collects its calls
    return {m_pixels, m_size};
}

Bitmap Win32BackBuffer::copy() const {
    Bitmap result(m_size);
    const raster::PixelView from = pixels();
    for (int y = 0; y < m_size.height; ++y) {
        for (int x = 0; x < m_size.width; ++x) {
            result.row(y)[x] = from.row(y)[x] | 0xFF000000U; // GDI leaves the alpha byte 0
        }
    }
    return result;
}

} // namespace platform::win32
