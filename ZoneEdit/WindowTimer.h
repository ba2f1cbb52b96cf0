// A timer of the editor's window, under a number of its own. Part of the zone editor. UI thread
// only.
#pragma once

#include "ui/Controls.h"

namespace zoneedit {

// Numbers that no other timer of a window has.
inline constexpr unsigned kHeaderTimer = 0x7FFFFFFC;
inline constexpr unsigned kHintTimer = 0x7FFFFFFD;
inline constexpr unsigned kPlayTimer = 0x7FFFFFFE;
inline constexpr unsigned kNoticeTimer = 0x7FFFFFFF;

class WindowTimer {
public:
    WindowTimer(ui::Controls controls, unsigned number) : m_controls(controls), m_number(number) {}

    /// Anew, if it runs.
    void start(int milliseconds);
    void stop();
    /// Whether the timer with that number is this one, which stops then.
    bool isUp(unsigned number);

private:
    ui::Controls m_controls;
    unsigned m_number;
};

} // namespace zoneedit
