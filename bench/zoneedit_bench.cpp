// The zone editor with real input: from a key press to the new picture on the screen, dragging a
// point in a short and a very long clip, and one tick of the repaint timer. The floor of a step is
// the playback library alone, with the same frames at the same intervals.
//
// Usage: zoneedit_bench [CLIP [GROUP]] prints Markdown tables. CLIP: default is that of the larger
// demo scene. GROUP: how far its key frames are apart; where it is given, only what depends on the
// clip is measured; default: 64. Needs a display; QT_QPA_PLATFORM=offscreen will do.
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "ZoneEdit/ZoneEdit.h"
#include "bench/MarkdownTable.h"
#include "bench/PlaybackAlone.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "video/CVideoUI.h"
#include "zone/Scale.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using bench::Clock;
using bench::jumps;
using bench::kPauseMs;
using bench::kRounds;
using bench::millisecondsSince;
using bench::Move;
using bench::PlaybackAlone;
using bench::Samples;
using bench::walk;
using platform::EventKind;
using platform::Key;
using platform::Point;

constexpr int kLongFrames = 100'000;
constexpr double kMaxWaitMs = 10'000;
constexpr std::chrono::milliseconds kHeldPause{100};
constexpr int kScrubbed = 300;
constexpr int kGroup = 64;
constexpr int kHourFrames = 108'000;
constexpr platform::Size kLargeWindow{1920, 1040};

/// The zone editor's window on a clip.
class Editor {
public:
    explicit Editor(const std::string& clip) {
        m_state.zoneEditVideo = clip;
        m_window = zoneedit::ZoneEdit::create({test::gui(), m_state, m_services});
        if (!m_window->Create(nullptr, u"Zone Edit", ui::kScreenStyle, ui::kScreenExtendedStyle)) {
            throw std::runtime_error("no window");
        }
        m_window->ShowWindow(true);
        m_control = m_window->FindControl<video::CVideoUI>(u"Video");
        if (m_control == nullptr || !m_control->video() || m_control->video()->frameCount < 1) {
            throw std::runtime_error("cannot open " + clip);
        }
        m_driver = std::make_unique<test::WindowDriver>(*m_window);
        waitForPicture();
    }

    Samples keys(const std::vector<Move>& moves, Key key, bool shift) {
        platform::Modifiers modifiers;
        modifiers.shift = shift;
        return measure(moves, [&](int /*to*/) {
            test::input().key(m_driver->native(), EventKind::keyDown, key, {}, modifiers);
            test::gui().loop().processEvents(false);
        });
    }
    Samples jump(const std::vector<Move>& moves) {
        return measure(moves, [this](int to) { m_control->GoToFrame(to); });
    }
    /// Holding Left at 10 a second from `from` on, right after a jump there.
    void holdBack(int from, int steps, Samples& times) {
        m_control->GoToFrame(from);
        waitForPicture();
        auto due = Clock::now();
        for (int step = 0; step < steps && m_control->video()->currentFrame > 0; ++step) {
            due += kHeldPause;
            waitUntil(due);
            const auto began = Clock::now();
            test::input().key(m_driver->native(), EventKind::keyDown, Key::left);
            test::gui().loop().processEvents(false);
            waitForPicture();
            times.add(millisecondsSince(began));
        }
    }
    /// Pictures a second while the pointer is drawn over the timeline from end to end.
    double scrub() {
        const platform::Rect line = m_driver->get(u"Timeline").GetPos();
        const auto began = Clock::now();
        test::input().mouse(m_driver->native(), EventKind::mouseDown,
                            {line.left + 5, line.top + 9});
        for (int position = 1; position <= kScrubbed; ++position) {
            const int x = line.left + 5 + (line.width() - 10) * position / kScrubbed;
            test::input().mouse(m_driver->native(), EventKind::mouseMove, {x, line.top + 9});
            test::gui().loop().processEvents(false);
            waitForPicture();
        }
        test::input().mouse(m_driver->native(), EventKind::mouseUp, {line.right, line.top + 9});
        return kScrubbed * 1000 / millisecondsSince(began);
    }
    void resize(platform::Size size) {
        m_driver->native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        pause();
    }
    /// A turn of the wheel over the timeline and the paint it causes.
    Samples turnTimeline(bool zooms) {
        const platform::Rect line = m_driver->get(u"Timeline").GetPos();
        const Point middle{(line.left + line.right) / 2, line.top + 9};
        Samples times;
        for (int round = 0; round < kRounds; ++round) {
            const int delta = round / 20 % 2 == 0 ? 120 : -120;
            const auto began = Clock::now();
            test::input().wheel(m_driver->native(), middle, delta,
                                {.shift = !zooms, .control = zooms});
            test::gui().loop().processEvents(false);
            m_driver->native().picture().repaintNow();
            times.add(millisecondsSince(began));
        }
        return times;
    }
    [[nodiscard]] int frameCount() const { return m_control->video()->frameCount; }
    void drawZone() {
        m_driver->click(u"ButtonAddZone");
        m_driver->click(u"OptionAddMultiPoint");
        for (const Point point : {Point{100, 100}, Point{300, 100}, Point{400, 250},
                                  Point{300, 400}, Point{100, 400}, Point{50, 250}}) {
            m_driver->click(at(point));
        }
        m_driver->click(u"OptionMovePoint");
    }
    /// One sample per mouse move, including the repaint it causes.
    Samples drag() {
        platform::NativeWindow& window = m_driver->native();
        Samples times;
        test::input().mouse(window, EventKind::mouseDown, at({300, 100}));
        test::pump();
        for (int round = 1; round <= kRounds; ++round) {
            const auto began = Clock::now();
            test::input().mouse(window, EventKind::mouseMove, at({300 + round, 100}),
                                platform::MouseButton::none);
            test::gui().loop().processEvents(false);
            times.add(millisecondsSince(began));
        }
        test::input().mouse(window, EventKind::mouseUp, at({300 + kRounds, 100}));
        test::pump();
        return times;
    }
    /// What the repaint timer causes, with the same picture or with one that was just decoded.
    Samples ticks(bool newPicture) {
        Samples times;
        for (int round = 0; round < kRounds; ++round) {
            if (newPicture) {
                m_control->video()->seekTo(round % m_control->video()->frameCount);
                while (!m_control->video()->hasDueFrame()) {
                }
            }
            const auto began = Clock::now();
            m_control->NeedUpdate();
            m_driver->native().picture().repaintNow();
            times.add(millisecondsSince(began));
        }
        return times;
    }

private:
    [[nodiscard]] Point at(Point picture) const {
        const Point origin = m_control->GetPos().topLeft();
        return {origin.x + picture.x, origin.y + picture.y};
    }
    Samples measure(const std::vector<Move>& moves, const std::function<void(int)>& go) {
        Samples times;
        for (const Move& move : moves) {
            if (m_control->video()->currentFrame != move.from) {
                m_control->GoToFrame(move.from);
                waitForPicture();
                pause();
            }
            const auto began = Clock::now();
            go(move.to);
            waitForPicture();
            times.add(millisecondsSince(began));
            pause();
        }
        return times;
    }
    void waitForPicture() {
        const auto began = Clock::now();
        while (m_control->video()->shownFrame != m_control->video()->currentFrame) {
            if (millisecondsSince(began) > kMaxWaitMs) {
                throw std::runtime_error("a picture does not come");
            }
            test::gui().loop().processEvents(true);
        }
    }
    static void pause() {
        waitUntil(Clock::now() + std::chrono::milliseconds(static_cast<int>(kPauseMs)));
    }
    static void waitUntil(Clock::time_point time) {
        while (Clock::now() < time) {
            test::gui().loop().processEvents(true);
        }
    }

    app_state::ScreenState m_state;
    app_state::SharedServices m_services;
    std::shared_ptr<zoneedit::ZoneEdit> m_window;
    std::unique_ptr<test::WindowDriver> m_driver;
    video::CVideoUI* m_control = nullptr;
};

struct Course {
    const char* what;
    Key key;
    int step;
    const char* target;
};

constexpr Course kCourses[] = {
    {"step forward", Key::right, 1, "p95 <= 12 ms at 720p"},
    {"step back", Key::left, -1, "p95 <= 12 ms at 720p"},
    {"ten frames forward", Key::right, 10, "p95 < 40 ms"},
    {"ten frames back", Key::left, -10, "p95 < 40 ms"},
};

void measureSteps(const std::string& clip) {
    std::vector<Samples> floors;
    int frames = 0;
    {
        PlaybackAlone alone(clip); // one clip plays at a time
        frames = alone.frameCount();
        for (const Course& course : kCourses) {
            floors.push_back(alone.measure(walk(frames, course.step)));
        }
        floors.push_back(alone.measure(jumps(frames)));
    }
    bench::tableHead("Zone editor: from the key to the picture, " +
                     std::filesystem::path(clip).filename().string());
    Editor editor(clip);
    const Samples* floor = floors.data();
    for (const Course& course : kCourses) {
        const bool shift = course.step * course.step > 1;
        bench::tableRow(course.what,
                        timesText(editor.keys(walk(frames, course.step), course.key, shift)),
                        timesText(*floor++) + " (playback alone)", course.target);
    }
    bench::tableRow("jump to a random frame", timesText(editor.jump(jumps(frames))),
                    timesText(*floor) + " (playback alone)", "the playback library's");
    editor.drawZone();
    bench::tableRow("a mouse move of a drag, " + std::to_string(frames) + " frames",
                    timesText(editor.drag()), "", "< 10 ms");
}

/// Scrubbing, and holding back over several groups from inside one, right after a jump.
void measureGroups(const std::string& clip, int group) {
    bench::tableHead("Zone editor: over many groups, " +
                     std::filesystem::path(clip).filename().string());
    Editor editor(clip);
    bench::tableRow("scrubbing over the whole clip, pictures a second",
                    std::to_string(editor.scrub()), "",
                    ">= 10 with a key frame every 64, >= 30 with one every 12");
    const int from = editor.frameCount() - 15;
    Samples held;
    editor.holdBack(from, from * 6 / 10, held);
    bench::tableRow("holding back, 10 frames a second", timesText(held), "", "max <= 40 ms");
    for (int distance = 0; distance < 8; ++distance) {
        Samples times;
        for (int key = group; key < from; key += group) {
            editor.holdBack(key + distance, distance + 2, times);
        }
        bench::tableRow("the same over the border of a group, right after a jump " +
                            std::to_string(distance) + " frames behind it",
                        timesText(times), "", "max <= 40 ms");
    }
    editor.resize(kLargeWindow);
    bench::tableRow("step forward in a window of 1920 x 1040",
                    timesText(editor.keys(walk(editor.frameCount(), 1), Key::right, false)), "",
                    "p95 <= 20 ms for 1920 x 1080");
}

std::string madeClip(const char* name, int width, int height, int frames, int pictureEvery) {
    support::ClipSpec spec;
    spec.width = width;
    spec.height = height;
    spec.frames = frames;
    spec.isEmpty = [pictureEvery](int frame) { return frame % pictureEvery != 0; };
    support::writeBytes(name, support::makeClip(spec));
    return std::filesystem::absolute(name).string();
}

void measureLongClip() {
    bench::tableHead("Zone editor: a clip of 100,000 frames, changes carried forward");
    const support::LogCapture log;
    Editor editor(madeClip("long.ogv", 64, 48, kLongFrames, 50));
    editor.drawZone();
    const std::size_t before = log.errors().size();
    bench::tableRow("a mouse move of a drag", timesText(editor.drag()), "", "< 10 ms");
    bench::tableRow("lines that the drag writes to the log",
                    std::to_string(log.errors().size() - before), "", "0");
}

/// Saves a zone that is elsewhere on every frame and active on every other third one.
void makeJaggedZone(const std::string& clip) {
    const auto zones = zone::ZoneManager::createEmpty();
    zones->scale = zone::Scale{};
    zones->videoWidth = 1280;
    zones->videoHeight = 720;
    zones->frameCount = kHourFrames;
    zone::ZoneSession session(zones);
    session.setArea({1280, 720});
    session.addZone("jagged", kHourFrames);
    session.addPoint(0, 0, 100, 100);
    (void)session.hitTest(0, 0, 100, 100);
    for (int frame = 1; frame < kHourFrames; ++frame) {
        session.moveSelectedPoint(0, frame, frame * 7 % 1000, frame * 331 % 700);
        if (frame % 3 == 0) {
            session.setActive(0, frame, frame % 2 == 0);
        }
    }
    (void)session.save(clip.substr(0, clip.size() - 4));
}

void measureTimeline() {
    bench::tableHead("Zone editor: the timeline of 108,000 frames");
    const std::string clip = madeClip("hour.ogv", 64, 48, kHourFrames, 50);
    makeJaggedZone(clip);
    Editor editor(clip);
    bench::tableRow("zoom", timesText(editor.turnTimeline(true)), "", "p95 < 16.6 ms");
    bench::tableRow("move", timesText(editor.turnTimeline(false)), "", "p95 < 16.6 ms");
    editor.resize(kLargeWindow);
    bench::tableRow("zoom in a window of 1920 x 1040", timesText(editor.turnTimeline(true)), "",
                    "p95 < 16.6 ms");
}

void measureTick() {
    bench::tableHead("Zone editor: one tick of the 33 ms timer, 1920 x 1088 into 1280 x 720");
    Editor editor(madeClip("large.ogv", 1920, 1088, 16, 1));
    editor.drawZone();
    bench::tableRow("repaint of the same picture", timesText(editor.ticks(false)), "", "< 6 ms");
    bench::tableRow("repaint with a new picture", timesText(editor.ticks(true)), "", "< 6 ms");
}

int run(const std::string& clip, std::optional<int> group) {
    const support::TempFolder folder;
    std::filesystem::copy(QUORVEL_DATA_FOLDER "/UI", "UI",
                          std::filesystem::copy_options::recursive);
    try {
        measureSteps(clip);
        measureGroups(clip, group.value_or(kGroup));
        if (!group) {
            measureLongClip();
            measureTimeline();
            measureTick();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zoneedit_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string demo =
        std::string(QUORVEL_SOURCE_DIR) + "/demo/Scenes/Fire Drill Level 1/alarm-corridor.ogv";
    const int exitCode = run(argc > 1 ? std::filesystem::absolute(argv[1]).string() : demo,
                             argc > 2 ? std::optional(std::stoi(argv[2])) : std::nullopt);
    test::endGui();
    return exitCode;
}
