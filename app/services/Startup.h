// The long-lived services: made before the first window, dropped after the last. Main thread only.
#pragma once

#include <string>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"

namespace app {

/// The user's language: "English" unless "../../Settings/Settings.ini" says another.
[[nodiscard]] std::string readLanguage();

/// Fills `services` and clears the quit and the new-scene request of `state`. False, logged, when
/// "Translations.ini" cannot be read or there is no memory; the program ends with 1 then.
[[nodiscard]] bool createServices(app_state::SharedServices& services,
                                  app_state::ScreenState& state);

/// Drops the scene manager, then the translations. Each place is empty before its object goes.
void dropServices(app_state::SharedServices& services);

} // namespace app
