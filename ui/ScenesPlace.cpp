#include "ui/ScenesPlace.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "app/state/Installation.h"
#include "app/state/ProductTree.h"
#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/FileDialog.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/FileChoice.h"

namespace ui {
namespace {

constexpr std::u16string_view kField = u"EditScenesFolder";
constexpr std::u16string_view kButton = u"ButtonScenesFolder";
constexpr std::u16string_view kHint = u"LabelScenesFolder";

/// The tree that the author means by a folder: the one that it is or lies in, or a new one in it.
std::string treeIn(const std::string& folder) {
    std::string inLower = core::lowerCase(folder);
    std::replace(inLower.begin(), inLower.end(), '\\', '/');
    const std::string working = core::lowerCase(std::string("/") + app_state::kTreeWorkingFolder);
    const std::string scenes = core::lowerCase(working + "/" + scene::kScenesFolder);
    for (const std::string& inner : {scenes, working}) {
        if (inLower.size() > inner.size() && inLower.ends_with(inner)) {
            const std::string tree = folder.substr(0, folder.size() - inner.size());
            return tree.ends_with(':') ? core::withSeparator(tree) : tree; // the root of a drive
        }
    }
    const bool isTree =
        core::lowerCase(core::fileName(folder)) == core::lowerCase(app_state::kProductTree) ||
        core::isFolder(core::withSeparator(folder) + app_state::kTreeWorkingFolder);
    return isTree ? folder : core::withSeparator(folder) + app_state::kProductTree;
}

} // namespace

void ScenesPlace::show() {
    showFolder(scene::kScenesFolder);
    toolkit::CControlUI* button = m_controls.find(kButton);
    if (button != nullptr && m_context.services.installation.folder.empty()) {
        button->SetVisible(false);
    }
}

void ScenesPlace::showFolder(const std::string& folder) {
    const std::u16string shown = core::displayText(core::services().fileSystem->fullPath(folder));
    m_controls.setText(kField, shown);
    if (toolkit::CControlUI* field = m_controls.find(kField)) {
        field->SetToolTip(shown);
    }
}

void ScenesPlace::choose(platform::NativeWindow* owner, Companions& beside) {
    platform::FolderRequest request;
    request.owner = owner;
    request.title = core::trStored("Folder for Scenes"_tr);
    request.initialFolder = core::services().fileSystem->fullPath("../..");
    const Companions::Pause pause(beside);
    const auto chosen = chooseFolder(m_context.gui, request);
    if (!chosen) {
        return;
    }
    const std::string tree = treeIn(*chosen);
    const app_state::Installation& installation = m_context.services.installation;
    core::createFolders(*core::services().fileSystem, installation.placeFile);
    if (core::EditorSettings(installation.placeFile)
            .set(app_state::Installation::kFolderKey, tree)) {
        showFolder(core::withSeparator(tree) + app_state::kTreeWorkingFolder + "/" +
                   scene::kScenesFolder);
        m_controls.setText(kHint,
                           core::tr("From the next start. Your scenes stay where they are."_tr));
    } else {
        m_controls.setText(kHint, core::tr("The choice could not be saved."_tr));
    }
}

} // namespace ui
