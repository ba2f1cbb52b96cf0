// A video picture's back buffer: a 24-bit DIB section, bottom row first, in a memory context.
#pragma once

#include <cstdint>

#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

class Win32FrameBuffer final : public FrameBuffer {
public:
    /// Takes the context and the bitmap over; `bits` are the bitmap's pixels.
    Win32FrameBuffer(Size size, UniqueMemoryContext context, UniqueBitmap bitmap,
                     std::uint8_t* bits);
    ~Win32FrameBuffer() override;
    Win32FrameBuffer(const Win32FrameBuffer&) = delete;
    Win32FrameBuffer& operator=(const Win32FrameBuffer&) = delete;

    [[nodiscard]] Size size() const override { return m_size; }
    [[nodiscard]] std::uint8_t* bits() override;
    [[nodiscard]] const std::uint8_t* bits() const override;
    [[nodiscard]] HDC context() const { return m_context.get(); }

private:
    Size m_size;
    UniqueMemoryContext m_context;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_former;
    std::uint8_t* m_bits;
};

/// A buffer compatible with `window`; what fails is reported with the system's code.
[[nodiscard]] FrameBufferResult makeFrameBuffer(HWND window, Size size);

} // namespace platform::win32
