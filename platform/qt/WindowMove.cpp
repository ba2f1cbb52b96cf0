#include "platform/qt/WindowMove.h"

#include <utility>

namespace platform::qt {

WindowMove::WindowMove(std::function<bool()> startSystemMove, std::function<void(QPoint)> moveTo)
    : m_startSystemMove(std::move(startSystemMove)), m_moveTo(std::move(moveTo)) {}

void WindowMove::begin(QPoint grip) {
    m_grip = grip;
    m_ours = false;
}

bool WindowMove::follow(const QMouseEvent& event) {
    if (!m_grip) {
        return false;
    }
    if (event.type() != QEvent::MouseMove || !event.buttons().testFlag(Qt::LeftButton)) {
        end();
        return true;
    }
    m_ours = m_ours || !m_startSystemMove();
    if (m_ours) {
        m_moveTo(event.globalPosition().toPoint() - *m_grip);
    } else {
        end();
    }
    return true;
}

} // namespace platform::qt
