// The commands of the branch editor.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/MapCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kAddBranch = "addBranch";
inline constexpr std::string_view kBranchUp = "branchUp";
inline constexpr std::string_view kBranchDown = "branchDown";
inline constexpr std::string_view kDuplicateBranch = "duplicateBranch";
inline constexpr std::string_view kRemoveBranch = "removeBranch";
inline constexpr std::string_view kLeadsHere = "leadsHere";
inline constexpr std::string_view kLeadsNames = "leadsNames";
inline constexpr std::string_view kAddVideo = "addVideo";
inline constexpr std::string_view kEditZones = "editZones";
inline constexpr std::string_view kEditBranchZones = "editBranchZones";
inline constexpr std::string_view kAddAction = "addAction";
inline constexpr std::string_view kRemoveAction = "removeAction";
inline constexpr std::string_view kActionUp = "actionUp";
inline constexpr std::string_view kActionDown = "actionDown";
inline constexpr std::string_view kDuplicateAction = "duplicateAction";
inline constexpr std::string_view kRetarget = "retarget";
inline constexpr std::string_view kTour = "tour";
inline constexpr std::string_view kTourLeave = "tourLeave";
inline constexpr std::string_view kTourBack = "tourBack";
inline constexpr std::string_view kTourNext = "tourNext";
inline constexpr std::string_view kCheck = "check";
inline constexpr std::string_view kMap = "map";
inline constexpr std::string_view kPlay = "play";
inline constexpr std::string_view kPlayHere = "playHere";
inline constexpr std::string_view kPreviewPlay = "previewPlay";
inline constexpr std::string_view kPreviewRestart = "previewRestart";
inline constexpr std::string_view kPreviewBack = "previewBack";
inline constexpr std::string_view kPreviewStop = "previewStop";
inline constexpr std::string_view kCopyPath = "copyPath";
inline constexpr std::string_view kHalfSpeed = "halfSpeed";
inline constexpr std::string_view kNormalSpeed = "normalSpeed";
inline constexpr std::string_view kDoubleSpeed = "doubleSpeed";
inline constexpr std::string_view kNextFinding = "nextFinding";
inline constexpr std::string_view kFindingBefore = "findingBefore";
inline constexpr std::string_view kFix = "fix";
inline constexpr std::string_view kFixOther = "fixOther";
inline constexpr std::string_view kImportVideo = "importVideo";
inline constexpr std::string_view kPublish = "publish";
inline constexpr std::string_view kShowImport = "showImport";
inline constexpr std::string_view kConvertIt = "convertIt";
inline constexpr std::string_view kOpenAnother = "openAnother";
} // namespace command

inline constexpr core::Text kBranchEditor = "Branch editor"_tr;

inline constexpr core::Text kPreviewGroup = "Preview"_tr;

inline constexpr Command kBranchEditorCommands[] = {
    {command::kSave, kEverywhere, "Save"_tr, u"ButtonSave", "Save the scene"_tr, {kCtrlS}},
    {command::kExit, kEverywhere, "Exit"_tr, u"ButtonExit", "Leave Quorvel"_tr},
    kStopCommand,
    {command::kAddBranch, kBranchEditor, "Add Branch"_tr, u"ButtonAddBranch",
     "Add a branch to the scene"_tr},
    {.id = command::kRename,
     .group = kBranchEditor,
     .text = "Rename the Branch"_tr,
     .keys = {{kF2}}},
    {.id = command::kFind,
     .group = kBranchEditor,
     .text = "Command.FindABranch|Find a Branch"_tr,
     .keys = {{kCtrlF}},
     .icon = u"Search"},
    {command::kBranchUp,
     kBranchEditor,
     "Move Branch Up"_tr,
     u"ButtonBranchUp",
     "Branch one place up"_tr,
     {{{platform::Key::up, {.shift = true, .control = true}}}},
     true},
    {command::kBranchDown,
     kBranchEditor,
     "Move Branch Down"_tr,
     u"ButtonBranchDown",
     "Branch one place down"_tr,
     {{{platform::Key::down, {.shift = true, .control = true}}}},
     true},
    {command::kDuplicateBranch, kBranchEditor, "Duplicate Branch"_tr, u"ButtonDuplicateBranch",
     "Duplicate this branch"_tr},
    {command::kRemoveBranch, kBranchEditor, "Remove Branch"_tr, u"ButtonRemoveBranch",
     "Remove this branch; Undo brings it back"_tr},
    {command::kLeadsHere, kBranchEditor, "Who Leads Here"_tr, u"ButtonLeadsHere",
     "Which actions lead here"_tr},
    {command::kLeadsNames,
     {},
     "Who Leads Here"_tr,
     u"LabelLeadsHere",
     "Which actions lead here"_tr},
    {command::kAddVideo, kBranchEditor, "Add Video…"_tr, u"ButtonAddVideo",
     "Copy Theora videos into the scene"_tr},
    {.id = command::kImportVideo,
     .group = kBranchEditor,
     .text = "Command.ImportVideo|Import Video…"_tr,
     .control = u"ButtonImportVideo",
     .toolTip = "Convert MP4, MOV, WebM or AVI videos and add them"_tr,
     .icon = u"Import"},
    {.id = command::kPublish,
     .group = kBranchEditor,
     .text = "Command.PublishAsAWebPage|Publish as a Web Page…"_tr,
     .icon = u"Web"},
    {.id = command::kEditZones,
     .group = kBranchEditor,
     .text = "Edit Zones"_tr,
     .control = u"ButtonEditZones",
     .toolTip = "Draw the zones of this video"_tr,
     .subjectTip = "DrawTheZonesOf|Draw the zones of this video: {0}"_tr},
    {command::kEditBranchZones, kBranchEditor, "This Branch's Zones"_tr, u"ButtonEditBranchZones",
     "Draw the zones of this branch's video"_tr},
    {command::kAddAction, kBranchEditor, "Add Action"_tr, u"ButtonAddAction",
     "Add an action to this branch"_tr},
    {command::kRemoveAction, kBranchEditor, "Remove Action"_tr, u"ButtonRemoveAction",
     "Remove the chosen action"_tr},
    {command::kActionUp,
     kBranchEditor,
     "Move Action Up"_tr,
     u"ButtonActionUp",
     "Action one place up (Ctrl+Up)"_tr,
     {{{platform::Key::up, {.control = true}}}},
     true},
    {command::kActionDown,
     kBranchEditor,
     "Move Action Down"_tr,
     u"ButtonActionDown",
     "Action one place down (Ctrl+Down)"_tr,
     {{{platform::Key::down, {.control = true}}}},
     true},
    {command::kDuplicateAction,
     kBranchEditor,
     "Duplicate Action"_tr,
     u"ButtonDuplicateAction",
     "Duplicate the chosen action (Ctrl+D)"_tr,
     {{{platform::Key::d, {.control = true}}}}},
    kUndoCommand,
    kRedoCommand,
    kMinimizeCommand,
    kMaximizeCommand,
    kMenuCommand,
    {.id = command::kOpenAnother,
     .group = kEverywhere,
     .text = "Open Another Scene…"_tr,
     .icon = u"Open"},
    kEarlierVersionsCommand,
    kNoticeUndoCommand,
    {command::kMap,
     kBranchEditor,
     "Map"_tr,
     u"CheckMap",
     "Show or hide the map (Ctrl+M)"_tr,
     {{{platform::Key::m, {.control = true}}}}},
    gestureCommand("mapBranch", kMapGroup, "To the nearest branch"_tr, u"Arrows"),
    gestureCommand("mapActions", kMapGroup, "Show its actions"_tr, u"Enter"),
    kMapFitCommand,
    kMapInCommand,
    kMapOutCommand,
    {command::kCheck, kBranchEditor, "Check"_tr, u"ButtonCheck", "Findings"_tr},
    {.id = command::kNextFinding,
     .group = kBranchEditor,
     .text = "Next Finding"_tr,
     .keys = {{{platform::Key::f8, {}}}}},
    {.id = command::kFindingBefore,
     .group = kBranchEditor,
     .text = "Finding Before"_tr,
     .keys = {{{platform::Key::f8, {.shift = true}}}}},
    {command::kPlay,
     kPreviewGroup,
     "Play"_tr,
     u"ButtonPlay",
     "Play from the first branch (F5)"_tr,
     {{{platform::Key::f5, {}}}}},
    {command::kPlayHere,
     kPreviewGroup,
     "Play from Here"_tr,
     u"ButtonPlayHere",
     "Play from this branch (Shift+F5)"_tr,
     {{{platform::Key::f5, {.shift = true}}}}},
    {.id = command::kPreviewPlay,
     .group = kPreviewGroup,
     .text = "Command.PlayOrPause|Play or Pause"_tr,
     .control = u"ButtonPreviewPlay",
     .toolTip = "Play or pause (Space)"_tr,
     .keys = {{{platform::Key::space, {}}}},
     .icon = u"Pause"},
    {.id = command::kPreviewBack,
     .group = kPreviewGroup,
     .text = "Command.OneChoiceBack|One Choice Back"_tr,
     .control = u"ButtonPreviewBack",
     .toolTip = "One choice back (Backspace)"_tr,
     .keys = {{{platform::Key::backspace, {}}}},
     .icon = u"Back"},
    {.id = command::kPreviewRestart,
     .group = kPreviewGroup,
     .text = "Command.RestartTheBranch|Restart the Branch"_tr,
     .control = u"ButtonPreviewRestart",
     .toolTip = "Restart the branch"_tr,
     .icon = u"Restart"},
    {command::kCopyPath, kPreviewGroup, "Copy the Path"_tr, u"ButtonCopyPath",
     "Copy the path taken"_tr},
    {.id = command::kHalfSpeed, .group = kPreviewGroup, .text = "Half Speed"_tr},
    {.id = command::kNormalSpeed, .group = kPreviewGroup, .text = "Normal Speed"_tr},
    {.id = command::kDoubleSpeed, .group = kPreviewGroup, .text = "Double Speed"_tr},
    {.id = command::kPreviewStop,
     .group = kPreviewGroup,
     .text = "Stop"_tr,
     .control = u"ButtonPreviewStop",
     .toolTip = "Stop the preview"_tr,
     .icon = u"Stop"},
    {command::kFix, {}, "Add the Branch"_tr, u"ButtonFix", "Add a branch of this name"_tr},
    {command::kFixOther,
     {},
     "Choose Another…"_tr,
     u"ButtonFixOther",
     "Choose where the action leads"_tr},
    {command::kShowImport, {}, "Show"_tr, u"ButtonShowImport", "Show the files being imported"_tr},
    {command::kConvertIt, {}, "Convert It"_tr, u"ButtonConvertIt", "Make an Ogg video of it"_tr},
    {command::kRetarget,
     {},
     "Update Them"_tr,
     u"ButtonRetarget",
     "Change the old name in all of them"_tr},
    kCloseNoticeCommand,
    {.id = command::kTour, .group = kBranchEditor, .text = "Tour"_tr, .icon = u"First"},
    {command::kTourLeave, {}, "Leave"_tr, u"ButtonTourLeave", "Leave the tour (Esc)"_tr},
    {command::kTourBack, {}, "Back"_tr, u"ButtonTourBack", "The step before"_tr},
    {command::kTourNext, {}, "Next"_tr, u"ButtonTourNext", "The next step"_tr},
};

inline constexpr std::string_view kBranchEditorMenu[] = {command::kOpenAnother,
                                                         command::kImportVideo,
                                                         command::kPublish,
                                                         command::kLine,
                                                         command::kEarlierVersions,
                                                         command::kFind,
                                                         command::kLine,
                                                         command::kSettings,
                                                         command::kKeys,
                                                         command::kManual,
                                                         command::kTour};

inline constexpr std::string_view kBranchRows[] = {
    command::kAddBranch, command::kRename,          command::kLine,
    command::kBranchUp,  command::kBranchDown,      command::kLeadsHere,
    command::kLine,      command::kDuplicateBranch, command::kRemoveBranch};
inline constexpr std::string_view kVideoRows[] = {command::kAddVideo, command::kImportVideo,
                                                  command::kLine, command::kEditBranchZones,
                                                  command::kEditZones};
inline constexpr std::string_view kPreviewRows[] = {
    command::kPreviewPlay, command::kPreviewRestart, command::kPreviewBack, command::kLine,
    command::kHalfSpeed,   command::kNormalSpeed,    command::kDoubleSpeed, command::kLine,
    command::kCopyPath,    command::kPreviewStop};
inline constexpr std::string_view kFindingRows[] = {
    command::kNextFinding, command::kFindingBefore, command::kLine, command::kFix,
    command::kFixOther,    command::kConvertIt,     command::kLine, command::kEditBranchZones};
inline constexpr std::string_view kPathRows[] = {command::kCopyPath};
inline constexpr std::string_view kActionRows[] = {
    command::kAddAction,       command::kLine, command::kActionUp,    command::kActionDown,
    command::kDuplicateAction, command::kLine, command::kRemoveAction};

} // namespace ui
