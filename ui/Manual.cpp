#include "ui/Manual.h"

#include <string>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/Desktop.h"
#include "platform/FileSystem.h"
#include "platform/Gui.h"

namespace ui {
namespace {

constexpr const char* kFirstPage = "Manual/index.html";

} // namespace

void openManual(platform::Gui& gui) {
    const std::string page = core::services().fileSystem->fullPath(kFirstPage);
    if (!core::isFile(page) || !gui.desktop().openFile(page)) {
        gui.desktop().showError("Quorvel", "The manual cannot be opened:\n" + page);
    }
}

} // namespace ui
