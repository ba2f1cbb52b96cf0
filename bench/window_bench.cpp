// The time from each window's creation to its first picture, and the cost of an idle window.
//
// Usage: window_bench prints a Markdown table. Run it in a folder with UI/, Translations.ini and
// the demo scenes, such as build/release/bin. Needs a display; QT_QPA_PLATFORM=offscreen will do.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEdit.h"
#include "app/services/Startup.h"
#include "bench/MarkdownTable.h"
#include "platform/testing/TestInput.h"
#include "scene/SceneManager.h"
#include "ui/BranchList.h"
#include "ui/Confirmation.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace {

using bench::Clock;
using bench::Samples;
using Window = std::shared_ptr<ui::EditorWindow>;

constexpr int kOpenings = 20;
constexpr std::chrono::seconds kIdle{20};
constexpr const char* kScene = "Fire Drill Level 1";
constexpr const char* kSceneClip = "Scenes/Fire Drill Level 1/alarm-corridor.ogv";

/// CPU time of all threads of this process. std::clock measures wall time on Windows.
double processorSeconds() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

class Asker final : public ui::ConfirmCallback {
public:
    [[nodiscard]] platform::NativeWindow* GetParentWindow() override { return nullptr; }
};

class Bench {
public:
    explicit Bench(platform::Gui& gui) : m_gui(gui), m_input(platform::createTestInput(gui)) {}

    bool prepare() {
        return app::createServices(m_services, m_state) && m_services.sceneManager->Load(kScene);
    }

    void openings() {
        opening("open scene", [this] { return ui::OpenScene::create(context()); });
        opening("new scene", [this] { return ui::NewScene::create(context()); });
        opening("branch editor", [this] { return ui::BranchList::create(context()); });
        opening("question", [this] {
            return std::make_shared<ui::Confirmation>(context(), m_asker, "Exit?", "Really?");
        });
        m_state.zoneEditVideo = kSceneClip;
        opening("zone editor", [this] { return zoneedit::ZoneEdit::create(context()); });
    }

    /// The cost of windows that an author leaves open, shown and minimised.
    void idleWindows() {
        idleWindow("branch editor", ui::BranchList::create(context()));
        m_state.zoneEditVideo = kSceneClip;
        idleWindow("zone editor", zoneedit::ZoneEdit::create(context()));
    }

private:
    [[nodiscard]] ui::WindowContext context() { return {m_gui, m_state, m_services}; }

    void idleWindow(const char* name, const Window& window) {
        if (!window || !show(*window)) {
            std::fprintf(stderr, "window_bench: no window for \"%s\"\n", name);
            return;
        }
        settle();
        idleTime(std::string(name) + ", shown");
        m_input->minimize(*window->GetNative(), true);
        settle();
        idleTime(std::string(name) + ", minimised");
    }

    void idleTime(const std::string& name) {
        platform::EventLoop& loop = m_gui.loop();
        const double before = processorSeconds();
        {
            const std::jthread alarm([&loop] {
                std::this_thread::sleep_for(kIdle);
                loop.post([&loop] { loop.postQuit(0); });
            });
            loop.run();
        }
        const double used = processorSeconds() - before;
        char text[64];
        std::snprintf(text, sizeof text, "%.3f %% of a processor",
                      100.0 * used / static_cast<double>(kIdle.count()));
        bench::tableRow(name + ", while nothing happens", text, "", "< 0.1 %");
    }

    bool show(ui::EditorWindow& window) {
        if (!window.Create(nullptr, u"Bench", ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            return false;
        }
        window.CenterWindow();
        window.ShowWindow(true);
        m_gui.loop().processEvents(false);
        return window.GetNative()->picture().snapshot().size().width >
               0; // painted, whatever came before
    }

    void settle() {
        for (int i = 0; i < 500; ++i) {
            m_gui.loop().processEvents(false);
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    void opening(const char* name, const std::function<Window()>& create) {
        Samples times;
        for (int i = 0; i < kOpenings; ++i) {
            const auto began = Clock::now();
            const Window window = create();
            if (!window || !show(*window)) {
                std::fprintf(stderr, "window_bench: no window for \"%s\"\n", name);
                return;
            }
            times.add(bench::millisecondsSince(began));
        }
        bench::tableRow(std::string("creation to first picture: ") + name, bench::timesText(times),
                        "", "< 150 ms");
    }

    platform::Gui& m_gui;
    std::unique_ptr<platform::TestInput> m_input;
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    Asker m_asker;
};

} // namespace

int main() {
    const auto gui = platform::createGui();
    if (!gui) {
        std::fputs("window_bench: no display\n", stderr);
        return 1;
    }
    Bench bench(*gui);
    if (!bench.prepare()) {
        std::fputs("window_bench: no skin, texts or demo scenes here\n", stderr);
        return 1;
    }
    bench::tableHead("Windows");
    bench.idleWindows();
    bench.openings();
    zoneedit::setCurrentZoneManager(nullptr);
    return 0;
}
