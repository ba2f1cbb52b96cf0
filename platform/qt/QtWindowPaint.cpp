// Painting of a window: what changed is drawn into a picture that is kept, and the changed part of
// the picture goes to the screen.
#include <QCoreApplication>
#include <QPainter>
#include <cmath>

#include "platform/Guard.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtWindow.h"
#include "platform/qt/QtWindowHost.h"
#include "platform/raster/RasterCanvas.h"

namespace platform::qt {

void QtWindow::invalidate(const Rect& dirty) {
    const QSize size = m_surface->size();
    m_dirty.add(dirty.intersected({0, 0, size.width(), size.height()}));
    if (!m_dirty.isEmpty()) {
        requestPaint();
    }
}

bool QtWindow::isOnScreen() const {
    return m_surface->isExposed() && !m_surface->windowStates().testFlag(Qt::WindowMinimized);
}

void QtWindow::requestPaint() {
    if (m_paintRequested || m_closing || !isOnScreen()) {
        return; // painted once it comes up
    }
    m_paintRequested = true;
    QCoreApplication::postEvent(m_surface.get(),
                                std::make_unique<QEvent>(QEvent::UpdateRequest).release(),
                                Qt::LowEventPriority);
}

void QtWindow::repaintNow() {
    paintDirty();
}

bool QtWindow::resizeBack() {
    const Size size{m_surface->width(), m_surface->height()};
    if (m_back.size() == size) {
        return false;
    }
    m_back = Bitmap(size);
    m_dirty.clear();
    m_dirty.add({0, 0, size.width, size.height});
    return true;
}

void QtWindow::paintDirty() {
    m_paintRequested = false;
    if (m_closing) {
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

void QtWindow::paintRect(const Rect& rect) {
    raster::RasterCanvas canvas(m_back, m_host.textPainter(), rect);
    guardedRun("painting", [&] { m_events.onPaint(canvas, canvas.clip()); });
}

void QtWindow::present(const QRegion& region) {
    if (region.isEmpty() || m_closing || m_back.isEmpty() || !m_surface->isExposed()) {
        return;
    }
    // With a fractional scale the edges of a part would not fall on pixels: all is shown anew.
    const double scale = m_surface->devicePixelRatio();
    const bool whole = scale != std::floor(scale);
    const QRect all(QPoint(), m_surface->size());
    const QRegion shown = whole ? QRegion(all) : region;
    m_store.resize(m_surface->size());
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

Bitmap QtWindow::snapshot() {
    resizeBack();
    m_dirty.add({0, 0, m_back.size().width, m_back.size().height});
    paintDirty();
    return m_back;
}

} // namespace platform::qt
