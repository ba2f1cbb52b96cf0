// Where the author says the converter is: the Import window and the settings ask for it.
#pragma once

#include "platform/Window.h"
#include "ui/Companions.h"
#include "ui/WindowContext.h"

namespace ui {

/// Asks for the program and remembers it. False when none was chosen. `beside`: the windows that
/// take no input meanwhile.
bool chooseConverter(const WindowContext& context, platform::NativeWindow* owner,
                     Companions& beside);

} // namespace ui
