#include "ui/tour/TourControls.h"

#include <array>

#include "platform/Geometry.h"
#include "platform/Path.h"
#include "toolkit/skin/Palette.h"

namespace ui {
namespace {

using platform::PointF;
using platform::Rect;
using toolkit::Tone;

/// From one end of the panel's edge over the tip to the other end.
std::array<PointF, 3> corners(const Rect& box, TourPlaces::Side side) {
    const auto left = static_cast<double>(box.left);
    const auto top = static_cast<double>(box.top);
    const auto right = static_cast<double>(box.right);
    const auto bottom = static_cast<double>(box.bottom);
    switch (side) {
    case TourPlaces::Side::bottom:
        return {{{left, top}, {(left + right) / 2, bottom}, {right, top}}};
    case TourPlaces::Side::left:
        return {{{right, top}, {left, (top + bottom) / 2}, {right, bottom}}};
    case TourPlaces::Side::right:
        return {{{left, top}, {right, (top + bottom) / 2}, {left, bottom}}};
    default:
        return {{{left, bottom}, {(left + right) / 2, top}, {right, bottom}}};
    }
}

} // namespace

platform::AccessibleRole TourPanel::accessibleRole() const {
    return platform::AccessibleRole::dialog;
}

void TourPointer::setSide(TourPlaces::Side side) {
    if (m_side != side) {
        m_side = side;
        Invalidate();
    }
}

void TourPointer::paintBackground(platform::Canvas& canvas) {
    const auto points = corners(GetPos(), m_side);
    platform::Path inside;
    inside.addPolygon(points);
    canvas.fillPath(inside, paletteColor(Tone::surface));
    platform::Path edges; // open where the panel is
    edges.moveTo(points[0]);
    edges.lineTo(points[1]);
    edges.lineTo(points[2]);
    canvas.fillPath(edges.stroked(1.5), paletteColor(Tone::accent));
}

} // namespace ui
