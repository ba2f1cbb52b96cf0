// Moves a window by its caption, from the first motion with the button down on, not from the press:
// a tap on a touchpad is over by the time it is handled.
#pragma once

#include <QMouseEvent>
#include <QPoint>
#include <functional>
#include <optional>

namespace platform::qt {

class WindowMove {
public:
    /// `startSystemMove` hands the move to the system, or returns false where the program has to do
    /// it; `moveTo` places the window's top left corner then.
    WindowMove(std::function<bool()> startSystemMove, std::function<void(QPoint)> moveTo);

    /// The button went down on the caption, at `grip` within the window.
    void begin(QPoint grip);
    void end() { m_grip.reset(); }
    /// True when the event is part of the move and must not be handled otherwise.
    bool follow(const QMouseEvent& event);

private:
    std::function<bool()> m_startSystemMove;
    std::function<void(QPoint)> m_moveTo;
    std::optional<QPoint> m_grip; ///< while a move is on
    bool m_ours = false;          ///< the system refused it
};

} // namespace platform::qt
