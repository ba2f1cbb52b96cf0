// The scene as a map: a node for each branch, lines to the branches that its actions lead to.
// UI thread only.
#pragma once

#include <string>

#include "toolkit/controls/CControlUI.h"

namespace ui {

class SceneMap final : public toolkit::CControlUI {
public:
    [[nodiscard]] std::u16string GetClass() const override { return u"SceneMap"; }
    [[nodiscard]] bool isFocusable() const override { return true; }
};

} // namespace ui
