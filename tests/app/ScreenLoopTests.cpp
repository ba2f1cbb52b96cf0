// The order of screens and the flags that steer it, on screens that a script plays.
#include <cstddef>
#include <optional>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "app/ScreenLoop.h"
#include "tests/support/windows/ScriptedGui.h"

namespace {

using app_state::Screen;
using app_state::ScreenResult;
using app_state::ScreenState;

constexpr const char* kNames[] = {"open", "new", "branches", "zones"};

/// Plays one word of the script for each screen shown: its name and signs for what the author does
/// there. '!' quits, '?' asks for a new scene, '+' creates it, 'Z' asks for the zone editor, '^'
/// for the open scene window, '-' is a screen that cannot be made, 'x' is a video that cannot be
/// read.
class ScriptedScreens final : public app::Screens {
public:
    ScriptedScreens(ScreenState& state, const std::string& script, bool loads)
        : m_state(state), m_script(script), m_loads(loads) {}

    std::optional<ScreenResult> show(Screen screen, const ScreenResult& returned) override {
        const std::string name = kNames[static_cast<std::size_t>(screen)];
        shown +=
            name + (returned.unreadableVideo.empty() ? " " : "(" + returned.unreadableVideo + ") ");
        std::string word;
        m_script >> word;
        const auto does = [&word](char sign) { return word.find(sign) != std::string::npos; };
        // A request is over before its screen is shown.
        m_state.quit |= (screen == Screen::newScene && m_state.newSceneRequest) ||
                        (screen == Screen::zoneEditor && m_state.zoneEditRequest) ||
                        (screen == Screen::openScene && m_state.openSceneRequest) ||
                        m_state.screen != screen;
        // One that the script does not expect ends the program.
        m_state.quit |= does('!') || !word.starts_with(name);
        m_state.newSceneRequest |= does('?');
        m_state.sceneCreated |= does('+');
        m_state.zoneEditRequest |= does('Z');
        m_state.openSceneRequest |= does('^');
        return does('-') ? std::nullopt : std::optional(ScreenResult{does('x') ? "clip" : ""});
    }
    bool loadChosenScene() override {
        shown += "load ";
        return m_loads;
    }

    std::string shown; ///< the screens, and "load" where a scene was loaded

private:
    ScreenState& m_state;
    std::istringstream m_script;
    bool m_loads;
};

ScreenState at(Screen screen, bool sceneCreated = false) {
    ScreenState state;
    state.screen = screen;
    state.sceneCreated = sceneCreated;
    return state;
}

ScreenState withStaleFlags() {
    ScreenState state;
    state.quit = state.newSceneRequest = true;
    return state;
}

const ScreenState kCreated = at(Screen::newScene, true);
const ScreenState kBranches = at(Screen::branchEditor);
const ScreenState kZones = at(Screen::zoneEditor);

const struct {
    const char* what;
    ScreenState before;
    const char* script;
    const char* shown;
    Screen after;
    bool loads = true;
    bool fails = false; ///< the system's components
} kCourses[] = {
    {"flags from before are cleared", withStaleFlags(), "open branches!", "open load branches ",
     Screen::branchEditor},
    {"a scene that does not load", {}, "open open!", "open load open ", Screen::openScene, false},
    {"a new scene", {}, "open? new+ branches!", "open new branches ", Screen::branchEditor},
    {"back without a scene, with a fresh request",
     {},
     "open? new open branches!",
     "open new open load branches ",
     Screen::branchEditor},
    {"back after a scene was created in this run", kCreated, "new branches!", "new branches ",
     Screen::branchEditor},
    {"the branch editor stays", kBranches, "branches branches!", "branches branches ",
     Screen::branchEditor},
    {"another scene, then back from a new one",
     {},
     "open? new+ branches^ open? new open branches^ open!",
     "open new branches open new open load branches open ",
     Screen::openScene},
    {"the open scene window again, in another language",
     {},
     "open^ open branches!",
     "open open load branches ",
     Screen::branchEditor},
    {"zones and back, with a fresh request", kBranches, "branchesZ zones branches branches!",
     "branches zones branches branches ", Screen::branchEditor},
    {"what the zone editor leaves is for the next screen alone", kZones,
     "zonesx branchesZ zones branches!", "zones branches(clip) zones branches ",
     Screen::branchEditor},
    {"quit inside the zone editor", kZones, "zones!", "zones ", Screen::zoneEditor},
    {"quit wins", kBranches, "branches!Z", "branches ", Screen::branchEditor},
    {"no open screen", {}, "open-", "open ", Screen::openScene},
    {"no new screen", kCreated, "new-", "new ", Screen::newScene},
    {"no branch editor", kBranches, "branchesZ-", "branches ", Screen::branchEditor},
    {"no zone editor", kZones, "zones-", "zones ", Screen::zoneEditor},
    {"no components", {}, "", "", Screen::openScene, true, true},
};

TEST(ScreenLoop, ShowsTheScreensInOrder) {
    for (const auto& course : kCourses) {
        SCOPED_TRACE(course.what);
        ScreenState state = course.before;
        test::CountedComponents components;
        components.fails = course.fails;
        ScriptedScreens screens(state, course.script, course.loads);
        EXPECT_EQ(app::ScreenLoop(state, components, screens).run(), !course.fails);
        EXPECT_EQ(screens.shown, course.shown);
        EXPECT_EQ(state.screen, course.after);
        EXPECT_EQ(components.uses, course.fails ? -1 : 0) << "given back even when it failed";
    }
}

} // namespace
