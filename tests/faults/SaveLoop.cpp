// Saves scenes through the model for tests/faults/saves.py, which kills it on the way.
//
//   save_loop once VARIANT DIR   saves the scene of that number once; exit 1 when that fails
//   save_loop forever DIR        saves scene 1, 2, 1, 2 ... until it is killed
#include <cstdio>
#include <string>
#include <vector>

#include "scene/SceneManager.h"

namespace {

constexpr int kBranches = 1500; // large enough to be killed while it is written

/// The second scene is the longer one, and differs from the first in every branch.
bool save(int variant, const std::string& folder) {
    const std::shared_ptr<scene::SceneManager> manager = scene::SceneManager::create();
    manager->newScene("Variant " + std::to_string(variant));
    for (int index = 0; index < kBranches * variant; ++index) {
        manager->AddBranch();
        manager->setBranchFilename(index, "clip " + std::to_string(index * variant) + ".ogv");
        manager->addAction(index, scene::Action::create());
    }
    return manager->saveInto(folder);
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 3 && arguments[0] == "once") {
        return save(arguments[1] == "2" ? 2 : 1, arguments[2]) ? 0 : 1;
    }
    if (arguments.size() != 2 || arguments[0] != "forever") {
        std::fprintf(stderr, "usage: save_loop once VARIANT DIR | forever DIR\n");
        return 2;
    }
    for (int round = 0;; ++round) {
        if (!save(round % 2 + 1, arguments[1])) {
            return 1;
        }
    }
}
