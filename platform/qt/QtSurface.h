// The QWindow under a native window. It knows Qt's events and nothing else: each goes to the
// QtWindow it belongs to, as long as there is one.
#pragma once

#include <QPointer>
#include <QWindow>
#include <memory>

namespace platform::qt {

class QtWindow;

class QtSurface final : public QWindow {
public:
    explicit QtSurface(QtWindow& window) : m_window(&window) {}

    /// The native window is gone; what Qt still reports ends here.
    void detach() { m_window = nullptr; }
    /// Null after detach.
    [[nodiscard]] QtWindow* window() const { return m_window; }

    [[nodiscard]] QAccessibleInterface* accessibleRoot() const override;

protected:
    bool event(QEvent* event) override;

private:
    QtWindow* m_window; ///< not owned
};

/// Ends a surface once no handler of its own runs any more: windows are often destroyed from inside
/// one of their events.
struct LaterDeleter {
    void operator()(QtSurface* surface) const {
        surface->detach();
        surface->hide();
        surface->deleteLater();
    }
};
using SurfaceOwner = std::unique_ptr<QtSurface, LaterDeleter>;

} // namespace platform::qt
