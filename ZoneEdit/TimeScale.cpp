#include "ZoneEdit/TimeScale.h"

#include <algorithm>
#include <cmath>

namespace zoneedit {

void TimeScale::setClip(int frames, int least) {
    m_frames = std::max(frames, 1);
    m_least = std::max(least, 1);
    showAll();
}

void TimeScale::setBar(int left, int width) {
    m_left = left;
    m_width = std::max(width, 1);
}

int TimeScale::frameAt(int x) const {
    const double part = std::clamp((x - m_left) / static_cast<double>(m_width), 0.0, 1.0);
    const double frame = std::floor(m_from + part * m_span + 0.5);
    return static_cast<int>(std::clamp(frame, 0.0, m_frames - 1.0));
}

void TimeScale::showAll() {
    show(0, wholeSpan());
}

void TimeScale::show(double from, double span) {
    const double whole = wholeSpan();
    m_span = std::clamp(span, std::min<double>(m_least, whole), whole);
    m_from = std::clamp(from, 0.0, whole - m_span);
}

void TimeScale::zoom(double factor, int x) {
    const double part = std::clamp((x - m_left) / static_cast<double>(m_width), 0.0, 1.0);
    const double fixed = m_from + part * m_span;
    const double whole = wholeSpan();
    const double span = std::clamp(m_span * factor, std::min<double>(m_least, whole), whole);
    show(fixed - part * span, span);
}

void TimeScale::move(double frames) {
    show(m_from + frames, m_span);
}

bool TimeScale::reveal(int frame) {
    if (frame >= m_from && frame <= m_from + m_span) {
        return false;
    }
    // A page further, so that playing does not move it with every frame.
    show(frame > m_from ? frame - m_span * 0.1 : frame - m_span * 0.9, m_span);
    return true;
}

} // namespace zoneedit
