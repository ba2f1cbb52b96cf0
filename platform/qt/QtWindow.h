// A native window on Qt. The parts stand in files by subject: life and geometry (QtWindow.cpp),
// input (QtWindowInput.cpp) and painting (QtWindowPaint.cpp).
#pragma once

#include <QBackingStore>
#include <QPoint>
#include <map>
#include <optional>

#include "platform/Window.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/WindowMove.h"
#include "platform/raster/DirtyRegion.h"

class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QMouseEvent;
class QRegion;
class QWheelEvent;

namespace platform::qt {

class QtWindowHost;

class QtWindow final : public NativeWindow {
public:
    /// `host` and `events` are not owned and must outlive the window.
    QtWindow(QtWindowHost& host, const WindowOptions& options, WindowEvents& events);
    ~QtWindow() override;

    void show(bool visible) override;
    void center() override;
    void setGeometry(const Rect& screenRect) override;
    [[nodiscard]] Rect geometry() const override;
    void setTitle(const std::u16string& title) override;
    void setEnabled(bool enabled) override;
    void activate() override;
    void close() override;
    void invalidate(const Rect& dirty) override;
    void repaintNow() override;
    [[nodiscard]] Bitmap snapshot() override;
    void setCapture() override;
    void releaseCapture() override;
    void setPointer(PointerShape shape) override;
    bool startTimer(unsigned id, int intervalMs) override;
    bool stopTimer(unsigned id) override;
    void beginMove() override;
    void setTextInput(bool enabled, const Rect& caret) override;
    [[nodiscard]] FrameBufferResult createFrameBuffer(Size size) override;
    void accessibleChanged(Accessible& node, AccessibleChange change) override;

    /// True when Qt need not see the event any more. May destroy this object.
    bool handleQtEvent(QEvent& event);
    /// Another window took the capture, or the system did.
    void loseCapture();

    /// Not while a dialog of its own asks, nor when it is closing.
    [[nodiscard]] bool takesInput() const { return m_enabled && !m_closing; }
    [[nodiscard]] QtSurface& surface() const { return *m_surface; }
    [[nodiscard]] WindowEvents& events() const { return m_events; }

private:
    /// A press that the next one may turn into a double click.
    struct Press {
        Qt::MouseButton button = Qt::NoButton;
        QPoint position;
        unsigned long long timestampMs = 0;
    };

    bool send(const Event& event);
    void finish();
    void fixSize(Size size);
    void handleFocus(bool focused);
    void handleCloseRequest();

    bool handleStateEvent(QEvent& event);
    bool handleMouse(const QMouseEvent& event);
    bool handleWheel(const QWheelEvent& event);
    bool handleKey(const QKeyEvent& event);
    bool handleInputMethod(const QInputMethodEvent& event);
    bool answerInputMethod(QInputMethodQueryEvent& event) const;
    bool handleTimer(int timerId);
    [[nodiscard]] bool completesDoubleClick(const QMouseEvent& event);

    void paintDirty();
    void paintRect(const Rect& rect);
    void present(const QRegion& region);
    bool resizeBack();
    /// Neither hidden nor minimised.
    [[nodiscard]] bool isOnScreen() const;
    void requestPaint();

    QtWindowHost& m_host;
    WindowEvents& m_events;
    SurfaceOwner m_surface;
    QBackingStore m_store;
    WindowKind m_kind;
    int m_cornerRadius;
    bool m_enabled = true;
    bool m_closing = false;
    bool m_destroyedSent = false;

    Bitmap m_back; ///< the window's picture; the store only carries it to the screen
    raster::DirtyRegion m_dirty;
    bool m_paintRequested = false;

    std::map<unsigned, int> m_timers; ///< our id to Qt's
    std::optional<Press> m_lastPress;
    QPoint m_pointer; ///< screen position of the last mouse event
    WindowMove m_move;
    bool m_textInput = false;
    Rect m_caret;
    bool m_preedit = false;
};

} // namespace platform::qt
