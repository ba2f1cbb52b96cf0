// The commands of the window that publishes a scene.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kPublishNow = "publishNow";
inline constexpr std::string_view kPublishCancel = "publishCancel";
inline constexpr std::string_view kPublishClose = "publishClose";
inline constexpr std::string_view kPublishFolder = "publishFolder";
inline constexpr std::string_view kPublishShow = "publishShow";
inline constexpr std::string_view kPublishOpen = "publishOpen";
inline constexpr std::string_view kPublishReveal = "publishReveal";
inline constexpr std::string_view kPublishAgain = "publishAgain";
} // namespace command

inline constexpr Command kPublishCommands[] = {
    {command::kPublishNow, {}, "Publish"_tr, u"ButtonPublish", "Make the folder"_tr},
    {command::kPublishCancel,
     {},
     "Cancel"_tr,
     u"ButtonPublishCancel",
     "Stop; nothing is changed then"_tr},
    {command::kPublishClose, {}, "Close"_tr, u"ButtonPublishClose", "Close this window"_tr},
    kStopCommand,
    {command::kPublishFolder, {}, "Choose…"_tr, u"ButtonPublishFolder", "Choose where it goes"_tr},
    {command::kPublishShow, {}, "Show"_tr, u"ButtonPublishShow", "Show where that is"_tr},
    {command::kPublishOpen, {}, "Open in Browser"_tr, u"ButtonPublishOpen", "Play the page"_tr},
    {command::kPublishReveal, {}, "Open Folder"_tr, u"ButtonPublishReveal", "Show the files"_tr},
    {command::kPublishAgain,
     {},
     "Publish Again"_tr,
     u"ButtonPublishAgain",
     "Back to what can be chosen"_tr},
};

inline constexpr std::u16string_view kPublishPanes[] = {u"EditPublishFolder", u"ButtonPublishShow",
                                                        u"ButtonPublish"};

} // namespace ui
