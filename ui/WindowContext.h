// What every editor window is given when it is made: the window system, the record that steers the
// screen loop and the shared services. Nothing here is owned; all of it outlives the windows.
#pragma once

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "platform/Gui.h"

namespace ui {

struct WindowContext {
    platform::Gui& gui;
    app_state::ScreenState& state;
    app_state::SharedServices& services;
};

} // namespace ui
