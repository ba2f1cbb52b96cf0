#include "zone/ZoneView.h"

namespace zone {
namespace {

std::optional<ZoneView>& installedView() {
    static std::optional<ZoneView> view;
    return view;
}

bool isUsable(platform::Size size) {
    return size.width > 0 && size.height > 0;
}

} // namespace

void setZoneView(const ZoneView& view) {
    installedView() = view;
}

void clearZoneView() {
    installedView().reset();
}

const ZoneView* zoneView() {
    const std::optional<ZoneView>& view = installedView();
    return view ? &*view : nullptr;
}

std::optional<Scale> currentScale() {
    const ZoneView* view = zoneView();
    if (!view || !isUsable(view->displaySize) || !isUsable(view->videoSize)) {
        return std::nullopt;
    }
    return Scale{
        static_cast<float>(view->displaySize.width) / static_cast<float>(view->videoSize.width),
        static_cast<float>(view->displaySize.height) / static_cast<float>(view->videoSize.height)};
}

} // namespace zone
