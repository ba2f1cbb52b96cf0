#include "ui/publishing/PublishTexts.h"

#include "core/Text.h"
#include "scene/SceneSession.h"
#include "ui/branch_editor/ClipCard.h"
#include "ui/importing/ImportTexts.h"

namespace ui {
namespace {

std::u16string number(std::size_t value) {
    return core::displayText(std::to_string(value));
}

} // namespace

std::u16string publishFindingsText(std::size_t count) {
    return count == 1 ? std::u16string(u"1 finding would stop a learner:")
                      : number(count) + u" findings would stop a learner:";
}

std::u16string publishFindingText(const check::Finding& finding,
                                  const scene::SceneSession& session) {
    if (finding.kind != check::Kind::missingTarget || finding.arguments.size() != 2 ||
        finding.branch < 0) {
        return core::displayText(check::findingText(finding));
    }
    return core::displayText(session.branchName(finding.branch)) + u", action " +
           number(static_cast<std::size_t>(finding.action + 1)) + u": \"" +
           core::displayText(finding.arguments[1]) + u"\" is not in the scene.";
}

std::u16string publishProgressText(const publish::PublishProgress& progress) {
    return u"Converting " + core::displayText(progress.video) + u", " +
           number(static_cast<std::size_t>(progress.number)) + u" of " +
           number(static_cast<std::size_t>(progress.count));
}

std::u16string publishLeftText(const publish::PublishProgress& progress) {
    const std::u16string left = minutesText(progress.secondsLeft);
    return left.empty() ? left : left + u" left";
}

std::u16string notPublishedText(const publish::PublishResult& result) {
    return u"Not published: " + core::displayText(publish::publishFailureText(result));
}

std::u16string publishedText(const publish::PublishResult& result, std::u16string_view folder) {
    return number(static_cast<std::size_t>(result.fileCount)) + u" files, " +
           bytesText(result.bytes) + u", in " + std::u16string(folder);
}

} // namespace ui
