#include "ZoneEdit/ZoneTexts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>

#include "check/Names.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "ui/SceneHints.h"
#include "zone/LoadReport.h"
#include "zone/StepReach.h"

namespace zoneedit {
namespace {

using zone::LoadProblem;

std::string percentText(double share) {
    return std::to_string(std::lround(100 * share)) + " %";
}

std::string framesText(int frames) {
    return std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

std::string ofThem(int number, int all) {
    return std::to_string(number) + " of " + std::to_string(all) + (all == 1 ? " zone" : " zones");
}

/// What was read of the zones that were not read whole.
std::string partsText(const zone::LoadReport& report) {
    if (report.partZones == 0) {
        return {};
    }
    if (report.partZones > 1) {
        return " " + std::to_string(report.partZones) + " more were read in part.";
    }
    std::string frames = std::to_string(report.partFrames);
    if (report.storedFrames > 0) {
        frames += " of " + std::to_string(report.storedFrames);
    }
    return " Another: " + frames + " frames.";
}

const char* reasonText(LoadProblem problem) {
    switch (problem) {
    case LoadProblem::binaryMissing:
        return ".bin is missing.";
    case LoadProblem::binaryUnreadable:
        return ".bin cannot be read.";
    case LoadProblem::binaryForeign:
        return ".bin also holds other data.";
    case LoadProblem::listDamaged:
        return ".xml is damaged.";
    default:
        return ".bin is damaged.";
    }
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

} // namespace

std::u16string loadProblemText(const zone::LoadReport& report, const std::string& basePath) {
    if (report.problem == LoadProblem::none) {
        return {};
    }
    // How much first: a narrow label cuts the end.
    return core::displayText(
        (report.zones > 0 ? ofThem(report.wholeZones, report.zones) : "No zones") + " read: " +
        core::fileName(basePath) + "-ZoneInfo" + reasonText(report.problem) + partsText(report));
}

std::u16string zoneNamesHint(const std::vector<std::string>& names) {
    if (std::any_of(names.begin(), names.end(), check::breaksFile)) {
        return ui::kUnreadableZoneHint;
    }
    std::map<std::string, int> uses;
    for (const std::string& name : names) {
        ++uses[name];
    }
    if (uses.contains("")) {
        return u"A zone without a name cannot be chosen for an action.";
    }
    const auto repeated =
        std::find_if(uses.begin(), uses.end(), [](const auto& use) { return use.second > 1; });
    return repeated == uses.end()
               ? std::u16string()
               : core::displayText(std::to_string(repeated->second) + " zones are named \"" +
                                   repeated->first +
                                   "\": actions tell zones apart by their names alone.");
}

std::u16string reachText(const zone::StepReach& reach) {
    const std::string number = std::to_string(reach.frames);
    const std::string ofAll = number + " of " + std::to_string(reach.of) + " frames.";
    switch (reach.kind) {
    case zone::StepReach::Kind::overOwn:
        return core::displayText("Changed " + number +
                                 (reach.frames == 1 ? " later frame that had its own shape."
                                                    : " later frames that had their own shape."));
    case zone::StepReach::Kind::added:
        return core::displayText("Added on " + ofAll);
    case zone::StepReach::Kind::addedInPlace:
        return core::displayText("Added at the same place on " + framesText(reach.frames) +
                                 " where the shape is elsewhere.");
    case zone::StepReach::Kind::removed:
        return core::displayText("Removed on " + ofAll);
    case zone::StepReach::Kind::plain:
        break;
    }
    return {};
}

std::u16string followingText(const std::string& zone, int frame, int last) {
    return core::displayText("Following \"" + zone + "\": frame " + std::to_string(frame) + " of " +
                             std::to_string(last));
}

std::u16string matchText(double match) {
    return core::displayText("Match " + percentText(match));
}

std::u16string followedText(int frame) {
    return core::displayText("Followed to frame " + std::to_string(frame) + ".");
}

std::u16string followedMatchText(int frames, double leastMatch) {
    return core::displayText(framesText(frames) + ", least match " + percentText(leastMatch));
}

std::u16string lostText(int frame, int frames) {
    return core::displayText("Lost sight at frame " + std::to_string(frame) + ": " +
                             framesText(frames) + " found.");
}

std::optional<int> frameFrom(const std::u16string& text, int last) {
    const int value = core::convertStringToInt(text);
    std::size_t at = std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size());
    const bool isNegative = text.substr(at, 1) == u"-";
    at += isNegative || text.substr(at, 1) == u"+" ? 1 : 0;
    if (at == text.size() || !isDigit(text[at])) {
        return std::nullopt;
    }
    // A number that no int holds was converted to 0; it lies beyond one of the ends.
    const std::size_t first = text.find_first_not_of(u'0', at);
    if (value == 0 && first != std::u16string::npos && isDigit(text[first])) {
        return isNegative ? 0 : last;
    }
    return std::clamp(value, 0, last);
}

} // namespace zoneedit
