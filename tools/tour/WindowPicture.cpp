#include "tools/tour/WindowPicture.h"

#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/DropListWindow.h"

namespace tour {

void overlay(platform::Bitmap& below, const platform::NativeWindow& window,
             platform::NativeWindow& above) {
    const platform::Bitmap picture = above.picture().snapshot();
    const platform::Point from = window.geometry().topLeft();
    const platform::Point to = above.geometry().topLeft();
    const platform::Rect all{0, 0, below.size().width, below.size().height};
    for (int y = 0; y < picture.size().height; ++y) {
        for (int x = 0; x < picture.size().width; ++x) {
            const platform::Point at{to.x - from.x + x, to.y - from.y + y};
            if (all.contains(at)) {
                below.row(at.y)[at.x] = picture.at(x, y);
            }
        }
    }
}

platform::Bitmap pictureOf(toolkit::WindowImplBase& window) {
    platform::Bitmap picture = window.GetNative()->picture().snapshot();
    const toolkit::DropListWindow& list = toolkit::DropListWindow::of(window.GetPaintManager());
    if (list.owner() != nullptr && list.native() != nullptr) {
        overlay(picture, *window.GetNative(), *list.native());
    }
    return picture;
}

} // namespace tour
