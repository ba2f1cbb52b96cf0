#include "platform/win32/Win32FrameBuffer.h"

#include <memory>
#include <utility>

namespace platform::win32 {

namespace {

/// Intended: the record and the first palette entry behind it, 44 bytes, as players of this format
/// have always passed it; the system accepts any size from 40 on.
constexpr DWORD kHeaderSize = sizeof(BITMAPINFO);
static_assert(kHeaderSize == 44);

constexpr int kMaxSide = 32767;

} // namespace

Win32FrameBuffer::Win32FrameBuffer(Size size, UniqueMemoryContext context, UniqueBitmap bitmap,
                                   std::uint8_t* bits)
    : m_size(size), m_context(std::move(context)), m_bitmap(std::move(bitmap)),
      m_former(SelectObject(m_context.get(), m_bitmap.get())), m_bits(bits) {}

Win32FrameBuffer::~Win32FrameBuffer() {
    SelectObject(m_context.get(), m_former);
}

std::uint8_t* Win32FrameBuffer::bits() {
    GdiFlush(); // GDI may still be reading what was drawn from it
    return m_bits;
}

const std::uint8_t* Win32FrameBuffer::bits() const {
    return m_bits;
}

FrameBufferResult makeFrameBuffer(HWND window, Size size) {
    FrameBufferResult result;
    const WindowContext windowContext(window);
    if (windowContext.get() == nullptr) {
        result.windowContextFailed = true;
        result.windowContextError = GetLastError();
    }
    UniqueMemoryContext context(CreateCompatibleDC(windowContext.get()));
    if (!context) {
        result.memoryContextFailed = true;
        result.memoryContextError = GetLastError();
        return result;
    }
    const bool valid =
        size.width >= 1 && size.height >= 1 && size.width <= kMaxSide && size.height <= kMaxSide;
    BITMAPINFO info{};
    info.bmiHeader.biSize = kHeaderSize;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = size.height; // bottom row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    SetLastError(ERROR_INVALID_PARAMETER);
    UniqueBitmap bitmap(
        valid ? CreateDIBSection(context.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0)
              : nullptr);
    if (!bitmap || bits == nullptr) {
        result.bitmapFailed = true;
        result.bitmapError = GetLastError();
        return result;
    }
    result.buffer = std::make_unique<Win32FrameBuffer>(size, std::move(context), std::move(bitmap),
                                                       static_cast<std::uint8_t*>(bits));
    return result;
}

} // namespace platform::win32
