// Mouse, keyboard and input method of a window.
#pragma once

#include <QPoint>
#include <optional>

#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "platform/qt/WindowMove.h"

class QDropEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QWheelEvent;

namespace platform::qt {

class QtWindow;

class QtWindowInput final : public WindowInput {
public:
    /// `window` is not owned, has its surface and outlives its parts.
    explicit QtWindowInput(QtWindow& window);

    void setCapture() override;
    void releaseCapture() override;
    void setPointer(PointerShape shape) override;
    void beginMove() override;
    void setTextInput(bool enabled, const Rect& caret) override;

    /// True when Qt need not see the event any more. May destroy the window.
    bool handle(QEvent& event);
    /// Another window took the capture, or the system did.
    void loseCapture();

private:
    /// A press that the next one may turn into a double click.
    struct Press {
        Qt::MouseButton button = Qt::NoButton;
        QPoint position;
        unsigned long long timestampMs = 0;
    };

    void showPointer();
    bool handlePointer(QEvent& event);
    void handleDrag(QDropEvent& event);
    void takeMouse(const QMouseEvent& event);
    /// `place`: in the surface, in Qt's pixels.
    void handleMouse(const QMouseEvent& event, QPointF place);
    /// True when the event is about the border, at which the window is sized.
    bool handleBorder(const QMouseEvent& event, QPointF place);
    void handleWheel(const QWheelEvent& event);
    void handleKey(const QKeyEvent& event);
    void handleInputMethod(const QInputMethodEvent& event);
    void answerInputMethod(QInputMethodQueryEvent& event) const;
    [[nodiscard]] bool completesDoubleClick(const QMouseEvent& event);

    QtWindow& m_window;
    std::optional<Press> m_lastPress;
    QPoint m_pointer; ///< screen position of the last mouse event
    WindowMove m_move;
    WindowMove m_sizing; ///< of the edges m_edges
    Qt::Edges m_edges;
    Rect m_sizedFrom;
    PointerShape m_shape = PointerShape::arrow;
    bool m_onBorder = false;
    bool m_textInput = false;
    Rect m_caret;
    bool m_preedit = false;
};

} // namespace platform::qt
