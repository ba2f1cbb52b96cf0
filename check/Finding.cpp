#include "check/Finding.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "core/Texts.h"

namespace check {
namespace {

constexpr Severity kError = Severity::error;
constexpr Severity kWarning = Severity::warning;
constexpr Severity kNote = Severity::note;

constexpr KindInfo kKinds[] = {
    {Kind::unreadableName,
     "unreadable-name",
     kError,
     {R"(Finding.UnreadableName|The name "{0}" holds a "<": the scene will not load again.)"_tr,
      R"(Finding.UnreadableName2|The name "{0}" holds a "&": the scene will not load again.)"_tr,
      R"(Finding.UnreadableName3|The name "{0}" holds a control character: the scene will not load again.)"_tr}},
    {Kind::noFirstBranch,
     "no-first-branch",
     kError,
     {"Finding.NoFirstBranch|The scene has no first branch."_tr}},
    {Kind::duplicateBranch,
     "duplicate-branch",
     kError,
     {R"(Finding.DuplicateBranch|Two branches are named "{0}".)"_tr}},
    {Kind::noVideo, "no-video", kError, {R"(Finding.NoVideo|"{0}" has no video.)"_tr}},
    {Kind::videoMissing,
     "video-missing",
     kError,
     {R"(Finding.VideoMissing|The video "{0}" is missing.)"_tr}},
    {Kind::videoUnreadable,
     "video-unreadable",
     kError,
     {R"(Finding.VideoUnreadable|The video "{0}" cannot be read.)"_tr}},
    {Kind::missingTarget,
     "missing-target",
     kError,
     {R"(Finding.MissingTarget|An action of "{0}" leads to "{1}", which is not in the scene.)"_tr,
      R"(Finding.MissingTarget2|An action of "{0}" has no target yet.)"_tr}},
    {Kind::zoneMissing,
     "zone-missing",
     kError,
     {R"(Finding.ZoneMissing|An action of "{0}" waits for the zone "{1}", which its video does not have.)"_tr,
      R"(Finding.ZoneMissing2|A Zone action of "{0}" has no zone yet.)"_tr}},
    {Kind::unreached,
     "unreached",
     kWarning,
     {R"(Finding.Unreached|No action leads to "{0}".)"_tr,
      R"(Finding.Unreached2|"{0}" is not reached from the first branch.)"_tr}},
    {Kind::noWayOut, "no-way-out", kWarning, {R"(Finding.NoWayOut|"{0}" has no way out.)"_tr}},
    {Kind::keyTwice,
     "key-twice",
     kWarning,
     {R"(Finding.KeyTwice|Two actions of "{0}" use the key {1}.)"_tr}},
    {Kind::defaultTwice,
     "default-twice",
     kWarning,
     {R"(Finding.DefaultTwice|"{0}" has two Default actions: the first counts.)"_tr}},
    {Kind::neverFires,
     "never-fires",
     kWarning,
     {R"(Finding.NeverFires|"{0}" has Random actions: its Default never counts.)"_tr,
      R"(Finding.NeverFires2|Action {0} of "{1}" never applies: action {2} comes first.)"_tr}},
    {Kind::similarNames,
     "similar-names",
     kWarning,
     {R"(Finding.SimilarNames|The names "{0}" and "{1}" are easily confused.)"_tr}},
    {Kind::zoneNeverActive,
     "zone-never-active",
     kWarning,
     {R"(Finding.ZoneNeverActive|The zone "{0}" is active on no frame.)"_tr}},
    {Kind::zoneFewPoints,
     "zone-few-points",
     kWarning,
     {R"(Finding.ZoneFewPoints|The zone "{0}" has fewer than 3 points on {1} frames.)"_tr,
      R"(Finding.ZoneFewPoints2|The zone "{0}" has fewer than 3 points on {1} frame.)"_tr}},
    {Kind::zoneOutside,
     "zone-outside",
     kWarning,
     {R"(Finding.ZoneOutside|The zone "{0}" lies outside the picture on {1} frames.)"_tr,
      R"(Finding.ZoneOutside2|The zone "{0}" lies outside the picture on {1} frame.)"_tr}},
    {Kind::zoneNameTwice,
     "zone-name-twice",
     kWarning,
     {R"(Finding.ZoneNameTwice|Two zones of {0} are named "{1}".)"_tr}},
    {Kind::zoneNoName,
     "zone-no-name",
     kWarning,
     {"Finding.ZoneNoName|A zone of {0} has no name."_tr}},
    {Kind::zoneFrames,
     "zone-frames",
     kWarning,
     {R"(Finding.ZoneFrames|The zones of "{0}" count {1} frames, the video {2}.)"_tr}},
    {Kind::sheared,
     "sheared",
     kWarning,
     {"Finding.Sheared|{0} is {1} pixels wide and will show sheared: convert it."_tr}},
    {Kind::slowSeeks,
     "slow-seeks",
     kWarning,
     {"Finding.SlowSeeks|Steps and jumps in {0} will be slow: its key frames are {1} s apart."_tr}},
    {Kind::zoneUnused,
     "zone-unused",
     kNote,
     {R"(Finding.ZoneUnused|No action uses the zone "{0}" of {1}.)"_tr}},
    {Kind::videoUnused,
     "video-unused",
     kNote,
     {"Finding.VideoUnused|{0} is used by no branch."_tr}},
    {Kind::waits,
     "waits",
     kNote,
     {R"(Finding.Waits|"{0}" ends the scene when nothing is chosen: it has no Default action.)"_tr}},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < std::size(kKinds); ++i) {
        if (static_cast<std::size_t>(kKinds[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrder() && std::size(kKinds) == static_cast<std::size_t>(Kind::waits) + 1);

const KindInfo& infoOf(Kind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

} // namespace

std::span<const KindInfo> kinds() {
    return kKinds;
}

Finding finding(Kind kind, std::vector<std::string> arguments, int variant) {
    return {.severity = infoOf(kind).severity,
            .kind = kind,
            .variant = variant,
            .arguments = std::move(arguments)};
}

std::string_view kindName(Kind kind) {
    return infoOf(kind).name;
}

std::string_view severityName(Severity severity) {
    static constexpr const char* kNames[] = {"error", "warning", "note"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::string findingText(const Finding& finding) {
    return core::trFilled(infoOf(finding.kind).texts.at(static_cast<std::size_t>(finding.variant)),
                          finding.arguments);
}

} // namespace check
