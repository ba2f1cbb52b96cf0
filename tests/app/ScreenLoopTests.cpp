// The order of screens and the flags that steer it, on screens that a script plays.
#include <cctype>
#include <functional>
#include <ostream>
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

void quit(ScreenState& state) {
    state.quit = true;
}
void askForNew(ScreenState& state) {
    state.newSceneRequest = true;
}
void create(ScreenState& state) {
    state.sceneCreated = true;
}
void askForZones(ScreenState& state) {
    state.zoneEditRequest = true;
}

struct Course {
    const char* name;
    ScreenState before;
    std::vector<ScriptedScreens::Step> script;
    std::vector<std::string> shown;
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
    ScriptedScreens screens(state, course.script);
    screens.loads = course.loads;
    EXPECT_TRUE(app::ScreenLoop(state, components, screens).run());
    EXPECT_EQ(screens.shown, course.shown);
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

std::vector<Course> courses() {
    return {
        {"quit at once", {}, {{"open", quit}}, {"open"}, Screen::openScene},
        {"flags left over from before are cleared",
         withStaleFlags(),
         {{"open"}, {"branches", quit}},
         {"open", "load", "branches"},
         Screen::branchEditor},
        {"a scene that does not load shows the open screen again",
         {},
         {{"open"}, {"open", quit}},
         {"open", "load", "open"},
         Screen::openScene,
         false},
        {"a new scene leads to the branch editor",
         {},
         {{"open", askForNew}, {"new", create}, {"branches", quit}},
         {"open", "new", "branches"},
         Screen::branchEditor},
        {"back without a scene leads to the open screen, whose request is fresh",
         {},
         {{"open", askForNew}, {"new"}, {"open"}, {"branches", quit}},
         {"open", "new", "open", "load", "branches"},
         Screen::branchEditor},
        {"back after a scene was created in this run leads to the branch editor",
         at(Screen::newScene, true),
         {{"new"}, {"branches", quit}},
         {"new", "branches"},
         Screen::branchEditor},
        {"the branch editor stays until it asks for something",
         at(Screen::branchEditor),
         {{"branches"}, {"branches"}, {"branches", quit}},
         {"branches", "branches", "branches"},
         Screen::branchEditor},
        {"branch editor and zone editor alternate",
         at(Screen::branchEditor),
         {{"branches", askForZones},
          {"zones"},
          {"branches", askForZones},
          {"zones"},
          {"branches"},
          {"branches", quit}},
         {"branches", "zones", "branches", "zones", "branches", "branches"},
         Screen::branchEditor},
        {"a zone editor that cannot be made ends the program where it was",
         at(Screen::zoneEditor),
         {{"zones", [](ScreenState&) {}, false}},
         {"zones"},
         Screen::zoneEditor},
        {"quitting inside the zone editor keeps its screen",
         at(Screen::zoneEditor),
         {{"zones", quit}},
         {"zones"},
         Screen::zoneEditor},
        {"an open screen that cannot be made ends the program without loading",
         {},
         {{"open", [](ScreenState&) {}, false}},
         {"open"},
         Screen::openScene},
        {"a new screen that cannot be made ends the program",
         at(Screen::newScene, true),
         {{"new", [](ScreenState&) {}, false}},
         {"new"},
         Screen::newScene},
        {"a branch editor that cannot be made ends the program",
         at(Screen::branchEditor),
         {{"branches", askForZones, false}},
         {"branches"},
         Screen::branchEditor},
        {"quit wins over every other request",
         at(Screen::branchEditor),
         {{"branches",
           [](ScreenState& state) {
               state.quit = true;
               state.zoneEditRequest = true;
           }}},
         {"branches"},
         Screen::branchEditor},
    };
}

INSTANTIATE_TEST_SUITE_P(All, ScreenLoopCourse, ::testing::ValuesIn(courses()),
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
    ScriptedScreens screens(state, {{"open", askForNew},
                                    {"new",
                                     [&](ScreenState& now) {
                                         newRequest = now.newSceneRequest;
                                         now.sceneCreated = true;
                                     }},
                                    {"branches", askForZones},
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
