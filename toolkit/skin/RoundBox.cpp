#include "toolkit/skin/RoundBox.h"

#include "platform/Path.h"

namespace toolkit {

void fillRoundBox(platform::Canvas& canvas, const platform::Rect& box, double radius,
                  platform::Color color) {
    platform::Path path;
    path.addRoundBox({static_cast<double>(box.left), static_cast<double>(box.top)}, box.width(),
                     box.height(), radius);
    canvas.fillPath(path, color);
}

} // namespace toolkit
