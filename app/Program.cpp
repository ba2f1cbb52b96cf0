#include "app/Program.h"

#include <cstdint>

#include "ZoneEdit/CurrentZones.h"
#include "app/EditorScreens.h"
#include "app/ScreenLoop.h"
#include "app/services/CommandLine.h"
#include "app/services/Launcher.h"
#include "app/services/Startup.h"
#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/Log.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "platform/Desktop.h"
#include "platform/Window.h"
#include "recovery/Drafts.h"
#include "recovery/Places.h"
#include "stills/StillService.h"
#include "ui/SkinChoice.h"

namespace app {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

int runScreens(app_state::ScreenState& state, app_state::SharedServices& services,
               const GuiFactory& createGui) {
    const std::unique_ptr<platform::Gui> gui = createGui();
    if (!gui) {
        core::writeStandardError("Quorvel: no display to show windows on.");
        return kFailure;
    }
    if (services.editorSettings) {
        gui->windows().setZoom(services.editorSettings->scale() / 100.0);
        gui->windows().setAppearance(ui::chosenSkin(*services.editorSettings).appearance);
    }
    services.drafts = std::make_shared<recovery::Drafts>(gui->loop(), [&services] {
        return !services.editorSettings || services.editorSettings->keepDrafts();
    });
    services.stills = std::make_shared<stills::StillService>(
        gui->loop(), *core::services().fileSystem, recovery::cacheFolder());
    bool ended = false;
    {
        EditorScreens screens({*gui, state, services});
        ended = ScreenLoop(state, gui->components(), screens).run();
    }
    services.sceneImports.reset(); // what runs ends; its half-written file goes
    services.stills.reset();
    services.drafts.reset();
    return ended ? kSuccess : kFailure;
}

} // namespace

int runProgram(const std::string& commandLine, const GuiFactory& createGui,
               const app_state::Installation& installation) {
    const std::uint32_t flags = parseCommandLine(commandLine);
    app_state::ScreenState state;
    app_state::SharedServices services;
    services.installation = installation;
    if (!createServices(services, state)) {
        return kFailure;
    }
    const int exitCode = runScreens(state, services, createGui);
    zoneedit::setCurrentZoneManager(nullptr);
    dropServices(services);
    if ((flags & kLauncherFlag) != 0) {
        // The launcher may start the editor again at once, whose log takes the page's place.
        core::Log::release();
        handOffToLauncher();
    }
    return exitCode;
}

int refuseToStart(const StartProblem& problem, const GuiFactory& createGui) {
    core::Log::get()->Error("%s", problem.logged.c_str());
    if (const std::unique_ptr<platform::Gui> gui = createGui()) {
        gui->desktop().showError("Quorvel", problem.shown);
    }
    return kFailure;
}

} // namespace app
