#include "platform/qt/QtWindowInput.h"

#include <QCursor>
#include <QDropEvent>
#include <QEnterEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPixmap>
#include <QStyleHints>
#include <QUrl>
#include <QWheelEvent>
#include <cmath>
#include <string>
#include <utility>

#include "platform/Bitmap.h"
#include "platform/Composition.h"
#include "platform/Event.h"
#include "platform/Window.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"
#include "platform/qt/QtWindowHost.h"
#include "platform/qt/WindowSizing.h"
#include "platform/raster/PointerPicture.h"

namespace platform::qt {

namespace {

/// The pixel that contains a position, not the nearest one: on a screen with twice the pixels, half
/// of each pixel would count as its neighbour.
Point pixelAt(QPointF position) {
    constexpr double kRounding = 1e-6; // of Qt's division by the scale
    return {static_cast<int>(std::floor(position.x() + kRounding)),
            static_cast<int>(std::floor(position.y() + kRounding))};
}

Qt::CursorShape systemCursor(PointerShape shape) {
    switch (shape) {
    case PointerShape::text:
        return Qt::IBeamCursor;
    case PointerShape::hand:
        return Qt::PointingHandCursor;
    case PointerShape::sizeAcross:
        return Qt::SizeHorCursor;
    case PointerShape::sizeDown:
        return Qt::SizeVerCursor;
    case PointerShape::notAllowed:
        return Qt::ForbiddenCursor;
    case PointerShape::arrow:
    case PointerShape::move:
    case PointerShape::addPoint:
    case PointerShape::deletePoint:
    case PointerShape::scale:
    case PointerShape::rotate:
    case PointerShape::rectangle:
    case PointerShape::link:
        break;
    }
    return Qt::ArrowCursor;
}

/// `scale`: pixels of the screen for a layout pixel, of which `ratio` are Qt's for one of its own.
QCursor cursorOf(PointerShape shape, double scale, double ratio) {
    raster::PointerPicture picture = raster::pointerPicture(shape, scale);
    if (picture.bitmap.isEmpty()) {
        return QCursor(systemCursor(shape));
    }
    QPixmap pixmap = QPixmap::fromImage(imageOver(picture.bitmap).copy());
    pixmap.setDevicePixelRatio(ratio);
    return QCursor(pixmap, static_cast<int>(picture.hotSpot.x / ratio),
                   static_cast<int>(picture.hotSpot.y / ratio));
}

/// Whether to leave moves to the system. An X11 window manager learns of a move too late when the
/// button is released right after a motion: it then waits for a release that has already happened,
/// and the window sticks to the pointer. Under Wayland a program cannot place its windows itself.
bool movesWindows() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// `position` in layout pixels.
Event mouseEvent(EventKind kind, QPointF position) {
    Event event;
    event.kind = kind;
    event.position = pixelAt(position);
    event.modifiers = modifiersFromQt(QGuiApplication::keyboardModifiers());
    return event;
}

/// What a key types, without control characters and without the letters of shortcuts.
std::u16string typedText(const QKeyEvent& event) {
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    const bool alt = event.modifiers().testFlag(Qt::AltModifier);
    if (control != alt) { // both together are AltGr
        return {};
    }
    const QString text = event.text();
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control) {
            return {};
        }
    }
    return fromQt(text);
}

} // namespace

QtWindowInput::QtWindowInput(QtWindow& window)
    : m_window(window),
      m_move([this] { return movesWindows() && m_window.surface().startSystemMove(); },
             [this](QPoint place) { m_window.surface().setPosition(place); }),
      m_sizing([this] { return movesWindows() && m_window.surface().startSystemResize(m_edges); },
               [this](QPoint by) {
                   m_window.surface().setGeometry(
                       toQt(sizedBy(m_sizedFrom, m_edges, by, m_window.leastSize())));
               }) {}

void QtWindowInput::setCapture() {
    m_window.host().setCapture(*this);
}

void QtWindowInput::releaseCapture() {
    m_window.host().releaseCapture(*this);
}

void QtWindowInput::loseCapture() {
    if (m_window.host().releaseCapture(*this)) {
        Event event;
        event.kind = EventKind::captureLost;
        m_window.send(event);
    }
}

void QtWindowInput::setPointer(PointerShape shape) {
    m_shape = shape;
    if (!m_onBorder) {
        showPointer();
    }
}

void QtWindowInput::showPointer() {
    QtSurface& surface = m_window.surface();
    surface.setCursor(cursorOf(m_shape, m_window.scale(), surface.devicePixelRatio()));
}

void QtWindowInput::beginMove() {
    const QPointer<QtSurface> surface = &m_window.surface();
    loseCapture();
    if (surface->window() != nullptr && m_window.state() == WindowState::normal) {
        m_move.begin(m_pointer - surface->position());
    }
}

void QtWindowInput::setTextInput(bool enabled, const Rect& caret) {
    if (m_textInput == enabled && m_caret == caret) {
        return;
    }
    m_textInput = enabled;
    m_caret = caret;
    QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImCursorRectangle);
}

bool QtWindowInput::handle(QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        handleKey(static_cast<QKeyEvent&>(event));
        return true;
    case QEvent::InputMethod:
        handleInputMethod(static_cast<QInputMethodEvent&>(event));
        return true;
    case QEvent::InputMethodQuery:
        answerInputMethod(static_cast<QInputMethodQueryEvent&>(event));
        return true;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        handleDrag(static_cast<QDropEvent&>(event));
        return true;
    default:
        return handlePointer(event);
    }
}

bool QtWindowInput::handlePointer(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        takeMouse(static_cast<QMouseEvent&>(event));
        return true;
    case QEvent::MouseButtonDblClick:
        return true; // detected by us: Qt sends it in addition to the press, not instead of it
    case QEvent::Wheel:
        handleWheel(static_cast<QWheelEvent&>(event));
        return true;
    case QEvent::Enter:
        if (m_window.isEnabled()) {
            const QPointF at = static_cast<QEnterEvent&>(event).position() / m_window.unit();
            m_window.send(mouseEvent(EventKind::mouseMove, at));
        }
        return true;
    case QEvent::Leave:
        m_window.send(mouseEvent(EventKind::mouseLeave, QPointF(-1, -1)));
        return true;
    default:
        return false;
    }
}

bool QtWindowInput::completesDoubleClick(const QMouseEvent& event) {
    const Press press{event.button(), event.globalPosition().toPoint(), event.timestamp()};
    const std::optional<Press> last = std::exchange(m_lastPress, press);
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const bool pair =
        last && last->button == press.button && press.timestampMs >= last->timestampMs &&
        press.timestampMs - last->timestampMs <
            static_cast<unsigned long long>(hints.mouseDoubleClickInterval()) &&
        (press.position - last->position).manhattanLength() < hints.mouseDoubleClickDistance();
    if (pair) {
        m_lastPress.reset(); // a third press begins a new pair
    }
    return pair;
}

// Places on the screen are a detour that only other windows need: between screens of different
// scales Qt may not know yet where on them the window is.
void QtWindowInput::takeMouse(const QMouseEvent& event) {
    QtWindowInput& target = m_window.host().mouseTarget(*this);
    target.handleMouse(
        event, &target == this ? event.position()
                               : target.m_window.surface().mapFromGlobal(event.globalPosition()));
}

bool QtWindowInput::handleBorder(const QMouseEvent& event, QPointF place) {
    const bool presses = event.type() == QEvent::MouseButtonPress;
    if (!m_window.isSizable() || m_window.state() != WindowState::normal ||
        event.type() == QEvent::MouseButtonRelease ||
        event.buttons() != (presses ? Qt::LeftButton : Qt::NoButton)) {
        return false;
    }
    QtSurface& surface = m_window.surface();
    const Point at = pixelAt(place / m_window.unit());
    Qt::Edges edges = edgesAt(at, m_window.contentSize());
    if (edges != Qt::Edges() && m_window.takesPress(at)) {
        edges = {};
    }
    const bool wasOnBorder = std::exchange(m_onBorder, edges != Qt::Edges());
    if (!m_onBorder) {
        if (wasOnBorder) {
            showPointer();
        }
        return false;
    }
    surface.setCursor(cursorOf(edges));
    if (presses) {
        m_edges = edges;
        m_sizedFrom = m_window.qtGeometry();
        m_sizing.begin(m_pointer);
    }
    if (!wasOnBorder) {
        m_window.send(mouseEvent(EventKind::mouseLeave, QPointF(-1, -1)));
    }
    return true;
}

void QtWindowInput::handleMouse(const QMouseEvent& event, QPointF place) {
    if (!m_window.isEnabled()) {
        if (event.type() == QEvent::MouseButtonPress) {
            m_window.host().activateDialogOf(m_window);
        }
        return;
    }
    m_pointer = event.globalPosition().toPoint();
    if (m_move.follow(event) || m_sizing.follow(event) || handleBorder(event, place)) {
        return;
    }
    Event ours = mouseEvent(EventKind::mouseMove, place / m_window.unit());
    if (event.type() != QEvent::MouseMove) {
        ours.button = buttonFromQt(event.button());
        if (ours.button == MouseButton::none) {
            return;
        }
        ours.kind = event.type() == QEvent::MouseButtonRelease ? EventKind::mouseUp
                    : completesDoubleClick(event)              ? EventKind::mouseDoubleClick
                                                               : EventKind::mouseDown;
    }
    m_window.send(ours);
}

void QtWindowInput::handleWheel(const QWheelEvent& event) {
    if (m_window.isEnabled() && event.angleDelta().y() != 0) {
        Event ours = mouseEvent(EventKind::mouseWheel, event.position() / m_window.unit());
        ours.wheelDelta = event.angleDelta().y();
        ours.modifiers = modifiersFromQt(event.modifiers());
        m_window.send(ours);
    }
}

void QtWindowInput::handleKey(const QKeyEvent& event) {
    const bool down = event.type() == QEvent::KeyPress;
    if (!m_window.isEnabled() || (!down && event.isAutoRepeat())) {
        return;
    }
    const QPointer<QtSurface> surface = &m_window.surface();
    Event ours;
    ours.kind = down ? EventKind::keyDown : EventKind::keyUp;
    ours.key = keyFromQt(event.key());
    ours.repeat = event.isAutoRepeat();
    ours.modifiers = modifiersFromQt(event.modifiers());
    ours.text.clear();
    const std::u16string typed = down ? typedText(event) : std::u16string();
    const bool handled = m_window.send(ours);
    if (surface == nullptr || surface->window() == nullptr) {
        return;
    }
    if (!handled && down && ours.key == Key::f4 && ours.modifiers.alt) {
        m_window.requestClose(); // where no window manager does it
        return;
    }
    if (!typed.empty()) {
        ours.kind = EventKind::textInput;
        ours.key = Key::other;
        ours.text = typed;
        m_window.send(ours);
    }
}

void QtWindowInput::handleDrag(QDropEvent& event) {
    Event ours;
    ours.kind = EventKind::filesDropped;
    for (const QUrl& url : event.mimeData()->urls()) {
        if (url.isLocalFile()) {
            ours.files.push_back(url.toLocalFile().toStdString());
        }
    }
    // What is dropped stays where it is, whatever the source of the drag would rather do.
    if (!m_window.takesFiles() || ours.files.empty() ||
        !event.possibleActions().testFlag(Qt::CopyAction)) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() == QEvent::Drop) {
        m_window.send(ours);
    }
}

void QtWindowInput::handleInputMethod(const QInputMethodEvent& event) {
    if (!m_window.isEnabled()) {
        return;
    }
    sendComposition({fromQt(event.preeditString()), fromQt(event.commitString())},
                    modifiersFromQt(QGuiApplication::keyboardModifiers()), m_preedit,
                    [this, surface = QPointer<QtSurface>(&m_window.surface())](const Event& ours) {
                        m_window.send(ours);
                        return surface != nullptr && surface->window() != nullptr;
                    });
}

void QtWindowInput::answerInputMethod(QInputMethodQueryEvent& event) const {
    if (event.queries().testFlag(Qt::ImEnabled)) {
        event.setValue(Qt::ImEnabled, m_textInput && m_window.isEnabled());
    }
    if (event.queries().testFlag(Qt::ImCursorRectangle)) {
        const QRect caret = toQt(m_caret);
        const double unit = m_window.unit();
        event.setValue(Qt::ImCursorRectangle, QRectF(caret.x() * unit, caret.y() * unit,
                                                     caret.width() * unit, caret.height() * unit));
    }
    event.accept();
}

} // namespace platform::qt
