#include <memory>
#include <ostream>
#include <string>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/FileSystem.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/Json.h"

namespace inspect {
namespace {

void printAction(Json& json, const scene::Action& action) {
    json.beginObject();
    json.key("type").value(scene::Action::typeName(action.Type()));
    json.key("parameter").value(action.Parameter());
    json.key("immediate").value(action.Immediate());
    json.key("branchID").value(action.BranchID());
    json.endObject();
}

void printBranch(Json& json, const scene::SceneManager& manager, int index) {
    json.beginObject();
    json.key("id").value(manager.branchID(index));
    json.key("filename").value(manager.branchFilename(index));
    json.key("actions").beginArray();
    const std::shared_ptr<const scene::Branch> branch = manager.branches()->branch(index);
    for (int action = 0; action < branch->actionCount(); ++action) {
        printAction(json, *branch->action(action));
    }
    json.endArray();
    json.endObject();
}

void printScene(Json& json, const scene::SceneManager& manager) {
    json.beginObject();
    json.key("name").value(manager.Name());
    json.key("firstBranch").value(manager.FirstBranch());
    json.key("branches").beginArray();
    for (int index = 0; index < manager.branchCount(); ++index) {
        printBranch(json, manager, index);
    }
    json.endArray();
    json.endObject();
}

/// A scene without a name in its file is named after its folder.
std::string folderName(const std::string& folder) {
    return core::fileName(folder.substr(0, folder.find_last_not_of("/\\") + 1));
}

} // namespace

std::shared_ptr<scene::SceneManager> readScene(const std::string& folder) {
    const std::shared_ptr<scene::SceneManager> manager = scene::SceneManager::create();
    if (manager) {
        manager->SetName(folderName(folder));
    }
    return manager && manager->loadFolder(core::withSeparator(folder)) ? manager : nullptr;
}

namespace {

bool rewrite(scene::SceneManager& manager, const std::string& folder) {
    int error = 0; // may exist already; other failures show when the file is opened
    core::services().fileSystem->createFolder(folder, error);
    return manager.saveInto(core::withSeparator(folder));
}

} // namespace

int runScene(const Arguments& given, std::ostream& out) {
    Arguments arguments = given;
    std::string rewriteFolder;
    if (!takeOption(arguments, "--rewrite", rewriteFolder) || arguments.size() != 1 ||
        arguments.front().empty()) {
        return badUsage("scene", "one folder is needed");
    }
    const std::shared_ptr<scene::SceneManager> manager = readScene(arguments.front());
    if (!manager) {
        return kUnreadable;
    }
    Json json(out);
    printScene(json, *manager);
    out << '\n';
    return rewriteFolder.empty() || rewrite(*manager, rewriteFolder) ? kSuccess : kUnreadable;
}

} // namespace inspect
