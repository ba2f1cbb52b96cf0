#include "app/services/StartProblem.h"

#include <memory>

#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Texts.h"
#include "core/Translations.h"

namespace app {
namespace {

std::string in(const std::string& folder, const std::string& name) {
    return folder.empty() ? folder : core::withSeparator(folder) + name;
}

/// As createServices chooses it, from files that are well formed; empty if none of them tells.
std::string languageOf(const StartTexts& texts) {
    for (const std::string& file :
         {in(texts.workingFolder, "Editor.ini"),
          in(texts.workingFolder, "../../Settings/Settings.ini"), texts.givenSettings}) {
        const auto settings = core::Settings::create(file);
        std::string language =
            settings ? settings->getString("", std::string(core::kLanguageKey), {}) : std::string();
        if (!language.empty()) {
            return language;
        }
    }
    return {};
}

std::shared_ptr<const core::Translations> translations(const StartTexts& texts) {
    const std::string language = languageOf(texts);
    for (const std::string& folder : {texts.workingFolder, texts.installed}) {
        const std::string file = in(folder, "Translations.ini");
        if (!language.empty() && core::isFile(file)) {
            return core::Translations::create(file, language);
        }
    }
    return nullptr;
}

} // namespace

StartProblem startProblem(const StartTexts& texts, const std::function<std::string()>& tell) {
    StartProblem problem;
    problem.logged = tell();
    core::setTexts(translations(texts));
    problem.shown = tell();
    core::setTexts(nullptr);
    return problem;
}

StartProblem scriptProblem(const std::string& folder, const std::string& installed,
                           const std::string& reason) {
    if (folder.empty()) {
        return {reason, reason};
    }
    return startProblem({folder, installed, in(installed, "Settings.ini")}, [&] {
        return core::trStored("The folder {0} cannot be prepared."_tr, {folder}) + "\n\n" + reason;
    });
}

} // namespace app
