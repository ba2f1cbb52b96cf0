// The drafts that programs have left: what to offer when one of the documents is opened again. UI
// thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "recovery/DraftFolder.h"
#include "recovery/DraftInfo.h"

namespace recovery {

/// Drafts that nobody has worked on for so long are removed.
inline constexpr std::int64_t kDraftSeconds = std::int64_t{30} * 24 * 60 * 60;

struct KeptDraft {
    std::string folder; ///< ends in a separator
    DraftInfo info;
};

/// Those of scenes, the newest first, without those that running programs hold. Anything else in
/// the folder of the drafts is ignored; each such folder is logged once in a run.
[[nodiscard]] std::vector<KeptDraft> keptSceneDrafts();
/// The same of one video's zones; `video` is a file name.
[[nodiscard]] std::vector<KeptDraft> keptZoneDrafts(const std::string& scene,
                                                    const std::string& video);

/// The draft itself, from now on held by this program. Empty, and logged, if it cannot be had.
[[nodiscard]] std::unique_ptr<DraftFolder> takeDraft(const std::string& folder);

} // namespace recovery
