#include "ui/map/MapLayouts.h"

namespace ui {

MapLayouts layOutAll(const map::MapScene& scene, const std::function<bool()>& isCancelled) {
    MapLayouts layouts;
    for (const map::NodeForm form :
         {map::NodeForm::whole, map::NodeForm::still, map::NodeForm::name}) {
        if (!isCancelled()) {
            layouts.emplace(form, map::layOut(scene, form));
        }
    }
    return layouts;
}

} // namespace ui
