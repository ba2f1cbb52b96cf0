#include "app/services/Startup.h"

#include <memory>
#include <utility>

#include "app/state/Installation.h"
#include "core/EditorSettings.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "recovery/Backups.h"
#include "recovery/Places.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"

namespace app {
namespace {

constexpr const char* kSettingsFile = "../../Settings/Settings.ini";
constexpr const char* kTranslationsFile = "Translations.ini";
constexpr const char* kDefaultLanguage = "English";

} // namespace

std::string readLanguage() {
    const std::shared_ptr<core::Settings> settings = core::Settings::create(kSettingsFile);
    return settings ? settings->getString("", "language", kDefaultLanguage) : kDefaultLanguage;
}

bool createServices(app_state::SharedServices& services, app_state::ScreenState& state) {
    services.translations = core::Translations::create(
        core::hereOrIn(services.installation.folder, kTranslationsFile), readLanguage());
    services.editorSettings = std::make_shared<core::EditorSettings>(recovery::editorIniPath());
    if (services.translations) {
        const std::string chosen = services.editorSettings->getString(core::kLanguageKey, {});
        if (!chosen.empty()) {
            services.translations = services.translations->in(chosen);
        }
        core::setTexts(services.translations);
        services.sceneManager = scene::SceneManager::create();
        services.sceneSession = scene::SceneSession::create(services.sceneManager);
    }
    if (!services.translations || !services.sceneSession) {
        core::Log::get()->Error("Unable to initialize editor interfaces.");
        return false;
    }
    services.sceneManager->setKeeper(std::make_shared<recovery::Backups>(
        [scene = services.sceneManager.get()] {
            return recovery::sceneVersionsFolder(scene->Name());
        },
        [settings = services.editorSettings] { return !settings || settings->keepBackups(); }));
    state.quit = false;
    state.newSceneRequest = false;
    return true;
}

void dropServices(app_state::SharedServices& services) {
    services.keyMap.reset();
    std::exchange(services.sceneSession, nullptr).reset();
    std::exchange(services.sceneManager, nullptr).reset();
    std::exchange(services.editorSettings, nullptr).reset();
    core::setTexts(nullptr);
    std::exchange(services.translations, nullptr).reset();
}

} // namespace app
