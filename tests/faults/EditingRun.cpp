// A scripted editing run for tests/faults/faults.py, which kills it and takes its disk away:
// scenes, zones and copies of a video are saved in turn, in four variants that differ in size.
//
//   editing_run once FOLDER SCENE V       saves variant V of everything into SCENE once
//   editing_run forever FOLDER SCENE US   saves variants 0, 1, 2, 3, 0 ... and kills itself after
//                                         so many microseconds
//   editing_run calls FOLDER SCENE        lets every single call to the file system fail in turn
//   editing_run drafts US                 edits with drafts, and kills itself likewise
//   editing_run recovered                 prints what that has left
//
// FOLDER holds the videos to copy, video0.ogv to video3.ogv. Each save prints "KIND VARIANT" once
// it is complete, or "refused KIND". Exit 1 when one was.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "jobs/VideoImport.h"
#include "recovery/Backups.h"
#include "recovery/Versions.h"
#include "scene/SceneManager.h"
#include "tests/faults/DraftRun.h"
#include "tests/faults/KillProcess.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"
#include "zone/ZoneManager.h"

namespace {

constexpr int kVariants = 4;
constexpr const char* kScene = "Faults"; // in the names of the earlier versions' folders
constexpr const char* kVideo = "clip";

/// Of the smallest variant.
struct Sizes {
    int branches;
    int frames;
};
constexpr Sizes kLarge{300, 3000}; // to be killed while it is written
constexpr Sizes kSmall{2, 100};    // few enough calls to let each one fail

/// Keeps earlier versions, as the editors do.
std::shared_ptr<recovery::Backups> keeperIn(std::function<std::string()> folder) {
    return std::make_shared<recovery::Backups>(std::move(folder), [] { return true; });
}

bool saveScene(Sizes sizes, int variant, const std::string& folder) {
    const std::shared_ptr<scene::SceneManager> manager = scene::SceneManager::create();
    manager->newScene("Variant " + std::to_string(variant));
    for (int index = 0; index < sizes.branches * (variant + 1); ++index) {
        manager->AddBranch();
        manager->setBranchFilename(index, "clip " + std::to_string(index * variant) + ".ogv");
        manager->addAction(index, scene::Action::create());
    }
    manager->setKeeper(keeperIn([] { return recovery::sceneVersionsFolder(kScene); }));
    return manager->saveInto(folder);
}

bool saveZones(Sizes sizes, int variant, const std::string& folder) {
    const auto manager = zone::ZoneManager::createEmpty();
    manager->videoWidth = 1280;
    manager->videoHeight = 720;
    manager->scale = zone::scaleBetween({1280, 720}, {640, 360});
    zone::EditContext context;
    for (int index = 0; index <= variant; ++index) {
        manager->addZone(zone::Zone::create(sizes.frames));
        manager->setZoneName(index, "Zone " + std::to_string(variant));
        for (int point = 0; point < 4; ++point) {
            manager->addPoint(context, index, 0, 100 * point, 10 * variant);
        }
        for (int frame = 0; frame < sizes.frames; frame += 100) {
            manager->moveSelectedPoint(context, index, frame, frame % 1280, variant);
        }
    }
    manager->setKeeper(keeperIn([] { return recovery::zoneVersionsFolder(kScene, kVideo); }));
    return manager->saveAs(folder + kVideo) && manager->lastSaveFailure().empty();
}

bool copyVideo(int variant, const std::string& from, const std::string& folder) {
    jobs::ImportProgress progress;
    return jobs::importVideo(*core::services().fileSystem,
                             from + "video" + std::to_string(variant) + ".ogv", folder + "clip.ogv",
                             progress, [] {})
               .result == jobs::ImportResult::copied;
}

/// Whether nothing was refused.
bool saveAll(int variant, const std::string& from, const std::string& folder,
             Sizes sizes = kLarge) {
    bool good = true;
    const auto tell = [&](const char* kind, bool saved) {
        good = good && saved;
        saved ? std::printf("%s %d\n", kind, variant) : std::printf("refused %s\n", kind);
        (void)std::fflush(stdout);
    };
    tell("scene", saveScene(sizes, variant, folder));
    tell("zones", saveZones(sizes, variant, folder));
    tell("video", copyVideo(variant, from, folder));
    return good;
}

void dieAfter(const std::string& microseconds) {
    const std::chrono::microseconds time(std::stol(microseconds));
    std::thread([time] {
        std::this_thread::sleep_for(time);
        faults::killThisProcess();
    }).detach();
}

int forever(const std::string& folder, const std::string& scene) {
    for (int variant = 0; saveAll(variant, folder, scene); variant = (variant + 1) % kVariants) {
    }
    std::_Exit(1); // the killer may still sleep
}

using Saver = bool (*)(int variant, const std::string& from, const std::string& folder);

/// One kind of save alone, and the files that it replaces.
struct Kind {
    std::vector<std::string> files;
    Saver save;
};
const Kind kKinds[] = {
    {{"Scene.xml"},
     [](int variant, const std::string& /*from*/, const std::string& folder) {
         return saveScene(kSmall, variant, folder);
     }},
    {{"clip-ZoneInfo.xml", "clip-ZoneInfo.bin"},
     [](int variant, const std::string& /*from*/, const std::string& folder) {
         return saveZones(kSmall, variant, folder);
     }},
    {{"clip.ogv"}, copyVideo},
};

/// The bytes of a kind's files.
std::vector<std::string> contents(const Kind& kind, const std::string& scene) {
    std::vector<std::string> all;
    for (const std::string& name : kind.files) {
        all.push_back(support::exists(scene + name) ? support::readBytes(scene + name) : "gone");
    }
    return all;
}

/// New files, which no earlier version is another name of.
void put(const Kind& kind, const std::string& scene, const std::vector<std::string>& bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::filesystem::remove(scene + kind.files[i]);
        support::writeBytes(scene + kind.files[i], bytes[i]);
    }
}

/// How many files of earlier versions hold anything but `bytes`, the only ones ever replaced.
int damagedVersions(const std::vector<std::string>& bytes) {
    int damaged = 0;
    for (const std::string& folder :
         {recovery::sceneVersionsFolder(kScene), recovery::zoneVersionsFolder(kScene, kVideo)}) {
        for (const auto& version :
             recovery::listVersions(platform::nativeFileSystem(), platform::nativeClock(), folder)
                 .versions) {
            for (const std::string& ending : version.endings) {
                const std::string found = support::readBytes(version.base + ending);
                damaged += std::find(bytes.begin(), bytes.end(), found) == bytes.end() ? 1 : 0;
            }
        }
    }
    return damaged;
}

struct Tally {
    int calls = 0;
    int tried = 0;
    int lost = 0;
};

/// Every `step`th call, and of each way to fail another one.
void failCalls(support::FaultyFileSystem& files, const Kind& kind, const std::string& folder,
               const std::string& scene, int step, Tally& tally) {
    kind.save(1, folder, scene);
    const std::vector<std::string> before = contents(kind, scene);
    files.forgetCalls();
    kind.save(2, folder, scene);
    const std::vector<std::string> after = contents(kind, scene);
    const int calls = static_cast<int>(files.calls().size());
    tally.calls += calls;
    int first = 0;
    for (const auto fault :
         {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
          &support::FaultyFileSystem::stopAt}) {
        for (int call = 1 + first++ % step; call <= calls; call += step, ++tally.tried) {
            std::filesystem::remove_all("Backups");
            put(kind, scene, before);
            files.forgetCalls();
            (files.*fault)(call);
            const bool good = kind.save(2, folder, scene);
            files.heal();
            const std::vector<std::string> now = contents(kind, scene);
            for (std::size_t i = 0; i < now.size(); ++i) {
                const bool isWhole = now[i] == after[i] || (!good && now[i] == before[i]);
                tally.lost += isWhole ? 0 : 1;
            }
            tally.lost += damagedVersions(before);
        }
    }
}

int failEveryCall(const std::string& folder, const std::string& scene, int step) {
    support::FaultyFileSystem files(platform::nativeFileSystem());
    const core::ServicesOverride services(
        {&files, &platform::nativeClock(), &platform::nativeProcess()});
    support::makeFolder(scene);
    Tally tally;
    for (const Kind& kind : kKinds) {
        failCalls(files, kind, folder, scene, step, tally);
    }
    std::printf("calls %d tried %d lost %d\n", tally.calls, tally.tried, tally.lost);
    return tally.lost == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "once" && arguments.size() == 4) {
        return saveAll(std::stoi(arguments[3]), arguments[1], arguments[2]) ? 0 : 1;
    }
    if (command == "forever" && arguments.size() == 4) {
        dieAfter(arguments[3]);
        return forever(arguments[1], arguments[2]);
    }
    if (command == "drafts" && arguments.size() == 2) {
        dieAfter(arguments[1]);
        faults::editWithDrafts();
    }
    if (command == "recovered") {
        faults::printRecovered();
        return 0;
    }
    if (command == "calls" && arguments.size() == 4) {
        return failEveryCall(arguments[1], arguments[2], std::stoi(arguments[3]));
    }
    std::fputs("usage: editing_run once|forever|calls ...\n", stderr);
    return 2;
}
