// The commands of the window that imports videos.
#pragma once

#include <string_view>

#include "platform/Event.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ContextMenu.h"

namespace ui {

namespace command {
inline constexpr std::string_view kImportAdd = "importAdd";
inline constexpr std::string_view kImportStop = "importStop";
inline constexpr std::string_view kImportClose = "importClose";
inline constexpr std::string_view kFindConverter = "findConverter";
inline constexpr std::string_view kLookAgain = "lookAgain";
inline constexpr std::string_view kImportEnd = "importEnd";
inline constexpr std::string_view kImportRemedy = "importRemedy";
inline constexpr std::string_view kImportClear = "importClear";
} // namespace command

inline constexpr Command kImportCommands[] = {
    {command::kImportAdd, {}, u"Add Files…", u"ButtonImportAdd", u"Choose videos to convert"},
    {command::kImportStop,
     {},
     u"Cancel the Rest",
     u"ButtonImportStop",
     u"Cancel what is not done yet"},
    {command::kImportClose,
     {},
     u"Close",
     u"ButtonImportClose",
     u"Close this window; converting goes on (Esc)",
     {kEsc}},
    {command::kFindConverter,
     {},
     u"Choose File…",
     u"ButtonFindConverter",
     u"Choose the program ffmpeg"},
    {command::kLookAgain, {}, u"Look Again", u"ButtonLookAgain", u"Look for the converter again"},
    {.id = command::kImportEnd,
     .text = u"Cancel or Take Off the List",
     .keys = {{{platform::Key::del, {}}}}},
    {.id = command::kImportRemedy, .text = u"Keep Both, Import Anyway or Details"},
    {.id = command::kImportClear, .text = u"Take All That Is Done Off the List"},
};

inline constexpr std::string_view kImportRows[] = {command::kImportEnd, command::kImportRemedy,
                                                   command::kLine, command::kImportClear};
inline constexpr ContextMenu kImportContexts[] = {{u"ListImports", kImportRows}};
inline constexpr std::u16string_view kImportPanes[] = {u"ButtonImportAdd", u"ListImports",
                                                       u"ComboQuality", u"ButtonImportStop"};

} // namespace ui
