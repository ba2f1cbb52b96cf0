#include "recovery/ZoneDraft.h"

#include <utility>
#include <vector>

#include "core/File.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "recovery/DraftInfo.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/ZoneManager.h"

namespace recovery {
namespace {

/// Names no zones: a list could not hold every name, and the records of the shapes hold them too.
constexpr const char* kEmptyList = "<ZoneInfo>\n</ZoneInfo>\n";

std::vector<std::string> zoneFiles(const std::string& basePath) {
    return {basePath + "-ZoneInfo.xml", basePath + "-ZoneInfo.bin"};
}

DraftContent contentOf(std::shared_ptr<const zone::ZoneManager> zones) {
    return {{kDraftZoneList, [](core::File& file) { return file.writeString(kEmptyList); }},
            {kDraftZoneShapes,
             [zones = std::move(zones)](core::File& file) { return zones->writeZones(file); }}};
}

/// Empty if they cannot be read whole.
std::shared_ptr<zone::ZoneManager> readZones(const KeptDraft& draft,
                                             const zone::ZoneManager& like) {
    const std::string base = draft.folder + draftFilePrefix(draft.info.number) + kDraftZones;
    auto zones = zone::ZoneManager::createForEditing(base, like.frameCount, like.scale);
    const bool isWhole = zones && zones->loadReport().problem == zone::LoadProblem::none;
    return isWhole ? zones : nullptr;
}

} // namespace

ZoneDraft::ZoneDraft(zone::ZoneSession& session, Drafts& drafts, const std::string& scene,
                     const std::string& video)
    : m_session(session), m_basePath(core::withoutExtension(video)) {
    DraftInfo about;
    about.scene = scene;
    about.listedAs = scene;
    about.video = core::fileName(video);
    about.base = savedState(zoneFiles(m_basePath));
    drafts.settle();
    const std::vector<KeptDraft> kept = keptZoneDrafts(scene, about.video);
    if (!kept.empty()) {
        m_offered = kept.front();
    }
    m_draft = drafts.open(std::move(about), [this] { return unsaved(); });
    m_changes = m_session.observe([this](const auto&) { m_draft->changed(); });
    m_saves = m_session.observeSaves([this](bool isSaved) {
        if (isSaved) {
            m_draft->saved(savedState(zoneFiles(m_basePath)));
        }
    });
}

std::optional<DraftContent> ZoneDraft::unsaved() const {
    return m_session.isModified() ? std::optional(contentOf(m_session.snapshot())) : std::nullopt;
}

bool ZoneDraft::isSavedSince() const {
    return m_offered && !isSavedState(zoneFiles(m_basePath), m_offered->info.base);
}

bool ZoneDraft::restore() {
    const std::optional<KeptDraft> offered = std::exchange(m_offered, std::nullopt);
    std::unique_ptr<DraftFolder> folder = offered ? takeDraft(offered->folder) : nullptr;
    if (!folder) {
        return false;
    }
    const auto zones = readZones({offered->folder, folder->info()}, m_session.zones());
    if (!zones || !m_session.restore(*zones)) {
        core::Log::get()->Error("Unable to restore the draft %s", offered->folder.c_str());
        return false;
    }
    m_draft->restored(std::move(folder), contentOf(m_session.snapshot()));
    return true;
}

} // namespace recovery
