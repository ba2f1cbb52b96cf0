#include "ui/Manual.h"

#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "platform/Desktop.h"
#include "platform/FileSystem.h"
#include "platform/Gui.h"

namespace ui {
namespace {

std::string pagePath(const std::string& name) {
    return core::services().fileSystem->fullPath("Manual/" + name + ".html");
}

} // namespace

void openManual(platform::Gui& gui, const std::string& window) {
    std::string page = pagePath(window);
    if (!core::isFile(page)) {
        page = pagePath("index");
    }
    if (!core::isFile(page) || !gui.desktop().openFile(page)) {
        gui.desktop().showError("Quorvel",
                                core::trStored("The manual cannot be opened:"_tr) + "\n" + page);
    }
}

} // namespace ui
