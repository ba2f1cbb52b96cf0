#include "ui/FileChoice.h"

#include <string>

#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "platform/FileSystem.h"

namespace ui {
namespace {

/// Brings the working directory back: a file dialog may leave another one behind.
class KeptDirectory {
public:
    KeptDirectory() : m_folder(core::services().fileSystem->currentFolder()) {}
    ~KeptDirectory() { core::services().fileSystem->setCurrentFolder(m_folder); }
    KeptDirectory(const KeptDirectory&) = delete;
    KeptDirectory& operator=(const KeptDirectory&) = delete;

private:
    std::string m_folder;
};

/// Of the windows, as systems name languages.
std::string languageCode() {
    return core::trStored("Language.Code|en"_tr);
}

} // namespace

std::optional<platform::OpenFilesResult> chooseFiles(platform::Gui& gui,
                                                     core::EditorSettings* settings,
                                                     std::string_view key,
                                                     platform::OpenFilesRequest request) {
    const KeptDirectory kept;
    const std::string last = settings != nullptr ? settings->getString(key, {}) : std::string();
    if (!last.empty() && core::isFolder(last)) {
        request.initialFolder = last;
    }
    request.language = languageCode();
    auto chosen = gui.fileDialog().openFiles(request);
    if (chosen && settings != nullptr && chosen->folder != last) {
        settings->set(key, chosen->folder);
    }
    return chosen;
}

std::optional<std::string> chooseFolder(platform::Gui& gui, platform::FolderRequest request) {
    const KeptDirectory kept;
    request.language = languageCode();
    return gui.fileDialog().chooseFolder(request);
}

} // namespace ui
