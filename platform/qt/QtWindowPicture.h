// The picture of a window: what changed is drawn into a bitmap that is kept, and the changed part
// of the bitmap goes to the screen.
#pragma once

#include <QBackingStore>

#include "platform/Bitmap.h"
#include "platform/FrameBuffer.h"
#include "platform/WindowParts.h"
#include "platform/raster/DirtyRegion.h"
#include "platform/raster/PixelScale.h"

class QRegion;

namespace platform::qt {

class QtWindow;

class QtWindowPicture final : public WindowPicture {
public:
    /// `window` is not owned, has its surface and outlives its parts.
    explicit QtWindowPicture(QtWindow& window);

    void invalidate(const Rect& dirty) override;
    void repaintNow() override { paintDirty(); }
    [[nodiscard]] Bitmap snapshot() override;
    [[nodiscard]] FrameBufferResult createFrameBuffer(Size size) override;

    void paintDirty();
    /// After the window was shown, restored or resized: brings the whole picture to the screen.
    void showAll();

private:
    /// Neither hidden nor minimised.
    [[nodiscard]] bool isOnScreen() const;
    void requestPaint();
    void resizeBack();
    /// What was dirty, and where that is in pixels of the screen.
    QRegion paintBack();
    void paintRect(const Rect& rect);
    /// In pixels of the screen.
    void present(const QRegion& region);

    QtWindow& m_window;
    QBackingStore m_store; ///< only carries the bitmap to the screen
    Bitmap m_back;         ///< in pixels of the screen
    raster::PixelScale m_scale;
    raster::DirtyRegion m_dirty;
    bool m_paintRequested = false;
};

} // namespace platform::qt
