#include "zone/ShapedFrames.h"

namespace zone {

void ShapedFramesChange::prepare(const std::set<int>& frames, const ShapedFrames& wanted) {
    const auto end = frames.lower_bound(wanted.leave.end);
    for (auto at = frames.lower_bound(wanted.leave.first); at != end; ++at) {
        if (*at != wanted.joins) {
            m_changed.push_back(*at);
        }
    }
    if (wanted.joins >= 0 && !frames.contains(wanted.joins)) {
        m_changed.push_back(wanted.joins);
        m_away.insert(wanted.joins);
    }
}

void ShapedFramesChange::swap(std::set<int>& frames) noexcept {
    for (const int frame : m_changed) {
        const bool joins = m_away.contains(frame);
        std::set<int>& from = joins ? m_away : frames;
        (joins ? frames : m_away).insert(from.extract(frame)); // needs no memory
    }
}

std::size_t ShapedFramesChange::bytes() const {
    return m_changed.capacity() * sizeof(int) + m_away.size() * 5 * sizeof(void*);
}

} // namespace zone
