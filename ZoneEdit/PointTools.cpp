#include "ZoneEdit/PointTools.h"

#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"

namespace zoneedit {

namespace {

/// How near to a line a double-click adds a point to it. Window pixels.
constexpr double kEdgeReach = 6;

} // namespace

using platform::EventKind;
using platform::Point;

PointTools::PointTools(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                       ShapeEditor& editor, HintPresenter& hints)
    : m_controls(controls), m_video(video), m_session(session), m_editor(editor), m_hints(hints),
      m_choice(controls, video, session, hints), m_gesture(controls, video, session, editor, hints),
      m_step(session, editor) {
    if (video::CVideoUI* control = m_video.control()) {
        control->setPointerShape([this](Point at) {
            return !m_isHeld && m_covered && m_covered(at) ? platform::PointerShape::hand
                                                           : m_choice.pointerAt(at, countedHeld());
        });
    }
}

PointTools::~PointTools() {
    if (video::CVideoUI* control = m_video.control()) {
        control->setPointerShape(nullptr);
    }
}

bool PointTools::handle(const platform::Event& event) {
    noteHeld(event);
    const bool isHandled = act(event);
    m_hints.showHeld(countedHeld(), m_isHeld);
    return isHandled;
}

bool PointTools::act(const platform::Event& event) {
    const bool left = event.button == platform::MouseButton::left;
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick: // two quick clicks are two clicks
        return left && press(event);
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

void PointTools::noteHeld(const platform::Event& event) {
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick:
    case EventKind::mouseMove:
    case EventKind::mouseUp:
    case EventKind::keyDown:
    case EventKind::keyUp:
        m_held = event.modifiers;
        break;
    case EventKind::deactivated:
        m_held = {};
        break;
    default:
        break;
    }
}

platform::Modifiers PointTools::countedHeld() const {
    if (m_gesture.isOpen()) {
        return m_gestureHeld;
    }
    return m_isHeld ? platform::Modifiers{.shift = m_held.shift} : m_held;
}

Point PointTools::pixelAt(Point position) const {
    return m_session.clamped(m_video.control()->view().toDisplay(position));
}

bool PointTools::press(const platform::Event& event) {
    const Point position = event.position;
    const video::CVideoUI* control = m_video.checkedControl(kMouseDownLine);
    const Place place{m_session.context().currentZone, m_video.frame()};
    // What lies over the picture takes its own presses.
    if (control == nullptr || m_controls.manager().FindControl(position) != control ||
        !control->pictureRect().contains(position)) {
        return false;
    }
    if (place.zone < 0 || place.frame < 0) {
        if (m_video.hasFrames()) {
            m_hints.explain(kNoZoneYet);
        }
        return false;
    }
    if (const auto kind = m_choice.gestureOf(event.modifiers)) {
        return beginGesture(*kind, event);
    }
    const Point at = pixelAt(position);
    if (event.kind == EventKind::mouseDoubleClick && m_choice.tool() == Tool::movePoint &&
        m_editor.insertOnEdge(place, at, kEdgeReach / control->view().scale)) {
        m_video.repaintZoneNow();
        return true;
    }
    return pressTool(place, at);
}

bool PointTools::beginGesture(ShapeGesture::Kind kind, const platform::Event& event) {
    m_isHeld = true;
    m_gestureHeld = event.modifiers;
    m_controls.manager().SetCapture(); // may lose it at once: then this is a click
    m_gesture.begin(kind, event.position);
    return true;
}

bool PointTools::pressTool(Place place, Point at) {
    const ToolRule rule = m_choice.rule();
    m_isHeld = rule.holds;
    if (m_isHeld) {
        m_controls.manager().SetCapture(); // may lose it at once: then this is a click
    }
    core::Text reason;
    try {
        m_step.begin(rule.step, place, at);
        reason = use(place, at);
    } catch (...) { // out of memory: the next edit must not become part of this step
        cancelStep();
        throw;
    }
    if (!m_isHeld) {
        m_session.endGesture();
    }
    if (rule.next != m_choice.tool()) {
        m_choice.choose(rule.next);
    }
    if (!reason.empty()) { // after what the next tool has to say
        m_hints.explain(reason);
    }
    m_video.repaintZoneNow();
    return true;
}

core::Text PointTools::use(Place place, Point at) {
    core::Text reason;
    switch (m_choice.tool()) {
    case Tool::movePoint:
        m_session.hitTest(place.zone, place.frame, at.x, at.y);
        m_step.beginMove(place, at, m_keepsDistance && m_keepsDistance());
        break;
    case Tool::addPoint:
    case Tool::addMultiPoint:
        reason = m_session.takesPoint(place.zone) ? reason : kNoPointChosen;
        m_session.addPoint(place.zone, place.frame, at.x, at.y);
        break;
    case Tool::deletePoint:
        reason = m_session.hasPointAt(place.zone, at.x, at.y) ? reason : kNoPointHere;
        m_session.deletePoint(place.zone, place.frame, at.x, at.y);
        break;
    }
    return reason;
}

bool PointTools::move(Point position) {
    const video::CVideoUI* control = m_video.checkedControl(kMouseMoveLine);
    if (control == nullptr) {
        return false;
    }
    if (m_gesture.isOpen()) {
        m_gesture.move(position);
        if (!m_gesture.isOpen()) { // a key has ended it: what is held moves nothing else
            endStep();
            m_controls.manager().ReleaseCapture();
        }
        return true;
    }
    if (m_choice.tool() == Tool::movePoint && m_session.context().currentZone >= 0 &&
        control->pictureRect().contains(position)) {
        m_step.move({m_session.context().currentZone, m_video.frame()},
                    control->view().toDisplay(position), m_held.shift);
    }
    m_video.repaintZoneNow();
    return true;
}

bool PointTools::release(Point position) {
    if (m_gesture.isOpen()) {
        releaseGesture(position);
        return true;
    }
    const video::CVideoUI* control = m_video.checkedControl(kMouseUpLine);
    const int zone = m_session.context().currentZone;
    if (control != nullptr && m_choice.tool() == Tool::movePoint && zone >= 0) {
        const Point at = control->view().toDisplay(position);
        m_session.endMove(zone, m_video.frame(), at.x, at.y);
    }
    endStep();
    m_controls.manager().ReleaseCapture();
    return true;
}

void PointTools::releaseGesture(Point position) {
    const bool wasDragged = m_gesture.end();
    endStep();
    m_controls.manager().ReleaseCapture();
    if (wasDragged ||
        (m_choice.tool() == Tool::movePoint && m_controlClick && m_controlClick(position))) {
        return;
    }
    if (const auto place = m_editor.place()) { // a click as one without Ctrl
        (void)pressTool(*place, pixelAt(position));
        endStep();
        m_controls.manager().ReleaseCapture();
    }
}

bool PointTools::cancelDrag() {
    const bool wasDragging = m_isHeld;
    m_gesture.cancel();
    if (wasDragging) {
        cancelStep();
        m_video.repaintZoneNow();
    }
    return wasDragging;
}

void PointTools::cancelStep() {
    m_step.cancel();
    if (std::exchange(m_isHeld, false)) {
        m_controls.manager().ReleaseCapture();
    }
}

void PointTools::endStep() {
    m_isHeld = false;
    if (m_gesture.isOpen()) { // the capture is lost
        (void)m_gesture.end();
    }
    m_step.end();
}

} // namespace zoneedit
