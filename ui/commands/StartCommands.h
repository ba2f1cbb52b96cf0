// The commands of the two windows before the branch editor: open scene and new scene.
#pragma once

#include <string_view>

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
    {command::kOpenScene, kEverywhere, u"Open Scene", u"ButtonLoadScene", u"Open the chosen scene"},
    {command::kNewScene, kEverywhere, u"New Scene", u"ButtonNewScene",
     u"Name and start a new scene"},
    {command::kExit, kEverywhere, u"Exit", u"ButtonExit", u"Leave Quorvel"},
    {command::kRestoreDraft,
     {},
     u"Restore Unsaved Work",
     u"ButtonRestoreDraft",
     u"Open the scene with its unsaved work"},
    {command::kDropDraft, {}, u"Hide", u"ButtonDropDraft", u"Hide this; the unsaved work is kept"},
    {.id = command::kFind, .text = u"Find a Scene", .keys = {{kCtrlF}}},
    {.id = command::kDuplicateScene, .text = u"Duplicate…"},
    {.id = command::kOpenFolder, .text = u"Open Folder"},
    {command::kMakeDuplicate,
     {},
     u"Duplicate",
     u"ButtonMakeDuplicate",
     u"Copy the scene with its videos and zones"},
    {command::kDropDuplicate, {}, u"Cancel", u"ButtonDropDuplicate", u"Leave without a copy"},
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
    {command::kCreate, kEverywhere, u"Create", u"ButtonCreate", u"Start the scene with this name"},
    {command::kBackToStart, kEverywhere, u"Back", u"ButtonBack", u"Leave without this name"},
};

} // namespace ui
