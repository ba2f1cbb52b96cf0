#include "ui/BranchList.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/state/SharedServices.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "jobs/ImportOutcome.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "recovery/Drafts.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/BranchListParts.h"
#include "ui/ChosenLanguage.h"
#include "ui/Confirmation.h"
#include "ui/Controls.h"
#include "ui/EarlierVersions.h"
#include "ui/NameList.h"
#include "ui/SceneHints.h"
#include "ui/SettingsWindow.h"
#include "ui/VersionHistory.h"
#include "ui/WindowContext.h"
#include "ui/branch_editor/ActionPresenter.h"
#include "ui/branch_editor/BranchFind.h"
#include "ui/branch_editor/ChosenActions.h"
#include "ui/branch_editor/ClipCard.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/HistoryPresenter.h"
#include "ui/branch_editor/ImportPresenter.h"
#include "ui/branch_editor/LeadsPresenter.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/PaneHead.h"
#include "ui/branch_editor/StripOffer.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/branch_editor/ZoneVisit.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ContextMenu.h"
#include "ui/map/MapPresenter.h"
#include "ui/map/SceneMap.h"
#include "ui/preview/PreviewNames.h"
#include "ui/preview/PreviewPresenter.h"
#include "ui/preview/PreviewSlider.h"
#include "ui/preview/VideoPreview.h"
#include "ui/publishing/PublishWindow.h"
#include "ui/tour/TourControls.h"
#include "ui/tour/TourPresenter.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr ContextMenu kContextMenus[] = {
    {kSceneMap, kBranchRows},    {kVideoPreview, kPreviewRows}, {kPreviewPath, kPathRows},
    {kBranchCombo, kBranchRows}, {kNameEdit, kBranchRows},      {kVideoCombo, kVideoRows},
    {kActionList, kActionRows},  {kFindingsList, kFindingRows}, {kPreviewChoices, kPreviewRows},
};
constexpr std::u16string_view kPanes[] = {kSceneMap,   kVideoPreview, kFindingsList, kBranchCombo,
                                          kActionList, kNoticePanel,  kTourPanel};

} // namespace

/// What a part does when the author has changed the control of this name.
struct BranchList::Reaction {
    std::u16string_view control;
    void (*react)(Parts& parts, toolkit::CControlUI& sender);
};

std::shared_ptr<BranchList> BranchList::create(const WindowContext& context,
                                               const app_state::ScreenResult& returned) {
    auto window = std::make_shared<BranchList>(context, returned);
    return window->m_components.initialized() ? window : nullptr;
}

BranchList::BranchList(const WindowContext& context, const app_state::ScreenResult& returned)
    : EditorWindow(context, {kBranchEditorCommands, kContextMenus, kPanes}),
      m_components(context.gui.components()), m_returned(returned) {
    commands().bind(
        command::kExit, [this] { exitProgram(); }, [this] { return isFree(); });
}

BranchList::~BranchList() = default;

std::unique_ptr<toolkit::CControlUI> BranchList::CreateControl(std::u16string_view className) {
    if (className == u"PaneHead") {
        return std::make_unique<PaneHead>();
    }
    if (className == u"SceneMap") {
        return std::make_unique<SceneMap>();
    }
    if (className == u"TourPanel") {
        return std::make_unique<TourPanel>();
    }
    if (className == u"TourPointer") {
        return std::make_unique<TourPointer>();
    }
    if (className == u"VideoPreview") {
        return std::make_unique<VideoPreview>();
    }
    if (className == u"PreviewSlider") {
        return std::make_unique<PreviewSlider>();
    }
    return EditorWindow::CreateControl(className);
}

void BranchList::InitWindow() {
    const auto& session = context().services.sceneSession;
    if (session == nullptr) {
        return;
    }
    const std::string& name = session->scene().Name();
    m_folder = scene::sceneFolderPath(name);
    controls().setText(kSceneLabel, core::displayText(name));
    m_parts = std::make_unique<Parts>(*this);
    bindCommands();
    bindBranches();
    bindActions();
    bindHistory();
    bindCheck();
    bindPreview();
    bindTour();
    if (!context().state.newSceneRequest) {
        m_parts->videos.fill();
    }
    m_parts->branches.fill();
    if (!m_returned.unreadableVideo.empty()) {
        m_parts->strip.showNote({}, unreadableVideoText(m_returned.unreadableVideo));
    }
    m_parts->visit.end(m_returned,
                       [this](StripOffer offer) { m_parts->strip.offer(std::move(offer)); });
    if (GetNative() != nullptr) {
        GetNative()->setTakesFiles(true);
    }
    showEnabled();
}

void BranchList::Notify(toolkit::TNotifyUI& message) {
    if (m_parts && message.sType == toolkit::kTextChanged &&
        message.pSender->GetName() == kFindEdit) {
        m_parts->find.typed();
        m_parts->map.setFound(m_parts->find.found());
    }
    EditorWindow::Notify(message);
    if (message.sType != toolkit::kTextChanged && m_parts && !IsClosing()) {
        showEnabled();
    }
}

void BranchList::OnClick(toolkit::TNotifyUI& message) {
    if (m_parts) {
        m_parts->strip.actionBegins();
    }
    EditorWindow::OnClick(message);
}

void BranchList::OnItemSelect(toolkit::TNotifyUI& message) {
    using toolkit::CControlUI;
    static constexpr Reaction kReactions[] = {
        {kBranchCombo, [](Parts& parts, CControlUI&) { parts.branches.showSelected(); }},
        {kVideoCombo, [](Parts& parts, CControlUI&) { parts.videos.choose(); }},
        {kConditionCombo,
         [](Parts& parts, CControlUI& row) { parts.actions.chooseCondition(row); }},
        {kTargetCombo, [](Parts& parts, CControlUI& row) { parts.actions.chooseTarget(row); }},
        {kParameterCombo,
         [](Parts& parts, CControlUI& row) { parts.actions.chooseParameter(row); }},
    };
    if (m_parts) {
        m_parts->strip.actionBegins();
        react(kReactions, *message.pSender);
        if (message.pSender->GetName() == kFindingsList) {
            m_parts->findings.choose(m_isPointerUsed);
        } else if (message.pSender->GetName() == kSceneMap) {
            pickBranch(m_parts->map.branchOf(static_cast<int>(message.wParam)));
        }
    }
}

void BranchList::OnItemActivate(toolkit::TNotifyUI& message) {
    if (m_parts && message.pSender->GetName() == kFindingsList) {
        m_parts->findings.choose(true);
    } else if (m_parts && message.pSender->GetName() == kPreviewChoices) {
        m_parts->preview.takeChoice();
    } else if (m_parts && message.pSender->GetName() == kPreviewPath) {
        m_parts->branches.show(m_parts->preview.selectedBranch());
    } else if (m_parts && message.pSender->GetName() == kSceneMap && !m_isPointerUsed) {
        leavePane();
    } else if (m_parts && message.pSender->GetName() == kSceneMap && !m_folder.empty()) {
        if (const int branch = m_parts->map.branchOf(static_cast<int>(message.wParam));
            branch >= 0) {
            play(branch);
        }
    }
}

void BranchList::OnSelectChanged(toolkit::TNotifyUI& message) {
    using toolkit::CControlUI;
    static constexpr Reaction kReactions[] = {
        {kImmediateCheck,
         [](Parts& parts, CControlUI& row) { parts.actions.changeImmediate(row); }},
        {kFirstCheck, [](Parts& parts, CControlUI&) { parts.branches.chooseFirst(); }},
        {kErrorsFilter, [](Parts& parts, CControlUI&) { parts.findings.filter(); }},
        {kWarningsFilter, [](Parts& parts, CControlUI&) { parts.findings.filter(); }},
        {kNotesFilter, [](Parts& parts, CControlUI&) { parts.findings.filter(); }},
        {kFindingsFold, [](Parts& parts, CControlUI&) { parts.findings.turnFold(); }},
        {kMapTab, [](Parts& parts, CControlUI&) { parts.leftPane.turnPage(); }},
        {kPreviewTab, [](Parts& parts, CControlUI&) { parts.leftPane.turnPage(); }},
        {kPreviewSound, [](Parts& parts, CControlUI&) { parts.preview.takeSwitches(); }},
        {kPreviewZones, [](Parts& parts, CControlUI&) { parts.preview.takeSwitches(); }},
    };
    react(kReactions, *message.pSender);
}

void BranchList::OnSplit(toolkit::TNotifyUI& /*message*/) {
    if (m_parts) {
        m_parts->leftPane.keepWidths();
        m_parts->findings.keepHeight();
    }
}

void BranchList::windowSized() {
    if (m_parts) {
        m_parts->leftPane.windowSized();
        m_parts->findings.windowSized();
        GetPaintManager().UpdateLayout();
        m_parts->clip.windowSized();
        showEnabled(); // the map's buttons: a narrow window shows it on demand only
    }
}

void BranchList::OnKillFocus(toolkit::TNotifyUI& message) {
    using toolkit::CControlUI;
    static constexpr Reaction kReactions[] = {
        {kNameEdit, [](Parts& parts, CControlUI&) { parts.branches.takeName(); }},
    };
    react(kReactions, *message.pSender);
}

void BranchList::react(std::span<const Reaction> reactions, toolkit::CControlUI& sender) {
    for (const Reaction& reaction : reactions) {
        if (m_parts && sender.GetName() == reaction.control) {
            reaction.react(*m_parts, sender);
            return;
        }
    }
}

bool BranchList::HandleMessage(const platform::Event& event) {
    using platform::EventKind;
    if (m_parts && (event.kind == EventKind::keyDown || event.kind == EventKind::mouseDown ||
                    event.kind == EventKind::mouseDoubleClick)) {
        m_parts->strip.inputBegins();
        m_isPointerUsed = event.kind != EventKind::keyDown &&
                          event.button != platform::MouseButton::right; // that one asks for a menu
    }
    if (m_parts && event.kind == EventKind::activated) {
        if (isLanguageNew(context().services) && isFree() && !isAsking() &&
            !companions().has<SettingsWindow>()) {
            m_parts->visit.keepPlace();
            Close(1); // and is shown again
            return true;
        }
        m_parts->findings.readFiles();
        if (!std::exchange(m_wasActive, true)) {
            m_parts->tour.announce();
        }
    }
    if (event.kind == EventKind::filesDropped && m_parts) {
        m_parts->imports.drop(event.files);
        return true;
    }
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == EventKind::closeRequest && isAsking()) {
        return true;
    }
    const bool isHandled = EditorWindow::HandleMessage(event);
    if (m_parts && !IsClosing()) {
        m_parts->tour.follow();
    }
    return isHandled;
}

bool BranchList::MessageHandler(const platform::Event& event) {
    using platform::Key;
    if (m_parts && event.kind == platform::EventKind::keyDown && controls().hasFocus(kFindEdit)) {
        if (event.key == Key::enter || event.key == Key::down || event.key == Key::up) {
            m_parts->find.go(event.key == Key::up || event.modifiers.shift ? -1 : 1);
            return true;
        }
    }
    return EditorWindow::MessageHandler(event);
}

bool BranchList::isFree() const {
    return m_parts == nullptr || !m_parts->adder.isRunning();
}

void BranchList::showEnabled() {
    commands().showEnabled();
    controls().setEnabled(kActionList, isFree());
    const bool hasBranches = m_parts->session.branchCount() > 0;
    for (const std::u16string_view name : {kBranchCombo, kNameEdit, kFirstCheck, kVideoCombo}) {
        controls().setEnabled(name, isFree() && hasBranches);
    }
    m_parts->strip.showZonesHint(m_parts->visit.hint());
    m_parts->tour.refresh();
}

void BranchList::branchShown(int branch, bool again) {
    m_parts->videos.show(branch);
    m_parts->actions.show(branch, again);
    m_parts->leads.show(branch);
    m_parts->map.choose(branch);
    showClip(false);
    showEnabled();
}

void BranchList::showClip(bool isNew) {
    const int branch = m_parts->branches.shown();
    if (branch < 0) {
        m_parts->clip.hide();
        return;
    }
    const std::string video = m_parts->session.video(branch);
    const bool isThere = !video.empty() && !m_folder.empty();
    m_parts->clip.show(isThere ? m_folder + video : std::string(), isNew);
}

void BranchList::zonesShown(bool picked) {
    showClip(false);
    if (picked) {
        m_parts->actions.offerOtherZones();
    } else {
        m_parts->actions.show(m_parts->branches.shown(), true);
    }
}

void BranchList::branchRenamed(int branch, const std::string& oldName) {
    m_parts->strip.offer(renameOffer(m_parts->session, branch, oldName));
}

void BranchList::nameRefused(const std::u16string& name) {
    m_parts->strip.showLastingNote(takenNameText(name));
}

void BranchList::copying(const jobs::CopyStatus& status) {
    noteUnfinished(status.name);
    m_parts->strip.showCopy(copyText(status));
    showEnabled();
}

void BranchList::copied(const jobs::ImportOutcome& outcome, bool copied) {
    noteUnfinished({});
    m_parts->strip.showCopy({});
    m_parts->strip.showNote(importNote(outcome), joinSentences({importProblem(outcome),
                                                                m_parts->imports.takeLeftOut()}));
    m_parts->imports.offerImport(joinSentences({importProblem(outcome), importNote(outcome)}),
                                 m_parts->adder.foreign());
    showClip(true);
    showEnabled();
    if (copied) {
        controls().setFocus(kAddVideoButton);
    }
}

void BranchList::removeBranch() {
    Parts& parts = *m_parts;
    const std::string name = parts.session.branchName(parts.branches.shown());
    parts.branches.remove();
    parts.strip.offer(removalOffer(parts.session, name, [&parts] { parts.history.undo(); }));
}

void BranchList::removeActions() {
    if (m_parts->chosen.rows().empty()) {
        return;
    }
    // A dismissed question keeps the action: the opposite of the exit question. Intended.
    SetAnswer(kNo);
    Confirmation::ask(context(), *this, core::trStored("RemoveActionQuestion|Remove Action?"_tr),
                      core::trStored("Are you sure you want to remove the action?"_tr));
    if (answer() == kYes) {
        m_parts->chosen.remove();
    }
}

void BranchList::editZones() {
    const int place = m_parts->videos.selected();
    if (m_folder.empty() || m_parts->branches.shown() < 0 || place < 0) {
        return;
    }
    const std::string video = m_parts->videos.videoToEdit();
    if (video.empty()) {
        m_parts->strip.showNote(nothingToEditText(place));
        return;
    }
    m_parts->visit.begin(video, false);
    Close(1);
}

void BranchList::editBranchZones() {
    const std::string video = m_parts->videos.ownVideo();
    if (!m_folder.empty() && !video.empty()) {
        m_parts->visit.begin(video, true);
        Close(1);
    }
}

bool BranchList::save() {
    if (m_folder.empty() || m_parts->session.branchCount() == 0) {
        return false;
    }
    const bool isSaved = m_parts->session.save(m_folder);
    m_parts->strip.showSaved(isSaved);
    return isSaved;
}

void BranchList::publish() {
    PublishWindow::show(context(), *this,
                        {m_folder, m_parts->findings.errors(), [this] { return save(); },
                         [this](const check::Finding& finding) { showPlace(finding, true); }});
}

void BranchList::showVersions() {
    EarlierVersions::show(context(), *this,
                          sceneHistory(m_parts->session, m_parts->conditions.stored));
}

bool BranchList::isWorkAtRisk() const {
    const auto& drafts = context().services.drafts;
    return m_parts->session.isModified() && !(drafts && drafts->isKeeping());
}

void BranchList::openAnother() {
    context().state.openSceneRequest = true;
    context().state.tourStep = -1;
    Close(1);
}

void BranchList::exitProgram() {
    // A dismissed question counts as yes. Intended.
    SetAnswer(kYes);
    Confirmation::ask(context(), *this, core::trStored("ExitQuestion|Exit?"_tr),
                      core::trStored("Are you sure you want to exit?"_tr));
    if (answer() == kYes) {
        context().state.quit = true;
        Close(1);
    }
}

bool BranchList::canStop() const {
    return m_parts->adder.isRunning() || m_parts->branches.isNameTyped() ||
           m_parts->find.isActive() || m_parts->tour.isShown() || m_parts->preview.isOpen() ||
           m_parts->leftPane.isInPlace() || m_parts->strip.isOffering();
}

void BranchList::stop() {
    if (m_parts->adder.isRunning()) {
        m_parts->adder.cancel();
    } else if (m_parts->branches.isNameTyped()) {
        m_parts->branches.dropTypedName();
    } else if (m_parts->find.isActive()) {
        m_parts->find.end();
    } else if (m_parts->tour.isShown()) {
        m_parts->tour.leave();
    } else if (m_parts->preview.isOpen()) {
        stopPreview();
    } else if (m_parts->leftPane.isInPlace()) {
        leavePane();
    } else {
        m_parts->strip.closeOffer();
    }
}

} // namespace ui
