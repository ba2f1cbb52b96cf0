// Any names as those of earlier versions, one a line up to the first zero byte, then any bytes as
// the content of one. Nothing is removed that is no version, nor the newest one, and whatever a
// version holds can be compared with what is edited.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "check/Differences.h"
#include "core/Paths.h"
#include "recovery/Places.h"
#include "recovery/Versions.h"
#include "scene/SceneManager.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;

void lay(support::MemoryFileSystem& files, const std::string& names, const std::string& folder) {
    for (std::size_t at = 0; at < names.size();) {
        const std::size_t end = std::min(names.find('\n', at), names.size());
        const std::string path = files.fullPath(folder + names.substr(at, end - at));
        if (path.starts_with(folder)) {
            files.files[path] = names.substr(at, end - at);
        }
        at = end + 1;
    }
}

void tidy(fuzz::Services& services, const std::string& folder) {
    const recovery::VersionList before =
        recovery::listVersions(services.files, services.clock, folder);
    for (const recovery::Version& version : before.versions) {
        for (const std::string& ending : version.endings) {
            require(services.files.files.contains(version.base + ending));
        }
        require(std::is_sorted(version.endings.begin(), version.endings.end()));
    }
    (void)recovery::tidy(services.files, services.clock, recovery::backupsFolder(), folder, 0);
    const recovery::VersionList now =
        recovery::listVersions(services.files, services.clock, folder);
    require(now.odd == before.odd);
    const auto newest =
        std::find_if(before.versions.begin(), before.versions.end(),
                     [](const recovery::Version& version) { return !version.isDamaged; });
    require(newest == before.versions.end() ||
            services.files.files.contains(newest->base + newest->endings.front()));
}

void compare(const std::string& content) {
    const auto version = scene::SceneManager::create();
    const auto now = scene::SceneManager::create();
    if (!version->loadText(content) || !now->newScene("A")) {
        return;
    }
    const check::SceneDifferences differences = check::differencesOf(*version, *now);
    require(!check::summaryOf(differences).empty());
    (void)check::linesOf(differences);
    (void)check::contentsOf(*version, {"Default", "Keypress"});
    require(check::differencesOf(*version, *version) == check::SceneDifferences());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    const std::string input(data, data + size);
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string folder = recovery::backupsFolder() + "a/";
    core::createFolders(services.files, folder);
    lay(services.files, input.substr(0, end), folder);
    tidy(services, folder);
    compare(input.substr(std::min(end + 1, input.size())));
    return 0;
}
