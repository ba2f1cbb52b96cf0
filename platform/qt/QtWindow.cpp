#include "platform/qt/QtWindow.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QMetaObject>
#include <QScreen>

#include "platform/Guard.h"
#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtFrameBuffer.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindowHost.h"

namespace platform::qt {

namespace {

Qt::WindowFlags flagsOf(WindowKind kind) {
    if (kind == WindowKind::popup) {
        return Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
               Qt::NoDropShadowWindowHint;
    }
    return Qt::Window | Qt::FramelessWindowHint;
}

Qt::CursorShape cursorOf(PointerShape shape) {
    switch (shape) {
    case PointerShape::text:
        return Qt::IBeamCursor;
    case PointerShape::hand:
        return Qt::PointingHandCursor;
    case PointerShape::cross:
        return Qt::CrossCursor;
    case PointerShape::arrow:
        break;
    }
    return Qt::ArrowCursor;
}

/// The offscreen platform has neither an order of windows nor shapes.
bool hasWindowSystem() {
    return QGuiApplication::platformName() != QLatin1String("offscreen");
}

/// Whether the system can be trusted with a move. A window manager of X11 hears of it too late when
/// the button goes up right after a motion, and then waits for a release that has already happened,
/// with the window stuck to the pointer. Under Wayland the program cannot place a window itself.
bool movesWindows() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

QtWindow::QtWindow(QtWindowHost& host, const WindowOptions& options, WindowEvents& events)
    : m_host(host), m_events(events), m_surface(std::make_unique<QtSurface>(*this).release()),
      m_store(m_surface.get()), m_kind(options.kind), m_cornerRadius(options.cornerRadius),
      m_move([this] { return movesWindows() && m_surface->startSystemMove(); },
             [this](QPoint place) { m_surface->setPosition(place); }) {
    m_surface->setSurfaceType(QSurface::RasterSurface);
    m_surface->setFlags(flagsOf(options.kind));
    m_surface->setTitle(toQt(options.title));
    fixSize(options.size);
    m_surface->resize(options.size.width, options.size.height);
    if (const auto* owner = static_cast<const QtWindow*>(options.owner)) {
        m_surface->setTransientParent(owner->m_surface.get());
    }
    m_surface->create();
    m_host.add(*this);
}

QtWindow::~QtWindow() {
    m_host.remove(*this);
    m_surface->detach();
    if (!m_destroyedSent) {
        m_destroyedSent = true;
        Event last;
        last.kind = EventKind::destroyed;
        guardedRun("destroyed event", [&] { m_events.onEvent(last); });
    }
}

bool QtWindow::send(const Event& event) {
    if (m_closing) {
        return true;
    }
    WindowEvents& events = m_events;
    return guarded("window event", true, [&] { return events.onEvent(event); });
}

void QtWindow::show(bool visible) {
    if (m_closing) {
        return;
    }
    m_surface->setVisible(visible);
    if (visible && m_kind == WindowKind::normal) {
        m_surface->requestActivate();
    }
    if (!visible) {
        loseCapture();
    }
}

void QtWindow::center() {
    const QWindow* owner = m_surface->transientParent();
    const QScreen* screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
    const Rect area = fromQt(screen->availableGeometry());
    const Rect around = owner != nullptr ? fromQt(owner->geometry()) : area;
    m_surface->setGeometry(toQt(around.centred(geometry().size()).movedInto(area)));
}

/// Tells the window manager, which would otherwise offer to maximise the window. A popup has none.
void QtWindow::fixSize(Size size) {
    if (m_kind == WindowKind::normal) {
        m_surface->setMinimumSize(QSize(size.width, size.height));
        m_surface->setMaximumSize(QSize(size.width, size.height));
    }
}

void QtWindow::setGeometry(const Rect& screenRect) {
    fixSize(screenRect.size());
    m_surface->setGeometry(toQt(screenRect));
    if (m_cornerRadius > 0 && hasWindowSystem()) {
        m_surface->setMask(roundedRegion(screenRect.size(), m_cornerRadius));
    }
}

Rect QtWindow::geometry() const {
    return fromQt(m_surface->geometry());
}

void QtWindow::setTitle(const std::u16string& title) {
    m_surface->setTitle(toQt(title));
}

void QtWindow::setEnabled(bool enabled) {
    m_enabled = enabled;
    if (!enabled) {
        loseCapture();
    }
}

void QtWindow::activate() {
    if (hasWindowSystem()) {
        m_surface->raise();
    }
    m_surface->requestActivate();
}

void QtWindow::close() {
    if (m_closing) {
        return;
    }
    releaseCapture();
    m_closing = true;
    for (const auto& [id, timer] : m_timers) {
        m_surface->killTimer(timer);
    }
    m_timers.clear();
    // Asked for before the window goes, or the system would choose another one in between.
    if (QWindow* owner = m_surface->transientParent();
        owner != nullptr && owner->isVisible() && m_kind == WindowKind::normal) {
        owner->requestActivate();
    }
    m_surface->hide();
    QtSurface* surface = m_surface.get();
    QMetaObject::invokeMethod(
        surface,
        [surface] {
            if (QtWindow* window = surface->window()) {
                window->finish();
            }
        },
        Qt::QueuedConnection);
}

void QtWindow::finish() {
    if (m_destroyedSent) {
        return;
    }
    m_destroyedSent = true;
    Event last;
    last.kind = EventKind::destroyed;
    WindowEvents& events = m_events;
    guardedRun("destroyed event", [&] { events.onEvent(last); });
}

void QtWindow::handleCloseRequest() {
    // A disabled window waits for its dialog.
    if (!m_enabled || m_closing) {
        return;
    }
    const QPointer<QtSurface> surface = m_surface.get();
    Event request;
    request.kind = EventKind::closeRequest;
    const bool handled = send(request);
    if (!handled && surface != nullptr && surface->window() != nullptr) {
        close();
    }
}

void QtWindow::handleFocus(bool focused) {
    if (focused && !m_enabled) {
        m_host.activateDialogOf(*this);
        return;
    }
    const QPointer<QtSurface> surface = m_surface.get();
    if (!focused) {
        loseCapture();
        if (surface->window() == nullptr) {
            return;
        }
    }
    Event event;
    event.kind = focused ? EventKind::activated : EventKind::deactivated;
    send(event);
}

void QtWindow::setCapture() {
    m_host.setCapture(*this);
}

void QtWindow::releaseCapture() {
    m_host.releaseCapture(*this);
}

void QtWindow::loseCapture() {
    if (m_host.releaseCapture(*this)) {
        Event event;
        event.kind = EventKind::captureLost;
        send(event);
    }
}

void QtWindow::setPointer(PointerShape shape) {
    m_surface->setCursor(cursorOf(shape));
}

bool QtWindow::startTimer(unsigned id, int intervalMs) {
    if (m_closing || intervalMs < 0) {
        return false;
    }
    stopTimer(id);
    const int timer = m_surface->startTimer(intervalMs, Qt::PreciseTimer);
    if (timer == 0) {
        return false;
    }
    m_timers[id] = timer;
    return true;
}

bool QtWindow::stopTimer(unsigned id) {
    const auto timer = m_timers.find(id);
    if (timer == m_timers.end()) {
        return false;
    }
    m_surface->killTimer(timer->second);
    m_timers.erase(timer);
    return true;
}

bool QtWindow::handleTimer(int timerId) {
    for (const auto& [id, timer] : m_timers) {
        if (timer == timerId) {
            Event event;
            event.kind = EventKind::timer;
            event.timerId = id;
            send(event);
            return true;
        }
    }
    return false;
}

void QtWindow::beginMove() {
    loseCapture();
    m_move.begin(m_pointer - m_surface->position());
}

void QtWindow::setTextInput(bool enabled, const Rect& caret) {
    if (m_textInput == enabled && m_caret == caret) {
        return;
    }
    m_textInput = enabled;
    m_caret = caret;
    QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImCursorRectangle);
}

FrameBufferResult QtWindow::createFrameBuffer(Size size) {
    return makeFrameBuffer(size);
}

void QtWindow::accessibleChanged(Accessible& node, AccessibleChange change) {
    guardedRun("accessible change", [&] { QtAccessibleNodes::changed(*m_surface, node, change); });
}

} // namespace platform::qt
