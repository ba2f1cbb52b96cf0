// Any bytes as Scene.xml: loading never crashes, and what loads saves to a file that loads again.
// A scene that this program can have written is saved to the same bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "scene/SceneManager.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;

constexpr const char* kPath = "/home/Scenes/A/Scene.xml";

/// True when `text` reads back as it is: no mark-up, no line end, not only blanks.
bool isPlain(const std::string& text) {
    return text.find_first_of("<&\r\n\t") == std::string::npos &&
           (text.empty() || text.find_first_not_of(" \v\f") != std::string::npos);
}

bool isPlain(const scene::SceneManager& manager) {
    std::vector<std::string> texts{manager.Name(), manager.FirstBranch()};
    for (int index = 0; index < manager.branchCount(); ++index) {
        texts.insert(texts.end(), {manager.branchID(index), manager.branchFilename(index)});
        const auto branch = manager.branches()->branch(index);
        for (int number = 0; number < branch->actionCount(); ++number) {
            const auto action = branch->action(number);
            texts.insert(texts.end(), {action->Parameter(), action->BranchID()});
        }
    }
    return std::all_of(texts.begin(), texts.end(),
                       [](const std::string& text) { return isPlain(text); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    services.files.folders.insert({"/home/Scenes", "/home/Scenes/A"});
    std::string& file = services.files.files[kPath];
    file.assign(data, data + size);
    const auto manager = scene::SceneManager::create();
    if (!manager->Load("A")) {
        return 0;
    }
    require(manager->saveInto("Scenes/A/"));
    const std::string written = file;
    if (isPlain(*manager)) {
        const auto again = scene::SceneManager::create();
        require(again->Load("A") && again->saveInto("Scenes/A/") && file == written);
    }
    return 0;
}
