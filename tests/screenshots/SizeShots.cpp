#include "tests/screenshots/SizeShots.h"

#include <functional>
#include <memory>
#include <string>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "scene/SceneSession.h"
#include "tests/screenshots/BranchEditorShots.h"
#include "tests/screenshots/DialogShots.h"
#include "tests/screenshots/Shots.h"
#include "tests/screenshots/StartShots.h"
#include "tests/screenshots/ZoneEditorShots.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/window/WindowImplBase.h"
#include "ui/BranchList.h"

namespace screenshots {

namespace {

using Use = std::function<void(toolkit::WindowImplBase&)>;
using Act = std::function<void(const test::WindowDriver&)>;

/// Opens a window anew in each size, by `open`, which lends it, and lets `act` work in it.
void takeInSizes(Photographer& photographer, const std::string& name,
                 const std::function<void(const Use&)>& open, const Act& act) {
    const struct {
        platform::Size size; ///< in layout pixels; empty: the window's least
        int zoom;
    } kShown[] = {{{}, 1}, {{1366, 728}, 1}, {{1600, 900}, 1}, {{1920, 1080}, 2}};
    for (const auto& shown : kShown) {
        photographer.gui().windows().setZoom(shown.zoom);
        open([&](toolkit::WindowImplBase& window) {
            const platform::Size size =
                shown.size == platform::Size{} ? window.leastSize() : shown.size;
            window.GetNative()->setGeometry(platform::Rect::at(0, 0, size.width, size.height));
            settle(window);
            act(test::WindowDriver(window));
            settle(window);
            photographer.shoot(
                name + sizeSuffix({size.width * shown.zoom, size.height * shown.zoom}), window);
        });
    }
    photographer.gui().windows().setZoom(1);
}

/// With an action that leads nowhere and a branch that nothing leads to.
void spoil(scene::SceneSession& session) {
    session.addBranch();
    session.renameBranch(session.branchCount() - 1, "Debriefing");
    session.addAction(1);
    const int action = session.actionCount(1) - 1;
    session.setType(1, action, 1);
    session.setParameter(1, action, "H");
    session.setTarget(1, action, "Call for help");
}

void takeBranchEditorSizes(Photographer& photographer) {
    const auto open = [&](const Use& use) { use(*photographer.opened<ui::BranchList>()); };
    using platform::Key;
    const struct {
        const char* name;
        Act act;
    } kStates[] = {
        {"BranchList", [](const auto& /*driver*/) {}},
        {"BranchList-map", [](const auto& driver) { driver.press(Key::m, {.control = true}); }},
        {"BranchList-check", [](const auto& driver) { driver.press(Key::f8); }},
        {"BranchList-menu", [](const auto& driver) { driver.click(u"ButtonMenu"); }},
        {"BranchList-preview", [&](const auto& driver) { play(photographer, driver); }},
    };
    photographer.loadDemo();
    spoil(photographer.session());
    photographer.makeStills();
    for (const auto& state : kStates) {
        takeInSizes(photographer, state.name, open, state.act);
    }
    photographer.loadDemo();
}

void takeZoneEditorSizes(Photographer& photographer, const std::string& name) {
    const auto open = [&](const Use& use) { use(OpenZoneEditor(photographer).window()); };
    takeInSizes(photographer, name, open, choosePoint);
    takeInSizes(photographer, name + "-range", open, [](const auto& driver) {
        choosePoint(driver);
        switchViews(driver);
        chooseRange(driver);
    });
    takeInSizes(photographer, name + "-followed", open,
                [&](const auto& driver) { followSign(photographer, driver); });
}

} // namespace

void takeSizes(Photographer& photographer) {
    photographer.services().editorSettings.reset(); // no window begins as another ended
    takeBranchEditorSizes(photographer);
    for (const platform::Size size : {platform::Size{884, 672}, {1600, 900}}) {
        takeTour(photographer, size);
    }
    takeZoneEditorSizes(photographer, "ZoneEdit");
    photographer.useLowScreen();
    takeZoneEditorSizes(photographer, "ZoneEditSmall");
    for (const int zoom : {1, 2}) {
        photographer.gui().windows().setZoom(zoom);
        photographer.setSuffix("@" + std::to_string(zoom * 100));
        takeStart(photographer, {});
        takeQuestion(photographer, *photographer.opened<ui::BranchList>());
        takeDialogs(photographer);
    }
    photographer.gui().windows().setZoom(1);
}

} // namespace screenshots
