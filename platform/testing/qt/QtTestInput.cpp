// Input events through the window system interface, as the platform plug-in would report them.
#include <QCoreApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QUrl>
#include <QWheelEvent>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Event.h"
#include "platform/EventLoop.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"
#include "platform/testing/TestInput.h"

// Exported by Qt's GUI library for test programs; declared in its headers of the test library only.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers mods, int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers mods, const QString& text, bool autorep,
                                    ushort count);

namespace platform {

namespace qt {

namespace {

/// Longer than any desktop's double-click time.
constexpr int kBetweenClicksMs = 10000;

QtSurface& surfaceOf(NativeWindow& window) {
    return static_cast<QtWindow&>(window).surface();
}

/// In Qt's pixels.
QPointF placeOf(NativeWindow& window, Point position) {
    return QPointF(toQt(position)) * static_cast<QtWindow&>(window).unit();
}

class QtTestInput final : public TestInput {
public:
    explicit QtTestInput(Gui& gui) : m_loop(gui.loop()) {}

    void mouse(NativeWindow& window, EventKind kind, Point position, MouseButton button,
               Modifiers modifiers) override;
    void wheel(NativeWindow& window, Point position, int delta, Modifiers modifiers) override;
    void key(NativeWindow& window, EventKind kind, Key key, const std::u16string& text,
             Modifiers modifiers) override;
    void preedit(NativeWindow& window, const std::u16string& text) override;
    void commit(NativeWindow& window, const std::u16string& text) override;
    void dropFiles(NativeWindow& window, const std::vector<std::string>& files) override;
    void minimize(NativeWindow& window, bool minimized) override;
    void requestClose(NativeWindow& window) override;

private:
    /// Runs `work` with the window's surface once its turn comes, if the window still lives.
    template <typename Work>
    void post(NativeWindow& window, Work work) {
        m_loop.post([surface = QPointer<QtSurface>(&surfaceOf(window)), work = std::move(work)] {
            if (surface != nullptr && surface->window() != nullptr) {
                work(*surface);
            }
        });
    }

    EventLoop& m_loop;
    Qt::MouseButtons m_buttons;
    int m_timestampMs = kBetweenClicksMs;
};

void QtTestInput::mouse(NativeWindow& window, EventKind kind, Point position, MouseButton button,
                        Modifiers modifiers) {
    if (kind == EventKind::mouseLeave) {
        post(window, [](QtSurface& surface) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(&surface, &leave);
        });
        return;
    }
    const bool press = kind == EventKind::mouseDown || kind == EventKind::mouseDoubleClick;
    m_timestampMs += kind == EventKind::mouseDown ? kBetweenClicksMs : 1;
    const Qt::MouseButton qtButton =
        kind == EventKind::mouseMove ? Qt::NoButton : buttonToQt(button);
    m_buttons.setFlag(qtButton, press);
    const QEvent::Type type = kind == EventKind::mouseMove ? QEvent::MouseMove
                              : press                      ? QEvent::MouseButtonPress
                                                           : QEvent::MouseButtonRelease;
    post(window, [=, at = placeOf(window, position), held = m_buttons,
                  keys = modifiersToQt(modifiers), time = m_timestampMs](QtSurface& surface) {
        qt_handleMouseEvent(&surface, at, surface.mapToGlobal(at), held, qtButton, type, keys,
                            time);
    });
}

void QtTestInput::wheel(NativeWindow& window, Point position, int delta, Modifiers modifiers) {
    post(window, [delta, at = placeOf(window, position), keys = modifiersToQt(modifiers),
                  held = m_buttons](QtSurface& surface) {
        QWheelEvent event(at, surface.mapToGlobal(at), QPoint(), QPoint(0, delta), held, keys,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&surface, &event);
    });
}

void QtTestInput::key(NativeWindow& window, EventKind kind, Key key, const std::u16string& text,
                      Modifiers modifiers) {
    const QEvent::Type type = kind == EventKind::keyUp ? QEvent::KeyRelease : QEvent::KeyPress;
    post(window, [type, code = keyToQt(key), keys = modifiersToQt(modifiers),
                  typed = toQt(text)](QtSurface& surface) {
        qt_handleKeyEvent(&surface, type, code, keys, typed, false, 1);
    });
}

void QtTestInput::preedit(NativeWindow& window, const std::u16string& text) {
    post(window, [shown = toQt(text)](QtSurface& surface) {
        QInputMethodEvent event(shown, {});
        QCoreApplication::sendEvent(&surface, &event);
    });
}

void QtTestInput::commit(NativeWindow& window, const std::u16string& text) {
    post(window, [committed = toQt(text)](QtSurface& surface) {
        QInputMethodEvent event;
        event.setCommitString(committed);
        QCoreApplication::sendEvent(&surface, &event);
    });
}

void QtTestInput::dropFiles(NativeWindow& window, const std::vector<std::string>& files) {
    post(window, [files, at = placeOf(window, {1, 1})](QtSurface& surface) {
        QList<QUrl> urls;
        for (const std::string& file : files) {
            urls.push_back(QUrl::fromLocalFile(QString::fromStdString(file)));
        }
        QMimeData data;
        data.setUrls(urls);
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(at.toPoint(), actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&surface, &enter);
        if (enter.isAccepted()) {
            QDropEvent drop(at, actions, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&surface, &drop);
        }
    });
}

void QtTestInput::minimize(NativeWindow& window, bool minimized) {
    post(window, [minimized](QtSurface& surface) {
        surface.setWindowState(minimized ? Qt::WindowMinimized : Qt::WindowNoState);
    });
}

void QtTestInput::requestClose(NativeWindow& window) {
    post(window, [](QtSurface& surface) { surface.close(); });
}

} // namespace

} // namespace qt

std::unique_ptr<TestInput> createTestInput(Gui& gui) {
    return std::make_unique<qt::QtTestInput>(gui);
}

} // namespace platform
