#include "ui/BranchList.h"

#include "core/Services.h"
#include "core/Text.h"
#include "core/Translations.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/ActionRow.h"
#include "ui/BranchListControls.h"
#include "ui/Confirmation.h"
#include "ui/SceneHints.h"
#include "ui/commands/BranchEditorCommands.h"
#include "zone/ZoneManager.h"

namespace ui {

using namespace branch_list;

namespace {

std::vector<std::string> conditionNames(const app_state::SharedServices& services) {
    std::vector<std::string> names;
    for (const char* key : kConditionKeys) {
        names.push_back(services.translations ? services.translations->translate(key) : key);
    }
    return names;
}

} // namespace

std::shared_ptr<BranchList> BranchList::create(const WindowContext& context,
                                               const app_state::ScreenResult& returned) {
    auto window = std::make_shared<BranchList>(context, returned);
    return window->m_components.initialized() ? window : nullptr;
}

BranchList::BranchList(const WindowContext& context, const app_state::ScreenResult& returned)
    : EditorWindow(context, kBranchEditorCommands), m_components(context.gui.components()),
      m_returned(returned), m_conditions(conditionNames(context.services)), m_letters(keyLetters()),
      m_import(context.gui.loop(), *core::services().fileSystem) {
    static constexpr CommandHandler<BranchList> kHandlers[] = {
        {command::kExit, &BranchList::exitProgram},
        {command::kSave, &BranchList::saveScene},
        {command::kAddBranch, &BranchList::addBranch},
        {command::kAddVideo, &BranchList::addVideos},
        {command::kEditZones, &BranchList::editZones},
        {command::kAddAction, &BranchList::addAction},
        {command::kRemoveAction, &BranchList::removeAction},
        {command::kStop, &BranchList::stop},
    };
    commands().bindAll(*this, kHandlers);
}

BranchList::~BranchList() = default;

scene::SceneManager* BranchList::scene() const {
    return context().services.sceneManager.get();
}

int BranchList::selectedBranch() {
    const auto* combo = find<toolkit::CComboUI>(kBranchCombo);
    const scene::SceneManager* model = scene();
    if (combo == nullptr || model == nullptr) {
        return -1;
    }
    const int index = combo->GetCurSel();
    return index < model->branchCount() ? index : -1;
}

void BranchList::InitWindow() {
    if (scene() == nullptr) {
        return;
    }
    m_folder = scene::sceneFolderPath(scene()->Name());
    setTextOf(kSceneLabel, core::displayText(scene()->Name()));
    if (const Control* status = findControl(kStatus)) {
        m_usualStatus = status->GetText();
    }
    if (!context().state.newSceneRequest) {
        listSceneVideos();
    }
    fillBranchNames();
    refreshTargets();
    auto* combo = find<toolkit::CComboUI>(kBranchCombo);
    if (combo != nullptr && combo->GetCount() > 0) {
        combo->SelectItem(0);
    }
    if (!m_returned.unreadableVideo.empty()) {
        m_problem = unreadableVideoText(m_returned.unreadableVideo);
    }
    updateState();
}

void BranchList::Notify(toolkit::TNotifyUI& message) {
    EditorWindow::Notify(message);
    if (!IsClosing()) {
        updateState();
    }
}

void BranchList::OnClick(toolkit::TNotifyUI& message) {
    forgetNote();
    EditorWindow::OnClick(message);
}

void BranchList::OnItemSelect(toolkit::TNotifyUI& message) {
    static constexpr ControlHandler<BranchList> kHandlers[] = {
        {kBranchCombo, &BranchList::selectBranch},       {kVideoCombo, &BranchList::chooseVideo},
        {kConditionCombo, &BranchList::chooseCondition}, {kTargetCombo, &BranchList::chooseTarget},
        {kParameterCombo, &BranchList::chooseParameter},
    };
    forgetNote();
    dispatch(*this, kHandlers, message);
}

void BranchList::OnSelectChanged(toolkit::TNotifyUI& message) {
    static constexpr ControlHandler<BranchList> kHandlers[] = {
        {kImmediateCheck, &BranchList::changeImmediate},
        {kFirstCheck, &BranchList::chooseFirstBranch},
    };
    dispatch(*this, kHandlers, message);
}

void BranchList::OnKillFocus(toolkit::TNotifyUI& message) {
    static constexpr ControlHandler<BranchList> kHandlers[] = {
        {kNameEdit, &BranchList::renameBranch},
    };
    dispatch(*this, kHandlers, message);
}

bool BranchList::HandleMessage(const platform::Event& event) {
    if (event.kind == platform::EventKind::keyDown ||
        event.kind == platform::EventKind::mouseDown ||
        event.kind == platform::EventKind::mouseDoubleClick) {
        m_noteIsFresh = false;
    }
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == platform::EventKind::closeRequest && isAsking()) {
        return true;
    }
    return EditorWindow::HandleMessage(event);
}

void BranchList::fillBranchNames() {
    auto* combo = find<toolkit::CComboUI>(kBranchCombo);
    if (combo == nullptr || scene() == nullptr) {
        return;
    }
    std::vector<std::string> ids;
    scene()->branchIDs(ids);
    m_branches = NameList(std::move(ids));
    combo->SetItemTexts(m_branches.shown);
}

void BranchList::selectBranch(Control& sender) {
    if (Control* edit = findControl(kNameEdit)) {
        edit->SetText(sender.GetText());
        m_shownName = edit->GetText();
    }
    showFirstBranch();
    showBranch(selectedBranch());
}

void BranchList::showBranch(int branch) {
    auto* videos = find<toolkit::CComboUI>(kVideoCombo);
    if (videos != nullptr && branch >= 0) {
        const std::string name = scene()->branchFilename(branch);
        if (!name.empty()) {
            videos->SelectItem(indexOfText(m_videos, name));
        }
    }
    rebuildActions();
}

void BranchList::showFirstBranch() {
    auto* check = find<toolkit::COptionUI>(kFirstCheck);
    if (check == nullptr) {
        return;
    }
    const int branch = selectedBranch();
    check->Selected(branch >= 0 && scene()->branchID(branch) == scene()->FirstBranch());
    check->Invalidate();
}

void BranchList::renameBranch(Control& sender) {
    auto* combo = find<toolkit::CComboUI>(kBranchCombo);
    if (combo == nullptr || sender.GetText() == m_shownName) {
        // An edit cannot hold every name that a file can: a text nobody touched is no new name.
        return;
    }
    const int branch = selectedBranch();
    const std::u16string name = sender.GetText();
    if (combo->FindItemText(name) >= 0) {
        sender.SetText(branch >= 0 ? core::displayText(scene()->branchID(branch))
                                   : std::u16string());
        m_note = takenNameText(name);
        m_noteIsFresh = true;
        return;
    }
    const int index = combo->GetCurSel();
    const int offset = actionsOffset();
    if (branch >= 0) {
        scene()->renameBranch(branch, core::storedText(name));
        changed();
    }
    fillBranchNames();
    refreshTargets();
    combo->SelectItem(index);
    // The press that ended the typing may be on its way to one of the rows on the screen.
    scrollActions(offset);
}

void BranchList::stop() {
    Control* edit = findControl(kNameEdit);
    if (isImporting()) {
        cancelImport();
    } else if (edit != nullptr && edit == GetPaintManager().GetFocus() &&
               edit->GetText() != m_shownName) {
        edit->SetText(m_shownName);
    }
}

void BranchList::chooseFirstBranch(Control& sender) {
    auto* check = toolkit::controlCast<toolkit::COptionUI>(&sender);
    if (check == nullptr) {
        return;
    }
    const int branch = selectedBranch();
    if (check->IsSelected() && branch >= 0) {
        scene()->SetFirstBranch(scene()->branchID(branch));
        changed();
        return;
    }
    // Unchecking never clears the first branch: another one has to be checked instead. Intended.
    check->Selected(false);
    check->Invalidate();
}

void BranchList::addBranch() {
    auto* combo = find<toolkit::CComboUI>(kBranchCombo);
    if (combo == nullptr || scene() == nullptr) {
        return;
    }
    scene()->AddBranch();
    changed();
    if (Control* videos = findControl(kVideoCombo)) {
        videos->Invalidate();
    }
    fillBranchNames();
    refreshTargets();
    combo->SelectItem(combo->GetCount() - 1);
}

void BranchList::saveScene() {
    if (scene() != nullptr && !m_folder.empty() && scene()->branchCount() > 0) {
        m_saved = scene()->Save(m_folder) ? savedText() + u" " : std::u16string();
        showFirstBranch(); // a scene without one has got it by the save
    }
}

void BranchList::exitProgram() {
    // A dismissed question counts as yes. Intended.
    SetAnswer(kYes);
    Confirmation::ask(context(), *this, "Exit?", "Are you sure you want to exit?");
    if (answer() == kYes) {
        context().state.quit = true;
        Close(1);
    }
}

} // namespace ui
