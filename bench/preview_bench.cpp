// Plays a clip in real time as the preview does, paints every picture at the size of the left pane,
// and prints a table of what was not on time. Of a clip with sound it also says when that is first
// heard and how far the pictures are from it at the beginning and at the end.
//
//   preview_bench FILE.ogv [SECONDS] [--silent]    (10 seconds, the system's sound device)
//
// Two branches with the clip lead to each other, so that runs that are longer go through changes.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <ratio>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/HeardSound.h"
#include "bench/MarkdownTable.h"
#include "bench/Samples.h"
#include "platform/Bitmap.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "platform/SilentSound.h"
#include "platform/Sound.h"
#include "platform/raster/StillScaler.h"
#include "playback/Preview.h"
#include "player/Story.h"

namespace {

using bench::Clock;
using bench::millisecondsSince;

constexpr platform::Size kPane{700, 394};
constexpr std::chrono::milliseconds kTick{8};

player::Story storyOf(const std::string& clip) {
    const player::Action next{player::Action::When::byChance, {}, "B", false};
    const player::Action back{player::Action::When::byChance, {}, "A", false};
    return {"A", {{"A", clip, {next}}, {"B", clip, {back}}}};
}

/// Of all threads; std::clock measures the time that passes on Windows.
double secondsOfProcessor() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

struct Run {
    bench::Samples paint; ///< milliseconds for each picture
    bench::Samples gaps;  ///< from the end of a branch to the first picture of the next
    double start = 0;     ///< to the first picture
    double sound = 0;     ///< to the first sample
    /// How long what is heard has been due when its picture is shown, in milliseconds: of the first
    /// and the last tenth of the run.
    bench::Samples early;
    bench::Samples late;
};

class Player {
public:
    Player(const std::string& path, platform::SoundSystem& sound)
        : m_sound(sound, m_heard), m_preview({storyOf(path), "", platform::nativeFileSystem(),
                                              platform::nativeClock(), m_sound, 1}) {}

    void play(double seconds) {
        const auto began = Clock::now();
        m_preview.startAt("A");
        for (auto next = began; millisecondsSince(began) < seconds * 1000;) {
            tick(began, seconds * 1000);
            next = std::max(next + kTick, Clock::now());
            std::this_thread::sleep_until(next);
        }
        if (m_heard.first) {
            m_run.sound = std::chrono::duration<double, std::milli>(*m_heard.first - began).count();
        }
    }

    [[nodiscard]] const Run& run() const { return m_run; }
    [[nodiscard]] playback::PictureCount pictures() const { return m_preview.pictures(); }
    [[nodiscard]] bool lacksDevice() const { return m_preview.transport().lacksDevice(); }

private:
    void tick(Clock::time_point began, double length) {
        const auto now = Clock::now();
        bool isShown = false;
        if (m_preview.tick([&](const std::uint8_t* pixels, platform::Size size) {
                show(pixels, size);
                isShown = true;
            })) {
            m_isFirst = true;
            m_changed = now;
        }
        if (const auto heard = m_heard.seconds(); isShown && heard && m_run.gaps.count() == 0) {
            const double off = 1000 * (*heard - m_preview.frame() / m_preview.framesPerSecond());
            const double share = millisecondsSince(began) / length;
            if (share < 0.1 || share > 0.9) {
                (share < 0.1 ? m_run.early : m_run.late).add(off);
            }
        }
        if (isShown && std::exchange(m_isFirst, false)) {
            if (m_run.start == 0) {
                m_run.start = millisecondsSince(began);
            } else {
                m_run.gaps.add(millisecondsSince(m_changed));
            }
        }
    }

    void show(const std::uint8_t* pixels, platform::Size size) {
        const auto began = Clock::now();
        if (m_picture.size() != size) {
            m_picture = platform::Bitmap(size);
        }
        std::copy_n(pixels,
                    static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
                        4,
                    reinterpret_cast<std::uint8_t*>(m_picture.row(0)));
        platform::raster::drawStill(m_picture, m_pane, {0, 0, kPane.width, kPane.height},
                                    {0, 0, kPane.width, kPane.height});
        m_run.paint.add(millisecondsSince(began));
    }

    bench::Heard m_heard;
    bench::HeardSound m_sound;
    playback::Preview m_preview;
    platform::Bitmap m_picture;
    platform::Bitmap m_pane{kPane};
    Run m_run;
    bool m_isFirst = true;
    Clock::time_point m_changed;
};

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool isSilent = std::erase(arguments, "--silent") > 0;
    if (arguments.empty()) {
        std::fputs("usage: preview_bench FILE.ogv [SECONDS] [--silent]\n", stderr);
        return 2;
    }
    const double seconds = arguments.size() > 1 ? std::atof(arguments[1].c_str()) : 10.0;
    platform::SilentSound silence(platform::nativeClock());
    platform::SoundSystem& device = platform::nativeSound();
    Player player(arguments[0], isSilent ? static_cast<platform::SoundSystem&>(silence) : device);
    const double processor = secondsOfProcessor();
    player.play(seconds);
    const double used = secondsOfProcessor() - processor;
    const playback::PictureCount count = player.pictures();
    const Run& run = player.run();
    char text[128];
    const auto row = [&text](const char* what, const char* target, const char* format,
                             auto... values) {
        std::snprintf(text, sizeof text, format, values...);
        bench::tableRow(what, text, "", target);
    };
    std::snprintf(text, sizeof text, "%.0f s%s", seconds,
                  player.lacksDevice() ? ", no sound device" : "");
    bench::tableHead("Preview: " + std::filesystem::path(arguments[0]).filename().string() + ", " +
                     text);
    row("pictures", "0 dropped, 0 late", "%u shown, %u dropped, %u late", count.shown,
        count.dropped, count.late);
    row("processor", "", "%.0f %% of one", 100 * used / seconds);
    row("to the first picture", "< 150 ms", "%.0f ms", run.start);
    if (run.sound > 0) {
        row("to the first sound", "", "%.0f ms", run.sound);
    }
    if (run.early.count() > 0 && run.late.count() > 0) {
        row("sound ahead of its picture", "",
            "median %.1f ms in the first tenth, %.1f ms in the last; at most %.1f ms",
            run.early.median(), run.late.median(), std::max(run.early.most(), run.late.most()));
    }
    if (run.gaps.count() > 0) {
        row("change of branch", "", "median %.0f, at most %.0f ms, %zu times", run.gaps.median(),
            run.gaps.most(), run.gaps.count());
    }
    row("copying and scaling a picture", "", "p50 %.1f, p95 %.1f ms", run.paint.median(),
        run.paint.p95());
    return 0;
}
