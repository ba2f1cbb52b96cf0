// What the zone editor shows besides the picture and the zone that is edited, and how: switches of
// the caption and of the menu, kept between runs. Part of the zone editor. UI thread only.
#pragma once

#include <array>
#include <cstddef>
#include <functional>

#include "ui/Controls.h"

namespace core {
class EditorSettings;
}

namespace zoneedit {

enum class Toggle { allZones, onion, loupe, panel, clearLines, grabDistance };
inline constexpr std::size_t kToggleCount = 6;

class ViewToggles {
public:
    /// `settings`, which may be null, outlive it. `changed` is called after each change.
    ViewToggles(ui::Controls controls, core::EditorSettings* settings,
                std::function<void(Toggle)> changed);

    void showAll();
    [[nodiscard]] bool isOn(Toggle toggle) const;
    void turn(Toggle toggle);
    /// A wide window has the panel until the author decides otherwise.
    void windowSized();

private:
    void show(Toggle toggle);

    ui::Controls m_controls;
    core::EditorSettings* m_settings;
    std::function<void(Toggle)> m_changed;
    std::array<bool, kToggleCount> m_isOn{};
    bool m_isPanelChosen = false; ///< by the author
};

} // namespace zoneedit
