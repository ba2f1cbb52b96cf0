// The four screens as the program's real windows.
#pragma once

#include <memory>
#include <optional>

#include "app/Screens.h"
#include "app/state/ScreenState.h"
#include "ui/WindowContext.h"

namespace recovery {
class SceneDraft;
}
namespace zoneedit {
class ZoneEdit;
}

namespace app {

class EditorScreens final : public Screens {
public:
    /// Everything in `context` outlives the screens.
    explicit EditorScreens(const ui::WindowContext& context);
    ~EditorScreens() override;

    std::optional<app_state::ScreenResult> show(app_state::Screen screen,
                                                const app_state::ScreenResult& returned) override;
    bool loadChosenScene() override;

private:
    [[nodiscard]] std::optional<app_state::ScreenResult>
    showBranchEditor(const app_state::ScreenResult& returned);
    /// The open scene window is next: it offers the unsaved work of the scene, even if drafts are
    /// hidden.
    void leaveScene();
    [[nodiscard]] std::optional<app_state::ScreenResult> showZoneEditor();

    ui::WindowContext m_context;
    std::unique_ptr<recovery::SceneDraft> m_sceneDraft; ///< none without the services for it
    std::shared_ptr<zoneedit::ZoneEdit> m_zoneEdit;     ///< while the zone editor runs
};

} // namespace app
