#include "ui/ChosenLanguage.h"

#include <algorithm>
#include <iterator>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"

namespace ui {

std::u16string ownNameOf(const std::string& language) {
    const auto* const known =
        std::find_if(std::begin(kLanguages), std::end(kLanguages), [&](const OwnName& own) {
            return core::lowerCase(own.language) == core::lowerCase(language);
        });
    return known != std::end(kLanguages) ? std::u16string(known->name)
                                         : core::displayText(language);
}

std::string chosenLanguage(const app_state::SharedServices& services) {
    const std::string spoken =
        services.translations ? services.translations->language() : std::string();
    const std::string chosen = services.editorSettings
                                   ? services.editorSettings->getString(core::kLanguageKey, {})
                                   : std::string();
    return chosen.empty() ? spoken : chosen;
}

bool isLanguageNew(const app_state::SharedServices& services) {
    return services.translations && core::lowerCase(chosenLanguage(services)) !=
                                        core::lowerCase(services.translations->language());
}

void speakChosenLanguage(app_state::SharedServices& services) {
    if (isLanguageNew(services)) {
        services.translations = services.translations->in(chosenLanguage(services));
        core::setTexts(services.translations);
    }
}

} // namespace ui
