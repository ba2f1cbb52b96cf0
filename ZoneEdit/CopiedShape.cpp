#include "ZoneEdit/CopiedShape.h"

namespace zoneedit {

std::optional<zone::Points>& copiedShape() {
    static std::optional<zone::Points> shape;
    return shape;
}

} // namespace zoneedit
