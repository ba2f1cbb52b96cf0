// The commands of the window that imports videos.
#pragma once

#include <string_view>

#include "core/Texts.h"
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
    {command::kImportAdd, {}, "Add Files…"_tr, u"ButtonImportAdd", "Choose videos to convert"_tr},
    {command::kImportStop,
     {},
     "Cancel the Rest"_tr,
     u"ButtonImportStop",
     "Cancel what is not done yet"_tr},
    {command::kImportClose,
     {},
     "Close"_tr,
     u"ButtonImportClose",
     "Close this window; converting goes on (Esc)"_tr,
     {kEsc}},
    {command::kFindConverter,
     {},
     "Choose File…"_tr,
     u"ButtonFindConverter",
     "Choose the program ffmpeg"_tr},
    {command::kLookAgain,
     {},
     "Look Again"_tr,
     u"ButtonLookAgain",
     "Look for the converter again"_tr},
    {.id = command::kImportEnd,
     .text = "Cancel or Remove from the List"_tr,
     .keys = {{{platform::Key::del, {}}}}},
    {.id = command::kImportRemedy, .text = "Keep Both, Import Anyway or Details"_tr},
    {.id = command::kImportClear, .text = "Remove All That Is Done"_tr},
};

inline constexpr std::string_view kImportRows[] = {command::kImportEnd, command::kImportRemedy,
                                                   command::kLine, command::kImportClear};
inline constexpr ContextMenu kImportContexts[] = {{u"ListImports", kImportRows}};
inline constexpr std::u16string_view kImportPanes[] = {u"ButtonImportAdd", u"ListImports",
                                                       u"ComboQuality", u"ButtonImportStop"};

} // namespace ui
