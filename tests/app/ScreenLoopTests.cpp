// The order of screens and the flags that steer it, on screens that a script plays.
#include <cctype>
#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/ScreenLoop.h"
#include "tests/support/LogCapture.h"

namespace {

using app_state::Screen;
using app_state::ScreenState;

class CountingComponents final : public platform::ComponentLibrary {
public:
    bool initialize(std::uint32_t& errorCode) override {
        errorCode = 0x8007000E;
        if (fails) {
            return false;
        }
        ++uses;
        return true;
    }
    void uninitialize() override { --uses; }

    bool fails = false;
    int uses = 0;
};

/// Plays one step of the script for each screen shown; a screen that the script does not expect is
/// noted and ends the program.
class ScriptedScreens final : public app::Screens {
public:
    struct Step {
        std::string shows;
        std::function<void(ScreenState&)> acts = [](ScreenState&) {};
        bool exists = true;
    };

    ScriptedScreens(ScreenState& state, std::vector<Step> script)
        : m_state(state), m_script(std::move(script)) {}

    bool showOpenScene() override { return show("open"); }
    bool showNewScene() override { return show("new"); }
    bool showBranchEditor() override { return show("branches"); }
    bool showZoneEditor() override { return show("zones"); }
    bool loadChosenScene() override {
        shown.emplace_back("load");
        return loads;
    }

    bool loads = true;
    std::vector<std::string> shown;

private:
    bool show(const std::string& name) {
        shown.push_back(name);
        if (m_next == m_script.size() || m_script[m_next].shows != name) {
            ADD_FAILURE() << "unexpected screen " << name;
            m_state.quit = true;
            return true;
        }
        const Step& step = m_script[m_next++];
        step.acts(m_state);
        return step.exists;
    }

    ScreenState& m_state;
    std::vector<Step> m_script;
    std::size_t m_next = 0;
};

/// What the author does on each screen, as "SCREEN" and signs: '!' quits, '?' asks for a new scene,
/// '+' creates it, 'Z' asks for the zone editor, '-' is a screen that cannot be made.
std::vector<ScriptedScreens::Step> stepsOf(const std::string& text) {
    std::vector<ScriptedScreens::Step> steps;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::size_t signs = word.find_first_of("!?+-Z");
        ScriptedScreens::Step step{word.substr(0, signs)};
        const std::string acts = signs == std::string::npos ? "" : word.substr(signs);
        step.exists = acts.find('-') == std::string::npos;
        step.acts = [acts](ScreenState& state) {
            state.quit |= acts.find('!') != std::string::npos;
            state.newSceneRequest |= acts.find('?') != std::string::npos;
            state.sceneCreated |= acts.find('+') != std::string::npos;
            state.zoneEditRequest |= acts.find('Z') != std::string::npos;
        };
        steps.push_back(std::move(step));
    }
    return steps;
}

struct Course {
    const char* name;
    ScreenState before;
    const char* script;
    const char* shown; ///< and what was loaded between
    Screen after;
    bool loads = true;
};

void PrintTo(const Course& course, std::ostream* out) {
    *out << course.name;
}

class ScreenLoopCourse : public ::testing::TestWithParam<Course> {};

TEST_P(ScreenLoopCourse, ShowsTheScreensInOrder) {
    const Course& course = GetParam();
    ScreenState state = course.before;
    CountingComponents components;
    ScriptedScreens screens(state, stepsOf(course.script));
    screens.loads = course.loads;
    EXPECT_TRUE(app::ScreenLoop(state, components, screens).run());
    std::string shown;
    for (const std::string& screen : screens.shown) {
        shown += (shown.empty() ? "" : " ") + screen;
    }
    EXPECT_EQ(shown, course.shown);
    EXPECT_EQ(state.screen, course.after);
    EXPECT_EQ(components.uses, 0);
}

ScreenState at(Screen screen, bool sceneCreated = false) {
    ScreenState state;
    state.screen = screen;
    state.sceneCreated = sceneCreated;
    return state;
}

ScreenState withStaleFlags() {
    ScreenState state;
    state.quit = true;
    state.newSceneRequest = true;
    return state;
}

const Course kCourses[] = {
    {"quit at once", {}, "open!", "open", Screen::openScene},
    {"flags left over from before are cleared", withStaleFlags(), "open branches!",
     "open load branches", Screen::branchEditor},
    {"a scene that does not load shows the open screen again",
     {},
     "open open!",
     "open load open",
     Screen::openScene,
     false},
    {"a new scene leads to the branch editor",
     {},
     "open? new+ branches!",
     "open new branches",
     Screen::branchEditor},
    {"back without a scene leads to the open screen, whose request is fresh",
     {},
     "open? new open branches!",
     "open new open load branches",
     Screen::branchEditor},
    {"back after a scene was created in this run leads to the branch editor",
     at(Screen::newScene, true), "new branches!", "new branches", Screen::branchEditor},
    {"the branch editor stays until it asks for something", at(Screen::branchEditor),
     "branches branches branches!", "branches branches branches", Screen::branchEditor},
    {"branch editor and zone editor alternate", at(Screen::branchEditor),
     "branchesZ zones branchesZ zones branches branches!",
     "branches zones branches zones branches branches", Screen::branchEditor},
    {"a zone editor that cannot be made ends the program where it was", at(Screen::zoneEditor),
     "zones-", "zones", Screen::zoneEditor},
    {"quitting inside the zone editor keeps its screen", at(Screen::zoneEditor), "zones!", "zones",
     Screen::zoneEditor},
    {"an open screen that cannot be made ends the program without loading",
     {},
     "open-",
     "open",
     Screen::openScene},
    {"a new screen that cannot be made ends the program", at(Screen::newScene, true), "new-", "new",
     Screen::newScene},
    {"a branch editor that cannot be made ends the program", at(Screen::branchEditor), "branchesZ-",
     "branches", Screen::branchEditor},
    {"quit wins over every other request", at(Screen::branchEditor), "branches!Z", "branches",
     Screen::branchEditor},
};

INSTANTIATE_TEST_SUITE_P(All, ScreenLoopCourse, ::testing::ValuesIn(kCourses),
                         [](const auto& course) {
                             std::string name = course.param.name;
                             for (char& c : name) {
                                 c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
                             }
                             return name;
                         });

TEST(ScreenLoop, ClearsTheRequestsOfTheScreensItShows) {
    ScreenState state;
    CountingComponents components;
    bool newRequest = true;
    bool zoneRequest = true;
    ScriptedScreens screens(state,
                            {{"open", [](ScreenState& now) { now.newSceneRequest = true; }},
                             {"new",
                              [&](ScreenState& now) {
                                  newRequest = now.newSceneRequest;
                                  now.sceneCreated = true;
                              }},
                             {"branches", [](ScreenState& now) { now.zoneEditRequest = true; }},
                             {"zones", [&](ScreenState& now) {
                                  zoneRequest = now.zoneEditRequest;
                                  now.quit = true;
                              }}});
    EXPECT_TRUE(app::ScreenLoop(state, components, screens).run());
    EXPECT_FALSE(newRequest);
    EXPECT_FALSE(zoneRequest);
    EXPECT_TRUE(state.sceneCreated);
}

TEST(ScreenLoop, ShowsNothingWithoutTheSystemsComponents) {
    const support::LogCapture log;
    ScreenState state;
    CountingComponents components;
    components.fails = true;
    ScriptedScreens screens(state, {});
    EXPECT_FALSE(app::ScreenLoop(state, components, screens).run());
    EXPECT_TRUE(screens.shown.empty());
    EXPECT_EQ(log.errors(), std::vector<std::string>{"CoInitialize failed (8007000E)"});
    EXPECT_EQ(components.uses, -1) << "the failed initialisation is given back all the same";
}

} // namespace
