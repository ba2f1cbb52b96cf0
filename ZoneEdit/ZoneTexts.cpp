#include "ZoneEdit/ZoneTexts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>

#include "check/Names.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "ui/SceneHints.h"
#include "zone/LoadReport.h"
#include "zone/StepReach.h"

namespace zoneedit {
namespace {

using zone::LoadProblem;

int percentOf(double share) {
    return static_cast<int>(std::lround(100 * share));
}

/// What was read of the zones that were not read whole.
std::u16string partsText(const zone::LoadReport& report) {
    if (report.partZones == 0) {
        return {};
    }
    if (report.partZones > 1) {
        return u" " + core::tr("{0} more were read in part."_tr, report.partZones);
    }
    return u" " + (report.storedFrames > 0
                       ? core::tr("AnotherPart|Another: {0} of {1} frames."_tr, report.partFrames,
                                  report.storedFrames)
                       : core::tr("Another: {0} frames."_tr, report.partFrames));
}

core::Text reasonText(LoadProblem problem) {
    switch (problem) {
    case LoadProblem::binaryMissing:
        return "{0}.bin is missing."_tr;
    case LoadProblem::binaryUnreadable:
        return "{0}.bin cannot be read."_tr;
    case LoadProblem::binaryForeign:
        return "{0}.bin also holds other data."_tr;
    case LoadProblem::listDamaged:
        return "{0}.xml is damaged."_tr;
    default:
        return "{0}.bin is damaged."_tr;
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
    const std::u16string read =
        report.zones > 0
            ? core::tr("ZonesRead|{1} of {0} zone read: {2}|{1} of {0} zones read: {2}"_trn,
                       static_cast<std::size_t>(report.zones), report.wholeZones,
                       core::tr(reasonText(report.problem), core::fileName(basePath) + "-ZoneInfo"))
            : core::tr("No zones read: {0}"_tr, core::tr(reasonText(report.problem),
                                                         core::fileName(basePath) + "-ZoneInfo"));
    return read + partsText(report);
}

std::u16string zoneNamesHint(const std::vector<std::string>& names) {
    if (std::any_of(names.begin(), names.end(), check::breaksFile)) {
        return core::tr(ui::kUnreadableZoneHint);
    }
    std::map<std::string, int> uses;
    for (const std::string& name : names) {
        ++uses[name];
    }
    if (uses.contains("")) {
        return core::tr("A zone without a name cannot be chosen for an action."_tr);
    }
    const auto repeated =
        std::find_if(uses.begin(), uses.end(), [](const auto& use) { return use.second > 1; });
    return repeated == uses.end()
               ? std::u16string()
               : core::tr("{0} zones are named \"{1}\": actions tell zones apart by their "
                          "names alone."_tr,
                          repeated->second, repeated->first);
}

std::u16string reachText(const zone::StepReach& reach) {
    switch (reach.kind) {
    case zone::StepReach::Kind::overOwn:
        return core::tr("Changed {0} later frame that had its own shape.|"
                        "Changed {0} later frames that had their own shape."_trn,
                        static_cast<std::size_t>(reach.frames));
    case zone::StepReach::Kind::added:
        return core::tr("Added on {0} of {1} frames."_tr, reach.frames, reach.of);
    case zone::StepReach::Kind::addedInPlace:
        return core::tr("Added at the same place on {0} frame where the shape is elsewhere.|"
                        "Added at the same place on {0} frames where the shape is elsewhere."_trn,
                        static_cast<std::size_t>(reach.frames));
    case zone::StepReach::Kind::removed:
        return core::tr("Removed on {0} of {1} frames."_tr, reach.frames, reach.of);
    case zone::StepReach::Kind::plain:
        break;
    }
    return {};
}

std::u16string followingText(const std::string& zone, int frame, int last) {
    return core::tr("Following \"{0}\": frame {1} of {2}"_tr, zone, frame, last);
}

std::u16string matchText(double match) {
    return core::tr("Match {0} %"_tr, percentOf(match));
}

std::u16string followedText(int frame) {
    return core::tr("Followed to frame {0}."_tr, frame);
}

std::u16string followedMatchText(int frames, double leastMatch) {
    if (frames == 0) {
        return {};
    }
    return core::tr("{0} frame, least match {1} %|{0} frames, least match {1} %"_trn,
                    static_cast<std::size_t>(frames), percentOf(leastMatch));
}

std::u16string lostText(int frame, int frames) {
    return core::tr("Lost sight at frame {1}: {0} frame found.|"
                    "Lost sight at frame {1}: {0} frames found."_trn,
                    static_cast<std::size_t>(frames), frame);
}

std::u16string unreadableText(int frame, int frames) {
    return core::tr("Frame {1} cannot be read: {0} frame found.|"
                    "Frame {1} cannot be read: {0} frames found."_trn,
                    static_cast<std::size_t>(frames), frame);
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
