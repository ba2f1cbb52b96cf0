#include "ui/VersionHistory.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "check/Finding.h"
#include "check/SceneCheck.h"
#include "core/Texts.h"
#include "core/WholeFile.h"
#include "map/MapScene.h"
#include "recovery/Backups.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "ui/map/MapLayouts.h"

namespace ui {
namespace {

constexpr std::size_t kMaxSceneBytes = std::size_t{32} * 1024 * 1024;

/// More branches and actions make a picture that shows nothing, and a damaged file may hold any
/// number of them.
constexpr std::size_t kMostInMap = 20'000;

VersionMap mapOf(const scene::SceneManager& scene, const std::function<bool()>& isCancelled) {
    const auto content = std::make_shared<const map::MapScene>(map::readMap(scene));
    std::size_t size = content->branches.size();
    for (const map::MapBranch& branch : content->branches) {
        size += branch.actions.size();
    }
    if (size > kMostInMap) {
        return {};
    }
    VersionMap result{content, std::make_shared<MapLayouts>(layOutAll(*content, isCancelled)),
                      std::vector<int>(content->branches.size())};
    check::SceneCheck check; // of the scene alone: its files are those of today
    check.checkAll(scene);
    for (const check::Finding* finding : check.findings()) {
        if (finding->branch >= 0 && finding->severity == check::Severity::error) {
            ++result.errors[static_cast<std::size_t>(finding->branch)];
        }
    }
    return result;
}

VersionDetails readScene(const recovery::Version& version, const scene::SceneManager& now,
                         const std::vector<std::string>& conditions, scene::SceneSession& session) {
    VersionDetails details;
    const auto text = core::readWholeFile(version.base + std::string(recovery::kSceneVersionEnding),
                                          kMaxSceneBytes);
    const std::shared_ptr<scene::SceneManager> scene = scene::SceneManager::create();
    if (!text || !scene || !scene->loadText(*text)) {
        return details;
    }
    const check::SceneDifferences differences = check::differencesOf(*scene, now);
    details.isReadable = true;
    details.summary = check::summaryOf(differences);
    details.differences = check::linesOf(differences);
    details.contents = check::contentsOf(*scene, conditions);
    details.drawMap = [scene](const auto& isCancelled) { return mapOf(*scene, isCancelled); };
    details.restore = [text = *text, &session] { return session.restore(text); };
    return details;
}

} // namespace

VersionHistory sceneHistory(scene::SceneSession& session, std::vector<std::string> conditions) {
    const std::string& name = session.scene().Name();
    // The thread reads a scene of its own, not the one that is edited.
    const std::shared_ptr<scene::SceneManager> now = scene::SceneManager::create();
    if (now && !now->loadText(session.draftForm())) {
        (void)now->newScene(name); // there are no branches yet
    }
    return {name,
            core::tr("Actions"_tr),
            "VersionsOfScene|Each Save of \"{0}\" kept the version before it. What differs is told "
            "against the scene as it is now."_tr,
            recovery::sceneVersionsFolder(name),
            [now, conditions = std::move(conditions), &session](const recovery::Version& version) {
                return now ? readScene(version, *now, conditions, session) : VersionDetails{};
            },
            true,
            scene::sceneFolderPath(name)};
}

} // namespace ui
