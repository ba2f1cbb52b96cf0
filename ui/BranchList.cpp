#include "ui/BranchList.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/FileError.h"
#include "core/Text.h"
#include "core/Translations.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "recovery/Drafts.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/Notification.h"
#include "ui/Confirmation.h"
#include "ui/Controls.h"
#include "ui/DraftProblem.h"
#include "ui/EarlierVersions.h"
#include "ui/NameList.h"
#include "ui/SceneHints.h"
#include "ui/VersionHistory.h"
#include "ui/WindowContext.h"
#include "ui/branch_editor/ActionPresenter.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/HistoryPresenter.h"
#include "ui/branch_editor/StripOffer.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

using namespace branch_list;

namespace {

NameList conditionNames(const app_state::SharedServices& services) {
    std::vector<std::string> names;
    for (const char* key : kConditionKeys) {
        names.push_back(services.translations ? services.translations->translate(key) : key);
    }
    return NameList(std::move(names));
}

} // namespace

/// What a part does when the author has changed the control of this name.
struct BranchList::Reaction {
    std::u16string_view control;
    void (*react)(Parts& parts, toolkit::CControlUI& sender);
};

struct BranchList::Parts {
    explicit Parts(BranchList& window)
        : session(*window.context().services.sceneSession),
          conditions(conditionNames(window.context().services)),
          branches(window.controls(), session, window),
          videos(window.controls(), session, window.m_folder, window),
          actions(window.controls(), session,
                  {conditions, letters, videos.zones(), branches.names()}),
          strip(window.controls(), session),
          history(window.controls(), session, window.m_folder, branches, actions),
          draftProblem(window.controls(), window.context().services.drafts.get()),
          adder(window.context().gui, videos, window.m_folder, window) {}

    scene::SceneSession& session;
    NameList conditions;
    NameList letters{keyLetters()};
    BranchPresenter branches;
    VideoPresenter videos;
    ActionPresenter actions;
    StripPresenter strip;
    HistoryPresenter history;
    DraftProblem draftProblem;
    VideoAdder adder;
};

std::shared_ptr<BranchList> BranchList::create(const WindowContext& context,
                                               const app_state::ScreenResult& returned) {
    auto window = std::make_shared<BranchList>(context, returned);
    return window->m_components.initialized() ? window : nullptr;
}

BranchList::BranchList(const WindowContext& context, const app_state::ScreenResult& returned)
    : EditorWindow(context, kBranchEditorCommands), m_components(context.gui.components()),
      m_returned(returned) {
    commands().bind(
        command::kExit, [this] { exitProgram(); }, [this] { return isFree(); });
}

BranchList::~BranchList() = default;

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
    bindHistory();
    if (!context().state.newSceneRequest) {
        m_parts->videos.fill();
    }
    m_parts->branches.fill();
    if (!m_returned.unreadableVideo.empty()) {
        m_parts->strip.showNote({}, unreadableVideoText(m_returned.unreadableVideo));
    }
    showEnabled();
}

void BranchList::bindCommands() {
    Parts& parts = *m_parts;
    const auto free = [this] { return isFree(); };
    const auto hasBranches = [this, &parts] { return isFree() && parts.session.branchCount() > 0; };
    const auto hasVideo = [this, &parts] {
        return isFree() && parts.branches.shown() >= 0 && parts.videos.selected() >= 0;
    };
    const auto hasAction = [this, &parts] { return isFree() && parts.actions.canRemove(); };
    CommandSet& commands = this->commands();
    commands.bind(
        command::kSave, [this] { save(); }, free);
    commands.bind(
        command::kStop, [this] { stop(); }, [this] { return canStop(); });
    commands.bind(command::kMenu, [this] { showMenu(kBranchEditorMenu); });
    commands.bind(
        command::kOpenAnother, [this] { openAnother(); },
        [this, free] { return free() && !isWorkAtRisk(); });
    commands.bind(
        command::kEarlierVersions, [this] { showVersions(); }, free);
    commands.bind(
        command::kAddBranch, [&parts] { parts.branches.add(); }, free);
    commands.bind(
        command::kRename, [this] { controls().startTyping(kNameEdit); }, hasBranches);
    commands.bind(
        command::kAddVideo, [this, &parts] { parts.adder.ask(*this); }, free);
    commands.bind(
        command::kEditZones, [this] { editZones(); }, hasVideo);
    commands.bind(
        command::kAddAction, [&parts] { parts.actions.add(); }, hasBranches);
    commands.bind(
        command::kRemoveAction, [this] { removeAction(); }, hasAction);
}

void BranchList::bindHistory() {
    HistoryPresenter& history = m_parts->history;
    StripPresenter& strip = m_parts->strip;
    // A name that was refused when the button was pressed is what the author takes back.
    commands().bind(
        command::kUndo,
        [&history, &strip] {
            if (!strip.takeFreshNote()) {
                history.undo();
            }
        },
        [this, &history] { return isFree() && history.canUndo(); },
        [&history] { return history.undoName(); });
    commands().bind(
        command::kRedo, [&history] { history.redo(); },
        [this, &history] { return isFree() && history.canRedo(); },
        [&history] { return history.redoName(); });
    commands().bind(command::kNoticeUndo, [&strip] { strip.answer(kNoticeUndoButton); });
    commands().bind(command::kRetarget, [&strip] { strip.answer(kRetargetButton); });
    commands().bind(command::kCloseNotice, [&strip] { strip.closeOffer(); });
}

void BranchList::Notify(toolkit::TNotifyUI& message) {
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
    }
}

void BranchList::OnSelectChanged(toolkit::TNotifyUI& message) {
    using toolkit::CControlUI;
    static constexpr Reaction kReactions[] = {
        {kImmediateCheck,
         [](Parts& parts, CControlUI& row) { parts.actions.changeImmediate(row); }},
        {kFirstCheck, [](Parts& parts, CControlUI&) { parts.branches.chooseFirst(); }},
    };
    react(kReactions, *message.pSender);
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
    }
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == EventKind::closeRequest && isAsking()) {
        return true;
    }
    return EditorWindow::HandleMessage(event);
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
    const bool isBranchShown = m_parts->branches.shown() >= 0;
    m_parts->strip.showLackOfZones(isBranchShown && m_parts->actions.waitsForZone() &&
                                   m_parts->videos.lacksZones());
}

void BranchList::branchShown(int branch, bool again) {
    m_parts->videos.show(branch);
    m_parts->actions.show(branch, again);
    showEnabled();
}

void BranchList::zonesShown(bool picked) {
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
    m_parts->strip.showNoteOfLeaving(takenNameText(name));
}

void BranchList::copying(const jobs::CopyStatus& status) {
    m_parts->strip.showCopy(copyText(status));
    showEnabled();
}

void BranchList::copied(const jobs::ImportOutcome& outcome, bool copied) {
    m_parts->strip.showCopy({});
    m_parts->strip.showNote(importNote(outcome), importProblem(outcome));
    showEnabled();
    if (copied) {
        controls().setFocus(kAddVideoButton);
    }
}

void BranchList::removeAction() {
    if (!m_parts->actions.canRemove()) {
        return;
    }
    // A dismissed question keeps the action: the opposite of the exit question. Intended.
    SetAnswer(kNo);
    Confirmation::ask(context(), *this, "Remove Action?",
                      "Are you sure you want to remove the action?");
    if (answer() == kYes) {
        m_parts->actions.removeSelected();
    }
}

void BranchList::editZones() {
    const int video = m_parts->videos.selected();
    if (m_folder.empty() || m_parts->branches.shown() < 0 || video < 0) {
        return;
    }
    const std::string path = m_parts->videos.videoToEdit();
    if (path.empty()) {
        m_parts->strip.showNote(nothingToEditText(video));
        return;
    }
    context().state.zoneEditVideo = path;
    context().state.zoneEditRequest = true;
    Close(1);
}

void BranchList::save() {
    if (!m_folder.empty() && m_parts->session.branchCount() > 0) {
        m_parts->strip.showSaved(m_parts->session.save(m_folder));
    }
}

void BranchList::showVersions() {
    EarlierVersions::show(context(), *this,
                          sceneHistory(m_parts->session, m_parts->conditions.stored));
}

bool BranchList::isWorkAtRisk() const {
    const app_state::SharedServices& services = context().services;
    const bool isKept = services.drafts && services.drafts->failure().empty() &&
                        services.editorSettings && services.editorSettings->keepDrafts();
    return m_parts->session.isModified() && !isKept;
}

void BranchList::openAnother() {
    context().state.openSceneRequest = true;
    Close(1);
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

bool BranchList::canStop() const {
    return m_parts->adder.isRunning() || m_parts->branches.isNameTyped() ||
           m_parts->strip.isOffering();
}

void BranchList::stop() {
    if (m_parts->adder.isRunning()) {
        m_parts->adder.cancel();
    } else if (m_parts->branches.isNameTyped()) {
        m_parts->branches.dropTypedName();
    } else {
        m_parts->strip.closeOffer();
    }
}

std::span<const ContextMenu> BranchList::contextMenus() const {
    return kBranchEditorContexts;
}

std::span<const std::u16string_view> BranchList::panes() const {
    return kBranchEditorPanes;
}

} // namespace ui
