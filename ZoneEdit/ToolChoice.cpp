#include "ZoneEdit/ToolChoice.h"

#include <cstddef>
#include <iterator>

#include "ZoneEdit/ZoneEditControls.h"
#include "toolkit/controls/COptionUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"

namespace zoneedit {

using platform::Point;
using platform::PointerShape;
using zone::StepLabel;

const ToolRule& ToolChoice::rule() const {
    static constexpr ToolRule kRules[] = {
        {StepLabel::Name::movePoint, true, Tool::movePoint},
        // The new point can be dragged at once, and the next click selects.
        {StepLabel::Name::addPoint, true, Tool::movePoint},
        {StepLabel::Name::addPoint, true, Tool::addMultiPoint},
        {StepLabel::Name::deletePoint, false, Tool::deletePoint},
    };
    static_assert(std::size(kRules) == std::size(kToolOptions));
    return kRules[static_cast<std::size_t>(m_tool)];
}

bool ToolChoice::choose(std::u16string_view option) {
    int number = 0;
    for (const std::u16string_view name : kToolOptions) {
        if (option == name) {
            m_tool = static_cast<Tool>(number);
            m_hints.chooseTool(number);
            return true;
        }
        ++number;
    }
    return false;
}

void ToolChoice::choose(Tool tool) {
    m_tool = tool;
    m_hints.showTool(static_cast<int>(tool));
    const std::u16string_view name = kToolOptions[static_cast<std::size_t>(tool)];
    if (auto* option = m_controls.find<toolkit::COptionUI>(name)) {
        option->Selected(true);
    }
}

std::optional<ShapeGesture::Kind> ToolChoice::gestureOf(platform::Modifiers held) const {
    using Kind = ShapeGesture::Kind;
    if (!held.control || held.alt) {
        return std::nullopt;
    }
    if (m_tool == Tool::movePoint) {
        return held.shift ? Kind::rotate : Kind::scale;
    }
    return m_tool == Tool::addMultiPoint && !held.shift ? std::optional(Kind::rectangle)
                                                        : std::nullopt;
}

PointerShape ToolChoice::pointerAt(Point position, platform::Modifiers held) const {
    const int zone = m_session.context().currentZone;
    const int frame = m_video.frame();
    if (zone < 0 || frame < 0) {
        return PointerShape::notAllowed;
    }
    const auto kind = gestureOf(held);
    if (kind && (kind != ShapeGesture::Kind::rectangle || m_session.takesPoint(zone))) {
        constexpr PointerShape kShapes[] = {PointerShape::rectangle, PointerShape::scale,
                                            PointerShape::rotate};
        return kShapes[static_cast<std::size_t>(*kind)];
    }
    const Point at = m_video.control()->view().toDisplay(position);
    switch (m_tool) {
    case Tool::movePoint:
        return m_session.isHandleAt(zone, frame, at.x, at.y) ? PointerShape::move
                                                             : PointerShape::arrow;
    case Tool::deletePoint:
        return m_session.hasPointAt(zone, at.x, at.y) ? PointerShape::deletePoint
                                                      : PointerShape::notAllowed;
    case Tool::addPoint:
    case Tool::addMultiPoint:
        break;
    }
    return m_session.takesPoint(zone) ? PointerShape::addPoint : PointerShape::notAllowed;
}

} // namespace zoneedit
