#include "ZoneEdit/ZoneVersions.h"

#include <memory>

#include "check/Differences.h"
#include "core/Paths.h"
#include "core/Texts.h"
#include "recovery/Versions.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {
namespace {

ui::VersionDetails readZones(const recovery::Version& version, const zone::ZoneManager& now,
                             zone::ZoneSession& session) {
    const std::shared_ptr<zone::ZoneManager> zones =
        zone::ZoneManager::createForEditing(version.base, now.frameCount, now.scale);
    ui::VersionDetails details;
    // Of a damaged pair, whatever can be read.
    if (!zones ||
        (zones->zoneCount() == 0 && zones->loadReport().problem != zone::LoadProblem::none)) {
        return details;
    }
    const check::ZoneDifferences differences = check::differencesOf(*zones, now);
    details.isReadable = true;
    details.summary = check::summaryOf(differences);
    details.differences = check::linesOf(differences);
    details.contents = check::contentsOf(*zones);
    // The window that restores takes the editor's input: these are still the zones of `now`.
    const bool differs = differences != check::ZoneDifferences{};
    details.restore = [zones, &session, differs] { return session.restore(*zones, differs); };
    return details;
}

} // namespace

ui::VersionHistory zoneHistory(zone::ZoneSession& session, const std::string& videoPath,
                               const std::string& folder) {
    return {core::fileName(videoPath), core::tr("Zones"_tr),
            "VersionsOfZones|Each Save of \"{0}\" kept the version before it. What differs is told "
            "against the zones as they are now."_tr,
            folder, [now = session.snapshot(), &session](const recovery::Version& version) {
                return readZones(version, *now, session);
            }};
}

} // namespace zoneedit
