#include "ZoneEdit/Timeline.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "ZoneEdit/TimelinePainter.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FigureTexts.h"
#include "ui/Fonts.h"

namespace zoneedit {
namespace {

using platform::Event;

constexpr int kNotch = 120;
constexpr double kZoomStep = 1.25;
constexpr double kMoveStep = 0.1; // of what is shown
constexpr int kGripReach = 2;     // pixels beside a grip that take a press as well
constexpr int kPlayheadReach = 1; // beside its middle

} // namespace

void Timeline::showClip(int frames, double framesPerSecond) {
    m_frames = std::max(frames, 0);
    m_framesPerSecond = framesPerSecond > 0 ? framesPerSecond : 1;
    // A second at the least, so that some label of the ruler is in view.
    m_scale.setClip(m_frames, static_cast<int>(std::ceil(std::min(m_framesPerSecond, 1e6))));
    m_frame = 0;
    Invalidate();
}

void Timeline::SetPos(const Rect& pos) {
    CControlUI::SetPos(pos);
    const Rect bar = barOf(pos);
    m_scale.setBar(bar.left, bar.width());
}

void Timeline::invalidatePlayhead() {
    if (GetManager() != nullptr) {
        GetManager()->Invalidate(playhead(GetPos(), m_scale, m_frame).intersected(GetPos()));
    }
}

void Timeline::showFrame(int frame) {
    const int shown = std::clamp(frame, 0, std::max(m_frames - 1, 0));
    if (shown == m_frame) {
        return;
    }
    invalidatePlayhead();
    m_frame = shown;
    scrollTo(shown);
    invalidatePlayhead();
    accessibleChanged(platform::AccessibleChange::value);
}

void Timeline::scrollTo(int frame) {
    if (m_drag == Drag::none && m_scale.reveal(frame)) {
        Invalidate();
    }
}

void Timeline::showRange(const std::optional<FrameSpan>& span) {
    if (span != m_range) {
        m_range = span;
        Invalidate();
    }
}

void Timeline::showOffered(const zone::FrameRange& frames) {
    if (frames != m_offered) {
        m_offered = frames;
        Invalidate();
    }
}

void Timeline::fit() {
    m_scale.showAll();
    Invalidate();
}

Timeline::Drag Timeline::gripAt(Point point) const {
    const Rect head = playhead(GetPos(), m_scale, m_frame);
    const bool isOnPlayhead =
        std::abs(point.x - head.left - head.width() / 2) <= kPlayheadReach; // which lies on top
    if (!m_range || isOnPlayhead || !GetPos().contains(point)) {
        return Drag::none;
    }
    const auto isAt = [point](const Rect& grip) {
        return point.x >= grip.left - kGripReach && point.x < grip.right + kGripReach &&
               point.y >= grip.top - kGripReach && point.y < grip.bottom + kGripReach;
    };
    if (isAt(endGrip(GetPos(), m_scale, *m_range))) {
        return Drag::end;
    }
    return isAt(beginGrip(GetPos(), m_scale, *m_range)) ? Drag::begin : Drag::none;
}

platform::PointerShape Timeline::pointerShapeAt(Point point) const {
    const bool sizes = m_drag == Drag::begin || m_drag == Drag::end || gripAt(point) != Drag::none;
    return sizes ? platform::PointerShape::sizeAcross : platform::PointerShape::arrow;
}

void Timeline::press(const Event& event) {
    m_pressFrame = m_frame;
    m_pressRange = m_range;
    m_drag = gripAt(event.position);
    if (m_drag != Drag::none) {
        m_anchor = m_drag == Drag::begin ? m_range->last : m_range->first;
    } else if (event.modifiers.shift) {
        m_drag = Drag::range;
        m_anchor = m_scale.frameAt(event.position.x);
    } else {
        m_drag = Drag::frame;
        dragTo(event.position.x);
    }
}

void Timeline::release() {
    if (std::exchange(m_drag, Drag::none) == Drag::frame) {
        m_listener->frameChosen();
    }
}

bool Timeline::cancel() {
    const Drag drag = std::exchange(m_drag, Drag::none);
    if (drag == Drag::frame) {
        m_listener->frameWanted(m_pressFrame);
        m_listener->frameChosen();
    } else if (drag != Drag::none && m_pressRange) {
        m_listener->rangeMarked(m_pressRange->first, m_pressRange->last);
    } else if (drag != Drag::none) {
        m_listener->rangeCleared();
    }
    return drag != Drag::none;
}

void Timeline::dragTo(int x) {
    const Rect bar = barOf(GetPos());
    const int beyond = x < bar.left ? x - bar.left : std::max(x - bar.right, 0);
    if (beyond != 0 && !m_scale.showsAll()) {
        m_scale.move(beyond / m_scale.pixelsPerFrame());
        Invalidate();
    }
    const int frame = m_scale.frameAt(x);
    if (m_drag == Drag::frame) {
        m_listener->frameWanted(frame);
    } else if (m_drag != Drag::none && (m_drag != Drag::range || frame != m_anchor || m_range)) {
        m_listener->rangeMarked(m_anchor, frame);
    }
}

bool Timeline::wheel(const Event& event) {
    m_wheel += event.wheelDelta;
    const int notches = m_wheel / kNotch;
    m_wheel %= kNotch;
    if (notches == 0) {
        return true;
    }
    if (event.modifiers.control) {
        m_scale.zoom(std::pow(kZoomStep, -notches), event.position.x);
    } else if (event.modifiers.shift) {
        m_scale.move(-notches * m_scale.span() * kMoveStep);
    } else {
        m_listener->steps(-notches);
        return true;
    }
    Invalidate();
    return true;
}

bool Timeline::DoEvent(const toolkit::TEventUI& event) {
    using toolkit::EventType;
    if (m_frames < 1 || m_listener == nullptr) {
        return CControlUI::DoEvent(event);
    }
    switch (event.Type) {
    case EventType::buttonDown:
    case EventType::doubleClick:
        press(event.native);
        return true;
    case EventType::mouseMove:
        if (m_drag != Drag::none) {
            dragTo(event.native.position.x);
        }
        return true;
    case EventType::buttonUp:
    case EventType::captureLost:
        release();
        return true;
    case EventType::wheel:
        return wheel(event.native);
    default:
        return CControlUI::DoEvent(event);
    }
}

void Timeline::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    const platform::ClipScope clip(canvas, GetPos().intersected(dirty));
    const TimelinePainter painter(canvas, GetPos(), m_scale, GetManager()->look().palette());
    static const TimelineMarks kNone;
    const TimelineMarks& marks = m_listener != nullptr ? m_listener->marks() : kNone;
    painter.runs(marks);
    if (m_frames < 1) {
        return;
    }
    if (GetManager() != nullptr) {
        painter.ruler(m_framesPerSecond, GetManager()->look().GetFont(ui::font::kSmallest));
    }
    painter.offered(m_offered);
    if (m_range) {
        painter.range(*m_range);
    }
    painter.keys(marks);
    painter.part();
    painter.playhead(m_frame);
}

std::u16string Timeline::accessibleValue() const {
    if (m_frames < 1) {
        return {};
    }
    static const TimelineMarks kNone;
    const TimelineMarks& marks = m_listener != nullptr ? m_listener->marks() : kNone;
    const bool isActive =
        std::any_of(marks.active.begin(), marks.active.end(), [this](const zone::FrameRange& run) {
            return run.first <= m_frame && m_frame < run.end;
        });
    std::u16string text = core::tr("PlaceOf|{0} of {1}"_tr, m_frame, m_frames - 1) + u", " +
                          ui::lengthText(m_frame / m_framesPerSecond);
    if (marks.isZone) {
        text += u", " + core::tr(isActive ? "ZoneActive|active"_tr : "ZoneNotActive|not active"_tr);
    }
    if (std::binary_search(marks.keys.begin(), marks.keys.end(), m_frame)) {
        text += u", " + core::tr("FrameKey|key"_tr);
    }
    return text;
}

} // namespace zoneedit
