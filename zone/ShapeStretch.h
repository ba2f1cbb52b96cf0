// Shapes for consecutive frames of a zone, about to replace those it has there. A value: whoever
// works out many shapes at once, in a window or on another thread, hands them over in one of these.
#pragma once

#include <memory>
#include <span>

#include "platform/Geometry.h"
#include "zone/ShapeTrack.h"

namespace zone {

/// From `first` up to `end`, which is excluded.
struct FrameRange {
    int first = 0;
    int end = 0;

    [[nodiscard]] bool contains(int frame) const { return first <= frame && frame < end; }
    [[nodiscard]] int count() const { return end - first; }
    bool operator==(const FrameRange&) const = default;
};

class ShapeStretch {
public:
    /// `first` is the first frame that add() gives a shape.
    explicit ShapeStretch(int first) : m_first(first) {}

    /// The next `frames` frames.
    void add(std::span<const platform::Point> points, bool active, int frames = 1) {
        m_shapes->append(points, active, frames);
    }
    [[nodiscard]] FrameRange frames() const { return {m_first, m_first + m_shapes->frameCount()}; }
    [[nodiscard]] bool isEmpty() const { return m_shapes->frameCount() == 0; }
    [[nodiscard]] const ShapeTrack& shapes() const { return *m_shapes; }

private:
    int m_first;
    /// Copies share it: none is added to once it is copied.
    std::shared_ptr<ShapeTrack> m_shapes = std::make_shared<ShapeTrack>();
};

} // namespace zone
