// Any bytes as a draft that an earlier run has left: what it says about itself up to the first zero
// byte, then its content. Looking for drafts never crashes, and what is taken for one is restored
// as a step that can be undone, and kept again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "core/File.h"
#include "core/Paths.h"
#include "recovery/DraftFolder.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "recovery/Places.h"
#include "scene/SceneSession.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using fuzz::require;
using recovery::DraftInfo;

constexpr const char* kNoZones = "<ZoneInfo>\n</ZoneInfo>\n";
constexpr int kFrames = 20;
const auto kScale = zone::scaleBetween({1280, 720}, {640, 360});

template <class Session>
void undoAndRedo(Session& session) {
    const bool isModified = session.isModified();
    while (session.undo()) {
    }
    require(!session.isModified());
    while (session.redo()) {
    }
    require(session.isModified() == isModified);
}

void restoreScene(const std::string& content) {
    const auto scene = scene::SceneManager::create();
    scene::SceneSession session(scene);
    require(session.newScene("A"));
    if (session.restore(content)) {
        const std::string form = session.draftForm();
        undoAndRedo(session);
        require(session.draftForm() == form);
        require(session.restore(form) && session.draftForm() == form);
    }
}

void restoreZones(const std::string& base) {
    const auto kept = zone::ZoneManager::createForEditing(base, kFrames, kScale);
    const auto zones = zone::ZoneManager::create("clip", kFrames, true, kScale);
    if (kept && zones) {
        zone::ZoneSession session(zones);
        require(session.restore(*kept));
        undoAndRedo(session);
    }
}

/// A whole draft with this content, whatever else it says.
void lay(support::MemoryFileSystem& files, DraftInfo& info, const std::string& content) {
    info.number = std::max(info.number, 1U);
    info.sizes.clear();
    const std::string folder = recovery::draftsFolder() + recovery::encodedName(info.scene) + "/7/";
    core::createFolders(files, folder);
    for (const std::string& name : recovery::draftFileNames(info)) {
        const bool isList = name.ends_with(recovery::kDraftZoneList);
        std::string& file = files.files[files.fullPath(folder + name)];
        file = isList ? kNoZones : content;
        info.sizes.push_back(file.size());
    }
    files.files[files.fullPath(folder + "Draft.txt")] = recovery::toText(info);
}

void restore(const DraftInfo& info, const std::string& content) {
    const auto kept = info.video.empty() ? recovery::keptSceneDrafts()
                                         : recovery::keptZoneDrafts(info.scene, info.video);
    for (const recovery::KeptDraft& draft : kept) {
        const auto folder = recovery::takeDraft(draft.folder);
        require(folder != nullptr && folder->info() == draft.info);
        if (info.video.empty()) {
            restoreScene(content);
            require(folder
                        ->write(draft.info, {{recovery::kDraftScene,
                                              [&content](core::File& file) {
                                                  return file.writeString(content);
                                              }}})
                        .empty());
            require(folder->info().scene == info.scene);
        } else {
            restoreZones(draft.folder + recovery::draftFilePrefix(draft.info.number) +
                         recovery::kDraftZones);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    const std::string input(data, data + size);
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string content = input.substr(std::min(end + 1, input.size()));
    auto& files = services.files;
    core::createFolders(files, "/home/Drafts/a/1/");
    files.files["/home/Drafts/a/1/Draft.txt"] = input.substr(0, end);
    (void)recovery::keptSceneDrafts();

    std::optional<DraftInfo> info = recovery::draftInfo(input.substr(0, end));
    if (info) {
        require(recovery::draftInfo(recovery::toText(*info)) == info);
        lay(files, *info, content);
        restore(*info, content);
    } else {
        restoreScene(content);
    }
    return 0;
}
