// The parts of the branch editor and the commands that reach them.
#include <string>
#include <utility>
#include <vector>

#include "app/state/SharedServices.h"
#include "core/Text.h"
#include "core/Translations.h"
#include "platform/Gui.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/BranchListParts.h"
#include "ui/Controls.h"
#include "ui/NameList.h"
#include "ui/WindowContext.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/BranchFind.h"
#include "ui/branch_editor/ChosenActions.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/HistoryPresenter.h"
#include "ui/branch_editor/ImportPresenter.h"
#include "ui/branch_editor/LeadsPresenter.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/tour/TourPresenter.h"

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

BranchList::Parts::Parts(BranchList& window)
    : session(*window.context().services.sceneSession),
      conditions(conditionNames(window.context().services)),
      branches(window.controls(), session, window),
      videos(window.controls(), session, window.m_folder, window),
      clip(window.controls(), window.context().services.stills.get()),
      actions(window.controls(), session, {conditions, letters, videos.zones(), branches.names()}),
      chosen(window.controls(), session, branches), strip(window.controls(), session),
      history(window.controls(), session, window.m_folder, branches, chosen),
      findings(window.controls(), session, window.readerOfFiles(), window.context().gui.loop(),
               window.context().services.editorSettings.get(), window),
      leftPane(window.controls(), window.context().services.editorSettings.get()),
      map(
          window.controls(), session, window.m_folder, window.context().gui.loop(),
          window.context().services.stills.get(),
          [this](int branch) { return findings.errorsOf(branch); },
          [&window] { return window.isFree(); }),
      find(window.controls(), session, branches, leftPane, strip),
      leads(window.controls(), session,
            [this](const auto& place) {
                branches.show(place.branch);
                chosen.go(place.action);
            }),
      preview(window.controls(), session, window.m_folder, window.context().gui,
              window.context().services.editorSettings.get(), window),
      tour(window.controls(), session, branches, leftPane, window.context().state.tourStep),
      visit({session, window.m_folder, window.context().state, branches, actions, chosen, videos}),
      draftProblem(window.controls(), window.context().services.drafts.get()),
      adder(window.context().gui, window.context().services.editorSettings.get(), videos,
            window.m_folder, window),
      imports({window.context().gui.loop(), strip, adder, [&window] { window.openImports(); },
               [&window] { window.importsChanged(); }},
              window.importsOfScene()) {}

void BranchList::bindCommands() {
    Parts& parts = *m_parts;
    const auto free = [this] { return isFree(); };
    CommandSet& commands = this->commands();
    commands.bind(
        command::kSave, [this] { save(); }, free);
    commands.bind(
        command::kStop, [this] { stop(); }, [this] { return canStop(); });
    commands.bind(command::kMenu, [this] { showMenu(kBranchEditorMenu); });
    commands.bind(
        command::kOpenAnother, [this] { openAnother(); },
        [this, free, &parts] { return free() && !isWorkAtRisk() && !parts.imports.isBusy(); });
    commands.bind(
        command::kPublish, [this] { publish(); }, [this] { return isFree() && !m_folder.empty(); });
    commands.bind(
        command::kEarlierVersions, [this] { showVersions(); }, free);
    commands.bind(
        command::kAddVideo, [this, &parts] { parts.adder.ask(*this); }, free);
    commands.bind(
        command::kImportVideo, [&parts] { parts.imports.open(); },
        [&parts] { return parts.imports.canImport(); });
    commands.bind(
        command::kEditZones, [this] { editZones(); },
        [this, &parts] {
            return isFree() && parts.branches.shown() >= 0 && parts.videos.selected() >= 0;
        },
        [&parts] { return core::displayText(parts.videos.videoAhead()); });
    commands.bind(
        command::kEditBranchZones, [this] { editBranchZones(); },
        [this, &parts] { return isFree() && !parts.videos.ownVideo().empty(); });
}

void BranchList::bindBranches() {
    Parts& parts = *m_parts;
    CommandSet& commands = this->commands();
    commands.bind(
        command::kAddBranch, [&parts] { parts.branches.add(); }, [this] { return isFree(); });
    commands.bind(
        command::kRename,
        [this, &parts] {
            parts.leftPane.leave(); // the name may stand behind it
            controls().startTyping(kNameEdit);
        },
        [this, &parts] { return isFree() && parts.session.branchCount() > 0; });
    commands.bind(
        command::kFind, [&parts] { parts.find.begin(); },
        [&parts] { return parts.session.branchCount() > 0; });
    const auto isShown = [this, &parts] { return isFree() && parts.branches.shown() >= 0; };
    commands.bind(
        command::kDuplicateBranch, [&parts] { parts.branches.duplicate(); }, isShown);
    commands.bind(
        command::kRemoveBranch, [this] { removeBranch(); }, isShown);
    for (const auto& [id, control] :
         {std::pair{command::kLeadsHere, kLeadsHereButton}, {command::kLeadsNames, kLeadsNames}}) {
        commands.bind(
            id, [&parts, control = control] { parts.leads.open(control); },
            [this, &parts] { return isFree() && parts.leads.areThere(); });
    }
    for (const auto& [id, by] : {std::pair{command::kBranchUp, -1}, {command::kBranchDown, 1}}) {
        commands.bind(
            id, [&parts, by = by] { parts.branches.move(by); },
            [this, &parts, by = by] { return isFree() && parts.branches.canMove(by); });
    }
}

void BranchList::bindActions() {
    Parts& parts = *m_parts;
    CommandSet& commands = this->commands();
    commands.bind(
        command::kAddAction, [&parts] { parts.chosen.add(); },
        [this, &parts] { return isFree() && parts.session.branchCount() > 0; });
    commands.bind(
        command::kRemoveAction, [this] { removeActions(); },
        [this, &parts] { return isFree() && !parts.chosen.rows().empty(); });
    commands.bind(
        command::kDuplicateAction, [&parts] { parts.chosen.duplicate(); },
        [this, &parts] { return isFree() && !parts.chosen.rows().empty(); });
    for (const auto& [id, by] : {std::pair{command::kActionUp, -1}, {command::kActionDown, 1}}) {
        commands.bind(
            id, [&parts, by = by] { parts.chosen.move(by); },
            [this, &parts, by = by] { return isFree() && parts.chosen.canMove(by); });
    }
}

void BranchList::bindTour() {
    TourPresenter& tour = m_parts->tour;
    commands().bind(command::kTour, [this, &tour] {
        tour.begin();
        showEnabled();
    });
    commands().bind(command::kTourLeave, [&tour] { tour.leave(); });
    commands().bind(
        command::kTourBack, [&tour] { tour.go(-1); }, [&tour] { return !tour.isFirstStep(); });
    commands().bind(command::kTourNext, [&tour] { tour.go(1); });
    if (tour.isShown()) {
        tour.resume();
    } else if (isTourDue(context().services.editorSettings.get(),
                         m_parts->session.scene().Name())) {
        tour.begin();
    }
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
    for (const auto& [id, button] : {std::pair{command::kShowImport, kShowImportButton},
                                     {command::kConvertIt, kConvertButton}}) {
        commands().bind(id, [&strip, button = button] { strip.answer(button); });
    }
    commands().bind(command::kCloseNotice, [&strip] { strip.closeOffer(); });
}

} // namespace ui
