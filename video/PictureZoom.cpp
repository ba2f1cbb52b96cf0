#include "video/PictureZoom.h"

#include <algorithm>
#include <cmath>

namespace video {
namespace {

double middle(int from, int to) {
    return (static_cast<double>(from) + to) / 2;
}

platform::Size shownSize(platform::Size picture, double scale) {
    return {static_cast<int>(picture.width * scale + 0.5),
            static_cast<int>(picture.height * scale + 0.5)};
}

/// Where a side of `length` begins between `from` and `to`, if it may choose.
int begin(double wanted, int length, int from, int to) {
    if (length <= to - from) {
        return from + (to - from - length) / 2;
    }
    return static_cast<int>(
        std::floor(std::clamp<double>(wanted, static_cast<double>(to) - length, from) + 0.5));
}

} // namespace

double PictureZoom::fittingScale(const Place& place) {
    const double scale = std::min(static_cast<double>(place.room.width()) / place.picture.width,
                                  static_cast<double>(place.room.height()) / place.picture.height);
    return scale > 0 ? scale : 1;
}

void PictureZoom::zoomTo(double scale, platform::Point about, const Place& place) {
    const PictureView before = view(place);
    const double grown = scale / before.scale;
    m_isFit = false;
    m_scale = scale;
    moveTo(about.x + 0.5 - (about.x + 0.5 - before.offset.x) * grown,
           about.y + 0.5 - (about.y + 0.5 - before.offset.y) * grown, place);
}

void PictureZoom::moveBy(platform::Point delta, const Place& place) {
    const platform::Point at = view(place).offset;
    moveTo(static_cast<double>(at.x) + delta.x, static_cast<double>(at.y) + delta.y, place);
}

void PictureZoom::center(platform::Point display, const Place& place) {
    moveTo(middle(place.room.left, place.room.right) - (display.x + 0.5) * m_scale,
           middle(place.room.top, place.room.bottom) - (display.y + 0.5) * m_scale, place);
}

void PictureZoom::moveTo(double left, double top, const Place& place) {
    const double x = middle(place.room.left, place.room.right);
    const double y = middle(place.room.top, place.room.bottom);
    m_x = (x - left) / m_scale;
    m_y = (y - top) / m_scale;
    const platform::Point allowed = view(place).offset;
    m_x = (x - allowed.x) / m_scale;
    m_y = (y - allowed.y) / m_scale;
}

PictureView PictureZoom::view(const Place& place) const {
    const platform::Rect& room = place.room;
    const double scale = m_isFit ? fittingScale(place) : m_scale;
    const platform::Size shown = shownSize(place.picture, scale);
    if (m_isFit) {
        return {room.centred(shown).topLeft(), scale};
    }
    return {
        {begin(middle(room.left, room.right) - m_x * scale, shown.width, room.left, room.right),
         begin(middle(room.top, room.bottom) - m_y * scale, shown.height, room.top, room.bottom)},
        scale};
}

} // namespace video
