#include "ui/publishing/PublishTexts.h"

#include "core/Text.h"
#include "core/Texts.h"
#include "scene/SceneSession.h"
#include "ui/FigureTexts.h"

namespace ui {
std::u16string publishFindingsText(std::size_t count) {
    return core::tr("{0} finding would stop a learner:|{0} findings would stop a learner:"_trn,
                    count);
}

std::u16string publishFindingText(const check::Finding& finding,
                                  const scene::SceneSession& session) {
    if (finding.kind != check::Kind::missingTarget || finding.arguments.size() != 2 ||
        finding.branch < 0) {
        return core::displayText(check::findingText(finding));
    }
    return core::tr("{0}, action {1}: \"{2}\" is not in the scene."_tr,
                    session.branchName(finding.branch), finding.action + 1, finding.arguments[1]);
}

std::u16string publishProgressText(const publish::PublishProgress& progress) {
    return core::tr("Converting {0}, {1} of {2}"_tr, progress.video, progress.number,
                    progress.count);
}

std::u16string publishLeftText(const publish::PublishProgress& progress) {
    const std::u16string left = minutesText(progress.secondsLeft);
    return left.empty() ? left : core::tr("TimeLeft|{0} left"_tr, left);
}

std::u16string notPublishedText(const publish::PublishResult& result) {
    return core::tr("Not published: {0}"_tr, publish::publishFailureText(result));
}

std::u16string publishedText(const publish::PublishResult& result, std::u16string_view folder) {
    return core::tr("{0} file, {1}, in {2}|{0} files, {1}, in {2}"_trn,
                    static_cast<std::size_t>(result.fileCount), bytesText(result.bytes), folder);
}

} // namespace ui
