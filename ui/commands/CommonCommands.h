// What the command tables of the windows share.
#pragma once

#include <string_view>

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

inline constexpr std::u16string_view kEverywhere = u"Everywhere";

inline constexpr KeyChord kCtrlS{platform::Key::s, {.control = true}};
inline constexpr KeyChord kF1{platform::Key::f1, {}};
inline constexpr KeyChord kF2{platform::Key::f2, {}};
inline constexpr KeyChord kCtrlF{platform::Key::f, {.control = true}};
inline constexpr KeyChord kEsc{platform::Key::escape, {}};

inline constexpr Command kStopCommand{.id = command::kStop,
                                      .group = kEverywhere,
                                      .text = u"Close a list, stop what runs",
                                      .keys = {{kEsc}},
                                      .isFixed = true};
inline constexpr Command kUndoCommand{
    .id = command::kUndo,
    .group = kEverywhere,
    .text = u"Undo",
    .control = u"ButtonUndo",
    .toolTip = u"Undo: %s (Ctrl+Z)",
    .keys = {{{platform::Key::z, {.control = true}}}},
    .repeats = true,
};
inline constexpr Command kRedoCommand{
    .id = command::kRedo,
    .group = kEverywhere,
    .text = u"Redo",
    .control = u"ButtonRedo",
    .toolTip = u"Redo: %s (Ctrl+Y)",
    .keys = {{{platform::Key::y, {.control = true}},
              {platform::Key::z, {.shift = true, .control = true}}}},
    .repeats = true,
};
inline constexpr Command kMenuCommand{
    .id = command::kMenu,
    .group = kEverywhere,
    .text = u"More",
    .control = u"ButtonMenu",
    .toolTip = u"More",
    .keys = {{{platform::Key::menu, {}}, {platform::Key::f10, {.shift = true}}}},
    .listed = u"Menu",
    .isFixed = true};
// Of windows that can be sized.
inline constexpr Command kMinimizeCommand{command::kMinimize, kEverywhere, u"Minimise",
                                          u"ButtonMinimize", u"Minimise"};
inline constexpr Command kMaximizeCommand{.id = command::kMaximize,
                                          .group = kEverywhere,
                                          .text = u"Maximise",
                                          .control = u"ButtonMaximize",
                                          .toolTip = u"Maximise",
                                          .keys = {{{platform::Key::f11, {}}}},
                                          .listed = u"Fill the screen, and back"};
inline constexpr Command kEarlierVersionsCommand{.id = command::kEarlierVersions,
                                                 .group = kEverywhere,
                                                 .text = u"Earlier Versions…",
                                                 .icon = u"History"};
inline constexpr Command kNoticeUndoCommand{
    command::kNoticeUndo, {}, u"Undo", u"ButtonNoticeUndo", u"Take this change back"};
inline constexpr Command kCloseNoticeCommand{
    command::kCloseNotice, {}, u"Close", u"ButtonCloseNotice", u"Close this message"};

/// What every window runs, besides its own table; the toolkit moves the focus itself.
inline constexpr Command kCommonCommands[] = {
    {.id = command::kKeys,
     .group = kEverywhere,
     .text = u"Keys",
     .keys = {{kF1}},
     .icon = u"Keys",
     .listed = u"This list"},
    {.id = command::kManual,
     .group = kEverywhere,
     .text = u"Manual",
     .keys = {{{platform::Key::f1, {.shift = true}}}},
     .icon = u"Book"},
    {.id = command::kSettings, .group = kEverywhere, .text = u"Settings…", .icon = u"Gear"},
    {.id = command::kNextPane,
     .group = kEverywhere,
     .text = u"Next part of the window",
     .keys = {{{platform::Key::f6, {}}}}},
    {.id = command::kPaneBefore,
     .group = kEverywhere,
     .text = u"Part before",
     .keys = {{{platform::Key::f6, {.shift = true}}}}},
    {.id = "nextControl",
     .group = kEverywhere,
     .text = u"Next control",
     .keys = {{{platform::Key::tab, {}}}},
     .isFixed = true},
    {.id = "controlBefore",
     .group = kEverywhere,
     .text = u"Control before",
     .keys = {{{platform::Key::tab, {.shift = true}}}},
     .isFixed = true},
};

} // namespace ui
