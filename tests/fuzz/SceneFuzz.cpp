// Any bytes as Scene.xml: loading never crashes, and what loads saves to a file that loads again.
// A scene that this program can have written is saved to the same bytes.
#include <cstdint>
#include <cstdlib>

#include "core/Log.h"
#include "core/Services.h"
#include "scene/SceneManager.h"
#include "tests/support/FixedClock.h"
#include "tests/support/MemoryFileSystem.h"

namespace {

constexpr const char* kPath = "/home/Scenes/A/Scene.xml";

/// True when `text` reads back as it is: no mark-up, no line end, not only blanks.
bool isPlain(const std::string& text) {
    return text.find_first_of("<&\r\n\t") == std::string::npos &&
           (text.empty() || text.find_first_not_of(" \v\f") != std::string::npos);
}

bool isPlain(const scene::SceneManager& manager) {
    bool plain = isPlain(manager.Name()) && isPlain(manager.FirstBranch());
    for (int index = 0; index < manager.branchCount(); ++index) {
        plain = plain && isPlain(manager.branchID(index)) && isPlain(manager.branchFilename(index));
        std::vector<std::shared_ptr<scene::Action>> actions;
        manager.branchActions(index, actions);
        for (const auto& action : actions) {
            plain = plain && isPlain(action->Parameter()) && isPlain(action->BranchID());
        }
    }
    return plain;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    support::MemoryFileSystem files;
    support::FixedClock clock;
    const core::ServicesOverride services({&files, &clock, &platform::nativeProcess()});
    core::Log::exchange(std::make_shared<core::Log>(""));
    files.folders.insert({"/home/Scenes", "/home/Scenes/A"});
    files.files[kPath].assign(data, data + size);
    const auto manager = scene::SceneManager::create();
    if (!manager->Load("A")) {
        return 0;
    }
    if (!manager->saveInto("Scenes/A/")) {
        std::abort();
    }
    const std::string written = files.files[kPath];
    if (!isPlain(*manager)) {
        return 0;
    }
    const auto again = scene::SceneManager::create();
    if (!again->Load("A") || !again->saveInto("Scenes/A/") || files.files[kPath] != written) {
        std::abort();
    }
    return 0;
}
