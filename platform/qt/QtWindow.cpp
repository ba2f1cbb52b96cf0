#include "platform/qt/QtWindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMetaObject>
#include <QScreen>
#include <memory>
#include <utility>

#include "platform/Event.h"
#include "platform/Guard.h"
#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtScreens.h"
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

/// The offscreen platform has neither an order of windows nor shapes.
bool hasWindowSystem() {
    return QGuiApplication::platformName() != QLatin1String("offscreen");
}

} // namespace

QtWindow::QtWindow(QtWindowHost& host, const WindowOptions& options, WindowEvents& events)
    : m_host(host), m_events(events), m_surface(std::make_unique<QtSurface>(*this).release()),
      m_kind(options.kind), m_leastSize(options.leastSize),
      m_cornerRadius(options.cornerRadius), m_content{options.size, {}} {
    m_surface->setSurfaceType(QSurface::RasterSurface);
    m_surface->setFlags(flagsOf(options.kind));
    m_surface->setTitle(toQt(options.title));
    if (const auto* owner = static_cast<const QtWindow*>(options.owner)) {
        m_surface->setTransientParent(owner->m_surface.get());
    }
    m_fit = fitOn(homeScreen());
    const Size size = toSystem(options.size, unit());
    fixSize(size);
    m_surface->resize(size.width, size.height);
    m_surface->create();
    QObject::connect(m_surface.get(), &QWindow::screenChanged, m_surface.get(),
                     [surface = m_surface.get()] {
                         if (QtWindow* window = surface->window()) {
                             guardedRun("change of the screen", [&] { window->changeScreen(); });
                         }
                     });
    m_ratio = m_surface->devicePixelRatio();
    m_host.add(*this);
}

QtWindow::~QtWindow() {
    m_input.releaseCapture();
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

bool QtWindow::takesPress(Point at) {
    return guarded("press at the border", false, [&] { return m_events.takesPress(at); });
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
        m_input.loseCapture();
    }
}

const QScreen& QtWindow::homeScreen() const {
    const QWindow* owner = m_surface->transientParent();
    return *(owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen());
}

void QtWindow::center() {
    const QWindow* owner = m_surface->transientParent();
    const Rect area = fromQt(homeScreen().availableGeometry());
    const Rect around = owner != nullptr ? fromQt(owner->geometry()) : area;
    m_surface->setGeometry(toQt(around.centred(qtGeometry().size()).movedInto(area)));
}

const QtWindow* QtWindow::popupOwner() const {
    const auto* owner = dynamic_cast<const QtSurface*>(m_surface->transientParent());
    return m_kind == WindowKind::popup && owner != nullptr ? owner->window() : nullptr;
}

double QtWindow::unit() const {
    const QtWindow* owner = popupOwner();
    return owner != nullptr ? owner->unit() / m_toOwner : m_host.zoom() * m_fit;
}

double QtWindow::scale() const {
    return unit() * m_surface->devicePixelRatio();
}

double QtWindow::fitOn(const QScreen& screen) const {
    return m_kind == WindowKind::popup
               ? 1
               : fitInto(isSizable() ? m_leastSize : m_content.layout, m_host.zoom(),
                         fromQt(screen.availableGeometry()).size());
}

/// Qt tells of the other screen before the window has its pixels; where the system keeps the number
/// of pixels, it tells of another size in between.
void QtWindow::changeScreen() {
    QMetaObject::invokeMethod(
        m_surface.get(),
        [surface = m_surface.get(), content = m_content] {
            if (QtWindow* window = surface->window()) {
                guardedRun("another screen", [&] { window->refit(content); });
            }
        },
        Qt::QueuedConnection);
}

void QtWindow::refit(const KeptSize& content) {
    if (m_surface->screen() == nullptr) {
        return;
    }
    const double ratio = m_surface->devicePixelRatio();
    const bool hasOtherPixels = std::exchange(m_ratio, ratio) != ratio;
    if (hasOtherPixels) {
        m_content = content;
    }
    if (hasOtherPixels || fitOn(*m_surface->screen()) != m_fit) {
        rescale();
    }
}

void QtWindow::rescale() {
    if (m_closing) {
        return;
    }
    const Rect place = qtGeometry();
    const QScreen& screen = *m_surface->screen();
    m_fit = fitOn(screen);
    const Rect area = fromQt(screen.availableGeometry());
    const Size size = isSizable() ? m_content.fit(unit(), leastSize(), area.size())
                                  : toSystem(m_content.layout, unit());
    fixSize(size);
    if (state() == WindowState::normal) {
        m_surface->setGeometry(
            toQt(Rect::at(place.left, place.top, size.width, size.height).movedInto(area)));
    }
    handleSize(false); // its layout pixels are others even if Qt's are not
}

/// In Qt's pixels. For the window manager, which would otherwise offer to maximise a window of a
/// fixed size. It ignores popups.
void QtWindow::fixSize(Size size) {
    if (isSizable()) {
        m_surface->setMinimumSize(QSize(leastSize().width, leastSize().height));
    } else if (m_kind == WindowKind::normal) {
        m_surface->setMinimumSize(QSize(size.width, size.height));
        m_surface->setMaximumSize(QSize(size.width, size.height));
    }
}

/// A popup's place is told in pixels of its owner, which may lie on screens of several scales. Qt
/// counts it in those of the popup's own screen.
Point QtWindow::placePopup(const QtWindow& owner, const Rect& place) {
    const QScreen& home = homeScreen();
    const Point corner = toSystem(place.topLeft(), owner.unit());
    const QScreen& screen = screenAt(corner, home);
    m_toOwner = ratioBetween(home, screen);
    return onScreen(corner, home, screen);
}

void QtWindow::setGeometry(const Rect& screenRect) {
    const QtWindow* owner = popupOwner();
    const Point corner =
        owner != nullptr ? placePopup(*owner, screenRect) : toSystem(screenRect.topLeft(), unit());
    const Size size = toSystem(screenRect.size(), unit());
    m_content = {screenRect.size(), size};
    fixSize(size);
    m_surface->setGeometry(corner.x, corner.y, size.width, size.height);
    noteGeometry(); // a hidden window gets no event
    if (m_cornerRadius > 0 && hasWindowSystem()) {
        m_surface->setMask(roundedRegion(size, nearestPixel(m_cornerRadius * unit())));
    }
}

Rect QtWindow::qtGeometry() const {
    return fromQt(m_surface->geometry());
}

Rect QtWindow::geometry() const {
    const QtWindow* owner = popupOwner();
    const Point corner =
        owner != nullptr
            ? toLayout(onScreen(qtGeometry().topLeft(), *m_surface->screen(), homeScreen()),
                       owner->unit())
            : toLayout(qtGeometry().topLeft(), unit());
    const Size size = contentSize();
    return Rect::at(corner.x, corner.y, size.width, size.height);
}

Rect QtWindow::workArea(Point point) const {
    // Where a hidden window is about to stand, the screen there counts the place.
    const QScreen* screen =
        m_surface->isVisible() ? nullptr : QGuiApplication::screenAt(toQt(toSystem(point, unit())));
    return screen != nullptr ? toLayout(fromQt(screen->availableGeometry()), unit())
                             : QtWindowHost::workArea(point, unit(), *m_surface->screen());
}

void QtWindow::setState(WindowState state) {
    switch (state) {
    case WindowState::normal:
        m_surface->setWindowStates(Qt::WindowNoState);
        break;
    case WindowState::maximized:
        if (isSizable()) {
            m_surface->setWindowStates(Qt::WindowMaximized);
        }
        break;
    case WindowState::minimized:
        m_surface->setWindowStates(m_surface->windowStates() | Qt::WindowMinimized);
        break;
    }
}

WindowState QtWindow::state() const {
    const Qt::WindowStates states = m_surface->windowStates();
    if (states.testFlag(Qt::WindowMinimized)) {
        return WindowState::minimized;
    }
    return states.testAnyFlags(Qt::WindowMaximized | Qt::WindowFullScreen) ? WindowState::maximized
                                                                           : WindowState::normal;
}

Rect QtWindow::normalGeometry() const {
    return state() == WindowState::normal ? geometry() : toLayout(m_normal, unit());
}

void QtWindow::noteGeometry() {
    const Rect now = qtGeometry();
    if (state() == WindowState::normal && now != m_normal) {
        m_formerNormal = std::exchange(m_normal, now);
        m_formerContent = m_content;
        m_content.note(now.size(), unit());
    }
}

/// A window manager may size the window before it reports that it has maximised it.
void QtWindow::noteState() {
    if (state() == WindowState::maximized && m_normal == qtGeometry()) {
        m_normal = m_formerNormal;
        m_content = m_formerContent;
    }
}

void QtWindow::setTitle(const std::u16string& title) {
    m_surface->setTitle(toQt(title));
}

void QtWindow::setEnabled(bool enabled) {
    m_enabled = enabled;
    if (!enabled) {
        m_input.loseCapture();
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
    m_input.releaseCapture();
    m_closing = true;
    m_timers.stopAll();
    // Before this window is hidden, or the system would activate another one in between.
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

void QtWindow::requestClose() {
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
        m_input.loseCapture();
        if (surface->window() == nullptr) {
            return;
        }
    }
    Event event;
    event.kind = focused ? EventKind::activated : EventKind::deactivated;
    send(event);
}

void QtWindow::handleSize(bool ofState) {
    if (ofState) {
        noteState();
    } else {
        noteGeometry();
    }
    const QPointer<QtSurface> surface = m_surface.get();
    if (isSizable()) {
        Event event;
        event.kind = EventKind::resized;
        send(event);
    }
    if (surface == nullptr || surface->window() == nullptr) {
        return;
    }
    if (ofState) {
        // The size that goes with the state is still to come: a Wayland compositor would take a
        // picture of the former one for a fault and end the connection.
        const Size size = contentSize();
        m_picture.invalidate({0, 0, size.width, size.height});
    } else {
        m_picture.showAll();
    }
}

bool QtWindow::handleQtEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::Timer:
        return m_timers.handle(static_cast<QTimerEvent&>(event).timerId());
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        handleFocus(event.type() == QEvent::FocusIn);
        return true;
    case QEvent::Close:
        event.ignore(); // the surface stays until its owner destroys it
        requestClose();
        return true;
    case QEvent::UpdateRequest:
        m_picture.paintDirty();
        return true;
    case QEvent::Move:
        noteGeometry();
        return false;
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        handleSize(event.type() == QEvent::WindowStateChange);
        return false;
    case QEvent::Expose:
        m_picture.showAll();
        return false;
    default:
        return m_input.handle(event);
    }
}

void QtWindow::changed(Accessible& node, AccessibleChange change) {
    guardedRun("accessible change", [&] { QtAccessibleNodes::changed(*m_surface, node, change); });
}

} // namespace platform::qt
