// The map of a scene: how long its layout takes, how many lines cross beside those of Graphviz's
// dot where that is installed, and how fast the view moves and zooms in the branch editor.
//
// Usage: map_bench [layout|crossings|view] prints Markdown tables, all or one. Needs a display;
// QT_QPA_PLATFORM=offscreen will do.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/MapCrossings.h"
#include "bench/MarkdownTable.h"
#include "core/Services.h"
#include "core/Translations.h"
#include "map/MapLayout.h"
#include "platform/WindowParts.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "stills/StillService.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"
#include "tests/support/windows/EditorTest.h" // IWYU pragma: keep
#include "ui/BranchList.h"
#include "ui/map/SceneMap.h"

namespace {

using bench::Clock;
using bench::millisecondsSince;
using bench::Samples;
using map::MapScene;
using map::NodeForm;
using platform::EventKind;
using platform::Point;

constexpr int kRounds = 5;
constexpr int kBranches = 1000;
constexpr int kActions = 5000;
constexpr unsigned kScenes = 5;
constexpr int kMoves = 120;
constexpr int kZoomSteps = 7;
constexpr int kMove = 9; // pixels

Samples layoutTimes(const MapScene& scene, int rounds) {
    Samples times;
    for (int round = 0; round < rounds; ++round) {
        const auto began = Clock::now();
        const map::MapLayout layout = map::layOut(scene, NodeForm::whole);
        times.add(millisecondsSince(began));
        if (layout.nodes.size() != scene.branches.size()) {
            throw std::runtime_error("nodes are missing");
        }
    }
    return times;
}

void measureLayout() {
    bench::tableHead("Map: layout");
    bench::tableRow("100 branches, 250 actions",
                    timesText(layoutTimes(bench::storyScene(1, 100, 250), 30)), "", "<= 5 ms");
    bench::tableRow("1,000 branches, 5,000 actions, as a story",
                    timesText(layoutTimes(bench::storyScene(1, kBranches, kActions), kRounds)), "",
                    "<= 1 s");
    bench::tableRow("1,000 branches, 5,000 actions that lead anywhere",
                    timesText(layoutTimes(bench::wildScene(1, kBranches, kActions), kRounds)), "",
                    "<= 1 s");
}

void countCrossings() {
    bench::tableHead("Map: crossings of lines, 100 branches");
    long long all = 0;
    long long allOfDot = 0;
    const auto count = [&](const std::string& what, const MapScene& scene) {
        const map::MapLayout layout = map::layOut(scene, NodeForm::whole);
        const auto ours = bench::crossingsOf(scene, layout);
        const std::optional<std::int64_t> dots = bench::crossingsOfDot(scene, layout);
        all += ours;
        allOfDot += dots.value_or(0);
        bench::tableRow(
            what + ", " + std::to_string(layout.lines.size()) + " lines", std::to_string(ours),
            dots ? std::to_string(*dots) + " (dot)" : "dot is not installed", "<= 1.1 x dot");
    };
    for (unsigned seed = 1; seed <= kScenes; ++seed) {
        count("story " + std::to_string(seed), bench::storyScene(seed, 100, 250));
    }
    for (unsigned seed = 1; seed <= kScenes; ++seed) {
        count("actions that lead anywhere " + std::to_string(seed),
              bench::wildScene(seed, 100, 160));
    }
    if (allOfDot > 0) {
        char ratio[32];
        std::snprintf(ratio, sizeof ratio, "%.2f x dot",
                      static_cast<double>(all) / static_cast<double>(allOfDot));
        bench::tableRow("all together", std::to_string(all) + ", " + ratio,
                        std::to_string(allOfDot) + " (dot)", "<= 1.1 x dot");
    }
}

void makeFiles() {
    const std::filesystem::path data = QUORVEL_DATA_FOLDER;
    std::filesystem::copy(data / "UI", "UI", std::filesystem::copy_options::recursive);
    std::filesystem::copy(data / "Translations.ini", "Translations.ini");
    std::string text = "<Scene><Name>Large</Name><FirstBranch>Branch 0</FirstBranch>";
    for (const map::MapBranch& branch : bench::storyScene(1, kBranches, kActions).branches) {
        text += "<Branch><ID>" + branch.name + "</ID><Filename>clip.ogv</Filename>";
        for (std::size_t i = 0; i < branch.actions.size(); ++i) {
            text += std::string("<Action><Type>") +
                    (i % 4 == 1 ? "RandomAction" : "DefaultAction") + "</Type><BranchID>" +
                    branch.actions[i].target + "</BranchID></Action>";
        }
        text += "</Branch>";
    }
    support::writeBytes("Scenes/Large/Scene.xml", text + "</Scene>");
    support::ClipSpec clip;
    clip.width = 1280;
    clip.height = 720;
    support::writeBytes("Scenes/Large/clip.ogv", support::makeClip(clip));
}

/// The branch editor with a large scene.
class Editor {
public:
    explicit Editor(platform::Size size) {
        m_services.translations = core::Translations::create("Translations.ini", "English");
        m_services.sceneManager = scene::SceneManager::create();
        if (!m_services.sceneManager->Load("Large")) {
            throw std::runtime_error("no scene");
        }
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        m_services.stills = std::make_shared<stills::StillService>(
            test::gui().loop(), *core::services().fileSystem, "Cache/");
        m_window = ui::BranchList::create({test::gui(), m_state, m_services});
        if (!m_window ||
            !m_window->Create(nullptr, u"Bench", ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            throw std::runtime_error("no window");
        }
        m_window->ShowWindow(true);
        m_driver = std::make_unique<test::WindowDriver>(*m_window);
        m_driver->native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        const auto began = Clock::now();
        while (millisecondsSince(began) < 5000) { // layout and stills come from threads
            test::gui().loop().processEvents(false);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    void measure() {
        const platform::Rect pos = map().GetPos();
        bench::tableHead("Map: 1,000 branches, 5,000 actions, drawn " +
                         std::to_string(pos.width()) + " x " + std::to_string(pos.height()));
        wheel(-20);
        pan();
        for (int step = 1; step < kZoomSteps; ++step) {
            const int before = map().zoomPercent();
            const auto began = Clock::now();
            wheel(1);
            const double first = millisecondsSince(began);
            char text[96];
            std::snprintf(text, sizeof text, "%.1f ms", first);
            bench::tableRow("zoom from " + std::to_string(before) + " to " +
                                std::to_string(map().zoomPercent()) + " %",
                            text, "", "sharp <= 150 ms, at once <= 16 ms");
            pan();
        }
    }

private:
    ui::SceneMap& map() { return m_driver->get<ui::SceneMap>(u"SceneMap"); }

    void wheel(int notches) {
        const platform::Rect pos = map().GetPos();
        test::input().wheel(m_driver->native(),
                            {(pos.left + pos.right) / 2, (pos.top + pos.bottom) / 2},
                            notches * 120);
        show();
    }

    void show() {
        test::gui().loop().processEvents(false);
        m_driver->native().picture().repaintNow();
    }

    /// Across the map and back, a picture for each move of the mouse.
    void pan() {
        const platform::Rect pos = map().GetPos();
        platform::NativeWindow& window = m_driver->native();
        Point at{pos.left + 3, pos.bottom - 3};
        Samples times;
        test::input().mouse(window, EventKind::mouseDown, at);
        show();
        for (int move = 0; move < kMoves; ++move) {
            at = {at.x + (move < kMoves / 2 ? kMove : -kMove), at.y - 3 * (move % 7 < 3 ? 1 : -1)};
            const auto began = Clock::now();
            test::input().mouse(window, EventKind::mouseMove, at);
            show();
            times.add(millisecondsSince(began));
        }
        test::input().mouse(window, EventKind::mouseUp, at);
        show();
        bench::tableRow("a move of the view at " + std::to_string(map().zoomPercent()) + " %",
                        timesText(times), "", "p95 <= 16 ms");
    }

    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    std::shared_ptr<ui::BranchList> m_window;
    std::unique_ptr<test::WindowDriver> m_driver;
};

void run(const std::string& part) {
    const support::TempFolder folder;
    if (part.empty() || part == "layout") {
        measureLayout();
    }
    if (part.empty() || part == "crossings") {
        countCrossings();
    }
    if (part.empty() || part == "view") {
        makeFiles();
        Editor({1600, 900}).measure();
        Editor({2500, 1104}).measure();
    }
}

} // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    try {
        run(argc > 1 ? argv[1] : "");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "map_bench: %s\n", error.what());
        exitCode = 1;
    }
    test::endGui();
    return exitCode;
}
