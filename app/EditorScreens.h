// The four screens as the program's real windows.
#pragma once

#include <memory>

#include "app/Screens.h"
#include "ui/WindowContext.h"

namespace zoneedit {
class ZoneEdit;
}

namespace app {

class EditorScreens final : public Screens {
public:
    /// Everything in `context` outlives the screens.
    explicit EditorScreens(const ui::WindowContext& context);
    ~EditorScreens() override;

    bool showOpenScene() override;
    bool showNewScene() override;
    bool showBranchEditor() override;
    bool showZoneEditor() override;
    bool loadChosenScene() override;

private:
    ui::WindowContext m_context;
    std::shared_ptr<zoneedit::ZoneEdit> m_zoneEdit; ///< while the zone editor runs
};

} // namespace app
