// The language that the author has chosen in the settings. It counts from the next screen on: what
// is open stays in one language. UI thread only.
#pragma once

#include <string>

namespace app_state {
struct SharedServices;
}

namespace ui {

/// What the windows speak, until one is chosen.
[[nodiscard]] std::string chosenLanguage(const app_state::SharedServices& services);
/// Whether the windows speak another one still.
[[nodiscard]] bool isLanguageNew(const app_state::SharedServices& services);
/// Windows made from now on speak it.
void speakChosenLanguage(app_state::SharedServices& services);

} // namespace ui
