#include <optional>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "ui/ActionRow.h"
#include "ui/BranchList.h"
#include "ui/BranchListControls.h"
#include "zone/ZoneManager.h"

namespace ui {

using namespace branch_list;

namespace {

NameList zoneNames(const zone::ZoneManager& zones) {
    std::vector<std::string> names;
    for (int index = 0; index < zones.zoneCount(); ++index) {
        names.push_back(zones.getZoneName(index));
    }
    return NameList(std::move(names));
}

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

} // namespace

void BranchList::listSceneVideos() {
    for (int branch = 0; branch < scene()->branchCount(); ++branch) {
        const std::string name = scene()->branchFilename(branch);
        if (indexOfText(m_videos, name) >= 0) {
            continue;
        }
        addVideoItem(name);
        const std::string base = core::withoutExtension(m_folder + name);
        if (auto zones = zone::ZoneManager::create(base, 0, false)) {
            m_zones[name] = std::move(zones);
        }
    }
}

void BranchList::addVideoItem(const std::string& name) {
    auto* combo = find<toolkit::CComboUI>(kVideoCombo);
    if (combo == nullptr) {
        return;
    }
    auto item = std::make_unique<toolkit::CListLabelElementUI>();
    item->SetText(core::displayText(name));
    combo->Add(std::move(item));
    m_videos.push_back(name);
}

void BranchList::removeVideoItem(const std::string& name) {
    auto* combo = find<toolkit::CComboUI>(kVideoCombo);
    const int index = indexOfText(m_videos, name);
    if (combo != nullptr && index >= 0) {
        combo->RemoveAt(index);
        m_videos.erase(m_videos.begin() + index);
    }
}

void BranchList::chooseVideo(Control& /*sender*/) {
    const auto* combo = find<toolkit::CComboUI>(kVideoCombo);
    const int branch = selectedBranch();
    if (combo == nullptr || combo->GetCurSel() < 0 || branch < 0) {
        return;
    }
    const std::string name = storedChoice(m_videos, combo->GetCurSel(), combo->GetText());
    if (name != scene()->branchFilename(branch)) {
        scene()->setBranchFilename(branch, name);
        changed();
    }
    refreshZoneParameters();
}

void BranchList::readShownZones() {
    m_shownZones = NameList();
    const auto* combo = find<toolkit::CComboUI>(kVideoCombo);
    if (combo != nullptr && combo->GetCurSel() >= 0) {
        const std::string name = storedChoice(m_videos, combo->GetCurSel(), combo->GetText());
        const auto found = m_zones.find(name);
        if (!name.empty() && found != m_zones.end()) {
            m_shownZones = zoneNames(*found->second);
        }
    }
}

void BranchList::addVideos() {
    std::optional<platform::OpenFilesResult> chosen;
    {
        const KeptDirectory kept;
        platform::OpenFilesRequest request;
        request.owner = GetNative();
        request.title = "Select Video";
        request.filterName = "Theora Video Files";
        request.filterPatterns = "*.ogg;*.ogv";
        request.initialFolder = scene::scenesFolderPath();
        const AskingScope asking(*this);
        chosen = context().gui.fileDialog().openFiles(request);
    }
    if (!chosen || m_folder.empty() || isImporting()) {
        return;
    }
    m_importFolder = chosen->folder;
    m_importNames.assign(chosen->names.begin(), chosen->names.end());
    m_importCount = static_cast<int>(m_importNames.size());
    m_importOutcome = {};
    importNextVideo();
}

bool BranchList::isImporting() const {
    return m_import.isRunning();
}

void BranchList::importNextVideo() {
    if (find<toolkit::CComboUI>(kVideoCombo) == nullptr) {
        m_importNames.clear();
    }
    while (!m_importNames.empty() && !isImporting()) {
        const std::string name = m_importNames.front();
        if (indexOfText(m_videos, name) >= 0) {
            ++m_importOutcome.listedAlready;
            m_importNames.pop_front();
            continue;
        }
        addVideoItem(name);
        m_import.start(
            m_importFolder + name, m_folder + core::fileName(name), [this] { updateStatus(); },
            [this, name](const jobs::ImportReport& report) { videoImported(name, report); });
    }
    if (!isImporting()) {
        showImportOutcome();
    }
    updateState();
}

void BranchList::videoImported(const std::string& name, const jobs::ImportReport& report) {
    const bool cancelled = report.result == jobs::ImportResult::cancelled;
    if (cancelled) {
        m_importNames.clear();
    } else {
        m_importNames.pop_front();
    }
    if (cancelled || report.result == jobs::ImportResult::failed) {
        removeVideoItem(name);
    }
    m_importOutcome.note(name, report);
    importNextVideo();
    if (!isImporting()) {
        GetPaintManager().SetFocus(findControl(kAddVideoButton));
    }
}

void BranchList::showImportOutcome() {
    m_note = importNote(m_importOutcome);
    m_problem = importProblem(m_importOutcome);
}

void BranchList::cancelImport() {
    m_import.cancel();
}

void BranchList::editZones() {
    const auto* branches = find<toolkit::CComboUI>(kBranchCombo);
    const auto* videos = find<toolkit::CComboUI>(kVideoCombo);
    if (scene() == nullptr || branches == nullptr || videos == nullptr || m_folder.empty() ||
        branches->GetCurSel() < 0 || videos->GetCurSel() < 0) {
        return;
    }
    // The video's place in its list picks a branch, whose video is taken. Where the two lists are
    // ordered differently this is another video than the one shown. Intended.
    const std::string name = scene()->branchFilename(videos->GetCurSel());
    if (name.empty()) {
        m_note = nothingToEditText(videos->GetCurSel());
        return;
    }
    context().state.zoneEditVideo = m_folder + name;
    context().state.zoneEditRequest = true;
    Close(1);
}

} // namespace ui
