#include "ZoneEdit/ViewToggles.h"

#include <string_view>
#include <utility>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/EditorSettings.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace zoneedit {
namespace {

struct Place {
    std::u16string_view option; ///< in the caption; empty: in the menu alone
    const char* key;
};

/// In the order of the toggles.
constexpr std::array<Place, kToggleCount> kPlaces{{{kAllZonesOption, "outlines"},
                                                   {kOnionOption, "onionSkin"},
                                                   {kLoupeOption, "loupe"},
                                                   {kPanelOption, "zonePanel"},
                                                   {{}, "clearLines"},
                                                   {{}, "keepGrabDistance"}}};
/// From this width on there is room for the panel beside a picture of full size.
constexpr int kWide = 1560;

std::size_t numberOf(Toggle toggle) {
    return static_cast<std::size_t>(toggle);
}

} // namespace

ViewToggles::ViewToggles(ui::Controls controls, core::EditorSettings* settings,
                         std::function<void(Toggle)> changed)
    : m_controls(controls), m_settings(settings), m_changed(std::move(changed)) {
    for (std::size_t number = 0; number < kToggleCount && m_settings != nullptr; ++number) {
        m_isOn.at(number) = m_settings->getBool(kPlaces.at(number).key, false);
    }
    const char* panel = kPlaces.at(numberOf(Toggle::panel)).key;
    m_isPanelChosen = m_settings != nullptr &&
                      m_settings->getBool(panel, false) == m_settings->getBool(panel, true);
}

void ViewToggles::showAll() {
    windowSized();
    for (std::size_t number = 0; number < kToggleCount; ++number) {
        show(static_cast<Toggle>(number));
    }
}

bool ViewToggles::isOn(Toggle toggle) const {
    return m_isOn.at(numberOf(toggle));
}

void ViewToggles::turn(Toggle toggle) {
    bool& isOn = m_isOn.at(numberOf(toggle));
    isOn = !isOn;
    m_isPanelChosen = m_isPanelChosen || toggle == Toggle::panel;
    if (m_settings != nullptr) {
        m_settings->set(kPlaces.at(numberOf(toggle)).key, isOn ? "true" : "false");
    }
    show(toggle);
    m_changed(toggle);
}

void ViewToggles::windowSized() {
    const bool isWide = m_controls.manager().GetWindowSize().width >= kWide;
    if (!m_isPanelChosen && isWide != isOn(Toggle::panel)) {
        m_isOn.at(numberOf(Toggle::panel)) = isWide;
        show(Toggle::panel);
        m_changed(Toggle::panel);
    }
}

void ViewToggles::show(Toggle toggle) {
    if (auto* option = m_controls.find<toolkit::COptionUI>(kPlaces.at(numberOf(toggle)).option)) {
        option->Selected(isOn(toggle));
    }
    if (toggle == Toggle::panel) {
        m_controls.setVisible(kZonesPane, isOn(toggle));
    }
}

} // namespace zoneedit
