#include "ui/importing/ImportTexts.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "ui/FigureTexts.h"

namespace ui {
namespace {

using imports::Failure;
using imports::ImportItem;
using imports::ImportState;

std::u16string convertingText(const ImportItem& item) {
    const std::u16string left = minutesText(item.secondsLeft);
    return left.empty()
               ? core::tr("ConvertingAt|Converting, {0} %"_tr, item.percent)
               : core::tr("ConvertingLeft|Converting, {0} %, {1} left"_tr, item.percent, left);
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
        return {core::tr("Waiting"_tr), {}};
    case ImportState::converting:
        return {convertingText(item), {}};
    case ImportState::done:
        return {core::tr(item.clip.hasSound ? "Done, {0}, with sound"_tr
                                            : "Done, {0}, without sound"_tr,
                         bytesText(item.clip.bytes)),
                {}};
    case ImportState::cancelled:
        return {core::tr("Cancelled"_tr), {}};
    case ImportState::failed:
        return {core::tr("Not converted:"_tr),
                core::displayText(imports::failureText(item.failure))};
    }
    return {};
}

std::u16string importRemedyText(const imports::ImportFailure& failure) {
    switch (failure.kind) {
    case Failure::nameTaken:
        return core::tr("Keep Both"_tr);
    case Failure::cut:
        return core::tr("Import Anyway"_tr);
    default:
        return failure.details.empty() ? std::u16string() : core::tr("Details"_tr);
    }
}

std::u16string importRemedyToolTip(const imports::ImportFailure& failure) {
    switch (failure.kind) {
    case Failure::nameTaken:
        return core::tr("Import it under another name"_tr);
    case Failure::cut:
        return core::tr("Import what is readable"_tr);
    default:
        return failure.details.empty() ? std::u16string()
                                       : core::tr("The converter's last message"_tr);
    }
}

std::u16string qualityText(imports::Quality quality) {
    const imports::QualityFacts& facts = imports::factsOf(quality);
    return core::tr("About {0} MB a minute, {1} at most"_tr, facts.megabytesAMinute,
                    sizeText(facts.box));
}

std::u16string importingText(const ImportItem& item) {
    return core::tr("Importing {0}: {1} %."_tr, core::fileName(item.source), item.percent);
}

std::u16string importEndText(const ImportItem& item) {
    if (item.state == ImportState::failed) {
        return core::tr("{0} was not converted: {1}"_tr, core::fileName(item.source),
                        imports::failureText(item.failure));
    }
    if (item.kind == imports::ImportKind::remake) {
        return core::tr("\"{0}\" is shown in place of \"{1}\" now."_tr, item.clip.name,
                        core::fileName(item.source));
    }
    return core::tr("\"{0}\" is in the list now; choose it for a branch."_tr, item.clip.name);
}

} // namespace ui
