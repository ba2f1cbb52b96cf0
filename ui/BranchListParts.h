// What the branch editor's window is made of. Used by its sources only.
#pragma once

#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/DraftProblem.h"
#include "ui/NameList.h"
#include "ui/branch_editor/ActionPresenter.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/BranchFind.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/ChosenActions.h"
#include "ui/branch_editor/ClipCard.h"
#include "ui/branch_editor/FindingsPresenter.h"
#include "ui/branch_editor/HistoryPresenter.h"
#include "ui/branch_editor/ImportPresenter.h"
#include "ui/branch_editor/LeadsPresenter.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/branch_editor/VideoAdder.h"
#include "ui/branch_editor/VideoPresenter.h"
#include "ui/branch_editor/ZoneVisit.h"
#include "ui/map/MapPresenter.h"
#include "ui/preview/PreviewPresenter.h"
#include "ui/tour/TourPresenter.h"

namespace ui {

struct BranchList::Parts {
    explicit Parts(BranchList& window);

    scene::SceneSession& session;
    NameList conditions;
    NameList letters{keyLetters()};
    BranchPresenter branches;
    VideoPresenter videos;
    ClipCard clip;
    ActionPresenter actions;
    ChosenActions chosen;
    StripPresenter strip;
    HistoryPresenter history;
    FindingsPresenter findings;
    LeftPane leftPane;
    MapPresenter map;
    BranchFind find;
    LeadsPresenter leads;
    PreviewPresenter preview;
    TourPresenter tour;
    ZoneVisit visit;
    DraftProblem draftProblem;
    VideoAdder adder;
    ImportPresenter imports;
};

} // namespace ui
