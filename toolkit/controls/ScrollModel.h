// The arithmetic of a vertical scroll bar: which part of the content is visible, and where the
// thumb is in its track. Shared by the lists' scroll bar and the drop lists.
#pragma once

#include <cstdint>

#include "platform/Geometry.h"

namespace toolkit {

class ScrollModel {
public:
    /// Heights in pixels; keeps the offset inside the new range.
    void setExtent(int content, int page);
    [[nodiscard]] bool isNeeded() const { return m_content > m_page; }
    [[nodiscard]] int offset() const { return m_offset; }
    [[nodiscard]] int maximum() const { return m_content > m_page ? m_content - m_page : 0; }
    [[nodiscard]] int page() const { return m_page; }
    /// True when the offset, kept inside 0 to maximum(), changed.
    bool setOffset(int offset);
    /// Turns the wheel by `delta` (platform::Event::wheelDelta): three rows a notch. Parts of a
    /// pixel add up. True when the offset changed.
    bool turnWheel(int delta, int rowHeight);
    /// The smallest move that shows content rows `top` (included) to `bottom` (excluded).
    bool reveal(int top, int bottom);
    /// The thumb's part of `track`, at least kMinThumb high where the track allows.
    [[nodiscard]] platform::Rect thumb(const platform::Rect& track) const;
    /// The offset that puts the thumb's top at `top`.
    [[nodiscard]] int offsetForThumb(const platform::Rect& track, int top) const;

    static constexpr int kMinThumb = 24;

private:
    int m_content = 0;
    int m_page = 0;
    int m_offset = 0;
    std::int64_t m_turned = 0; ///< of the wheel, in parts of a pixel, that moved nothing yet
};

} // namespace toolkit
