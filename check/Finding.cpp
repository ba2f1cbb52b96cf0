#include "check/Finding.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace check {
namespace {

constexpr Severity kError = Severity::error;
constexpr Severity kWarning = Severity::warning;
constexpr Severity kNote = Severity::note;

constexpr KindInfo kKinds[] = {
    {Kind::unreadableName,
     "unreadable-name",
     kError,
     {R"(The name "%s" holds a "<": the scene will not load again.)",
      R"(The name "%s" holds a "&": the scene will not load again.)",
      R"(The name "%s" holds a control character: the scene will not load again.)"}},
    {Kind::noFirstBranch, "no-first-branch", kError, {"The scene has no first branch."}},
    {Kind::duplicateBranch, "duplicate-branch", kError, {R"(Two branches are named "%s".)"}},
    {Kind::noVideo, "no-video", kError, {R"("%s" has no video.)"}},
    {Kind::videoMissing, "video-missing", kError, {R"(The video "%s" is missing.)"}},
    {Kind::videoUnreadable, "video-unreadable", kError, {R"(The video "%s" cannot be read.)"}},
    {Kind::missingTarget,
     "missing-target",
     kError,
     {R"(An action of "%s" leads to "%s", which is not in the scene.)",
      R"(An action of "%s" has no target yet.)"}},
    {Kind::zoneMissing,
     "zone-missing",
     kError,
     {R"(An action of "%s" waits for the zone "%s", which its video does not have.)",
      R"(A Zone action of "%s" has no zone yet.)"}},
    {Kind::unreached,
     "unreached",
     kWarning,
     {R"(No action leads to "%s".)", R"("%s" is not reached from the first branch.)"}},
    {Kind::noWayOut, "no-way-out", kWarning, {R"("%s" has no way out.)"}},
    {Kind::keyTwice, "key-twice", kWarning, {R"(Two actions of "%s" use the key %s.)"}},
    {Kind::defaultTwice,
     "default-twice",
     kWarning,
     {R"("%s" has two Default actions: the first counts.)"}},
    {Kind::neverFires,
     "never-fires",
     kWarning,
     {R"("%s" has Random actions: its Default never counts.)",
      R"(Action %d of "%s" never applies: action %d comes first.)"}},
    {Kind::similarNames,
     "similar-names",
     kWarning,
     {R"(The names "%s" and "%s" are easily confused.)"}},
    {Kind::zoneNeverActive,
     "zone-never-active",
     kWarning,
     {R"(The zone "%s" is active on no frame.)"}},
    {Kind::zoneFewPoints,
     "zone-few-points",
     kWarning,
     {R"(The zone "%s" has fewer than 3 points on %d frames.)",
      R"(The zone "%s" has fewer than 3 points on %d frame.)"}},
    {Kind::zoneOutside,
     "zone-outside",
     kWarning,
     {R"(The zone "%s" lies outside the picture on %d frames.)",
      R"(The zone "%s" lies outside the picture on %d frame.)"}},
    {Kind::zoneNameTwice, "zone-name-twice", kWarning, {R"(Two zones of %s are named "%s".)"}},
    {Kind::zoneNoName, "zone-no-name", kWarning, {"A zone of %s has no name."}},
    {Kind::zoneFrames,
     "zone-frames",
     kWarning,
     {R"(The zones of "%s" count %d frames, the video %d.)"}},
    {Kind::sheared,
     "sheared",
     kWarning,
     {"%s is %d pixels wide and will show sheared: convert it."}},
    {Kind::slowSeeks,
     "slow-seeks",
     kWarning,
     {"Steps and jumps in %s will be slow: its key frames are %d s apart."}},
    {Kind::zoneUnused, "zone-unused", kNote, {R"(No action uses the zone "%s" of %s.)"}},
    {Kind::videoUnused, "video-unused", kNote, {"%s is used by no branch."}},
    {Kind::waits,
     "waits",
     kNote,
     {R"("%s" ends the scene when nothing is chosen: it has no Default action.)"}},
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
    return findingText(finding,
                       infoOf(finding.kind).texts.at(static_cast<std::size_t>(finding.variant)));
}

std::string findingText(const Finding& finding, std::string_view sentence) {
    std::string text;
    std::size_t next = 0;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        const bool isPlace = sentence[i] == '%' && i + 1 < sentence.size() &&
                             (sentence[i + 1] == 's' || sentence[i + 1] == 'd');
        if (!isPlace) {
            text += sentence[i];
        } else {
            text += next < finding.arguments.size() ? finding.arguments[next++] : std::string();
            ++i;
        }
    }
    return text;
}

} // namespace check
