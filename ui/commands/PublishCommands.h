// The commands of the window that publishes a scene.
#pragma once

#include <string_view>

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
    {command::kPublishNow, {}, u"Publish", u"ButtonPublish", u"Make the folder"},
    {command::kPublishCancel,
     {},
     u"Cancel",
     u"ButtonPublishCancel",
     u"Stop; nothing is changed then"},
    {command::kPublishClose, {}, u"Close", u"ButtonPublishClose", u"Close this window"},
    kStopCommand,
    {command::kPublishFolder, {}, u"Choose…", u"ButtonPublishFolder", u"Choose where it goes"},
    {command::kPublishShow, {}, u"Show", u"ButtonPublishShow", u"Show where that is"},
    {command::kPublishOpen, {}, u"Open in Browser", u"ButtonPublishOpen", u"Play the page"},
    {command::kPublishReveal, {}, u"Open Folder", u"ButtonPublishReveal", u"Show the files"},
    {command::kPublishAgain,
     {},
     u"Publish Again",
     u"ButtonPublishAgain",
     u"Back to what can be chosen"},
};

inline constexpr std::u16string_view kPublishPanes[] = {u"EditPublishFolder", u"ButtonPublishShow",
                                                        u"ButtonPublish"};

} // namespace ui
