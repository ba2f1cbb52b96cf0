// The commands of the branch editor.
#pragma once

#include <string_view>

#include "platform/Event.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

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
inline constexpr std::string_view kMapFit = "mapFit";
inline constexpr std::string_view kMapIn = "mapIn";
inline constexpr std::string_view kMapOut = "mapOut";
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

inline constexpr std::u16string_view kBranchEditor = u"Branch editor";

inline constexpr std::u16string_view kPreviewGroup = u"Preview";

inline constexpr Command kBranchEditorCommands[] = {
    {command::kSave, kEverywhere, u"Save", u"ButtonSave", u"Save the scene", {kCtrlS}},
    {command::kExit, kEverywhere, u"Exit", u"ButtonExit", u"Leave Quorvel"},
    kStopCommand,
    {command::kAddBranch, kBranchEditor, u"Add Branch", u"ButtonAddBranch",
     u"Add a branch to the scene"},
    {.id = command::kRename, .group = kBranchEditor, .text = u"Rename the Branch", .keys = {{kF2}}},
    {.id = command::kFind,
     .group = kBranchEditor,
     .text = u"Find a Branch",
     .keys = {{kCtrlF}},
     .icon = u"Search"},
    {command::kBranchUp,
     kBranchEditor,
     u"Move Branch Up",
     u"ButtonBranchUp",
     u"Branch one place up",
     {{{platform::Key::up, {.shift = true, .control = true}}}},
     true},
    {command::kBranchDown,
     kBranchEditor,
     u"Move Branch Down",
     u"ButtonBranchDown",
     u"Branch one place down",
     {{{platform::Key::down, {.shift = true, .control = true}}}},
     true},
    {command::kDuplicateBranch, kBranchEditor, u"Duplicate Branch", u"ButtonDuplicateBranch",
     u"Duplicate this branch"},
    {command::kRemoveBranch, kBranchEditor, u"Remove Branch", u"ButtonRemoveBranch",
     u"Remove this branch; Undo brings it back"},
    {command::kLeadsHere, kBranchEditor, u"Who Leads Here", u"ButtonLeadsHere",
     u"Which actions lead here"},
    {command::kLeadsNames, {}, u"Who Leads Here", u"LabelLeadsHere", u"Which actions lead here"},
    {command::kAddVideo, kBranchEditor, u"Add Video…", u"ButtonAddVideo",
     u"Copy Theora videos into the scene"},
    {.id = command::kImportVideo,
     .group = kBranchEditor,
     .text = u"Import Video…",
     .control = u"ButtonImportVideo",
     .toolTip = u"Convert MP4, MOV, WebM or AVI videos and add them",
     .icon = u"Import"},
    {.id = command::kPublish,
     .group = kBranchEditor,
     .text = u"Publish as a Web Page…",
     .icon = u"Web"},
    {command::kEditZones, kBranchEditor, u"Edit Zones", u"ButtonEditZones",
     u"Draw the zones of this video: %s"},
    {command::kEditBranchZones, kBranchEditor, u"This Branch's Zones", u"ButtonEditBranchZones",
     u"Draw the zones of this branch's video"},
    {command::kAddAction, kBranchEditor, u"Add Action", u"ButtonAddAction",
     u"Add an action to this branch"},
    {command::kRemoveAction, kBranchEditor, u"Remove Action", u"ButtonRemoveAction",
     u"Remove the chosen action"},
    {command::kActionUp,
     kBranchEditor,
     u"Move Action Up",
     u"ButtonActionUp",
     u"Action one place up (Ctrl+Up)",
     {{{platform::Key::up, {.control = true}}}},
     true},
    {command::kActionDown,
     kBranchEditor,
     u"Move Action Down",
     u"ButtonActionDown",
     u"Action one place down (Ctrl+Down)",
     {{{platform::Key::down, {.control = true}}}},
     true},
    {command::kDuplicateAction,
     kBranchEditor,
     u"Duplicate Action",
     u"ButtonDuplicateAction",
     u"Duplicate the chosen action (Ctrl+D)",
     {{{platform::Key::d, {.control = true}}}}},
    kUndoCommand,
    kRedoCommand,
    kMinimizeCommand,
    kMaximizeCommand,
    kMenuCommand,
    {.id = command::kOpenAnother,
     .group = kEverywhere,
     .text = u"Open Another Scene…",
     .icon = u"Open"},
    kEarlierVersionsCommand,
    kNoticeUndoCommand,
    {command::kMap,
     kBranchEditor,
     u"Map",
     u"CheckMap",
     u"Show or hide the map (Ctrl+M)",
     {{{platform::Key::m, {.control = true}}}}},
    {command::kMapFit,
     kBranchEditor,
     u"Fit the Map",
     u"ButtonMapFit",
     u"Fit the whole scene (Ctrl+0)",
     {{{platform::Key::digit0, {.control = true}}}}},
    {command::kMapIn, {}, u"Zoom In", u"ButtonMapIn", u"Zoom in"},
    {command::kMapOut, {}, u"Zoom Out", u"ButtonMapOut", u"Zoom out"},
    {command::kCheck, kBranchEditor, u"Check", u"ButtonCheck", u"Findings"},
    {.id = command::kNextFinding,
     .group = kBranchEditor,
     .text = u"Next Finding",
     .keys = {{{platform::Key::f8, {}}}}},
    {.id = command::kFindingBefore,
     .group = kBranchEditor,
     .text = u"Finding Before",
     .keys = {{{platform::Key::f8, {.shift = true}}}}},
    {command::kPlay,
     kPreviewGroup,
     u"Play",
     u"ButtonPlay",
     u"Play from the first branch (F5)",
     {{{platform::Key::f5, {}}}}},
    {command::kPlayHere,
     kPreviewGroup,
     u"Play from Here",
     u"ButtonPlayHere",
     u"Play from this branch (Shift+F5)",
     {{{platform::Key::f5, {.shift = true}}}}},
    {.id = command::kPreviewPlay,
     .group = kPreviewGroup,
     .text = u"Play or Pause",
     .control = u"ButtonPreviewPlay",
     .toolTip = u"Play or pause (Space)",
     .keys = {{{platform::Key::space, {}}}},
     .icon = u"Pause"},
    {.id = command::kPreviewBack,
     .group = kPreviewGroup,
     .text = u"One Choice Back",
     .control = u"ButtonPreviewBack",
     .toolTip = u"One choice back (Backspace)",
     .keys = {{{platform::Key::backspace, {}}}},
     .icon = u"Back"},
    {.id = command::kPreviewRestart,
     .group = kPreviewGroup,
     .text = u"Restart the Branch",
     .control = u"ButtonPreviewRestart",
     .toolTip = u"Restart the branch",
     .icon = u"Restart"},
    {command::kCopyPath, kPreviewGroup, u"Copy the Path", u"ButtonCopyPath",
     u"Copy the path taken"},
    {.id = command::kHalfSpeed, .group = kPreviewGroup, .text = u"Half Speed"},
    {.id = command::kNormalSpeed, .group = kPreviewGroup, .text = u"Normal Speed"},
    {.id = command::kDoubleSpeed, .group = kPreviewGroup, .text = u"Double Speed"},
    {.id = command::kPreviewStop,
     .group = kPreviewGroup,
     .text = u"Stop",
     .control = u"ButtonPreviewStop",
     .toolTip = u"Stop the preview",
     .icon = u"Stop"},
    {command::kFix, {}, u"Add the Branch", u"ButtonFix", u"Add a branch of this name"},
    {command::kFixOther,
     {},
     u"Choose Another…",
     u"ButtonFixOther",
     u"Choose where the action leads"},
    {command::kShowImport, {}, u"Show", u"ButtonShowImport", u"Show the files being imported"},
    {command::kConvertIt, {}, u"Convert It", u"ButtonConvertIt", u"Make an Ogg video of it"},
    {command::kRetarget,
     {},
     u"Update Them",
     u"ButtonRetarget",
     u"Change the old name in all of them"},
    kCloseNoticeCommand,
};

inline constexpr std::string_view kBranchEditorMenu[] = {
    command::kOpenAnother, command::kImportVideo,     command::kPublish,
    command::kLine,        command::kEarlierVersions, command::kFind,
    command::kLine,        command::kSettings,        command::kKeys,
    command::kManual};

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
inline constexpr std::string_view kActionRows[] = {
    command::kAddAction,       command::kLine, command::kActionUp,    command::kActionDown,
    command::kDuplicateAction, command::kLine, command::kRemoveAction};

} // namespace ui
