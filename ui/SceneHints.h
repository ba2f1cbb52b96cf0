// The texts of the one quiet line in which the windows describe the state of a scene, made of
// values from below: findings, save errors, copies under way and done, and hints at the next step.
// Used by all windows of the editor.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Finding.h"
#include "core/Texts.h"
#include "jobs/ImportOutcome.h"

namespace core {
struct FileError;
}

namespace ui {

/// The new scene window's second hint while the name holds a "<".
inline constexpr core::Text kUnreadableSceneHint =
    "A scene with \"<\" in its name will not load again."_tr;

/// The zone editor's hint while a zone's name holds one: scenes read the names from that file.
inline constexpr core::Text kUnreadableZoneHint =
    "A name with \"<\" hides all zones of this video from the branch editor."_tr;

/// The sentence about a finding; empty for none.
[[nodiscard]] std::u16string findingHint(const std::optional<check::Finding>& finding);

/// How far a copy is.
[[nodiscard]] std::u16string copyText(const jobs::CopyStatus& status);

/// "Not saved: " with the file's name and the reason; empty when nothing failed.
[[nodiscard]] std::u16string notSavedText(const core::FileError& error);

/// One text of several sentences, some of which may be empty or lack their full stop.
[[nodiscard]] std::u16string joinSentences(const std::vector<std::u16string>& sentences);

/// How many came in and how many were in the list before; empty for none.
[[nodiscard]] std::u16string importNote(const jobs::ImportOutcome& outcome);
/// Which did not come in, with the first reason, and which cannot be played; empty for none.
[[nodiscard]] std::u16string importProblem(const jobs::ImportOutcome& outcome);

/// Why Edit Zones opened nothing for the video at `place` in its list, counted from 0.
[[nodiscard]] std::u16string nothingToEditText(int place);

/// That Edit Zones would open `listed`, and not the video of the branch on show, `own`.
[[nodiscard]] std::u16string otherVideoText(const std::string& listed, const std::string& own);

/// That the zone editor could not read the video `path`, whose folders are left out.
[[nodiscard]] std::u16string unreadableVideoText(const std::string& path);

/// The branch editor's hint while a zone action has no zone to choose from.
inline constexpr core::Text kNoZonesHint =
    "This video has no zones to choose from yet: draw them with Edit Zones."_tr;

/// Why a branch was not renamed to `name`.
[[nodiscard]] std::u16string takenNameText(const std::u16string& name);

/// That the branch on show, whose own video is `name`, has another one than its video list shows;
/// that it has none for an empty name.
[[nodiscard]] std::u16string ownVideoText(const std::string& name);

/// What a good save tells: the time of day, so that the next one looks different.
[[nodiscard]] std::u16string savedText();

/// What happens to a scene whose name makes folders of its own or none at all, so that the list of
/// scenes never shows it; empty for any other name.
[[nodiscard]] std::u16string unlistedHint(std::string_view name);

} // namespace ui
