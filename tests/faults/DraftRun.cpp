#include "tests/faults/DraftRun.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "recovery/Backups.h"
#include "recovery/DraftFolder.h"
#include "recovery/DraftInfo.h"
#include "recovery/Drafts.h"
#include "recovery/KeptDrafts.h"
#include "recovery/Places.h"
#include "recovery/SceneDraft.h"
#include "recovery/Versions.h"
#include "recovery/ZoneDraft.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/support/TaskLoop.h"
#include "tests/support/TempFolder.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace faults {
namespace {

constexpr const char* kScene = "Drafts & Kills";
constexpr const char* kVideo = "clip.ogv";
constexpr int kFrames = 500;
constexpr int kEditsASave = 120;
constexpr int kSpeed = 20;

class FastClock final : public platform::Clock {
public:
    std::int64_t now() override { return m_real.now(); }
    platform::LocalTime localTime(std::int64_t time) override { return m_real.localTime(time); }
    std::int64_t ticks() override { return m_real.ticks() * kSpeed; }
    std::string localTimeText() override { return m_real.localTimeText(); }

private:
    platform::Clock& m_real = platform::nativeClock();
};

/// 0 for a name that is none.
int numberIn(const std::string& name) {
    return std::atoi(name.c_str());
}

std::shared_ptr<recovery::Backups> keeperIn(const std::string& folder) {
    return std::make_shared<recovery::Backups>([folder] { return folder; }, [] { return true; });
}

std::string sceneVersions() {
    return recovery::sceneVersionsFolder(kScene);
}
std::string zoneVersions() {
    return recovery::zoneVersionsFolder(kScene, "clip");
}

std::shared_ptr<zone::ZoneManager> loadZones(const std::string& base) {
    return zone::ZoneManager::createForEditing(base, kFrames,
                                               zone::scaleBetween({1280, 720}, {640, 360}));
}

/// Both documents with their drafts.
struct Editors {
    Editors() {
        manager->setKeeper(keeperIn(sceneVersions()));
        if (!sceneDraft.load(kScene)) {
            session.newScene(kScene);
        }
        video = scene::sceneFolderPath(kScene) + kVideo;
        const auto loaded = loadZones(scene::sceneFolderPath(kScene) + "clip");
        loaded->setKeeper(keeperIn(zoneVersions()));
        zones.emplace(loaded);
        zoneDraft.emplace(*zones, drafts, kScene, video);
    }
    [[nodiscard]] int sceneNumber() const {
        return session.branchCount() > 0 ? numberIn(session.branchName(0)) : 0;
    }
    [[nodiscard]] int zonesNumber() const {
        return zones->zones().zoneCount() > 0 ? numberIn(zones->zones().getZoneName(0)) : 0;
    }
    /// Brings back what was kept, unless what is saved is newer.
    void restore() {
        for (const recovery::KeptDraft& draft : recovery::keptSceneDrafts()) {
            const int saved = sceneNumber();
            if (sceneDraft.restore(draft.folder) && sceneNumber() < saved) {
                session.undo();
            } else {
                break;
            }
        }
        const int saved = zonesNumber();
        if (zoneDraft->offered() != nullptr && zoneDraft->restore() && zonesNumber() < saved) {
            zones->undo();
        }
    }
    void edit(int number) {
        const std::string name = std::to_string(number);
        if (session.branchCount() == 0) {
            session.addBranch();
        }
        session.renameBranch(0, name);
        session.addAction(0);
        if (zones->zones().zoneCount() == 0) {
            zones->addZone("", kFrames);
        }
        zones->renameZone(0, name);
        zones->addPoint(0, number % kFrames, number % 1280, number % 720);
    }

    support::TaskLoop loop;
    recovery::Drafts drafts{loop, [] { return true; }};
    std::shared_ptr<scene::SceneManager> manager = scene::SceneManager::create();
    scene::SceneSession session{manager};
    recovery::SceneDraft sceneDraft{session, drafts};
    std::string video;
    std::optional<zone::ZoneSession> zones;
    std::optional<recovery::ZoneDraft> zoneDraft;
};

void tell(const char* kind, int number) {
    std::printf("%s %d\n", kind, number);
    (void)std::fflush(stdout);
}

/// Looks at the disk for drafts that are newer than those seen before.
class Observer {
public:
    void edited(int number, std::int64_t time) {
        m_times.resize(static_cast<std::size_t>(number) + 1, time);
    }
    void look(const std::string& sceneFolder, std::int64_t time) {
        std::vector<std::string> folders;
        core::listFolders(sceneFolder, folders);
        for (const std::string& name : folders) {
            try {
                lookInto(sceneFolder + name + "/", time);
            } catch (const std::exception&) {
                continue; // the other thread is replacing it
            }
        }
    }

private:
    void lookInto(const std::string& folder, std::int64_t time) {
        const auto info = recovery::draftInfo(support::readBytes(folder + "Draft.txt"));
        if (!info) {
            return;
        }
        const bool isScene = info->video.empty();
        const std::string content = support::readBytes(folder + draftFileNames(*info).back());
        constexpr std::size_t kNameInRecord = 8;
        const std::size_t at = isScene ? content.find("<ID>") + 4 : kNameInRecord;
        const int number = at < content.size() ? std::atoi(content.c_str() + at) : 0;
        int& seen = isScene ? m_scene : m_zones;
        if (number <= seen) {
            return;
        }
        tell(isScene ? "scene" : "zones", number);
        const auto first = static_cast<std::size_t>(seen) + 1;
        if (first < m_times.size() && m_times[first] > 0) {
            tell("age", static_cast<int>(time - m_times[first]));
        }
        seen = number;
    }

    std::vector<std::int64_t> m_times; ///< by edit; 0: made by an earlier run
    int m_scene = 0;
    int m_zones = 0;
};

} // namespace

void editWithDrafts() {
    static FastClock clock;
    const core::ServicesOverride services(
        {core::services().fileSystem, &clock, core::services().process});
    Editors editors;
    editors.restore();
    Observer observer;
    int number = std::max(editors.sceneNumber(), editors.zonesNumber());
    observer.edited(number, 0);
    const std::string sceneDrafts = recovery::draftsFolder() + recovery::encodedName(kScene) + "/";
    for (int edits = 1;; ++edits) {
        editors.edit(++number);
        observer.edited(number, clock.ticks());
        if (edits % kEditsASave == 0) {
            if (editors.session.save(scene::sceneFolderPath(kScene))) {
                tell("scene", number);
            }
            if (editors.zones->save(editors.video) &&
                editors.zones->zones().lastSaveFailure().empty()) {
                tell("zones", number);
            }
        }
        editors.loop.processEvents(false);
        observer.look(sceneDrafts, clock.ticks());
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void printRecovered() {
    int versions = 0;
    int damaged = 0;
    platform::FileSystem& disk = platform::nativeFileSystem();
    platform::Clock& clock = platform::nativeClock();
    for (const recovery::Version& version :
         recovery::listVersions(disk, clock, sceneVersions()).versions) {
        const auto scene = scene::SceneManager::create();
        const std::string file = version.base + std::string(recovery::kSceneVersionEnding);
        damaged += scene->loadText(support::readBytes(file)) ? 0 : 1;
        ++versions;
    }
    for (const recovery::Version& version :
         recovery::listVersions(disk, clock, zoneVersions()).versions) {
        // One that was being kept when the run ended may lack a file.
        const bool isWhole =
            version.endings.size() < 2 ||
            loadZones(version.base)->loadReport().problem == zone::LoadProblem::none;
        damaged += isWhole ? 0 : 1;
        ++versions;
    }
    tell("versions", versions);
    tell("damaged", damaged);
    Editors editors;
    editors.restore();
    tell("scene", editors.sceneNumber());
    tell("zones", editors.zonesNumber());
}

} // namespace faults
