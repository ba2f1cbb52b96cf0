#include "ui/importing/ImportTexts.h"

#include <cmath>

#include "core/Paths.h"
#include "core/Text.h"
#include "platform/Geometry.h"
#include "ui/branch_editor/ClipCard.h"

namespace ui {
namespace {

using imports::Failure;
using imports::ImportItem;
using imports::ImportState;

constexpr double kLongest = 360'000; ///< seconds: a longer estimate says nothing

/// "0:38".
std::string minutesText(double seconds) {
    const long long whole = std::llround(seconds);
    const std::string rest = std::to_string(whole % 60);
    return std::to_string(whole / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

std::string convertingText(const ImportItem& item) {
    std::string text = "Converting, " + std::to_string(item.percent) + " %";
    if (item.secondsLeft >= 0 && item.secondsLeft < kLongest) {
        text += ", " + minutesText(item.secondsLeft) + " left";
    }
    return text;
}

} // namespace

std::u16string importFactsText(const ImportItem& item) {
    if (!item.facts) {
        return {};
    }
    std::u16string text = lengthText(item.facts->seconds);
    if (item.facts->frame != platform::Size{}) {
        text += (text.empty() ? u"" : u", ") + sizeText(item.facts->frame);
    }
    return text;
}

ImportStateText importStateText(const ImportItem& item) {
    switch (item.state) {
    case ImportState::waiting:
        return {u"Waiting", {}};
    case ImportState::converting:
        return {core::displayText(convertingText(item)), {}};
    case ImportState::done:
        return {u"Done, " + bytesText(item.clip.bytes) +
                    (item.clip.hasSound ? u", with sound" : u", without sound"),
                {}};
    case ImportState::cancelled:
        return {u"Cancelled", {}};
    case ImportState::failed:
        return {u"Not converted:", core::displayText(imports::failureText(item.failure))};
    }
    return {};
}

std::u16string importRemedyText(const imports::ImportFailure& failure) {
    switch (failure.kind) {
    case Failure::nameTaken:
        return u"Keep Both";
    case Failure::cut:
        return u"Import Anyway";
    default:
        return failure.details.empty() ? std::u16string() : u"Details";
    }
}

std::u16string importRemedyToolTip(const imports::ImportFailure& failure) {
    switch (failure.kind) {
    case Failure::nameTaken:
        return u"Import it under another name";
    case Failure::cut:
        return u"Import what is readable";
    default:
        return failure.details.empty() ? std::u16string() : u"What the converter said last";
    }
}

std::u16string qualityText(imports::Quality quality) {
    const imports::QualityFacts& facts = imports::factsOf(quality);
    return core::displayText("About " + std::to_string(facts.megabytesAMinute) + " MB a minute, ") +
           sizeText(facts.box) + u" at most";
}

std::u16string importingText(const ImportItem& item) {
    return core::displayText("Importing " + core::fileName(item.source) + ": " +
                             std::to_string(item.percent) + " %.");
}

std::u16string importEndText(const ImportItem& item) {
    if (item.state == ImportState::failed) {
        return core::displayText(core::fileName(item.source) +
                                 " was not converted: " + imports::failureText(item.failure));
    }
    if (item.kind == imports::ImportKind::remake) {
        return core::displayText("\"" + item.clip.name + "\" is shown in place of \"" +
                                 core::fileName(item.source) + "\" now.");
    }
    return core::displayText("\"" + item.clip.name +
                             "\" is in the list now; choose it for a branch.");
}

} // namespace ui
