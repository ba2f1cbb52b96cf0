// What the windows tell the author about the state of a scene, in one quiet line: names that make
// its file unreadable, a save that failed, a copy under way, what the last deed did and what is
// missing for the next. Used by the branch editor and the new scene window.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jobs/VideoImport.h"

namespace core {
struct FileError;
}
namespace scene {
class SceneManager;
}

namespace ui {

/// The new scene window's second hint while the name holds a "<".
inline constexpr std::u16string_view kUnreadableSceneHint =
    u"A scene with \"<\" in its name will not load again.";

/// The zone editor's hint while a zone's name holds one: scenes read the names from that file.
inline constexpr const char16_t* kUnreadableZoneHint =
    u"A name with \"<\" hides all zones of this video from the branch editor.";

/// True for a text that, written into a scene or zone file as it is, keeps the file from being read
/// again.
[[nodiscard]] bool breaksFile(std::string_view text);

/// One video being copied, as the strip shows it.
struct CopyStatus {
    std::string name;
    int number = 1; ///< 1 for the first of `count` files
    int count = 0;
    std::uint64_t copiedBytes = 0;
    std::uint64_t totalBytes = 0;
};
[[nodiscard]] std::u16string copyText(const CopyStatus& status);

/// "Not saved: " with the file's name and the reason; empty when nothing failed.
[[nodiscard]] std::u16string notSavedText(const core::FileError& error);

/// One text of several sentences, some of which may be empty or lack their full stop.
[[nodiscard]] std::u16string joinSentences(const std::vector<std::u16string>& sentences);

/// What came of one Add Video.
struct ImportOutcome {
    int added = 0; ///< good ones
    int listedAlready = 0;
    std::vector<std::string> unplayable; ///< copied, but no videos
    std::vector<std::string> failed;
    std::string failure; ///< of the first that failed

    void note(const std::string& name, const jobs::ImportReport& report);
};
/// How many came in and how many were in the list before; empty for none.
[[nodiscard]] std::u16string importNote(const ImportOutcome& outcome);
/// Which did not come in, with the first reason, and which cannot be played; empty for none.
[[nodiscard]] std::u16string importProblem(const ImportOutcome& outcome);

/// Why Edit Zones opened nothing: it goes by the video's place in its list, counted from 0.
[[nodiscard]] std::u16string nothingToEditText(int place);

/// That the zone editor could not read the video `path`, whose folders are left out.
[[nodiscard]] std::u16string unreadableVideoText(const std::string& path);

/// The branch editor's hint while a zone action has no zone to choose from.
inline constexpr std::u16string_view kNoZonesHint =
    u"This video has no zones to choose from yet: draw them with Edit Zones.";

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

/// A hint about the first name that breaks the scene's file: its own, the first branch's, a
/// branch's, a video's, a parameter or a target. Empty when the scene reads back.
[[nodiscard]] std::u16string unreadableHint(const scene::SceneManager& scene);

} // namespace ui
