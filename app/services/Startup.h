// The long-lived services: created before the first window, destroyed after the last. Main thread
// only.
#pragma once

#include <string>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"

namespace app {

/// The user's language: "English" unless "../../Settings/Settings.ini" names another.
[[nodiscard]] std::string readLanguage();

/// Fills `services`, whose `installation` says where else to look, and clears the quit and
/// new-scene requests of `state`. False, and logged, if "Translations.ini" cannot be read or memory
/// runs out; the program then exits with 1.
[[nodiscard]] bool createServices(app_state::SharedServices& services,
                                  app_state::ScreenState& state);

/// Releases the session, the scene manager and the translations, in this order. Each member is
/// empty before its object is destroyed.
void dropServices(app_state::SharedServices& services);

} // namespace app
