// How the branch editor imports videos.
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/state/SharedServices.h"
#include "core/Texts.h"
#include "platform/FileSystem.h"
#include "platform/Gui.h"
#include "ui/BranchList.h"
#include "ui/BranchListParts.h"
#include "ui/WindowContext.h"
#include "ui/branch_editor/FindingsPresenter.h"
#include "ui/branch_editor/ImportPresenter.h"
#include "ui/importing/ImportVideo.h"
#include "ui/importing/SceneImports.h"

namespace ui {

std::shared_ptr<SceneImports> BranchList::importsOfScene() {
    if (m_folder.empty()) {
        return nullptr;
    }
    std::shared_ptr<SceneImports>& imports = context().services.sceneImports;
    if (imports == nullptr || imports->folder() != m_folder) {
        imports.reset(); // those of the scene before end first
        // For threads: the system's own files, which nobody replaces meanwhile.
        imports = std::make_shared<SceneImports>(context().gui.loop(), platform::nativeFileSystem(),
                                                 context().services.sceneSession,
                                                 context().services.editorSettings, m_folder);
    }
    return imports;
}

void BranchList::openImports() {
    companions().show<ImportVideo>(context(), core::tr("Import Video"_tr));
}

void BranchList::importsChanged() {
    if (m_parts) {
        noteUnfinished(m_copying);
        showClip(true);
        showEnabled();
    }
}

void BranchList::noteUnfinished(const std::string& copying) {
    m_copying = copying;
    const std::vector<std::string> remade = m_parts->imports.remade();
    std::set<std::string> names(remade.begin(), remade.end());
    if (!copying.empty()) {
        names.insert(copying);
    }
    m_parts->findings.setCopying(names);
}

} // namespace ui
