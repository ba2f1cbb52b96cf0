#include <cstddef>

#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "platform/Window.h"
#include "toolkit/controls/COptionUI.h"
#include "video/CVideoUI.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

using platform::EventKind;
using platform::Point;

void ZoneEdit::chooseTool(Control& sender) {
    int number = 0;
    for (const std::u16string_view name : kToolOptions) {
        if (sender.GetName() == name) {
            m_tool = static_cast<Tool>(number);
        }
        ++number;
    }
}

void ZoneEdit::selectTool(Tool tool) {
    m_tool = tool;
    const std::u16string_view name = kToolOptions[static_cast<std::size_t>(tool)];
    if (auto* option = find<toolkit::COptionUI>(name)) {
        option->Selected(true);
    }
}

bool ZoneEdit::handleMouse(const platform::Event& event) {
    const bool left = event.button == platform::MouseButton::left;
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick: // two quick clicks are two clicks
        return left && mouseDown(event.position);
    case EventKind::mouseMove:
        return m_captured && mouseMove(event.position);
    case EventKind::mouseUp:
        return left && m_captured && mouseUp(event.position);
    case EventKind::captureLost:
        m_captured = false;
        return false;
    default:
        return false;
    }
}

bool ZoneEdit::mouseDown(Point position) {
    const video::CVideoUI* control = checkedVideo(kMouseDownLine);
    const int zone = selectedZone();
    const int frame = currentFrame();
    if (control == nullptr || zone < 0 || frame < 0 || !control->GetPos().contains(position)) {
        return false;
    }
    applyTool(zone, frame, control->view().toDisplay(position));
    repaintVideoNow();
    return true;
}

void ZoneEdit::applyTool(int zone, int frame, Point at) {
    if (m_tool != Tool::movePoint) {
        noteEdit();
    }
    switch (m_tool) {
    case Tool::movePoint:
        m_zones->hitTest(*m_editing, zone, frame, at.x, at.y);
        capture();
        break;
    case Tool::addPoint:
        m_zones->addPoint(*m_editing, zone, frame, at.x, at.y);
        capture();
        // The new point can be dragged at once, and the next click selects.
        selectTool(Tool::movePoint);
        break;
    case Tool::addMultiPoint:
        m_zones->addPoint(*m_editing, zone, frame, at.x, at.y);
        capture();
        break;
    case Tool::deletePoint:
        m_zones->deletePoint(*m_editing, zone, frame, at.x, at.y);
        break;
    }
}

void ZoneEdit::capture() {
    GetPaintManager().SetCapture();
    m_captured = true;
}

bool ZoneEdit::mouseMove(Point position) {
    const video::CVideoUI* control = checkedVideo(kMouseMoveLine);
    if (control == nullptr) {
        return false;
    }
    const int zone = selectedZone();
    if (m_tool == Tool::movePoint && zone >= 0 && control->GetPos().contains(position)) {
        if (m_editing->zone(zone).selectedPoint != -1) {
            noteEdit();
        }
        const Point at = control->view().toDisplay(position);
        m_zones->moveSelectedPoint(*m_editing, zone, currentFrame(), at.x, at.y);
    }
    repaintVideoNow();
    return true;
}

bool ZoneEdit::mouseUp(Point position) {
    const video::CVideoUI* control = checkedVideo(kMouseUpLine);
    const int zone = selectedZone();
    if (control != nullptr && m_tool == Tool::movePoint && zone >= 0) {
        const Point at = control->view().toDisplay(position);
        m_zones->endMove(zone, currentFrame(), at.x, at.y);
    }
    m_captured = false;
    GetPaintManager().ReleaseCapture();
    return true;
}

} // namespace zoneedit
