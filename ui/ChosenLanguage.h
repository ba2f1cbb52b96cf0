// The language that the author has chosen in the settings. It counts from the next screen on: what
// is open stays in one language. UI thread only.
#pragma once

#include <string>
#include <string_view>

namespace app_state {
struct SharedServices;
}

namespace ui {

/// A language and what it calls itself.
struct OwnName {
    std::string_view language;
    std::u16string_view name;
};
/// In the order in which they are shown; others follow.
inline constexpr OwnName kLanguages[] = {{"English", u"English"},
                                         {"French", u"Français"},
                                         {"German", u"Deutsch"},
                                         {"Spanish", u"Español"},
                                         {"Dutch", u"Nederlands"}};
/// "Deutsch" for "german"; a language that is none of these as it is.
[[nodiscard]] std::u16string ownNameOf(const std::string& language);

/// What the windows speak, until one is chosen.
[[nodiscard]] std::string chosenLanguage(const app_state::SharedServices& services);
/// Whether the windows speak another one still.
[[nodiscard]] bool isLanguageNew(const app_state::SharedServices& services);
/// Windows made from now on speak it.
void speakChosenLanguage(app_state::SharedServices& services);

} // namespace ui
