#include "recovery/SceneDraft.h"

#include <utility>

#include "core/File.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/WholeFile.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSummary.h"

namespace recovery {
namespace {

std::string sceneFile(const std::string& name) {
    return scene::sceneFolderPath(name) + scene::kSceneFileName;
}

DraftContent contentOf(std::string text) {
    const auto shared = std::make_shared<const std::string>(std::move(text));
    return {{kDraftScene, [shared](core::File& file) { return file.writeString(*shared); }}};
}

bool isScene(const std::string& text) {
    const auto scene = scene::SceneManager::create();
    return scene && scene->loadText(text);
}

} // namespace

SceneDraft::SceneDraft(scene::SceneSession& session, Drafts& drafts)
    : m_session(session), m_drafts(drafts) {
    m_openings =
        m_session.observeOpenings([this] { opened(m_loading.value_or(m_session.scene().Name())); });
    m_changes = m_session.observe([this](const auto&) {
        if (m_draft) {
            m_draft->changed();
        }
    });
    m_saves = m_session.observeSaves([this](bool good) {
        if (good && m_draft) {
            const std::string& name = m_session.scene().Name();
            m_draft->setListedAs(name);
            m_draft->saved(savedState({sceneFile(name)}));
        }
    });
}

void SceneDraft::opened(std::string listedAs) {
    if (m_draft) {
        m_draft->forgetChanges(); // the session no longer holds what they changed
    }
    DraftInfo about;
    about.scene = m_session.scene().Name();
    about.base = savedState({sceneFile(listedAs)});
    about.listedAs = std::move(listedAs);
    m_draft = m_drafts.open(std::move(about), [this] { return unsaved(); });
}

std::optional<DraftContent> SceneDraft::unsaved() const {
    return m_session.isModified() ? std::optional(contentOf(m_session.draftForm())) : std::nullopt;
}

bool SceneDraft::load(const std::string& name) {
    m_loading = name;
    const bool good = m_session.load(name);
    m_loading.reset();
    return good;
}

void SceneDraft::flush() {
    if (m_draft) {
        m_draft->flush();
    }
}

bool SceneDraft::leave() {
    m_draft.reset();
    m_drafts.settle();
    return m_session.isModified();
}

bool SceneDraft::restore(const std::string& folder) {
    m_drafts.settle();
    std::unique_ptr<DraftFolder> draft = takeDraft(folder);
    if (!draft) {
        return false;
    }
    const DraftInfo info = draft->info();
    const auto text =
        core::readWholeFile(folder + draftFileNames(info).front(), scene::kMaxSceneFileBytes);
    if (!text || !isScene(*text)) {
        core::Log::get()->Error("Unable to restore the draft %s", folder.c_str());
        return false;
    }
    if ((!core::isFile(sceneFile(info.listedAs)) || !load(info.listedAs)) &&
        !m_session.newScene(info.scene)) {
        return false;
    }
    m_session.restore(*text);
    m_draft->restored(std::move(draft), contentOf(*text));
    return true;
}

bool isSceneSavedSince(const DraftInfo& info) {
    return !isSavedState({sceneFile(info.listedAs)}, info.base);
}

} // namespace recovery
