// A window's picture: a 32-bit top-down bitmap that both GDI and the raster canvas draw on.
#pragma once

#include <cstdint>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/raster/PixelView.h"
#include "platform/win32/Handles.h"

namespace platform::win32 {

class Win32BackBuffer {
public:
    Win32BackBuffer() = default;
    ~Win32BackBuffer();
    Win32BackBuffer(const Win32BackBuffer&) = delete;
    Win32BackBuffer& operator=(const Win32BackBuffer&) = delete;

    /// Black pixels of the new size; false, and empty, when the system refuses.
    bool resize(Size size);
    [[nodiscard]] Size size() const { return m_size; }
    [[nodiscard]] HDC context() const { return m_context.get(); }
    /// What GDI has drawn is in it; call it again after further GDI calls.
    [[nodiscard]] raster::PixelView pixels() const;
    [[nodiscard]] Bitmap copy() const;

private:
    void clear();

    Size m_size;
    UniqueMemoryContext m_context;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_former = nullptr; ///< what the context had selected before the bitmap
    std::uint32_t* m_pixels = nullptr;
};

} // namespace platform::win32
