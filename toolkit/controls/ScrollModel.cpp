#include "toolkit/controls/ScrollModel.h"

#include <algorithm>

namespace toolkit {
namespace {

constexpr int kWheelNotch = 120;
constexpr int kRowsPerNotch = 3;

} // namespace

void ScrollModel::setExtent(int content, int page) {
    m_content = std::max(content, 0);
    m_page = std::max(page, 0);
    setOffset(m_offset);
}

bool ScrollModel::setOffset(int offset) {
    offset = std::clamp(offset, 0, maximum());
    const bool changed = offset != m_offset;
    m_offset = offset;
    return changed;
}

bool ScrollModel::turnWheel(int delta, int rowHeight) {
    m_turned -= std::int64_t{delta} * kRowsPerNotch * rowHeight;
    const std::int64_t wanted = m_offset + m_turned / kWheelNotch;
    const std::int64_t offset = std::clamp<std::int64_t>(wanted, 0, maximum());
    m_turned = wanted == offset ? m_turned % kWheelNotch : 0;
    return setOffset(static_cast<int>(offset));
}

bool ScrollModel::reveal(int top, int bottom) {
    if (top < m_offset || bottom - top > m_page) {
        return setOffset(top);
    }
    return bottom > m_offset + m_page && setOffset(bottom - m_page);
}

platform::Rect ScrollModel::thumb(const platform::Rect& track) const {
    const int length = track.height();
    if (!isNeeded() || length <= 0) {
        return {};
    }
    const auto share = static_cast<int>(std::int64_t{length} * m_page / m_content);
    const int height = std::min(length, std::max(share, kMinThumb));
    const auto top = static_cast<int>(std::int64_t{length - height} * m_offset / maximum());
    return platform::Rect::at(track.left, track.top + top, track.width(), height);
}

int ScrollModel::offsetForThumb(const platform::Rect& track, int top) const {
    const int room = track.height() - thumb(track).height();
    if (room <= 0) {
        return 0;
    }
    const std::int64_t moved = std::clamp(top - track.top, 0, room);
    return static_cast<int>((moved * maximum() + room / 2) / room);
}

} // namespace toolkit
