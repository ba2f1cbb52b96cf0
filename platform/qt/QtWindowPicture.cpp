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
    const QSize size = m_window.surface().size();
    m_dirty.add(dirty.intersected({0, 0, size.width(), size.height()}));
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
    const Size size{surface.width(), surface.height()};
    if (m_back.size() == size) {
        return;
    }
    m_back = Bitmap(size);
    m_dirty.clear();
    m_dirty.add({0, 0, size.width, size.height});
}

void QtWindowPicture::paintDirty() {
    m_paintRequested = false;
    if (m_window.isClosing()) {
        return;
    }
    resizeBack();
    QRegion region;
    for (const Rect& rect : m_dirty.take()) {
        paintRect(rect);
        region += toQt(rect);
    }
    present(region);
}

void QtWindowPicture::paintRect(const Rect& rect) {
    raster::RasterCanvas canvas(m_back, m_window.host().textPainter(), rect);
    guardedRun("painting", [&] { m_window.events().onPaint(canvas, canvas.clip()); });
}

void QtWindowPicture::showAll() {
    if (isOnScreen()) {
        paintDirty();
        present(QRect(QPoint(), m_window.surface().size()));
    }
}

void QtWindowPicture::present(const QRegion& region) {
    const QtSurface& surface = m_window.surface();
    if (region.isEmpty() || m_window.isClosing() || m_back.isEmpty() || !surface.isExposed()) {
        return;
    }
    // With a fractional scale the edges of a part would not fall on pixels: show everything.
    const double scale = surface.devicePixelRatio();
    const bool whole = scale != std::floor(scale);
    const QRect all(QPoint(), surface.size());
    const QRegion shown = whole ? QRegion(all) : region;
    m_store.resize(surface.size());
    m_store.beginPaint(shown);
    {
        const QImage picture = imageOver(m_back);
        QPainter painter(m_store.paintDevice());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, whole);
        for (const QRect& rect : shown) {
            painter.drawImage(rect, picture, rect);
        }
    }
    m_store.endPaint();
    m_store.flush(shown);
}

Bitmap QtWindowPicture::snapshot() {
    resizeBack();
    m_dirty.add({0, 0, m_back.size().width, m_back.size().height});
    paintDirty();
    return m_back;
}

FrameBufferResult QtWindowPicture::createFrameBuffer(Size size) {
    return makeFrameBuffer(size);
}

} // namespace platform::qt
