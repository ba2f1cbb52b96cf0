#include "platform/qt/QtWindowPicture.h"

#include <QCoreApplication>
#include <QPainter>
#include <cmath>
#include <memory>

#include "platform/Geometry.h"
#include "platform/Guard.h"
#include "platform/Window.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtFrameBuffer.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtTextPainter.h"
#include "platform/qt/QtWindow.h"
#include "platform/qt/QtWindowHost.h"
#include "platform/raster/PixelView.h"
#include "platform/raster/RasterCanvas.h"

namespace platform::qt {

QtWindowPicture::QtWindowPicture(QtWindow& window) : m_window(window), m_store(&window.surface()) {}

void QtWindowPicture::invalidate(const Rect& dirty) {
    const Size size = m_window.contentSize();
    m_dirty.add(dirty.intersected({0, 0, size.width, size.height}));
    if (!m_dirty.isEmpty()) {
        requestPaint();
    }
}

bool QtWindowPicture::isOnScreen() const {
    const QtSurface& surface = m_window.surface();
    return surface.isExposed() && !surface.windowStates().testFlag(Qt::WindowMinimized);
}

void QtWindowPicture::requestPaint() {
    if (m_paintRequested || m_window.isClosing() || !isOnScreen()) {
        return; // painted once it is shown
    }
    m_paintRequested = true;
    QCoreApplication::postEvent(&m_window.surface(),
                                std::make_unique<QEvent>(QEvent::UpdateRequest).release(),
                                Qt::LowEventPriority);
}

void QtWindowPicture::resizeBack() {
    const QtSurface& surface = m_window.surface();
    const double ratio = surface.devicePixelRatio();
    const Size size{static_cast<int>(std::lround(surface.width() * ratio)),
                    static_cast<int>(std::lround(surface.height() * ratio))};
    const double scale = m_window.scale();
    if (m_back.size() == size && m_scale.factor() == scale) {
        return;
    }
    const Size content = m_window.contentSize();
    m_scale = {scale, content, size};
    m_back.reshape(size);
    m_dirty.clear();
    m_dirty.add({0, 0, content.width, content.height});
}

void QtWindowPicture::paintDirty() {
    present(paintBack());
}

QRegion QtWindowPicture::paintBack() {
    m_paintRequested = false;
    QRegion region;
    if (m_window.isClosing()) {
        return region;
    }
    resizeBack();
    for (const Rect& rect : m_dirty.take()) {
        paintRect(rect);
        region += toQt(m_scale.rect(rect));
    }
    return region;
}

void QtWindowPicture::paintRect(const Rect& rect) {
    raster::RasterCanvas canvas(m_back, m_window.host().textPainter(), rect, m_scale);
    guardedRun("painting", [&] { m_window.events().onPaint(canvas, canvas.clip()); });
}

void QtWindowPicture::showAll() {
    if (isOnScreen()) {
        paintBack();
        present(QRect(0, 0, m_back.size().width, m_back.size().height));
    }
}

void QtWindowPicture::present(const QRegion& region) {
    const QtSurface& surface = m_window.surface();
    if (region.isEmpty() || m_window.isClosing() || m_back.isEmpty() || !surface.isExposed()) {
        return;
    }
    // Where Qt's pixels are no whole number of the screen's, the edges of a part would not fall on
    // pixels: show everything.
    const double ratio = surface.devicePixelRatio();
    const auto whole = static_cast<int>(ratio);
    QRegion shown;
    if (ratio != whole) {
        shown = QRect(QPoint(), surface.size());
    } else {
        for (const QRect& rect : region) {
            shown += QRect(QPoint(rect.left() / whole, rect.top() / whole),
                           QPoint(rect.right() / whole, rect.bottom() / whole));
        }
    }
    m_store.resize(surface.size());
    m_store.beginPaint(shown);
    {
        QImage picture = imageOver(m_back);
        picture.setDevicePixelRatio(ratio);
        QPainter painter(m_store.paintDevice());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setClipRegion(shown);
        painter.drawImage(QPoint(), picture);
    }
    m_store.endPaint();
    m_store.flush(shown);
}

Bitmap QtWindowPicture::snapshot() {
    resizeBack();
    const Size size = m_window.contentSize();
    m_dirty.add({0, 0, size.width, size.height});
    paintDirty();
    return m_back;
}

FrameBufferResult QtWindowPicture::createFrameBuffer(Size size) {
    return makeFrameBuffer(size);
}

} // namespace platform::qt
