#include "recovery/KeptDrafts.h"

#include <algorithm>
#include <set>

#include "core/Log.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "platform/Clock.h"
#include "recovery/Places.h"

namespace recovery {
namespace {

void logIgnored(const std::string& folder, const std::string& problem) {
    static std::set<std::string> logged;
    if (!problem.empty() && logged.insert(folder).second) {
        core::Log::get()->Write(core::Log::Level::warning, "Draft ignored: %s: %s", folder.c_str(),
                                problem.c_str());
    }
}

std::unique_ptr<DraftFolder> openFolder(const std::string& folder) {
    std::string problem;
    auto draft = DraftFolder::open(folder, problem);
    logIgnored(folder, problem);
    return draft;
}

void addDrafts(const std::string& sceneFolder, std::vector<KeptDraft>& found) {
    const std::int64_t now = core::services().clock->now();
    std::vector<std::string> names;
    core::listFolders(sceneFolder, names);
    for (const std::string& name : names) {
        const std::string path = sceneFolder + name + "/";
        const auto draft = openFolder(path);
        if (draft && draft->info().time < now - kDraftSeconds) {
            draft->clear();
        } else if (draft) {
            found.push_back({path, draft->info()});
        }
    }
}

void sortNewestFirst(std::vector<KeptDraft>& drafts) {
    std::stable_sort(drafts.begin(), drafts.end(), [](const KeptDraft& a, const KeptDraft& b) {
        return a.info.time > b.info.time;
    });
}

} // namespace

std::vector<KeptDraft> keptSceneDrafts() {
    const std::string folder = draftsFolder();
    std::vector<std::string> names;
    std::vector<KeptDraft> found;
    if (!folder.empty() && core::listFolders(folder, names)) {
        for (const std::string& name : names) {
            addDrafts(folder + name + "/", found);
        }
    }
    std::erase_if(found, [](const KeptDraft& draft) { return !draft.info.video.empty(); });
    sortNewestFirst(found);
    return found;
}

std::vector<KeptDraft> keptZoneDrafts(const std::string& scene, const std::string& video) {
    const std::string folder = draftsFolder();
    std::vector<KeptDraft> found;
    if (!folder.empty()) {
        addDrafts(folder + encodedName(scene) + "/", found);
    }
    std::erase_if(found, [&](const KeptDraft& draft) { return draft.info.video != video; });
    sortNewestFirst(found);
    return found;
}

std::unique_ptr<DraftFolder> takeDraft(const std::string& folder) {
    return openFolder(folder);
}

} // namespace recovery
