#include "platform/qt/QtSurface.h"

#include <QEvent>
#include <QInputMethodEvent>
#include <QMouseEvent>

#include "platform/Guard.h"
#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

QAccessibleInterface* QtSurface::accessibleRoot() const {
    return QtAccessibleNodes::root(*this);
}

bool QtSurface::event(QEvent* event) {
    if (m_window == nullptr) {
        return QWindow::event(event);
    }
    // The window may be destroyed by what the event causes; it is not touched afterwards.
    const bool handled =
        guarded("window event", true, [&] { return m_window->handleQtEvent(*event); });
    return handled || QWindow::event(event);
}

} // namespace platform::qt
