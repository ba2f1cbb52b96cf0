// The time from each window's creation to its first picture, that of one step while an editor is
// resized, and the cost of an idle window.
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
#include <utility>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEdit.h"
#include "app/services/Startup.h"
#include "bench/MarkdownTable.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
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
constexpr int kSteps = 60;
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

    /// The editors at a large window's size and at that of a screen with 3840 x 2160 pixels.
    void resizings() {
        m_state.zoneEditVideo = kSceneClip;
        const std::pair<const char*, Window> editors[] = {
            {"branch editor", ui::BranchList::create(context())},
            {"zone editor", zoneedit::ZoneEdit::create(context())}};
        for (const auto& [name, window] : editors) {
            if (window && show(*window) && isPainted(*window)) {
                resizing(name, *window, {1600, 900}, "p95 <= 16 ms");
                resizing(name, *window, {3840, 2160}, "p95 <= 33 ms");
            }
        }
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
        if (!window || !show(*window) || !isPainted(*window)) {
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
        return true;
    }

    /// Paints once more.
    static bool isPainted(ui::EditorWindow& window) {
        return window.GetNative()->picture().snapshot().size().width > 0;
    }

    /// From the system's new size to the picture in it, pixel by pixel.
    void resizing(const char* name, ui::EditorWindow& window, platform::Size size,
                  const char* target) {
        platform::NativeWindow& native = *window.GetNative();
        Samples times;
        for (int step = -1; step < kSteps; ++step) {
            const auto began = Clock::now();
            native.setGeometry(platform::Rect::at(0, 0, size.width - step % 20, size.height));
            m_gui.loop().processEvents(false);
            native.picture().repaintNow();
            if (step >= 0) { // the first one comes from another size
                times.add(bench::millisecondsSince(began));
            }
        }
        bench::tableRow(std::string("a resize step at ") + std::to_string(size.width) + " x " +
                            std::to_string(size.height) + ": " + name,
                        bench::timesText(times), "", target);
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
            const bool isShown = window && show(*window);
            times.add(bench::millisecondsSince(began));
            if (!isShown || !isPainted(*window)) {
                std::fprintf(stderr, "window_bench: no window for \"%s\"\n", name);
                return;
            }
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
    bench.resizings();
    zoneedit::setCurrentZoneManager(nullptr);
    return 0;
}
