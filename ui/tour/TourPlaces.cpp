#include "ui/tour/TourPlaces.h"

#include <algorithm>
#include <array>

namespace ui {
namespace {

using platform::Rect;
using platform::Size;
using Side = TourPlaces::Side;

constexpr int kRing = 2; // round the subject
constexpr int kGap = 14;
constexpr int kPointerWidth = 32;
constexpr int kPointerHeight = 10;
constexpr int kCorner = 8; // of the panel, kept free of the pointer
constexpr int kInside = 16;

/// The panel with the pointer on `side`, in the middle of the ring.
Rect panelAt(const Rect& ring, Side side, Size panel) {
    Rect place = ring.centred(panel);
    switch (side) {
    case Side::top:
        return place.translated(0, ring.bottom + kGap - place.top);
    case Side::bottom:
        return place.translated(0, ring.top - kGap - place.bottom);
    case Side::left:
        return place.translated(ring.right + kGap - place.left, 0);
    case Side::right:
        return place.translated(ring.left - kGap - place.right, 0);
    case Side::none:
        break;
    }
    return place.translated(0, ring.bottom - kInside - place.bottom);
}

/// `panel` is as near to the ring's middle as the room allows: the pointer stays on its edge.
Rect pointerAt(const Rect& ring, Side side, const Rect& panel) {
    const auto along = [](int middle, int from, int to) {
        return std::clamp(middle - kPointerWidth / 2, from + kCorner,
                          std::max(from + kCorner, to - kCorner - kPointerWidth));
    };
    const int x = along((ring.left + ring.right) / 2, panel.left, panel.right);
    const int y = along((ring.top + ring.bottom) / 2, panel.top, panel.bottom);
    switch (side) {
    case Side::top:
        return Rect::at(x, panel.top - kPointerHeight + 1, kPointerWidth, kPointerHeight);
    case Side::bottom:
        return Rect::at(x, panel.bottom - 1, kPointerWidth, kPointerHeight);
    case Side::left:
        return Rect::at(panel.left - kPointerHeight + 1, y, kPointerHeight, kPointerWidth);
    case Side::right:
        return Rect::at(panel.right - 1, y, kPointerHeight, kPointerWidth);
    case Side::none:
        break;
    }
    return {};
}

bool fits(const Rect& panel, const Rect& room, Side side) {
    return side == Side::top || side == Side::bottom
               ? panel.top >= room.top && panel.bottom <= room.bottom
               : panel.left >= room.left && panel.right <= room.right;
}

} // namespace

TourPlaces placeTour(const Rect& subject, const Rect& room, Size panel) {
    TourPlaces places;
    if (subject.isEmpty()) {
        places.panel = panelAt(room, Side::none, panel).movedInto(room);
        return places;
    }
    places.ring = {subject.left - kRing, subject.top - kRing, subject.right + kRing,
                   subject.bottom + kRing};
    constexpr std::array kSides{Side::top, Side::bottom, Side::left, Side::right};
    const auto* const side = std::find_if(kSides.begin(), kSides.end(), [&](Side one) {
        return fits(panelAt(places.ring, one, panel), room, one);
    });
    places.side = side != kSides.end() ? *side : Side::none;
    places.panel = panelAt(places.ring, places.side, panel).movedInto(room);
    places.pointer = pointerAt(places.ring, places.side, places.panel);
    return places;
}

} // namespace ui
