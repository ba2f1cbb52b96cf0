#include <memory>
#include <ostream>
#include <string>

#include "check/FactsReader.h"
#include "check/Finding.h"
#include "check/SceneCheck.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "scene/SceneManager.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/Json.h"

namespace inspect {
namespace {

void printFinding(std::ostream& out, const check::Finding& finding,
                  const scene::SceneManager& scene) {
    Json json(out);
    json.beginObject();
    json.key("severity").value(check::severityName(finding.severity));
    json.key("kind").value(check::kindName(finding.kind));
    if (finding.branch >= 0) {
        json.key("branch").value(scene.branchID(finding.branch));
    }
    if (finding.action >= 0) {
        json.key("action").value(finding.action + 1);
    }
    if (!finding.video.empty()) {
        json.key("video").value(finding.video);
    }
    if (!finding.zone.empty()) {
        json.key("zone").value(finding.zone);
    }
    if (finding.frames) {
        json.key("frames").beginArray();
        json.value(finding.frames->first).value(finding.frames->last).endArray();
    }
    json.key("text").value(check::findingText(finding));
    json.endObject();
    out << '\n';
}

} // namespace

void printKinds(std::ostream& out) {
    out << "\nKinds, with their severities and texts:\n";
    for (const check::KindInfo& info : check::kinds()) {
        const std::string name = std::string("  ") + info.name;
        const std::string severity(check::severityName(info.severity));
        out << name << std::string(20 - name.size(), ' ') << severity
            << std::string(9 - severity.size(), ' ')
            << core::trStored(info.texts[0], {"%s", "%s", "%s"}) << '\n';
    }
}

int runCheck(const Arguments& arguments, std::ostream& out) {
    if (arguments.size() != 1 || arguments.front().empty()) {
        return badUsage("check", "one folder is needed");
    }
    const std::shared_ptr<scene::SceneManager> scene = readScene(arguments.front());
    if (!scene) {
        return kUnreadable;
    }
    check::FactsReader reader(*core::services().fileSystem, *core::services().clock,
                              core::withSeparator(arguments.front()));
    check::SceneCheck check;
    check.setFacts(reader.read(check::videosOf(*scene), {}, [] { return false; }));
    check.checkAll(*scene);
    for (const check::Finding* finding : check.findings()) {
        printFinding(out, *finding, *scene);
    }
    return check.counts().errors > 0 ? kFindings : kSuccess;
}

} // namespace inspect
