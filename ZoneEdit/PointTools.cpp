#include "ZoneEdit/PointTools.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"

namespace zoneedit {

using platform::EventKind;
using platform::Point;
using zone::StepLabel;

struct PointTools::Rule {
    StepLabel::Name step;
    bool holds; ///< the mouse stays ours until the button is released
    Tool next;  ///< after the press
};

const PointTools::Rule& PointTools::ruleOf(Tool tool) {
    static constexpr Rule kRules[] = {
        {StepLabel::Name::movePoint, true, Tool::movePoint},
        // The new point can be dragged at once, and the next click selects.
        {StepLabel::Name::addPoint, true, Tool::movePoint},
        {StepLabel::Name::addPoint, true, Tool::addMultiPoint},
        {StepLabel::Name::deletePoint, false, Tool::deletePoint},
    };
    static_assert(std::size(kRules) == std::size(kToolOptions));
    return kRules[static_cast<std::size_t>(tool)];
}

PointTools::PointTools(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session)
    : m_controls(controls), m_video(video), m_session(session) {
    if (video::CVideoUI* control = m_video.control()) {
        control->setPointerShape([this](Point at) { return pointerAt(at); });
    }
}

PointTools::~PointTools() {
    if (video::CVideoUI* control = m_video.control()) {
        control->setPointerShape(nullptr);
    }
}

platform::PointerShape PointTools::pointerAt(Point position) const {
    using platform::PointerShape;
    const int zone = m_session.context().currentZone;
    const int frame = m_video.frame();
    if (zone < 0 || frame < 0) {
        return PointerShape::notAllowed;
    }
    const Point at = m_video.control()->view().toDisplay(position);
    switch (m_tool) {
    case Tool::movePoint:
        return m_session.isHandleAt(zone, frame, at.x, at.y) ? PointerShape::move
                                                             : PointerShape::arrow;
    case Tool::deletePoint:
        return m_session.hasPointAt(zone, at.x, at.y) ? PointerShape::cross
                                                      : PointerShape::notAllowed;
    case Tool::addPoint:
    case Tool::addMultiPoint:
        break;
    }
    return m_session.takesPoint(zone) ? PointerShape::cross : PointerShape::notAllowed;
}

bool PointTools::choose(std::u16string_view option) {
    int number = 0;
    for (const std::u16string_view name : kToolOptions) {
        if (option == name) {
            m_tool = static_cast<Tool>(number);
            return true;
        }
        ++number;
    }
    return false;
}

void PointTools::choose(Tool tool) {
    m_tool = tool;
    const std::u16string_view name = kToolOptions[static_cast<std::size_t>(tool)];
    if (auto* option = m_controls.find<toolkit::COptionUI>(name)) {
        option->Selected(true);
    }
}

bool PointTools::handle(const platform::Event& event) {
    const bool left = event.button == platform::MouseButton::left;
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick: // two quick clicks are two clicks
        return left && press(event.position);
    case EventKind::mouseMove:
        return m_isHeld && move(event.position);
    case EventKind::mouseUp:
        return left && m_isHeld && release(event.position);
    case EventKind::captureLost:
        endStep();
        return false;
    default:
        return false;
    }
}

bool PointTools::press(Point position) {
    const video::CVideoUI* control = m_video.checkedControl(kMouseDownLine);
    const int zone = m_session.context().currentZone;
    const int frame = m_video.frame();
    // What lies over the picture takes its own presses.
    if (control == nullptr || zone < 0 || frame < 0 ||
        m_controls.manager().FindControl(position) != control ||
        !control->pictureRect().contains(position)) {
        return false;
    }
    const Rule& rule = ruleOf(m_tool);
    m_isHeld = rule.holds;
    if (m_isHeld) {
        m_controls.manager().SetCapture(); // may lose it at once: then this is a click
    }
    try {
        beginStep(rule.step, {zone, frame});
        use(zone, frame, control->view().toDisplay(position));
    } catch (...) { // out of memory: the next edit must not become part of this step
        cancelStep();
        throw;
    }
    if (!m_isHeld) {
        m_session.endGesture();
    }
    if (rule.next != m_tool) {
        choose(rule.next);
    }
    m_video.repaintZoneNow();
    return true;
}

void PointTools::use(int zone, int frame, Point at) {
    switch (m_tool) {
    case Tool::movePoint:
        m_session.hitTest(zone, frame, at.x, at.y);
        break;
    case Tool::addPoint:
    case Tool::addMultiPoint:
        m_session.addPoint(zone, frame, at.x, at.y);
        break;
    case Tool::deletePoint:
        m_session.deletePoint(zone, frame, at.x, at.y);
        break;
    }
}

bool PointTools::move(Point position) {
    const video::CVideoUI* control = m_video.checkedControl(kMouseMoveLine);
    if (control == nullptr) {
        return false;
    }
    const Place place{m_session.context().currentZone, m_video.frame()};
    if (m_tool == Tool::movePoint && place.zone >= 0 && control->pictureRect().contains(position)) {
        // Keys work while the button is down. What they change is not part of the drag, which goes
        // on wherever they led to.
        if (place != m_place || !m_session.inGesture()) {
            beginStep(StepLabel::Name::movePoint, place);
        }
        const Point at = control->view().toDisplay(position);
        m_session.moveSelectedPoint(place.zone, place.frame, at.x, at.y);
    }
    m_video.repaintZoneNow();
    return true;
}

bool PointTools::release(Point position) {
    const video::CVideoUI* control = m_video.checkedControl(kMouseUpLine);
    const int zone = m_session.context().currentZone;
    if (control != nullptr && m_tool == Tool::movePoint && zone >= 0) {
        const Point at = control->view().toDisplay(position);
        m_session.endMove(zone, m_video.frame(), at.x, at.y);
    }
    endStep();
    m_controls.manager().ReleaseCapture();
    return true;
}

void PointTools::beginStep(StepLabel::Name name, Place place) {
    m_session.beginGesture({name, place.zone, place.frame});
    m_place = place;
}

void PointTools::cancelStep() {
    m_session.cancelGesture();
    if (std::exchange(m_isHeld, false)) {
        m_controls.manager().ReleaseCapture();
    }
}

void PointTools::endStep() {
    m_isHeld = false;
    m_session.endGesture();
}

} // namespace zoneedit
