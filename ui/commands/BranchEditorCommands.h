// The commands of the branch editor.
#pragma once

#include <string_view>

#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ContextMenu.h"

namespace ui {

namespace command {
inline constexpr std::string_view kAddBranch = "addBranch";
inline constexpr std::string_view kAddVideo = "addVideo";
inline constexpr std::string_view kEditZones = "editZones";
inline constexpr std::string_view kAddAction = "addAction";
inline constexpr std::string_view kRemoveAction = "removeAction";
inline constexpr std::string_view kRetarget = "retarget";
inline constexpr std::string_view kOpenAnother = "openAnother";
} // namespace command

inline constexpr std::u16string_view kBranchEditor = u"Branch editor";

inline constexpr Command kBranchEditorCommands[] = {
    {command::kSave, kEverywhere, u"Save", u"ButtonSave", u"Save the scene", {kCtrlS}},
    {command::kExit, kEverywhere, u"Exit", u"ButtonExit", u"Leave Quorvel"},
    {command::kStop, kEverywhere, kStopText, {}, {}, {kEsc}},
    {command::kAddBranch, kBranchEditor, u"Add Branch", u"ButtonAddBranch",
     u"Add a branch to the scene"},
    {.id = command::kRename, .group = kBranchEditor, .text = u"Rename the Branch", .keys = {{kF2}}},
    {.id = command::kFind, .group = kBranchEditor, .text = u"Find a Branch", .keys = {{kCtrlF}}},
    {command::kAddVideo, kBranchEditor, u"Add Video…", u"ButtonAddVideo",
     u"Copy Theora videos into the scene"},
    {command::kEditZones, kBranchEditor, u"Edit Zones", u"ButtonEditZones",
     u"Draw the zones of this video"},
    {command::kAddAction, kBranchEditor, u"Add Action", u"ButtonAddAction",
     u"Add an action to this branch"},
    {command::kRemoveAction, kBranchEditor, u"Remove Action", u"ButtonRemoveAction",
     u"Remove the chosen action"},
    kUndoCommand,
    kRedoCommand,
    kMenuCommand,
    {.id = command::kOpenAnother,
     .group = kEverywhere,
     .text = u"Open Another Scene…",
     .icon = u"MenuOpen"},
    kEarlierVersionsCommand,
    kNoticeUndoCommand,
    {command::kRetarget,
     {},
     u"Update Them",
     u"ButtonRetarget",
     u"Change the old name in all of them"},
    kCloseNoticeCommand,
};

inline constexpr std::string_view kBranchEditorMenu[] = {
    command::kOpenAnother, command::kLine, command::kEarlierVersions, command::kLine,
    command::kSettings,    command::kKeys, command::kManual};

inline constexpr std::string_view kBranchRows[] = {command::kAddBranch, command::kRename};
inline constexpr std::string_view kVideoRows[] = {command::kAddVideo, command::kEditZones};
inline constexpr std::string_view kActionRows[] = {command::kAddAction, command::kRemoveAction};
inline constexpr ContextMenu kBranchEditorContexts[] = {
    {u"ComboBranchName", kBranchRows},
    {u"EditBranchName", kBranchRows},
    {u"ComboVideoName", kVideoRows},
    {u"BranchList", kActionRows},
};
inline constexpr std::u16string_view kBranchEditorPanes[] = {u"ComboBranchName", u"BranchList",
                                                             u"PanelNotice"};

} // namespace ui
