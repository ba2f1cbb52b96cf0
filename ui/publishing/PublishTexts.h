// What the Publish window says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "check/Finding.h"
#include "publish/PublishJob.h"

namespace scene {
class SceneSession;
}

namespace ui {

/// "1 finding would stop a learner:".
[[nodiscard]] std::u16string publishFindingsText(std::size_t count);
/// 'Evacuate, action 2: "Call for help" is not in the scene.'
[[nodiscard]] std::u16string publishFindingText(const check::Finding& finding,
                                                const scene::SceneSession& session);
/// "Converting way-out.ogv, 3 of 4".
[[nodiscard]] std::u16string publishProgressText(const publish::PublishProgress& progress);
/// "0:38 left"; empty while that is not known.
[[nodiscard]] std::u16string publishLeftText(const publish::PublishProgress& progress);
/// "Not published: no space left."
[[nodiscard]] std::u16string notPublishedText(const publish::PublishResult& result);
/// "7 files, 2.3 MB, in Published/Fire". `folder`: as the author wrote it.
[[nodiscard]] std::u16string publishedText(const publish::PublishResult& result,
                                           std::u16string_view folder);

} // namespace ui
