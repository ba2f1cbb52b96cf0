// The files of a published page, as texts. Pure: names and texts of a scene go in, whatever they
// hold, and never come out as mark-up or as code. docs/formats.md describes the folder.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"
#include "player/Clip.h"
#include "player/Story.h"

namespace publish {

struct Language {
    const char* code; ///< of the page: "fr"
    const char* name; ///< in itself: "Français"
};
/// Those that the page has words in; the first is what others become.
[[nodiscard]] std::span<const Language> languages();
/// By its code or its name, in any letter case. Null if it is none of them.
[[nodiscard]] const Language* findLanguage(std::string_view word);

/// What an author chooses for a page.
struct PageOptions {
    std::string title{}; ///< UTF-8 or not; empty: the scene's name
    std::string language = "en";
    bool hasOutlines = true; ///< of the zone under the mouse
    bool hasKeys = true;     ///< as buttons, for touch screens
    bool hasReport = false;  ///< of the path taken, at the end
};

/// A video of the scene.
struct PageClip {
    std::string video{}; ///< the name that branches have
    std::string file{};  ///< in the folder; empty: it cannot be played
    std::string zones{}; ///< the script of its zones; empty: it has none
    int frameCount = -1;
    double framesPerSecond = 0;
    platform::Size frame{};
};

struct PageContent {
    PageOptions options{};
    std::string still{}; ///< a picture in the folder; empty: none
    std::vector<PageClip> clips{};
    player::Story story{};
};

[[nodiscard]] std::string indexPage(const PageContent& content);
[[nodiscard]] std::string sceneScript(const PageContent& content);
/// `clip`: the number of the clip. Shapes that are equal from frame to frame stand in it once.
[[nodiscard]] std::string zonesScript(std::size_t clip,
                                      const std::vector<player::ZoneTrack>& zones);
/// The same for every page.
[[nodiscard]] std::string_view playerScript();
[[nodiscard]] std::string_view playerStyle();

// For texts of any bytes; what is not UTF-8 becomes U+FFFD.
/// In quotation marks, for a script.
[[nodiscard]] std::string scriptText(std::string_view text);
/// For an HTML page, also in attributes.
[[nodiscard]] std::string htmlText(std::string_view text);

} // namespace publish
