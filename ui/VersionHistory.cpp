#include "ui/VersionHistory.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "core/Texts.h"
#include "core/WholeFile.h"
#include "recovery/Backups.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"

namespace ui {
namespace {

constexpr std::size_t kMaxSceneBytes = std::size_t{32} * 1024 * 1024;

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
    return {name, core::tr("Actions"_tr),
            "VersionsOfScene|Each Save of \"{0}\" kept the version before it. What differs is told "
            "against the scene as it is now."_tr,
            recovery::sceneVersionsFolder(name),
            [now, conditions = std::move(conditions), &session](const recovery::Version& version) {
                return now ? readScene(version, *now, conditions, session) : VersionDetails{};
            }};
}

} // namespace ui
