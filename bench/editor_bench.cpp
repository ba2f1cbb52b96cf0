// Response times of the open scene window and the branch editor with 500 scenes, 1,000 branches,
// 5,000 actions in one branch, 20 in another, and 300 zones: from the input to the painted result.
//
// Usage: editor_bench [edits] prints Markdown tables, with "edits" those of moving, copying and
// removing alone. Needs a display; QT_QPA_PLATFORM=offscreen will do.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/MarkdownTable.h"
#include "core/Services.h"
#include "core/Translations.h"
#include "platform/testing/OpenWindows.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "stills/StillService.h"
#include "tests/support/TempFolder.h"
#include "tests/support/windows/Answering.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"
#include "ui/OpenScene.h"

namespace {

using bench::Clock;
using bench::millisecondsSince;
using bench::Samples;
using test::WindowDriver;
using toolkit::CComboUI;

constexpr int kRounds = 15;
constexpr int kModelRounds = 200;
constexpr int kScenes = 500;
constexpr int kBranchesOfEach = 20;
constexpr int kBranches = 1000;
constexpr int kActions = 5000;
constexpr int kFewActions = 20;
constexpr int kActionsEach = 8;
constexpr int kZones = 300;
constexpr int kActionsOfEach = 5;
constexpr int kEditRounds = 40;
constexpr const char16_t* kList = u"BranchList";

class Desk {
public:
    Desk() {
        m_services.translations = core::Translations::create("Translations.ini", "English");
        m_services.sceneManager = scene::SceneManager::create();
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        m_services.stills = std::make_shared<stills::StillService>(
            test::gui().loop(), *core::services().fileSystem, "Cache/");
    }

    template <class Window>
    std::shared_ptr<Window> open() {
        auto window = Window::create({test::gui(), m_state, m_services});
        if (!window ||
            !window->Create(nullptr, u"Bench", ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            throw std::runtime_error("no window");
        }
        window->ShowWindow(true);
        test::pump();
        return window;
    }
    scene::SceneManager& scene() { return *m_services.sceneManager; }

private:
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
};

void measure(const char* what, const std::function<void(int round)>& act,
             const char* target = "< 100 ms", int rounds = kRounds) {
    Samples times;
    for (int round = 0; round < rounds; ++round) {
        const auto began = Clock::now();
        act(round);
        if (!platform::openWindows().empty()) {
            test::topWindow().GetNative()->picture().repaintNow();
        }
        times.add(millisecondsSince(began));
    }
    bench::tableRow(what, timesText(times), "", target);
}

void makeFiles() {
    const std::filesystem::path data = QUORVEL_DATA_FOLDER;
    std::filesystem::copy(data / "UI", "UI", std::filesystem::copy_options::recursive);
    std::filesystem::copy(data / "Translations.ini", "Translations.ini");
    std::string branches;
    for (int i = 0; i < kBranchesOfEach; ++i) {
        const std::string name = std::to_string(i);
        branches += "<Branch><ID>" + name + "</ID><Filename>" + name +
                    ".ogv</Filename><Action><BranchID>" + name + "</BranchID></Action></Branch>";
    }
    for (int i = 0; i < kScenes; ++i) {
        const std::string number = std::to_string(i);
        support::writeBytes("Scenes/Scene " + number + "/Scene.xml",
                            "<Scene><Name>Scene " + number + "</Name>" + branches + "</Scene>");
    }
    std::string zones = "<ZoneInfo>";
    for (int i = 0; i < kZones; ++i) {
        zones += "<Zone><Name>Zone " + std::to_string(i) + "</Name></Zone>";
    }
    support::writeBytes("Scenes/Large/clip-ZoneInfo.xml", zones + "</ZoneInfo>");
}

void fillBranches(scene::SceneManager& scene) {
    scene.newScene("Large");
    for (int i = 0; i < kBranches; ++i) {
        scene.AddBranch();
        scene.setBranchFilename(i, i == 0 ? "clip.ogv" : "clip " + std::to_string(i) + ".ogv");
    }
}

/// The branch with all the actions comes first, that with a few second.
void fillScene(scene::SceneManager& scene) {
    fillBranches(scene);
    for (int i = 0; i < kActions + kFewActions; ++i) {
        const auto action = scene::Action::create();
        action->SetType(i % 4);
        action->SetParameter("Zone " + std::to_string(i));
        action->SetBranchID("New Branch " + std::to_string(i % kBranches + 2));
        scene.addAction(i < kActions ? 0 : 1, action);
    }
}

void measureOpenScene(Desk& desk) {
    measure(
        "open scene: the window", [&](int) { desk.open<ui::OpenScene>(); }, "< 150 ms");
    const auto window = desk.open<ui::OpenScene>();
    WindowDriver driver(*window);
    measure("open scene: End, Home", [&](int round) {
        driver.press(round % 2 == 0 ? platform::Key::end : platform::Key::home);
    });
    measure("open scene: a click on a row", [&](int round) {
        driver.click(platform::Point{100, 90 + 16 * round});
    });
}

void measureBranches(WindowDriver& driver) {
    measure("branch list: open, Esc", [&](int) {
        driver.click(u"ComboBranchName");
        driver.press(platform::Key::escape);
    });
    driver.press(platform::Key::end);
    measure("last branch (End), and that with 5,000 actions (Home)", [&](int round) {
        driver.press(round % 2 == 0 ? platform::Key::home : platform::Key::end);
    });
    driver.press(platform::Key::home);
    measure("branches with 20 actions (Down) and with 5,000 (Up)", [&](int round) {
        driver.press(round % 2 == 0 ? platform::Key::down : platform::Key::up);
    });
    driver.press(platform::Key::home);
    measure("Add Branch", [&](int) { driver.click(u"ButtonAddBranch"); });
    driver.click(u"ComboBranchName");
    driver.press(platform::Key::home);
    driver.press(platform::Key::enter);
    measure("rename: Enter in the name", [&](int round) {
        driver.click(u"EditBranchName");
        driver.type(round % 2 == 0 ? u"x" : u"y");
        driver.press(platform::Key::enter);
    });
    measure("First branch", [&](int) { driver.click(u"CheckFirst"); });
    measure("Save", [&](int) { driver.click(u"ButtonSave"); });
}

void measureActions(WindowDriver& driver) {
    const auto combo = [&](std::u16string_view name) -> CComboUI& {
        return test::inRow<CComboUI>(driver, kList, 2, name);
    };
    measure("a condition: open, pick",
            [&](int round) { driver.pick(combo(u"ComboConditions"), round % 2 == 0 ? 1 : 2); });
    driver.pick(combo(u"ComboConditions"), 2);
    measure("a zone: open, pick", [&](int round) { driver.pick(combo(u"ComboParameter"), round); });
    measure("a target: open, pick",
            [&](int round) { driver.pick(combo(u"ComboBranches"), round); });
    measure("a video: open, pick", [&](int round) { driver.pick(u"ComboVideoName", round % 2); });
    measure("Immediate",
            [&](int) { driver.click(test::inRow(driver, kList, 2, u"CheckImmediate")); });
    measure("three notches of the wheel", [&](int round) {
        driver.wheel({400, 400}, round % 2 == 0 ? -3 : 3);
    });
    measure("Add Action", [&](int) { driver.click(u"ButtonAddAction"); });
    measure("Undo and redo it", [&](int round) {
        driver.press(round % 2 == 0 ? platform::Key::z : platform::Key::y, {.control = true});
    });
    measure("Remove Action, with its question", [&](int) {
        const int last = driver.get<toolkit::CListUI>(kList).GetCount() - 1;
        driver.click(test::inRow(driver, kList, last, u"CheckImmediate"));
        driver.clickThen(u"ButtonRemoveAction", test::answering(test::Answer::yes));
    });
}

/// Moving, copying and removing, in a scene of 1,000 branches with five actions each; with
/// 5,000 more in the first one if `many`.
void measureEdits(Desk& desk, bool many) {
    bench::tableHead(many ? "Branch housekeeping: 1,000 branches, 10,000 actions"
                          : "Branch housekeeping: 1,000 branches, 5,000 actions");
    many ? fillScene(desk.scene()) : fillBranches(desk.scene());
    for (int branch = 0; branch < kBranches; ++branch) {
        for (int i = 0; i < kActionsOfEach; ++i) {
            const auto action = scene::Action::create();
            action->SetBranchID("New Branch " + std::to_string(branch));
            desk.scene().addAction(branch, action);
        }
    }
    const auto window = desk.open<ui::BranchList>();
    WindowDriver driver(*window);
    driver.pick(u"ComboBranchName", 2);
    const auto edit = [&](const char* what, const std::function<void(int round)>& act) {
        measure(what, act, "p95 <= 5 ms", kEditRounds);
    };
    const auto key = [&driver](platform::Key one, platform::Key other,
                               platform::Modifiers held = {.control = true}) {
        return [&driver, one, other, held](int round) {
            driver.press(round % 2 == 0 ? one : other, held);
        };
    };
    using platform::Key;
    const auto undoable = [&](const char* what, const std::function<void(int round)>& act) {
        edit(what, act);
        edit("undo and redo it", key(Key::z, Key::y));
    };
    undoable("a branch down and up", key(Key::down, Key::up, {.shift = true, .control = true}));
    undoable("Duplicate Branch", [&](int) { driver.click(u"ButtonDuplicateBranch"); });
    undoable("Remove Branch", [&](int) { driver.click(u"ButtonRemoveBranch"); });
    edit("who leads here: open, Esc", [&](int) {
        driver.click(u"ButtonLeadsHere");
        driver.press(Key::escape);
    });
    undoable("rename: a letter, Enter", [&](int round) {
        driver.click(u"EditBranchName");
        driver.type(round % 2 == 0 ? u"x" : u"y");
        driver.press(Key::enter);
    });
    driver.click(test::inRow(driver, kList, 0, u"CheckImmediate"));
    undoable("an action down and up", key(Key::down, Key::up));
    undoable("Duplicate Action", key(Key::d, Key::d));
}

/// The session alone, on a scene whose actions all lead to one branch.
void measureHistory() {
    const auto manager = scene::SceneManager::create();
    fillScene(*manager);
    for (int i = 0; i < kBranches * kActionsEach; ++i) {
        manager->addAction(i % kBranches, scene::Action::create());
    }
    scene::SceneSession session(manager);
    const std::string draft = session.draftForm();
    const auto undoAndRedo = [&](const char* undo, const char* redo) {
        Samples times;
        Samples again;
        for (int round = 0; round < kModelRounds; ++round) {
            auto began = Clock::now();
            session.undo();
            times.add(millisecondsSince(began));
            began = Clock::now();
            session.redo();
            again.add(millisecondsSince(began));
        }
        bench::tableRow(undo, timesText(times), "", "<= 5 ms");
        bench::tableRow(redo, timesText(again), "", "<= 5 ms");
    };
    bench::tableHead("History of a scene: 1,000 branches, 13,020 actions");
    measure(
        "record a step, and compare with the saved scene",
        [&](int round) {
            session.setParameter(kBranches / 2, 0, std::to_string(round));
            static_cast<void>(session.isModified());
        },
        "p95 <= 1 ms", kModelRounds);
    session.retarget("", "New Branch 2");
    undoAndRedo("undo a change of all targets", "redo it");
    session.restore(draft);
    undoAndRedo("undo the return to another version", "redo it");
    measure(
        "the file's bytes", [&](int) { static_cast<void>(session.savedForm()); }, "<= 5 ms",
        kModelRounds);
    measure(
        "the text of a draft", [&](int) { static_cast<void>(session.draftForm()); }, "<= 5 ms",
        kModelRounds);
}

void measureWindows(Desk& desk) {
    bench::tableHead("Branch editor: 500 scenes, 1,000 branches, 5,000 actions, 300 zones");
    measureOpenScene(desk);
    fillScene(desk.scene());
    measure(
        "branch editor: the window", [&](int) { desk.open<ui::BranchList>(); }, "< 150 ms");
    const auto window = desk.open<ui::BranchList>();
    WindowDriver driver(*window);
    measureBranches(driver);
    measureActions(driver);
}

void run(bool editsAlone) {
    const support::TempFolder folder;
    makeFiles();
    Desk desk;
    if (!editsAlone) {
        measureHistory();
        measureWindows(desk);
    }
    measureEdits(desk, false);
    measureEdits(desk, true);
}

} // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    try {
        run(argc > 1 && std::string_view(argv[1]) == "edits");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "editor_bench: %s\n", error.what());
        exitCode = 1;
    }
    test::endGui();
    return exitCode;
}
