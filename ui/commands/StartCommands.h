// The commands of the two windows before the branch editor: open scene and new scene.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kOpenScene = "openScene";
inline constexpr std::string_view kNewScene = "newScene";
inline constexpr std::string_view kDropDraft = "dropDraft";
inline constexpr std::string_view kDuplicateScene = "duplicateScene";
inline constexpr std::string_view kOpenFolder = "openFolder";
inline constexpr std::string_view kMakeDuplicate = "makeDuplicate";
inline constexpr std::string_view kDropDuplicate = "dropDuplicate";
inline constexpr std::string_view kCreate = "create";
inline constexpr std::string_view kBackToStart = "backToStart";
} // namespace command

inline constexpr Command kOpenSceneCommands[] = {
    {command::kOpenScene, kEverywhere, "Open Scene"_tr, u"ButtonLoadScene",
     "Open the chosen scene"_tr},
    {command::kNewScene, kEverywhere, "New Scene"_tr, u"ButtonNewScene",
     "Name and start a new scene"_tr},
    {command::kExit, kEverywhere, "Exit"_tr, u"ButtonExit", "Leave Quorvel"_tr},
    {command::kRestoreDraft,
     {},
     "Restore Unsaved Work"_tr,
     u"ButtonRestoreDraft",
     "Open the scene with its unsaved work"_tr},
    {command::kDropDraft,
     {},
     "Hide"_tr,
     u"ButtonDropDraft",
     "Hide this; the unsaved work is kept"_tr},
    {.id = command::kFind, .text = "Command.FindAScene|Find a Scene"_tr, .keys = {{kCtrlF}}},
    {.id = command::kDuplicateScene, .text = "Command.Duplicate|Duplicate…"_tr},
    {.id = command::kOpenFolder, .text = "Open Folder"_tr},
    {command::kMakeDuplicate,
     {},
     "Duplicate"_tr,
     u"ButtonMakeDuplicate",
     "Copy the scene with its videos and zones"_tr},
    {command::kDropDuplicate, {}, "Cancel"_tr, u"ButtonDropDuplicate", "Leave without a copy"_tr},
    kStopCommand,
    kMenuCommand,
};

inline constexpr std::string_view kOpenSceneMenu[] = {command::kDuplicateScene,
                                                      command::kOpenFolder, command::kLine,
                                                      command::kSettings, command::kKeys};

inline constexpr std::string_view kSceneRows[] = {command::kOpenScene, command::kDuplicateScene,
                                                  command::kOpenFolder, command::kLine,
                                                  command::kNewScene};

inline constexpr Command kNewSceneCommands[] = {
    {command::kCreate, kEverywhere, "Create"_tr, u"ButtonCreate",
     "Start the scene with this name"_tr},
    {command::kBackToStart, kEverywhere, "Back"_tr, u"ButtonBack", "Leave without this name"_tr},
};

} // namespace ui
