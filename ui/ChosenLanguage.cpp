#include "ui/ChosenLanguage.h"

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "core/Translations.h"

namespace ui {

std::string chosenLanguage(const app_state::SharedServices& services) {
    const std::string spoken =
        services.translations ? services.translations->language() : std::string();
    return services.editorSettings ? services.editorSettings->getString(core::kLanguageKey, spoken)
                                   : spoken;
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
