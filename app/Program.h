// The whole run of the program: start-up, screens, shutdown, hand-off to the launcher.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/services/StartProblem.h"
#include "app/state/Installation.h"
#include "platform/Gui.h"

namespace app {

/// Makes the window system; empty when there is no display.
using GuiFactory = std::function<std::unique_ptr<platform::Gui>()>;

/// Runs the editor in the current directory with the blank-separated tokens of `commandLine`.
/// `installation` says where else skin, texts and manual are.
/// Returns the process's exit code: 0 after a normal end, 1 when the start-up failed or the
/// system's components could not be initialised. The log stays open for its owner to end,
/// except that its page is written before the launcher takes over.
[[nodiscard]] int runProgram(const std::string& commandLine, const GuiFactory& createGui,
                             const app_state::Installation& installation = {});

/// Reports in a message box, the log and stderr why the program cannot start. Returns the
/// exit code for that.
[[nodiscard]] int refuseToStart(const StartProblem& problem, const GuiFactory& createGui);

} // namespace app
