// Random events on the whole editor for a long time: the program runs again and again in a folder
// of its own, a random user works its windows, and between two runs memory, threads and handles
// must be back where they were.
//
//   quorvel-soak DATA FOLDER [MINUTES [SEED [SESSION]]]
//
// DATA is the folder of the built programs, with skin and texts, FOLDER is emptied and used. Each
// session prints one line; what the program says goes to FOLDER/stderr.txt, anew in each session. A
// run that fails is repeated by its seed, and by the number of its last session. Exit 0 when
// nothing was found.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "app/Program.h"
#include "core/Log.h"
#include "core/Text.h"
#include "tests/soak/RandomUser.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/ProcessFigures.h"
#include "tests/support/TempFolder.h"
#include "toolkit/skin/ImageCache.h"
#include "tools/tour/Ticker.h"

namespace fs = std::filesystem;

namespace {

using support::ProcessFigures;

constexpr int kEvents = 3000;                     // of a session
constexpr std::size_t kSessionsWithoutWindow = 3; // after them there is no display

struct Options {
    fs::path data;
    fs::path folder;
    double minutes = 1;
    std::uint64_t seed = std::random_device{}();
    int firstSession = 0;
};

/// What became of one run of the program.
struct Course {
    int exitCode = 0;
    int events = 0;
    std::uint64_t number = 0;
};

class Soak {
public:
    explicit Soak(const Options& options);
    /// Whether nothing was found.
    [[nodiscard]] bool run();

private:
    void layScenes() const;
    Course play(int session);
    void session(int number);
    [[nodiscard]] bool judge() const;

    Options m_options;
    std::unique_ptr<platform::Gui> m_real = platform::createGui();
    std::vector<ProcessFigures> m_figures; ///< after each session
    std::map<std::string, int> m_actions;  ///< by the window's class
};

Soak::Soak(const Options& options) : m_options(options) {
    if (!m_real) {
        throw std::runtime_error("no display");
    }
    fs::remove_all(options.folder);
    // Two levels down, where settings beside the product would be its own.
    const fs::path work = options.folder / "product" / "editor";
    fs::create_directories(work / "videos");
    fs::copy(options.data / "UI", work / "UI", fs::copy_options::recursive);
    fs::copy(options.data / "Translations.ini", work / "Translations.ini");
    fs::current_path(work);
    support::ClipSpec clip;
    clip.frames = 40;
    support::Bytes bytes = support::makeClip(clip);
    support::writeBytes("videos/short.ogv", bytes);
    bytes.resize(bytes.size() / 2);
    support::writeBytes("videos/cut.ogv", bytes);
    clip.sound = support::Sound::after;
    clip.width = 320;
    clip.height = 240;
    support::writeBytes("videos/sound.ogg", support::makeClip(clip));
}

/// Two scenes as an author might have left them, one that is damaged.
void Soak::layScenes() const {
    fs::remove_all("Scenes");
    support::writeBytes("Scenes/Drill/Scene.xml",
                        "<Scene><Name>Drill</Name><FirstBranch>A</FirstBranch>"
                        "<Branch><ID>A</ID><Filename>door.ogv</Filename>"
                        "<Action><Type>ZoneAction</Type><Parameter>Z</Parameter></Action>"
                        "<Action><Type>KeypressAction</Type><Parameter>K</Parameter>"
                        "<BranchID>B</BranchID><Immediate>true</Immediate></Action>"
                        "<Action><Type>RandomAction</Type><BranchID>A</BranchID></Action>"
                        "<Action><Type>RandomAction</Type><BranchID>B</BranchID></Action></Branch>"
                        "<Branch><ID>B</ID><Filename>hall.ogg</Filename>"
                        "<Action><Type>DefaultAction</Type><BranchID>A</BranchID></Action></Branch>"
                        "</Scene>");
    support::writeBytes("Scenes/Second/Scene.xml", "<Scene><Name>Second</Name><Branch><ID>A</ID>"
                                                   "<Filename>cut.ogv</Filename></Branch></Scene>");
    support::writeBytes("Scenes/Damaged/Scene.xml", "<Scene><Name>");
    fs::copy_file("videos/short.ogv", "Scenes/Drill/door.ogv");
    fs::copy_file("videos/sound.ogg", "Scenes/Drill/hall.ogg");
    fs::copy_file("videos/cut.ogv", "Scenes/Second/cut.ogv");
}

/// One run of the program, with a random user at it.
Course Soak::play(int session) {
    std::seed_seq seed{static_cast<unsigned>(m_options.seed),
                       static_cast<unsigned>(m_options.seed >> 32), static_cast<unsigned>(session)};
    auto gui = std::make_unique<test::ScriptedGui>(*m_real);
    soak::RandomUser user(*m_real, gui->dialog, seed);
    Course course;
    int pause = 0;
    bool ends = false;
    gui->ends = [&ends] { return ends; };
    {
        const tour::Ticker ticker(m_real->loop(), std::chrono::milliseconds(1), [&] {
            if (ends) {
                m_real->loop().postQuit(0);
            } else if (--pause < 0) {
                user.act();
                pause = user.patience();
                ends = ++course.events >= kEvents;
            }
        });
        course.exitCode = app::runProgram("TestMode", [&gui] { return std::move(gui); });
    }
    for (const auto& [window, actions] : user.actions()) {
        m_actions[core::storedText(window)] += actions;
    }
    course.number = user.course();
    return course;
}

void Soak::session(int number) {
    const auto begin = std::chrono::steady_clock::now();
    layScenes();
    if (std::freopen("../../stderr.txt", "w", stderr) == nullptr) {
        std::puts("What the program prints cannot be kept.");
    }
    std::printf("session %d of seed %llu: ", number,
                static_cast<unsigned long long>(m_options.seed));
    (void)std::fflush(stdout);
    core::Log::get();
    const Course course = play(number);
    core::Log::release();
    // Which of the images it may keep are there depends on the size of the last windows.
    toolkit::ImageCache::get().clear();
    m_figures.push_back(support::processFigures());
    const ProcessFigures& now = m_figures.back();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("%d events, course %016llx, %zu KB, %d threads, %d handles, %.1f s, exit %d\n",
                course.events, static_cast<unsigned long long>(course.number), now.heapBytes / 1024,
                now.threads, now.handles, took.count(), course.exitCode);
    (void)std::fflush(stdout);
}

/// The last three quarters of the sessions: the first ones fill caches. A figure must have grown
/// twice, because what comes once and stays, as with the first window of its kind, is no leak. The
/// least of each quarter counts: what a size or language of the windows needs comes and goes.
bool Soak::judge() const {
    const std::size_t quarter = m_figures.size() / 4;
    if (quarter < 2) {
        std::puts("too few sessions to compare");
        return true;
    }
    const auto grows = [&](const char* what, std::size_t allowance, auto figure) {
        const auto least = [&](std::size_t from) {
            auto value = m_figures[from].*figure;
            for (std::size_t i = from + 1; i < from + quarter; ++i) {
                value = std::min(value, m_figures[i].*figure);
            }
            return static_cast<std::size_t>(value);
        };
        const std::size_t before = least(quarter);
        const std::size_t between = least(2 * quarter);
        const std::size_t after = least(m_figures.size() - quarter);
        std::printf("%s: %zu, then %zu, at the end %zu\n", what, before, between, after);
        return before < between && between < after && after > before + allowance;
    };
    const bool memory = grows("bytes", support::kHeapTolerance, &ProcessFigures::heapBytes);
    const bool threads = grows("threads", 0, &ProcessFigures::threads);
    const bool handles = grows("handles", 2, &ProcessFigures::handles);
    return !memory && !threads && !handles;
}

bool Soak::run() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                        std::chrono::duration<double>(m_options.minutes * 60));
    int number = m_options.firstSession;
    do {
        session(number++);
        if (m_actions.empty() && m_figures.size() >= kSessionsWithoutWindow) {
            throw std::runtime_error("no window was shown");
        }
    } while (Clock::now() < end);
    for (const auto& [window, actions] : m_actions) {
        std::printf("%s: %d events\n", window.c_str(), actions);
    }
    const bool good = judge();
    std::printf("%s: %zu sessions, seed %llu\n", good ? "nothing found" : "FAILED: growth",
                m_figures.size(), static_cast<unsigned long long>(m_options.seed));
    return good;
}

Options parse(const std::vector<std::string>& arguments) {
    Options options{fs::absolute(arguments.at(0)), fs::absolute(arguments.at(1))};
    options.minutes = arguments.size() > 2 ? std::stod(arguments[2]) : options.minutes;
    options.seed = arguments.size() > 3 ? std::stoull(arguments[3]) : options.seed;
    options.firstSession = arguments.size() > 4 ? std::stoi(arguments[4]) : 0;
    return options;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Soak(parse({argv + 1, argv + argc})).run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::printf("FAILED: %s\nusage: quorvel-soak DATA FOLDER [MINUTES [SEED [SESSION]]]\n",
                    error.what());
        return 2;
    }
}
