#include "app/services/UserTree.h"

#include <memory>
#include <vector>

#include "app/state/Installation.h"
#include "app/state/ProductTree.h"
#include "core/EditorSettings.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Reason.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "jobs/VideoImport.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"

namespace app {
namespace {

constexpr const char* kSharedFile = "AllUsers.ini";
constexpr const char* kSettings = "Settings/Settings.ini";
constexpr const char* kTemplate = "../../Template";
constexpr int kMaxDepth = 8;

platform::FileSystem& files() {
    return *core::services().fileSystem;
}

std::string in(const std::string& folder, const std::string& name) {
    return core::withSeparator(folder) + name;
}

/// The log while its page has no place yet: what is odd about a file goes to stderr alone.
class PagelessLog {
public:
    PagelessLog() : m_outer(core::Log::exchange(std::make_shared<core::Log>(std::string()))) {}
    ~PagelessLog() { core::Log::exchange(m_outer); }
    PagelessLog(const PagelessLog&) = delete;
    PagelessLog& operator=(const PagelessLog&) = delete;

private:
    std::shared_ptr<core::Log> m_outer;
};

/// Where the tree is to be, and the file that says so.
struct Place {
    std::string folder;
    std::string file;
};

Place placeOf(const std::string& programFolder, const platform::UserFolders& user) {
    const PagelessLog log;
    for (Place place :
         {Place{{}, userPlaceFile(user)}, Place{{}, in(programFolder, kSharedFile)}}) {
        if (!place.file.empty()) {
            place.folder =
                platform::expandVariables(core::EditorSettings(place.file)
                                              .getString(app_state::Installation::kFolderKey, {}));
        }
        if (!place.folder.empty()) {
            return place;
        }
    }
    return {user.documents.empty() ? std::string() : in(user.documents, app_state::kProductTree),
            {}};
}

bool isAbsolute(const std::string& path) {
    return path.starts_with('/') || path.starts_with('\\') ||
           (path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/'));
}

/// Why the tree could not be made.
struct Failure {
    core::Text text{}; ///< empty: the reason says it all
    std::string path{};
    std::string reason{}; ///< in English or the system's words

    [[nodiscard]] bool isNone() const { return text.empty() && reason.empty(); }
    [[nodiscard]] std::string told() const {
        std::string whole = text.empty() ? std::string() : core::trStored(text);
        for (const std::string& line : {path, core::trReason(reason)}) {
            whole += (whole.empty() || line.empty() ? "" : "\n") + line;
        }
        return whole;
    }
};

Failure systemFailure(int error) {
    return {{}, {}, files().errorText(error)};
}

Failure copyFile(const std::string& from, const std::string& to) {
    jobs::ImportProgress progress;
    const jobs::ImportReport report = jobs::importVideo(files(), from, to, progress, [] {});
    return report.result == jobs::ImportResult::copied
               ? Failure()
               : Failure{"This file cannot be copied:"_tr, from, report.reason};
}

/// Copies over what an earlier try has left.
Failure copyTo(const std::string& from, const std::string& to, int depth = 0) {
    core::createFolders(files(), to + "/");
    std::vector<platform::FolderEntry> entries;
    if (depth == kMaxDepth || !files().list(from, entries)) {
        return {"This folder cannot be copied:"_tr, from};
    }
    Failure failure;
    for (const platform::FolderEntry& entry : entries) {
        const std::string source = in(from, entry.name);
        const std::string target = in(to, entry.name);
        failure = entry.isFolder ? copyTo(source, target, depth + 1) : copyFile(source, target);
        if (!failure.isNone()) {
            break;
        }
    }
    return failure;
}

/// Gives the folder its name once it is whole. Nothing to do where there is one, or none to copy.
Failure makeScenes(const std::string& from, const std::string& workingFolder) {
    const std::string scenes = in(workingFolder, scene::kScenesFolder);
    const auto isDone = [&] { return core::isFolder(scenes) || !core::isFolder(from); };
    if (isDone()) {
        return {};
    }
    int error = 0;
    // Of two programs that start at once, one makes the scenes of both.
    const auto lock = files().lockFile(in(workingFolder, "Scenes.lock"), error);
    if (!lock) {
        return error != 0 ? systemFailure(error) : Failure();
    }
    Failure failure;
    if (!isDone()) {
        failure = copyTo(from, scenes + ".part");
        if (failure.isNone() && !files().replaceFile(scenes + ".part", scenes, error) &&
            !core::isFolder(scenes)) {
            failure = systemFailure(error);
        }
    }
    lock->remove();
    return failure;
}

Failure prepare(const std::string& programFolder, const std::string& tree) {
    const std::string workingFolder = in(tree, app_state::kTreeWorkingFolder);
    const std::string settings = in(tree, kSettings);
    const std::string given = in(programFolder, kTemplate);
    core::createFolders(files(), in(workingFolder, {}));
    core::createFolders(files(), settings);
    int error = 0;
    if (!core::isFolder(workingFolder) && !files().createFolder(workingFolder, error)) {
        return systemFailure(error);
    }
    Failure failure = makeScenes(in(in(given, app_state::kTreeWorkingFolder), scene::kScenesFolder),
                                 workingFolder);
    if (failure.isNone() && core::isFile(in(given, kSettings)) && !core::isFile(settings)) {
        failure = copyFile(in(given, kSettings), settings);
    }
    return failure;
}

} // namespace

bool isShared(const std::string& programFolder) {
    return !programFolder.empty() && core::isFile(in(programFolder, kSharedFile));
}

std::string userPlaceFile(const platform::UserFolders& user) {
    return user.settings.empty() ? std::string() : in(user.settings, "Quorvel/Quorvel.ini");
}

UserTree prepareUserTree(const std::string& programFolder, const platform::UserFolders& user) {
    const auto [folder, file] = placeOf(programFolder, user);
    const Failure failure = isAbsolute(folder) ? prepare(programFolder, folder)
                                               : Failure{"It has to be a full path."_tr};
    const std::string workingFolder = in(folder, app_state::kTreeWorkingFolder);
    if (failure.isNone()) {
        return {workingFolder, {}};
    }
    const StartTexts texts{workingFolder, programFolder,
                           in(in(programFolder, kTemplate), kSettings)};
    return {{}, startProblem(texts, [&, folder = folder, file = file] {
                std::string text =
                    core::trStored("The folder \"{0}\" cannot be prepared for your scenes."_tr,
                                   {folder}) +
                    "\n\n" + failure.told();
                if (!file.empty()) {
                    text += "\n\n" + core::trStored("It is named in:"_tr) + "\n" + file;
                }
                return text;
            })};
}

} // namespace app
