#include "toolkit/skin/RoundBox.h"

#include <algorithm>

#include "platform/Path.h"

namespace toolkit {

void fillRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius,
                  platform::Color color) {
    platform::Path path;
    path.addRoundBox({static_cast<double>(box.left), static_cast<double>(box.top)}, box.width(),
                     box.height(), radius);
    canvas.fillPath(path, color);
}

void frameRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius, double width,
                   platform::Color color) {
    const double half = width / 2; // the pen's middle goes this far inside
    platform::Path path;
    path.addRoundBox({box.left + half, box.top + half}, box.width() - width, box.height() - width,
                     std::max(radius - half, 0.0));
    canvas.fillPath(path.stroked(width), color);
}

} // namespace toolkit
