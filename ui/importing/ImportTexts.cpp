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

std::u16string convertingText(const ImportItem& item) {
    const std::u16string left = minutesText(item.secondsLeft);
    return core::displayText("Converting, " + std::to_string(item.percent) + " %") +
           (left.empty() ? left : u", " + left + u" left");
}

} // namespace

std::u16string minutesText(double seconds) {
    if (seconds < 0 || seconds >= kLongest) {
        return {};
    }
    const long long whole = std::llround(seconds);
    const std::string rest = std::to_string(whole % 60);
    return core::displayText(std::to_string(whole / 60) + ":" + (rest.size() < 2 ? "0" : "") +
                             rest);
}

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
        return {convertingText(item), {}};
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
