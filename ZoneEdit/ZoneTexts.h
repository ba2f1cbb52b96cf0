// What the zone editor says in its header, and how it reads a typed frame. No window.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Texts.h"

namespace zone {
struct LoadReport;
struct StepReach;
} // namespace zone

namespace zoneedit {

inline constexpr core::Text kNoFrameNumber = "Not a frame number"_tr;
/// In the header, and in place of the invitation to add a zone.
inline constexpr core::Text kUnknownLength =
    "The length of this video is unknown: there are no frames to step through or draw on."_tr;
inline constexpr core::Text kUnknownLengthShort = "The video's length is unknown."_tr;

/// How much of the zone files at `basePath` was read, and why not all; empty when all was.
[[nodiscard]] std::u16string loadProblemText(const zone::LoadReport& report,
                                             const std::string& basePath);

/// After the first save of zones that were not read whole.
inline constexpr core::Text kDamagedKept = "The old files are kept among the earlier versions."_tr;

/// A hint about names that scenes cannot read, or that do not tell the zones apart.
[[nodiscard]] std::u16string zoneNamesHint(const std::vector<std::string>& names);

/// "Changed 279 later frames that had their own shape."; empty for a plain step.
[[nodiscard]] std::u16string reachText(const zone::StepReach& reach);

inline constexpr core::Text kDrawZoneFirst = "Draw the zone on this frame first."_tr;
/// 'Following "Door": frame 62 of 96'
[[nodiscard]] std::u16string followingText(const std::string& zone, int frame, int last);
/// "Match 94 %"; 1 is all of it.
[[nodiscard]] std::u16string matchText(double match);
/// "Followed to frame 85."
[[nodiscard]] std::u16string followedText(int frame);
/// "40 frames, least match 88 %"; empty for none.
[[nodiscard]] std::u16string followedMatchText(int frames, double leastMatch);
/// "Lost sight at frame 62: 31 frames found."
[[nodiscard]] std::u16string lostText(int frame, int frames);
/// "Frame 211 cannot be read: 34 frames found."
[[nodiscard]] std::u16string unreadableText(int frame, int frames);

/// The number that `text` begins with, cut to 0 ... `last`; none when it begins with no number. A
/// text that holds no 32-bit number is logged, as by core::convertStringToInt.
[[nodiscard]] std::optional<int> frameFrom(const std::u16string& text, int last);

} // namespace zoneedit
