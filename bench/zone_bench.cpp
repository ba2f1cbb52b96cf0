// Zones of an hour-long video: 10 zones x 108,000 frames x 8 points, a different shape on every
// frame. Each operation is compared with a floor, the minimum that any program must do for it.
// Targets: save and load at most 1.3 x their floor, memory after loading at most 1.5 x the bare
// coordinates, a spread move at most 1 ms, a point added to all frames at most 5 ms, a step with
// its record at most 1 ms beyond its change, undo and redo at most 5 ms, a snapshot with the copy
// that the next change makes at most 5 ms.
//
// The files are in the current folder while it runs. Floors include the module's safety measures:
// the one for saving syncs to disk.
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/BareZones.h"
#include "bench/MarkdownTable.h"
#include "bench/Samples.h"
#include "core/File.h"
#include "core/Services.h"
#include "zone/SessionKeys.h"
#include "zone/ZoneSession.h"

namespace {

using bench::BareModel;
using bench::BareZone;
using bench::buildImage;
using bench::Clock;
using bench::kCoordinateBytes;
using bench::kFrames;
using bench::kHeadBytes;
using bench::kPoints;
using bench::kScale;
using bench::kShapeBytes;
using bench::kZoneBytes;
using bench::kZones;
using bench::makeBareModel;
using bench::millisecondsSince;
using bench::Samples;
using bench::scaled;

constexpr int kStepRounds = 40;
constexpr const char* kBase = "zone_bench";
constexpr const char* kBinary = "zone_bench-ZoneInfo.bin";
constexpr const char* kFloorFile = "zone_bench-floor.bin";

BareModel parseImage(const std::uint8_t* from) {
    BareModel model(kZones);
    for (BareZone& zone : model) {
        from += kHeadBytes;
        std::int32_t* to = zone.coordinates.get();
        for (std::size_t frame = 0; frame < kFrames; ++frame) {
            std::uint32_t shape[2];
            std::int32_t points[2 * kPoints];
            std::memcpy(shape, from, 8);
            std::memcpy(points, from + 8, sizeof points);
            zone.active[frame] = shape[1] == 1;
            for (std::size_t i = 0; i < (shape[0] - 8) / 4; ++i) {
                to[i] = scaled(points[i], kScale);
            }
            from += kShapeBytes;
            to += 2 * kPoints;
        }
    }
    return model;
}

bool writeFile(const char* path, const std::uint8_t* bytes, bool sync) {
    core::File file;
    return file.open(path, "wb") && file.write(bytes, kZones * kZoneBytes) &&
           (!sync || file.sync()) && file.close();
}

std::unique_ptr<std::uint8_t[]> readFile(const char* path) {
    core::File file;
    std::unique_ptr<std::uint8_t[]> bytes;
    if (!file.open(path, "rb") || !file.readAlloc(bytes, kZones * kZoneBytes)) {
        return nullptr;
    }
    return bytes;
}

double residentBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

/// The zones that were loaded last stay in memory, as those of an open editor do: without them the
/// allocator would return what each round frees to the system, and the next would pay for it.
std::shared_ptr<zone::ZoneManager>& lastLoaded() {
    static std::shared_ptr<zone::ZoneManager> manager;
    return manager;
}

/// The zones for all benchmarks of the module, loaded from a file written by the floor.
std::shared_ptr<zone::ZoneManager> loadManager() {
    lastLoaded() = zone::ZoneManager::create(kBase, kFrames, true,
                                             zone::scaleBetween({1280, 720}, {1920, 1080}));
    return lastLoaded();
}

void saveFloor(benchmark::State& state, bool sync) {
    const BareModel model = makeBareModel();
    for (auto _ : state) {
        const auto image = buildImage(model);
        if (!writeFile(kFloorFile, image.get(), sync)) {
            state.SkipWithError("cannot write");
        }
    }
}

void save(benchmark::State& state) {
    const auto manager = loadManager();
    for (auto _ : state) {
        if (!manager || !manager->saveAs(kBase) || !manager->lastSaveFailure().empty()) {
            state.SkipWithError("cannot save");
        }
    }
}

void loadFloor(benchmark::State& state) {
    for (auto _ : state) {
        const auto image = readFile(kBinary);
        if (!image) {
            state.SkipWithError("cannot read");
        } else {
            benchmark::DoNotOptimize(parseImage(image.get()));
        }
    }
}

void load(benchmark::State& state) {
    for (auto _ : state) {
        lastLoaded().reset();
        if (!loadManager()) {
            state.SkipWithError("cannot load");
        }
    }
}

void memoryAfterLoad(benchmark::State& state) {
    lastLoaded().reset();
    const double before = residentBytes();
    for (auto _ : state) {
        loadManager();
    }
    const double used = residentBytes() - before;
    state.counters["resident_MB"] = used / 1e6;
    state.counters["bare_MB"] = static_cast<double>(kCoordinateBytes) / 1e6;
    state.counters["ratio"] = used / static_cast<double>(kCoordinateBytes);
}

void moveOnePoint(benchmark::State& state) {
    const auto manager = loadManager();
    zone::EditContext context;
    context.zone(0).selectedPoint = 2;
    int x = 0;
    for (auto _ : state) {
        manager->moveSelectedPoint(context, 0, 0, x = (x + 7) % 1280, 40);
    }
}

void moveWholeShape(benchmark::State& state) {
    const auto manager = loadManager();
    zone::EditContext context;
    context.zone(0).selectedPoint = kPoints;
    int x = 0;
    for (auto _ : state) {
        manager->moveSelectedPoint(context, 0, 0, x = 1 - x, 1);
    }
}

void addPoint(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const auto manager = loadManager();
        zone::EditContext context;
        context.zone(0).selectedPoint = 3;
        state.ResumeTiming();
        manager->addPoint(context, 0, 5, 300, 200);
    }
}

void deletePoint(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const auto manager = loadManager();
        zone::EditContext context;
        manager->addPoint(context, 0, 0, 1200, 700); // where no frame has a point
        state.ResumeTiming();
        manager->deletePoint(context, 0, 0, 1200, 700);
    }
}

/// An earlier version of the zones.
const std::shared_ptr<zone::ZoneManager>& version() {
    static const auto zones = [] {
        auto loaded = zone::ZoneManager::create(kBase, kFrames, true,
                                                zone::scaleBetween({1280, 720}, {1920, 1080}));
        zone::EditContext context;
        loaded->setActive(context, static_cast<int>(kZones) - 1, kFrames - 1, false);
        return loaded;
    }();
    return zones;
}

void addAt1200(zone::ZoneManager& zones, zone::EditContext& context) {
    zones.addPoint(context, 0, 5, 1200, 700);
}

void deleteAt1200(zone::ZoneManager& zones, zone::EditContext& context) {
    zones.deletePoint(context, 0, 5, 1200, 700);
}

/// The kinds of steps on a whole zone: a step of the session, and for the largest ones the same
/// change of the zones without a record, with what prepares it.
struct Step {
    using Change = void (*)(zone::ZoneManager& zones, zone::EditContext& context);

    const char* what;
    void (*run)(zone::ZoneSession& session);
    Change change = nullptr;
    Change before = [](zone::ZoneManager&, zone::EditContext&) {};
};
constexpr Step kSteps[] = {
    {"move a point",
     [](zone::ZoneSession& session) {
         const platform::Point at = session.zones().zone(0)->shape(0)->points[2];
         (void)session.hitTest(0, 0, at.x, at.y);
         session.moveSelectedPoint(0, 0, at.x + 1, 40);
     },
     [](zone::ZoneManager& zones, zone::EditContext& context) {
         context.zone(0).selectedPoint = 2;
         zones.moveSelectedPoint(context, 0, 0, zones.zone(0)->shape(0)->points[2].x + 1, 40);
     }},
    {"move a shape",
     [](zone::ZoneSession& session) {
         session.showFrame(0);
         const platform::Point center = session.context().zones.at(0).centerOf(0);
         (void)session.hitTest(0, 0, center.x, center.y);
         session.moveSelectedPoint(0, 0, center.x + 1, center.y);
     }},
    {"add a point", [](zone::ZoneSession& session) { session.addPoint(0, 5, 1200, 700); },
     addAt1200, deleteAt1200},
    {"delete a point", [](zone::ZoneSession& session) { session.deletePoint(0, 5, 1200, 700); },
     deleteAt1200, addAt1200},
    {"active", [](zone::ZoneSession& session) { session.setActive(0, 0, false); }},
    {"return to another version", [](zone::ZoneSession& session) { session.restore(*version()); }},
};

template <typename Action>
void time(Samples& samples, const Action& action) {
    const auto began = Clock::now();
    action();
    samples.add(millisecondsSince(began));
}

/// The change alone, on zones that nobody shares.
std::string changeAlone(const Step& step) {
    if (!step.change) {
        return {};
    }
    const auto zones = loadManager();
    zone::EditContext context;
    zones->addPoint(context, 0, 0, 1200, 700);
    Samples alone;
    for (int round = 0; round < kStepRounds; ++round) {
        step.before(*zones, context);
        time(alone, [&] { step.change(*zones, context); });
    }
    return timesText(alone) + " without a record";
}

/// A row each for doing and recording a step, undoing it, and redoing it.
void measureStep(const Step& step) {
    const std::string alone = changeAlone(step);
    zone::ZoneSession session(loadManager());
    session.addPoint(0, 0, 1200, 700); // for the one that is deleted
    Samples record;
    Samples undo;
    Samples redo;
    for (int round = 0; round < kStepRounds; ++round) {
        time(record, [&] { step.run(session); });
        time(undo, [&] { session.undo(); });
        time(redo, [&] { session.redo(); });
        session.undo();
    }
    bench::tableRow(step.what, timesText(record), alone, "record: p95 <= 1 ms");
    bench::tableRow(std::string(step.what) + ", undo", timesText(undo), "", "<= 5 ms");
    bench::tableRow(std::string(step.what) + ", redo", timesText(redo), "", "<= 5 ms");
}

void modifiedOrNot(benchmark::State& state) {
    zone::ZoneSession session(loadManager());
    kSteps[0].run(session);
    for (auto _ : state) {
        benchmark::DoNotOptimize(session.isModified());
    }
}

/// What a draft costs the editor: taking the snapshot, or also the first change of a zone after it.
void snapshot(benchmark::State& state, bool withChange) {
    zone::ZoneSession session(loadManager());
    session.setActive(0, 0, false);
    bool active = false;
    for (auto _ : state) {
        benchmark::DoNotOptimize(session.snapshot());
        if (withChange) {
            session.setActive(0, 0, active = !active);
        }
    }
}

/// All keys of one zone, or those around one frame after its flag was switched.
void keys(benchmark::State& state, bool afterEdit) {
    zone::ZoneSession session(loadManager());
    session.setProgressChanges(false);
    zone::SessionKeys found(session);
    bool active = true;
    for (auto _ : state) {
        if (afterEdit) {
            session.setActive(0, static_cast<int>(kFrames) / 2, active = !active);
        } else {
            (void)found.of(-1);
        }
        benchmark::DoNotOptimize(found.of(0).frames().size());
    }
}

void spreadFloor(benchmark::State& state) {
    BareModel model = makeBareModel();
    std::int32_t x = 0;
    for (auto _ : state) {
        std::int32_t* at = model[0].coordinates.get() + 4;
        x = (x + 7) % 1280;
        for (std::size_t frame = 0; frame < kFrames; ++frame, at += 2 * kPoints) {
            at[0] = x;
            at[1] = 40;
        }
        benchmark::ClobberMemory();
    }
}

void addFloor(benchmark::State& state) {
    const BareModel model = makeBareModel();
    for (auto _ : state) {
        auto grown = std::make_unique_for_overwrite<std::int32_t[]>(2 * (kPoints + 1) * kFrames);
        const std::int32_t* from = model[0].coordinates.get();
        std::int32_t* to = grown.get();
        for (std::size_t frame = 0; frame < kFrames; ++frame) {
            std::memcpy(to, from, 32);
            to[8] = 300;
            to[9] = 200;
            std::memcpy(to + 10, from + 8, 32);
            from += 2 * kPoints;
            to += 2 * (kPoints + 1);
        }
        benchmark::DoNotOptimize(grown.get());
    }
}

void registerAll() {
    constexpr int kRounds = 9;
    const auto add = [](const char* name, auto function, int iterations) {
        benchmark::RegisterBenchmark(name, function)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(iterations)
            ->Repetitions(kRounds)
            ->ReportAggregatesOnly();
    };
    add(
        "all keys", [](benchmark::State& state) { keys(state, false); }, 3);
    add(
        "keys after an edit", [](benchmark::State& state) { keys(state, true); }, 3);
    benchmark::RegisterBenchmark("memory after load", memoryAfterLoad)->Iterations(1);
    add("load, floor", loadFloor, 1);
    add("load", load, 1);
    add(
        "save, floor", [](benchmark::State& state) { saveFloor(state, true); }, 1);
    add("save", save, 1);
    add(
        "save, floor without reaching the disk",
        [](benchmark::State& state) { saveFloor(state, false); }, 1);
    add("spread a moved point, floor", spreadFloor, 20);
    add("spread a moved point", moveOnePoint, 20);
    add("spread a moved shape", moveWholeShape, 20);
    add("add a point to all frames, floor", addFloor, 1);
    add("add a point to all frames", addPoint, 1);
    add("delete a point from all frames", deletePoint, 1);
    add(
        "snapshot", [](benchmark::State& state) { snapshot(state, false); }, 10);
    add(
        "snapshot and the next change", [](benchmark::State& state) { snapshot(state, true); }, 10);
    add("modified or not, after a step", modifiedOrNot, 10);
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    {
        const auto image = buildImage(makeBareModel());
        if (!writeFile(kBinary, image.get(), false)) {
            return 1;
        }
    }
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    bench::tableHead("Steps of the zone editor, 108,000 frames x 8 points");
    for (const Step& step : kSteps) {
        measureStep(step);
    }
    lastLoaded().reset();
    int error = 0;
    for (const char* path : {kBinary, kFloorFile, "zone_bench-ZoneInfo.xml"}) {
        core::services().fileSystem->removeFile(path, error);
    }
    return 0;
}
