#include "ZoneEdit/Overview.h"

#include <algorithm>
#include <cstddef>

#include "platform/Color.h"
#include "platform/Event.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"

namespace zoneedit {
namespace {

using platform::Color;
using platform::Rect;

constexpr Color kEdge = 0xFF14191F;
constexpr Color kLine = 0xFFFFFFFF;
constexpr Color kVeil = 0x7314191F;
/// What is made small keeps twice the width of the control, for screens of that scale.
constexpr int kSmallWidth = 352;

/// Each pixel the mean of a square of the frame; what is left at the right and bottom is cut off.
platform::Bitmap reduced(const platform::FrameBuffer& frame, int side) {
    platform::Bitmap small({frame.size().width / side, frame.size().height / side});
    const auto area = static_cast<std::uint32_t>(side * side);
    for (int y = 0; y < small.size().height; ++y) {
        for (int x = 0; x < small.size().width; ++x) {
            std::uint32_t sums[3] = {};
            for (int row = y * side; row < (y + 1) * side; ++row) {
                const std::uint8_t* at =
                    frame.bits() +
                    static_cast<std::ptrdiff_t>(frame.size().height - 1 - row) * frame.rowBytes() +
                    static_cast<std::ptrdiff_t>(x) * side * 3;
                for (int column = 0; column < side; ++column, at += 3) {
                    sums[0] += at[0];
                    sums[1] += at[1];
                    sums[2] += at[2];
                }
            }
            small.row(y)[x] =
                platform::rgb(sums[2] / area, sums[1] / area, sums[0] / area) | 0xFF000000U;
        }
    }
    return small;
}

} // namespace

void Overview::refresh() {
    const platform::FrameBuffer* frame = m_video->backBuffer();
    if (frame != nullptr && (m_small.isEmpty() || m_smallId != m_video->pictureId())) {
        m_small = reduced(*frame, std::max(frame->size().width / kSmallWidth, 1));
        m_smallId = m_video->pictureId();
    }
}

Rect Overview::shownPart() const {
    const platform::Size whole = m_video->displaySize();
    const video::PictureView view = m_video->view();
    const Rect seen = m_video->pictureRect();
    const platform::Point from = view.toDisplay(seen.topLeft());
    const platform::Point to = view.toDisplay({seen.right - 1, seen.bottom - 1});
    const Rect& pos = GetPos();
    return {pos.left + from.x * pos.width() / whole.width,
            pos.top + from.y * pos.height() / whole.height,
            pos.left + (to.x + 1) * pos.width() / whole.width,
            pos.top + (to.y + 1) * pos.height() / whole.height};
}

void Overview::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    if (m_video == nullptr || !m_video->isCut()) {
        return;
    }
    refresh();
    const Rect& pos = GetPos();
    canvas.fillRect(pos, kEdge);
    if (!m_small.isEmpty()) {
        canvas.drawStill(m_small, pos);
    }
    const Rect part = shownPart().intersected(pos);
    canvas.fillRect({pos.left, pos.top, pos.right, part.top}, kVeil);
    canvas.fillRect({pos.left, part.bottom, pos.right, pos.bottom}, kVeil);
    canvas.fillRect({pos.left, part.top, part.left, part.bottom}, kVeil);
    canvas.fillRect({part.right, part.top, pos.right, part.bottom}, kVeil);
    canvas.fillFrame(pos, {1, 1, 1, 1}, kEdge);
    canvas.fillFrame({pos.left + 1, pos.top + 1, pos.right - 1, pos.bottom - 1}, {1, 1, 1, 1},
                     kLine);
    canvas.fillFrame({part.left - 1, part.top - 1, part.right + 1, part.bottom + 1}, {1, 1, 1, 1},
                     kEdge);
    canvas.fillFrame(part, {2, 2, 2, 2}, kLine);
}

bool Overview::DoEvent(const toolkit::TEventUI& event) {
    using toolkit::EventType;
    switch (event.Type) {
    case EventType::buttonDown:
    case EventType::doubleClick:
        m_isHeld = true;
        goTo(event.native.position);
        return true;
    case EventType::mouseMove:
        if (m_isHeld) {
            goTo(event.native.position);
        }
        return true;
    case EventType::buttonUp:
    case EventType::captureLost:
        m_isHeld = false;
        return true;
    default:
        return CControlUI::DoEvent(event);
    }
}

void Overview::goTo(Point at) {
    const Rect& pos = GetPos();
    if (m_video != nullptr && !pos.isEmpty()) {
        const platform::Size whole = m_video->displaySize();
        m_video->center({(at.x - pos.left) * whole.width / pos.width(),
                         (at.y - pos.top) * whole.height / pos.height()});
    }
}

platform::AccessibleState Overview::accessibleState() const {
    platform::AccessibleState state = CControlUI::accessibleState();
    state.visible = false;
    return state;
}

} // namespace zoneedit
