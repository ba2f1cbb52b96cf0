// The range of frames that the author has marked, for whatever acts on several frames. It belongs
// to no zone and is part of no file. UI thread only.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "edit/Observers.h"

namespace zoneedit {

/// Both included.
struct FrameSpan {
    int first = 0;
    int last = 0;

    [[nodiscard]] int count() const { return last - first + 1; }
    bool operator==(const FrameSpan&) const = default;
};

class FrameSelection {
public:
    /// None is marked at first. `frames`: of the clip.
    explicit FrameSelection(int frames) : m_frames(frames) {}

    [[nodiscard]] const std::optional<FrameSpan>& span() const { return m_span; }
    /// In either order, cut to the clip; nothing in a clip without frames.
    void mark(int one, int other) {
        if (m_frames > 0) {
            one = std::clamp(one, 0, m_frames - 1);
            other = std::clamp(other, 0, m_frames - 1);
            change(FrameSpan{std::min(one, other), std::max(one, other)});
        }
    }
    /// Without a range, one of this frame alone; else an end moves, and takes the other one along
    /// where it would pass it.
    void beginAt(int frame) { mark(frame, std::max(m_span ? m_span->last : frame, frame)); }
    void endAt(int frame) { mark(std::min(m_span ? m_span->first : frame, frame), frame); }
    void clear() { change(std::nullopt); }

    /// The listener is called after each change.
    [[nodiscard]] edit::Subscription observe(std::function<void()> listener) {
        return m_observers.add(std::move(listener));
    }

private:
    void change(const std::optional<FrameSpan>& span) {
        if (span != m_span) {
            m_span = span;
            m_observers.notify();
        }
    }

    int m_frames;
    std::optional<FrameSpan> m_span;
    edit::Observers<> m_observers;
};

} // namespace zoneedit
