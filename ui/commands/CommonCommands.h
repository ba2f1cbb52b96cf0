// What the command tables of the windows share.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/commands/Command.h"

namespace ui {

namespace command {
inline constexpr std::string_view kSave = "save";
inline constexpr std::string_view kExit = "exit";
inline constexpr std::string_view kStop = "stop";
inline constexpr std::string_view kManual = "manual";
inline constexpr std::string_view kKeys = "keys";
inline constexpr std::string_view kFind = "find";
inline constexpr std::string_view kRename = "rename";
inline constexpr std::string_view kNextPane = "nextPane";
inline constexpr std::string_view kPaneBefore = "paneBefore";
inline constexpr std::string_view kUndo = "undo";
inline constexpr std::string_view kRedo = "redo";
inline constexpr std::string_view kMenu = "menu";
inline constexpr std::string_view kMinimize = "minimize";
inline constexpr std::string_view kMaximize = "maximize";
inline constexpr std::string_view kSettings = "settings";
inline constexpr std::string_view kEarlierVersions = "earlierVersions";
/// In a menu: a line between the rows above and below.
inline constexpr std::string_view kLine;
inline constexpr std::string_view kNoticeUndo = "noticeUndo";
inline constexpr std::string_view kCloseNotice = "closeNotice";
inline constexpr std::string_view kRestoreDraft = "restoreDraft";
} // namespace command

inline constexpr core::Text kEverywhere = "Everywhere"_tr;

inline constexpr KeyChord kCtrlS{platform::Key::s, {.control = true}};
inline constexpr KeyChord kF1{platform::Key::f1, {}};
inline constexpr KeyChord kF2{platform::Key::f2, {}};
inline constexpr KeyChord kCtrlF{platform::Key::f, {.control = true}};
inline constexpr KeyChord kEsc{platform::Key::escape, {}};

inline constexpr Command kStopCommand{.id = command::kStop,
                                      .group = kEverywhere,
                                      .text = "Close a list, stop what runs"_tr,
                                      .keys = {{kEsc}},
                                      .isFixed = true};
inline constexpr Command kUndoCommand{
    .id = command::kUndo,
    .group = kEverywhere,
    .text = "Undo"_tr,
    .control = u"ButtonUndo",
    .toolTip = "Undo (Ctrl+Z)"_tr,
    .keys = {{{platform::Key::z, {.control = true}}}},
    .repeats = true,
    .subjectTip = "UndoStep|Undo: {0} (Ctrl+Z)"_tr,
};
inline constexpr Command kRedoCommand{
    .id = command::kRedo,
    .group = kEverywhere,
    .text = "Redo"_tr,
    .control = u"ButtonRedo",
    .toolTip = "Redo (Ctrl+Y)"_tr,
    .keys = {{{platform::Key::y, {.control = true}},
              {platform::Key::z, {.shift = true, .control = true}}}},
    .repeats = true,
    .subjectTip = "RedoStep|Redo: {0} (Ctrl+Y)"_tr,
};
inline constexpr Command kMenuCommand{
    .id = command::kMenu,
    .group = kEverywhere,
    .text = "More"_tr,
    .control = u"ButtonMenu",
    .toolTip = "More"_tr,
    .keys = {{{platform::Key::menu, {}}, {platform::Key::f10, {.shift = true}}}},
    .listed = "Menu"_tr,
    .isFixed = true};
// Of windows that can be sized.
inline constexpr Command kMinimizeCommand{command::kMinimize, kEverywhere, "Minimise"_tr,
                                          u"ButtonMinimize", "Minimise"_tr};
inline constexpr Command kMaximizeCommand{.id = command::kMaximize,
                                          .group = kEverywhere,
                                          .text = "Maximise"_tr,
                                          .control = u"ButtonMaximize",
                                          .toolTip = "Maximise"_tr,
                                          .keys = {{{platform::Key::f11, {}}}},
                                          .listed = "Fill the screen, and back"_tr};
inline constexpr Command kEarlierVersionsCommand{.id = command::kEarlierVersions,
                                                 .group = kEverywhere,
                                                 .text =
                                                     "Command.EarlierVersions|Earlier Versions…"_tr,
                                                 .icon = u"History"};
inline constexpr Command kNoticeUndoCommand{
    command::kNoticeUndo, {}, "Undo"_tr, u"ButtonNoticeUndo", "Take this change back"_tr};
inline constexpr Command kCloseNoticeCommand{
    command::kCloseNotice, {}, "Close"_tr, u"ButtonCloseNotice", "Close this message"_tr};

/// What every window runs, besides its own table; the toolkit moves the focus itself.
inline constexpr Command kCommonCommands[] = {
    {.id = command::kKeys,
     .group = kEverywhere,
     .text = "Keys"_tr,
     .keys = {{kF1}},
     .icon = u"Keys",
     .listed = "This list"_tr},
    {.id = command::kManual,
     .group = kEverywhere,
     .text = "Manual"_tr,
     .keys = {{{platform::Key::f1, {.shift = true}}}},
     .icon = u"Book"},
    {.id = command::kSettings,
     .group = kEverywhere,
     .text = "Command.Settings|Settings…"_tr,
     .icon = u"Gear"},
    {.id = command::kNextPane,
     .group = kEverywhere,
     .text = "Next part of the window"_tr,
     .keys = {{{platform::Key::f6, {}}}}},
    {.id = command::kPaneBefore,
     .group = kEverywhere,
     .text = "Part before"_tr,
     .keys = {{{platform::Key::f6, {.shift = true}}}}},
    {.id = "nextControl",
     .group = kEverywhere,
     .text = "Next control"_tr,
     .keys = {{{platform::Key::tab, {}}}},
     .isFixed = true},
    {.id = "controlBefore",
     .group = kEverywhere,
     .text = "Control before"_tr,
     .keys = {{{platform::Key::tab, {.shift = true}}}},
     .isFixed = true},
};

} // namespace ui
