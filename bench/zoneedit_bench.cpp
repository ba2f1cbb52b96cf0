// From the press of a key to the new picture on the screen, in the real zone editor on a clip of
// 1280 x 720: step forward and back, ten frames, a jump to a random frame, and a drag of a point.
// Targets: a step p95 below 20 ms, ten frames below 40 ms, a mouse move of a drag below 10 ms; a
// random jump costs what the playback library needs for it.
//
// Usage: zoneedit_bench [CLIP]    in a folder with UI/, as build/release/bin; without a CLIP the
// larger demo scene's. Needs a display: QT_QPA_PLATFORM=offscreen serves.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ZoneEdit/ZoneEdit.h"
#include "platform/TestInput.h"
#include "video/CVideoUI.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

using platform::EventKind;
using platform::Key;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 200;
constexpr const char* kDemoClip = "Scenes/Fire Drill Level 1/alarm-corridor.ogv";

double percentile(std::vector<double> times, double share) {
    std::sort(times.begin(), times.end());
    return times[static_cast<std::size_t>(static_cast<double>(times.size() - 1) * share)];
}

void report(const char* what, const std::vector<double>& times, const char* target) {
    std::printf("%-26s %7.2f %7.2f %7.2f   %s\n", what, percentile(times, 0.5),
                percentile(times, 0.95), percentile(times, 1.0), target);
}

class Bench {
public:
    Bench(platform::Gui& gui, const std::string& clip) : m_gui(gui) {
        m_state.zoneEditVideo = clip;
        m_window = zoneedit::ZoneEdit::create({gui, m_state, m_services});
        m_input = platform::createTestInput(gui);
    }
    bool open() {
        if (!m_window->Create(nullptr, u"Zone Edit", ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            return false;
        }
        m_window->ShowWindow(true);
        m_control = m_window->FindControl<video::CVideoUI>(u"Video");
        return m_control != nullptr && m_control->video() && m_control->video()->frameCount > 0 &&
               waitForPicture();
    }
    void keys(const char* what, Key key, bool shift, int start, const char* target) {
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            const int frame = m_control->video()->currentFrame;
            const int last = m_control->video()->frameCount - 1;
            if (key == Key::right ? frame + 10 > last : frame < 10) {
                m_control->GoToFrame(start < 0 ? last : start);
                waitForPicture();
                idle();
            }
            platform::Modifiers modifiers;
            modifiers.shift = shift;
            times.push_back(timed([&] {
                m_input->key(*m_window->GetNative(), EventKind::keyDown, key, {}, modifiers);
                m_gui.loop().processEvents(false);
            }));
            m_input->key(*m_window->GetNative(), EventKind::keyUp, key, {}, modifiers);
            idle();
        }
        report(what, times, target);
    }
    void jumps() {
        std::mt19937 random(1);
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            const int frame =
                static_cast<int>(random() % static_cast<unsigned>(m_control->video()->frameCount));
            times.push_back(timed([&] { m_control->GoToFrame(frame); }));
            idle();
        }
        report("random jump", times, "(playback)");
    }
    void drag() {
        const auto zones = zone::currentZoneManager();
        const int frames = m_control->video()->frameCount;
        zones->addZone(zone::Zone::create(frames));
        zones->currentZone = zones->zoneCount() - 1;
        zones->addPoint(zones->currentZone, 0, 100, 100);
        zones->addPoint(zones->currentZone, 0, 300, 100);
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            const auto began = Clock::now();
            zones->moveSelectedPoint(zones->currentZone, 0, 300 + round, 100);
            m_control->Invalidate();
            m_window->GetNative()->repaintNow();
            times.push_back(since(began));
        }
        report("one move of a drag", times, "p95 < 10 ms");
    }

private:
    static double since(Clock::time_point began) {
        return std::chrono::duration<double, std::milli>(Clock::now() - began).count();
    }
    bool waitForPicture() {
        const auto began = Clock::now();
        while (m_control->video()->shownFrame != m_control->video()->currentFrame) {
            if (since(began) > 10'000) {
                return false;
            }
            m_gui.loop().processEvents(true);
        }
        return true;
    }
    /// Milliseconds from the action to the picture of the frame it leads to.
    double timed(const std::function<void()>& action) {
        const auto began = Clock::now();
        action();
        waitForPicture();
        return since(began);
    }
    /// A person's pause between two presses: the decoder fills its queue.
    void idle() {
        const auto began = Clock::now();
        while (since(began) < 50) {
            m_gui.loop().processEvents(true);
        }
    }

    platform::Gui& m_gui;
    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    std::shared_ptr<zoneedit::ZoneEdit> m_window;
    std::unique_ptr<platform::TestInput> m_input;
    video::CVideoUI* m_control = nullptr;
};

} // namespace

int main(int argc, char** argv) {
    const std::string clip = argc > 1 ? argv[1] : kDemoClip;
    const auto gui = platform::createGui();
    if (!gui) {
        std::fputs("zoneedit_bench: no display\n", stderr);
        return 1;
    }
    Bench bench(*gui, clip);
    if (!bench.open()) {
        std::fprintf(stderr, "zoneedit_bench: cannot open %s\n", clip.c_str());
        return 1;
    }
    std::printf("%-26s %7s %7s %7s   target\n", "from key to picture, ms", "median", "p95", "max");
    bench.keys("step forward", Key::right, false, 0, "p95 < 20 ms");
    bench.keys("step back", Key::left, false, -1, "p95 < 20 ms");
    bench.keys("ten frames forward", Key::right, true, 0, "p95 < 40 ms");
    bench.keys("ten frames back", Key::left, true, -1, "p95 < 40 ms");
    bench.jumps();
    bench.drag();
    return 0;
}
