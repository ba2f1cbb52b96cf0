#include "ZoneEdit/ShapeGesture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Text.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/FigureTexts.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/StepLabel.h"
#include "zone/Zone.h"

namespace zoneedit {
namespace {

using platform::Point;
using Name = zone::StepLabel::Name;

/// A press that goes less far is a click. Window pixels.
constexpr int kSlack = 4;
/// Of the label, from the pointer.
constexpr Point kLabelOffset{20, 10};

struct Vector {
    double x;
    double y;

    [[nodiscard]] double length() const { return std::hypot(x, y); }
};

Vector middleOf(const zone::Points& points) {
    Vector middle{0, 0};
    for (const Point& point : points) {
        middle.x += static_cast<double>(point.x) / static_cast<double>(points.size());
        middle.y += static_cast<double>(point.y) / static_cast<double>(points.size());
    }
    return middle;
}

} // namespace

ShapeGesture::ShapeGesture(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                           ShapeEditor& editor, HintPresenter& hints)
    : m_controls(controls), m_video(video), m_session(session), m_editor(editor), m_hints(hints) {
    if (video::CVideoUI* control = m_video.control()) {
        control->AddLayer(m_layer);
    }
}

void ShapeGesture::begin(Kind kind, Point at) {
    m_kind = kind;
    m_press = m_at = at;
    m_pressView = m_video.control()->view();
    m_isDragged = false;
}

void ShapeGesture::move(Point to) {
    // Keys work while the button is down: one has edited something else, or shows another frame.
    if (m_start && !isInPlace()) {
        m_session.endGesture();
        close();
    }
    if (!isOpen()) {
        return;
    }
    m_at = to;
    if (!m_isDragged) {
        if (std::abs(to.x - m_press.x) < kSlack && std::abs(to.y - m_press.y) < kSlack) {
            return;
        }
        startDrag();
    }
    if (m_kind == Kind::rectangle) {
        const zone::Points corners = rectangleTo(to);
        m_layer->showDrawn(corners);
        showLabel(core::displayText(std::to_string(corners[2].x - corners[0].x) + " × " +
                                    std::to_string(corners[2].y - corners[0].y)),
                  to);
    } else if (m_start) {
        turnOrScale(to);
    }
    m_video.repaintZoneNow();
}

void ShapeGesture::startDrag() {
    m_isDragged = true;
    const bool draws = m_kind == Kind::rectangle;
    m_start = draws || !m_editor.points().empty() ? m_editor.start() : std::nullopt;
    if (!m_start) {
        return;
    }
    if (!draws) {
        m_layer->showBefore(m_editor.points());
    }
    m_session.beginGesture({draws                   ? Name::rectangle
                            : m_kind == Kind::scale ? Name::scale
                                                    : Name::rotate,
                            m_start->place.zone, m_start->place.frame});
}

bool ShapeGesture::isInPlace() const {
    return m_start && m_session.inGesture() && m_editor.place() == m_start->place;
}

void ShapeGesture::turnOrScale(Point to) {
    const auto before = m_start->before->points(m_start->place.frame).value();
    const video::PictureView view = m_video.control()->view();
    const Vector middle = middleOf({before.begin(), before.end()});
    // In window pixels: they are finer than the picture's while it is enlarged.
    const Point centre = view.toWindow(
        Point{static_cast<int>(std::lround(middle.x)), static_cast<int>(std::lround(middle.y))});
    // Where the pressed place of the picture is by now.
    const double zoomed = view.scale / m_pressView.scale;
    const Vector from{view.offset.x + (m_press.x - m_pressView.offset.x) * zoomed - centre.x,
                      view.offset.y + (m_press.y - m_pressView.offset.y) * zoomed - centre.y};
    const Vector now{static_cast<double>(to.x - centre.x), static_cast<double>(to.y - centre.y)};
    if (m_kind == Kind::scale) {
        const double factor = now.length() / std::max(from.length(), 1.0);
        m_editor.reshape(*m_start, Name::scale, zone::scaled(factor));
        showLabel(ui::percentText(static_cast<int>(std::lround(factor * 100))), to);
        return;
    }
    const double turned =
        std::atan2(from.x * now.y - from.y * now.x, from.x * now.x + from.y * now.y) * 180 /
        std::numbers::pi;
    m_editor.reshape(*m_start, Name::rotate, zone::rotated(turned));
    showLabel(core::displayText(std::to_string(std::lround(turned)) + "°"), to);
}

zone::Points ShapeGesture::rectangleTo(Point to) const {
    const Point one = m_session.clamped(m_pressView.toDisplay(m_press));
    const Point other = m_session.clamped(m_video.control()->view().toDisplay(to));
    const auto [left, right] = std::minmax(one.x, other.x);
    const auto [top, bottom] = std::minmax(one.y, other.y);
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

bool ShapeGesture::end() {
    const bool wasDragged = m_isDragged;
    if (wasDragged && m_kind == Kind::rectangle && isInPlace()) {
        addRectangle();
    }
    m_session.endGesture();
    close();
    return wasDragged;
}

void ShapeGesture::addRectangle() {
    const auto [zone, frame] = m_start->place;
    if (!m_session.takesPoint(zone)) {
        m_hints.explain(kNoPointChosen);
        return;
    }
    m_session.beginGesture({Name::rectangle, zone, frame}); // a key may have begun another step
    try {
        for (const Point& corner : rectangleTo(m_at)) {
            m_session.addPoint(zone, frame, corner.x, corner.y);
        }
    } catch (...) {
        m_session.cancelGesture();
        throw;
    }
}

void ShapeGesture::cancel() {
    if (isOpen()) {
        m_session.cancelGesture();
        close();
    }
}

void ShapeGesture::close() {
    m_kind.reset();
    m_isDragged = false;
    m_start.reset();
    m_layer->clear();
    m_controls.setVisible(kGestureLabel, false);
    m_video.repaintZoneNow();
}

void ShapeGesture::showLabel(const std::u16string& text, Point at) {
    toolkit::CControlUI* label = m_controls.find(kGestureLabel);
    if (label == nullptr || label->GetParent() == nullptr) {
        return;
    }
    const platform::Rect pane = label->GetParent()->GetPos();
    const platform::Rect place = label->GetPlace().value_or(platform::Rect());
    label->SetText(text);
    label->SetPlace(platform::Rect::at(at.x + kLabelOffset.x - pane.left,
                                       at.y + kLabelOffset.y - pane.top, place.width(),
                                       place.height()));
    label->SetVisible(true);
}

} // namespace zoneedit
