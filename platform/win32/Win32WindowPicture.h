// The picture of a window: what changed is drawn into a bitmap that is kept, and the system's
// request to paint is answered from it.
#pragma once

#include "platform/Bitmap.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "platform/raster/DirtyRegion.h"
#include "platform/raster/PixelScale.h"
#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

class Win32Window;

class Win32WindowPicture final : public WindowPicture {
public:
    /// `window` is not owned and outlives its parts.
    explicit Win32WindowPicture(Win32Window& window) : m_window(window) {}

    void invalidate(const Rect& dirty) override;
    void repaintNow() override;
    [[nodiscard]] Bitmap snapshot() override;
    [[nodiscard]] FrameBufferResult createFrameBuffer(Size size) override;

    void invalidateAll();
    /// The system wants the window painted.
    void handlePaint();

private:
    void paintDirty();
    /// In pixels of the screen.
    [[nodiscard]] Size clientSize() const;
    [[nodiscard]] Rect content() const;
    void resizeBack();

    Win32Window& m_window;
    Win32BackBuffer m_back;
    raster::PixelScale m_scale;
    raster::DirtyRegion m_dirty;
};

} // namespace platform::win32
