// The commands of a map, wherever one is.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "platform/Event.h"
#include "ui/commands/Command.h"

namespace ui {

namespace command {
inline constexpr std::string_view kMapFit = "mapFit";
inline constexpr std::string_view kMapIn = "mapIn";
inline constexpr std::string_view kMapOut = "mapOut";
} // namespace command

inline constexpr core::Text kMapGroup = "Map"_tr;

inline constexpr Command kMapFitCommand{command::kMapFit,
                                        kMapGroup,
                                        "Fit the Map"_tr,
                                        u"ButtonMapFit",
                                        "Fit the whole scene (Ctrl+0)"_tr,
                                        {{{platform::Key::digit0, {.control = true}}}}};
inline constexpr Command kMapInCommand{.id = command::kMapIn,
                                       .group = kMapGroup,
                                       .text = "Command.ZoomIn|Zoom In"_tr,
                                       .control = u"ButtonMapIn",
                                       .toolTip = "Zoom in (Ctrl+Plus)"_tr,
                                       .keys = {{{platform::Key::plus, {.control = true}}}},
                                       .repeats = true,
                                       .listed = "Larger"_tr};
inline constexpr Command kMapOutCommand{.id = command::kMapOut,
                                        .group = kMapGroup,
                                        .text = "Command.ZoomOut|Zoom Out"_tr,
                                        .control = u"ButtonMapOut",
                                        .toolTip = "Zoom out (Ctrl+Minus)"_tr,
                                        .keys = {{{platform::Key::minus, {.control = true}}}},
                                        .repeats = true,
                                        .listed = "Smaller"_tr};

/// Of a window that has the keys and the menu, but no button.
[[nodiscard]] constexpr Command withoutButton(Command command) {
    command.control = {};
    command.toolTip = {};
    return command;
}

} // namespace ui
