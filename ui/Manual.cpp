#include "ui/Manual.h"

#include "app/state/Installation.h"
#include "app/state/SharedServices.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "platform/Desktop.h"
#include "platform/FileSystem.h"
#include "platform/Gui.h"
#include "ui/WindowContext.h"

namespace ui {
namespace {

/// Of the pages that there could be, the best first, the first that is there; else the last.
std::string pageAbout(const std::string& window, const std::string& language,
                      const std::string& installed) {
    const std::string manual = core::withSeparator(core::hereOrIn(installed, "Manual"));
    std::string page;
    for (const std::string& folder :
         {language.empty() ? language : language + "/", std::string()}) {
        for (const std::string& name : {window, std::string("index")}) {
            page = core::services().fileSystem->fullPath(manual + folder + name + ".html");
            if (core::isFile(page)) {
                return page;
            }
        }
    }
    return page;
}

} // namespace

void openManual(const WindowContext& context, const std::string& window) {
    const auto& texts = context.services.translations;
    const std::string page = pageAbout(window, texts ? texts->spelledLanguage() : std::string(),
                                       context.services.installation.folder);
    platform::Desktop& desktop = context.gui.desktop();
    if (!core::isFile(page) || !desktop.openFile(page)) {
        desktop.showError("Quorvel",
                          core::trStored("The manual cannot be opened:"_tr) + "\n" + page);
    }
}

} // namespace ui
