// Mouse, keyboard and input method of a window.
#include <QEnterEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "platform/Composition.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"
#include "platform/qt/QtWindowHost.h"

namespace platform::qt {

namespace {

/// The pixel that a position lies in. Not the nearest one: on a screen of twice the pixels half of
/// each would be its neighbour's.
Point pixelAt(QPointF position) {
    constexpr double kRounding = 1e-6; // of Qt's division by the scale
    return {static_cast<int>(std::floor(position.x() + kRounding)),
            static_cast<int>(std::floor(position.y() + kRounding))};
}

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

bool QtWindow::handleQtEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return m_host.mouseTarget(*this).handleMouse(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonDblClick:
        return true; // found by ourselves: Qt sends it beside the press, not instead of it
    case QEvent::Wheel:
        return handleWheel(static_cast<QWheelEvent&>(event));
    case QEvent::Enter:
        if (m_enabled) {
            send(mouseEvent(EventKind::mouseMove, static_cast<QEnterEvent&>(event).position()));
        }
        return true;
    case QEvent::Leave:
        send(mouseEvent(EventKind::mouseLeave, QPointF(-1, -1)));
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return handleKey(static_cast<QKeyEvent&>(event));
    case QEvent::InputMethod:
        return handleInputMethod(static_cast<QInputMethodEvent&>(event));
    case QEvent::InputMethodQuery:
        return answerInputMethod(static_cast<QInputMethodQueryEvent&>(event));
    case QEvent::Timer:
        return handleTimer(static_cast<QTimerEvent&>(event).timerId());
    default:
        return handleStateEvent(event);
    }
}

bool QtWindow::handleStateEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        handleFocus(event.type() == QEvent::FocusIn);
        return true;
    case QEvent::Close:
        event.ignore(); // the surface stays until its owner ends it
        handleCloseRequest();
        return true;
    case QEvent::UpdateRequest:
        paintDirty();
        return true;
    case QEvent::Expose:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        if (isOnScreen()) {
            resizeBack();
            paintDirty();
            present(QRect(QPoint(), m_surface->size()));
        }
        return false;
    default:
        return false;
    }
}

bool QtWindow::completesDoubleClick(const QMouseEvent& event) {
    const Press press{event.button(), event.globalPosition().toPoint(), event.timestamp()};
    const std::optional<Press> last = std::exchange(m_lastPress, press);
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const bool pair =
        last && last->button == press.button && press.timestampMs >= last->timestampMs &&
        press.timestampMs - last->timestampMs <
            static_cast<unsigned long long>(hints.mouseDoubleClickInterval()) &&
        (press.position - last->position).manhattanLength() < hints.mouseDoubleClickDistance();
    if (pair) {
        m_lastPress.reset(); // a third press starts anew
    }
    return pair;
}

bool QtWindow::handleMouse(const QMouseEvent& event) {
    if (!m_enabled) {
        if (event.type() == QEvent::MouseButtonPress) {
            m_host.activateDialogOf(*this);
        }
        return true;
    }
    m_pointer = event.globalPosition().toPoint();
    if (m_move.follow(event)) {
        return true;
    }
    Event ours = mouseEvent(EventKind::mouseMove, m_surface->mapFromGlobal(event.globalPosition()));
    if (event.type() != QEvent::MouseMove) {
        ours.button = buttonFromQt(event.button());
        if (ours.button == MouseButton::none) {
            return true;
        }
        ours.kind = event.type() == QEvent::MouseButtonRelease ? EventKind::mouseUp
                    : completesDoubleClick(event)              ? EventKind::mouseDoubleClick
                                                               : EventKind::mouseDown;
    }
    send(ours);
    return true;
}

bool QtWindow::handleWheel(const QWheelEvent& event) {
    if (m_enabled && event.angleDelta().y() != 0) {
        Event ours = mouseEvent(EventKind::mouseWheel, event.position());
        ours.wheelDelta = event.angleDelta().y();
        send(ours);
    }
    return true;
}

bool QtWindow::handleKey(const QKeyEvent& event) {
    const bool down = event.type() == QEvent::KeyPress;
    if (!m_enabled || (!down && event.isAutoRepeat())) {
        return true;
    }
    const QPointer<QtSurface> surface = m_surface.get();
    Event ours;
    ours.kind = down ? EventKind::keyDown : EventKind::keyUp;
    ours.key = keyFromQt(event.key());
    ours.repeat = event.isAutoRepeat();
    ours.modifiers = modifiersFromQt(event.modifiers());
    ours.text.clear();
    const std::u16string typed = down ? typedText(event) : std::u16string();
    const bool handled = send(ours);
    if (surface == nullptr || surface->window() == nullptr) {
        return true;
    }
    if (!handled && down && ours.key == Key::f4 && ours.modifiers.alt) {
        handleCloseRequest(); // where no window manager does it
        return true;
    }
    if (!typed.empty()) {
        ours.kind = EventKind::textInput;
        ours.key = Key::other;
        ours.text = typed;
        send(ours);
    }
    return true;
}

bool QtWindow::handleInputMethod(const QInputMethodEvent& event) {
    if (!m_enabled) {
        return true;
    }
    sendComposition({fromQt(event.preeditString()), fromQt(event.commitString())},
                    modifiersFromQt(QGuiApplication::keyboardModifiers()), m_preedit,
                    [this, surface = QPointer<QtSurface>(m_surface.get())](const Event& ours) {
                        send(ours);
                        return surface != nullptr && surface->window() != nullptr;
                    });
    return true;
}

bool QtWindow::answerInputMethod(QInputMethodQueryEvent& event) const {
    if (event.queries().testFlag(Qt::ImEnabled)) {
        event.setValue(Qt::ImEnabled, m_textInput && m_enabled);
    }
    if (event.queries().testFlag(Qt::ImCursorRectangle)) {
        event.setValue(Qt::ImCursorRectangle, toQt(m_caret));
    }
    event.accept();
    return true;
}

} // namespace platform::qt
