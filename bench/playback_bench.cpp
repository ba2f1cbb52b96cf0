// Measures the playback library on clips, and the floor in the same run, and prints a table per
// clip with each figure and its target. Usage: playback_bench FILE...
//
// The ratio to the floor counts, not the milliseconds: run it on a quiet machine.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/ConversionReport.h"
#include "bench/PlaybackFloor.h"
#include "bench/PlaybackPlayer.h"
#include "bench/ReportTable.h"
#include "bench/Samples.h"
#include "src/Theora/PageSearch.h"
#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"
#include "src/TheoraFileDataSource.h"

namespace {

using bench::Clock;
using bench::millisecondsSince;
using bench::number;
using bench::PlaybackFloor;
using bench::PlaybackPlayer;
using bench::ratio;
using bench::row;
using bench::Samples;
using bench::spread;

constexpr int kSeeks = 60;
constexpr int kSeeksInARow = 6;
constexpr int kSteps = 60;
constexpr int kPasses = 3;
constexpr int kHeldSteps = 300;
constexpr std::chrono::milliseconds kHeldPause{100};
// The step-back decoder decodes a whole group, of up to 250 frames.
constexpr std::chrono::milliseconds kLongSettling{1000};

/// A file that notes when it was first read after a request.
class WatchedSource : public theora::TheoraFileDataSource {
public:
    WatchedSource(const std::string& path, std::atomic<std::int64_t>& firstRead)
        : TheoraFileDataSource(path, platform::nativeFileSystem()), m_firstRead(firstRead) {}
    std::size_t read(void* buffer, std::size_t count) override {
        std::int64_t none = 0;
        m_firstRead.compare_exchange_strong(none, Clock::now().time_since_epoch().count());
        return TheoraFileDataSource::read(buffer, count);
    }

private:
    std::atomic<std::int64_t>& m_firstRead;
};

std::unique_ptr<theora::TheoraDataSource> openFile(const std::string& path) {
    return std::make_unique<theora::TheoraFileDataSource>(path, platform::nativeFileSystem());
}

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * 4096 / 1e6;
}

class ClipReport {
public:
    explicit ClipReport(std::string path)
        : m_path(std::move(path)), m_floor(m_path), m_frame(m_floor.frameSize()) {}

    void run() {
        std::printf("\n## %s (%d frames)\n\n| what | measured | floor or peer | target |\n"
                    "|---|---|---|---|\n",
                    m_path.substr(m_path.find_last_of('/') + 1).c_str(), m_floor.frameCount());
        // Memory first: later measurements open several clips.
        memory();
        wholeClip();
        randomSeeks();
        findingThePage();
        stepUnprepared();
        stepPrepared();
        holdStepBack();
        startOfDecoding();
        destruction();
        bench::reportConversion(m_frame);
    }

private:
    [[nodiscard]] int randomFrame() {
        return static_cast<int>(m_random() % static_cast<unsigned>(m_floor.frameCount()));
    }

    void memory() {
        const double before = residentMegabytes();
        PlaybackPlayer player(openFile(m_path));
        for (int i = 0; i < kSeeks / 4; ++i) {
            player.seek(randomFrame());
        }
        player.seek(m_floor.frameCount() - 2);
        player.settle();
        row("memory of the clip", number(residentMegabytes() - before, "MB"), "", "<= 208 MB");
    }

    void wholeClip() {
        const int frames = m_floor.frameCount();
        Samples ours;
        Samples floor;
        PlaybackPlayer player(openFile(m_path));
        const int repeatedBefore = m_floor.repeatedFrames();
        for (int pass = 0; pass < kPasses; ++pass) {
            m_floor.seek(0);
            const auto start = Clock::now();
            while (m_floor.next()) {
            }
            floor.add((frames - 1) / (millisecondsSince(start) / 1000));
            ours.add(player.playAll());
        }
        // Where nearly every frame is a repeat, the floor decodes nothing, so ratios would only
        // measure thread wake-ups.
        m_hasRatios = (m_floor.repeatedFrames() - repeatedBefore) / kPasses < frames / 2;
        row("decode + convert the whole clip",
            number(ours.median(), "frames/s") + ", " + ratio(ours.median(), floor.median()),
            number(floor.median(), "frames/s decoded"), m_hasRatios ? ">= 0.95 x floor" : "");
    }

    void randomSeeks() {
        Samples ours;
        Samples floor;
        PlaybackPlayer player(openFile(m_path));
        for (int round = 0; round < kSeeks / kSeeksInARow; ++round) {
            std::vector<int> frames;
            for (int i = 0; i < kSeeksInARow; ++i) {
                frames.push_back(randomFrame());
            }
            player.settle(); // the floor has the machine to itself
            for (const int frame : frames) {
                const auto start = Clock::now();
                m_floor.seek(frame);
                floor.add(millisecondsSince(start));
            }
            for (const int frame : frames) {
                ours.add(player.seek(frame));
            }
        }
        row("random exact seek",
            spread(ours) + "; p50 " + ratio(ours.median(), floor.median()) + ", p95 " +
                ratio(ours.p95(), floor.p95()),
            spread(floor), m_hasRatios ? "<= 1.15 x floor" : "");
    }

    void findingThePage() {
        const auto file = openFile(m_path);
        theora::SharedSource source(*file);
        theora::StreamHeaders headers;
        theora::readStreamHeaders(source, headers);
        theora::GranuleFormat format(*headers.theora.info.get());
        const theora::StreamLayout layout = theora::scanStream(source, headers, format);
        const theora::StopCheck never;
        theora::PageSearch search(source, never, layout, format);
        Samples time;
        Samples probes;
        for (int i = 0; i < kSeeks * 4; ++i) {
            const int before = search.probeCount();
            const auto start = Clock::now();
            (void)search.startFor(randomFrame());
            time.add(millisecondsSince(start));
            probes.add(search.probeCount() - before);
        }
        row("finding the page", spread(time) + "; at most " + number(probes.most(), "probes"), "",
            "<= 20 probes, <= 3 ms");
    }

    /// Decoding and converting one frame on one thread: the cost of an unprepared step.
    [[nodiscard]] double oneFrame() {
        Samples decode;
        m_floor.seek(m_floor.frameCount() / 3);
        for (int i = 0; i < kSteps; ++i) {
            const auto start = Clock::now();
            m_floor.next();
            decode.add(millisecondsSince(start));
        }
        return decode.median() + bench::conversionTime(m_frame, theora::ColorPath::fastest);
    }

    void stepUnprepared() {
        PlaybackPlayer player(openFile(m_path), 1); // a queue of one holds only the shown frame
        const int from = m_floor.frameCount() / 3;
        player.seek(from, false);
        Samples steps;
        for (int i = 1; i <= kSteps && from + i < m_floor.frameCount(); ++i) {
            steps.add(player.seek(from + i, false));
        }
        const double floor = oneFrame();
        row("step forward by 1, nothing prepared",
            spread(steps) + "; p50 " + ratio(steps.median(), floor), number(floor, "ms"),
            "<= 1.5 x floor");
    }

    void stepPrepared() {
        PlaybackPlayer player(openFile(m_path));
        const int middle = m_floor.frameCount() / 2;
        Samples forward;
        Samples back;
        for (int round = 0; round < 6; ++round) {
            player.seek(middle + round);
            player.settle(kLongSettling);
            for (const int move : {-1, -1, -1, -10, 1, 1, 10, -1, 1, -1}) {
                m_at += move;
                const double time = player.seek(middle + round + m_at);
                (move > 0 ? forward : back).add(time);
                std::this_thread::sleep_for(std::chrono::milliseconds(30));
            }
            m_at = 0;
        }
        row("step forward inside queue or cache", spread(forward), "", "p95 <= 2 ms at 720p");
        row("step back inside the cache", spread(back), "", "p50 <= 1.5 ms at 720p, 3 ms at 1080p");
    }

    void holdStepBack() {
        PlaybackPlayer player(openFile(m_path));
        const int from = m_floor.frameCount() - 1;
        player.seek(from);
        player.settle(kLongSettling);
        Samples steps;
        for (int i = 1; i <= kHeldSteps && from - i >= 0; ++i) {
            steps.add(player.seek(from - i));
            std::this_thread::sleep_for(kHeldPause);
        }
        row("holding back, 10 frames a second", spread(steps), "", "p95 <= 5 ms");
    }

    void startOfDecoding() {
        std::atomic<std::int64_t> firstRead{0};
        PlaybackPlayer player(std::make_unique<WatchedSource>(m_path, firstRead));
        Samples delay;
        for (int i = 0; i < kSeeks; ++i) {
            player.settle();
            firstRead.store(0);
            const int frame = (i % 2) * m_floor.frameCount() / 2 + i; // never near the last one
            const auto start = Clock::now();
            player.seek(std::min(frame, m_floor.frameCount() - 1));
            if (firstRead.load() != 0) {
                delay.add(static_cast<double>(firstRead.load() - start.time_since_epoch().count()) /
                          1e6);
            }
        }
        row("asked to start of decoding, idle worker", spread(delay), "", "p95 <= 1 ms");
    }

    void destruction() {
        Samples time;
        for (int i = 0; i < 30; ++i) {
            auto player = std::make_unique<PlaybackPlayer>(openFile(m_path));
            player->clip().requestSeek(randomFrame());
            std::this_thread::sleep_for(std::chrono::milliseconds(i));
            const auto start = Clock::now();
            player.reset();
            time.add(millisecondsSince(start));
        }
        row("destruction in the middle of a seek", spread(time), "", "< 300 ms");
    }

    std::string m_path;
    PlaybackFloor m_floor;
    bench::FrameSize m_frame;
    std::mt19937 m_random{12345};
    int m_at = 0;
    bool m_hasRatios = true; ///< ratios to the floor have targets
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: playback_bench FILE...\n");
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        try {
            ClipReport(argv[i]).run();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", argv[i], error.what());
            return 1;
        }
    }
    return 0;
}
