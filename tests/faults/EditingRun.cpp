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
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "core/Services.h"
#include "jobs/VideoImport.h"
#include "scene/SceneManager.h"
#include "tests/faults/DraftRun.h"
#include "tests/faults/KillProcess.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/TempFolder.h"
#include "zone/ZoneManager.h"

namespace {

constexpr int kVariants = 4;

/// Of the smallest variant.
struct Sizes {
    int branches;
    int frames;
};
constexpr Sizes kLarge{300, 3000}; // to be killed while it is written
constexpr Sizes kSmall{2, 100};    // few enough calls to let each one fail

bool saveScene(Sizes sizes, int variant, const std::string& folder) {
    const std::shared_ptr<scene::SceneManager> manager = scene::SceneManager::create();
    manager->newScene("Variant " + std::to_string(variant));
    for (int index = 0; index < sizes.branches * (variant + 1); ++index) {
        manager->AddBranch();
        manager->setBranchFilename(index, "clip " + std::to_string(index * variant) + ".ogv");
        manager->addAction(index, scene::Action::create());
    }
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
    return manager->saveAs(folder + "clip") && manager->lastSaveFailure().empty();
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

/// The files of a scene, with their bytes.
std::vector<std::string> contents(const std::string& scene) {
    std::vector<std::string> all;
    for (const char* name : {"Scene.xml", "clip-ZoneInfo.xml", "clip-ZoneInfo.bin", "clip.ogv"}) {
        all.push_back(support::exists(scene + name) ? support::readBytes(scene + name) : "gone");
    }
    return all;
}

int failEveryCall(const std::string& folder, const std::string& scene) {
    support::FaultyFileSystem files(platform::nativeFileSystem());
    const core::ServicesOverride services(
        {&files, &platform::nativeClock(), &platform::nativeProcess()});
    support::makeFolder(scene);
    if (!saveAll(1, folder, scene, kSmall)) {
        return 1;
    }
    const std::vector<std::string> before = contents(scene);
    files.forgetCalls();
    saveAll(2, folder, scene, kSmall);
    const std::vector<std::string> after = contents(scene);
    const int calls = static_cast<int>(files.calls().size());
    int tried = 0;
    int lost = 0;
    for (const auto fault :
         {&support::FaultyFileSystem::failAt, &support::FaultyFileSystem::shortenAt,
          &support::FaultyFileSystem::stopAt}) {
        for (int call = 1; call <= calls; ++call, ++tried) {
            files.heal();
            saveAll(1, folder, scene, kSmall);
            files.forgetCalls();
            (files.*fault)(call);
            saveAll(2, folder, scene, kSmall);
            const std::vector<std::string> now = contents(scene);
            for (std::size_t i = 0; i < now.size(); ++i) {
                lost += now[i] != before[i] && now[i] != after[i] ? 1 : 0;
            }
        }
    }
    std::printf("calls %d tried %d lost %d\n", calls, tried, lost);
    return lost == 0 ? 0 : 1;
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
    if (command == "calls" && arguments.size() == 3) {
        return failEveryCall(arguments[1], arguments[2]);
    }
    std::fputs("usage: editing_run once|forever|calls ...\n", stderr);
    return 2;
}
