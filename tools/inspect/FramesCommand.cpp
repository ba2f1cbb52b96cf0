#include <algorithm>
#include <climits>
#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/StandardError.h"
#include "src/TheoraException.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/FrameFetcher.h"
#include "tools/inspect/FrameList.h"
#include "tools/inspect/FramePrinter.h"

namespace inspect {
namespace {

/// Empty, after a report, when an item cannot be parsed.
std::optional<std::vector<FrameItem>> readItems(const Arguments& texts) {
    std::vector<FrameItem> items;
    for (const std::string& text : texts) {
        const auto item = readFrameItem(text);
        if (!item) {
            (void)badUsage("frames", "which frames are \"" + text + "\"?");
            return std::nullopt;
        }
        items.push_back(*item);
    }
    return items;
}

int seekFrames(FrameFetcher& clip, const std::string& file, const std::vector<FrameItem>& items,
               std::ostream& out) {
    SeekedFrames frames(clip);
    FramePrinter printer(frames, file, clip.frameCount(), out);
    if (items.empty()) {
        const bool isKnown = clip.frameCount() > 0;
        printer.print(FrameRange{0, isKnown ? clip.frameCount() - 1 : INT_MAX, !isKnown});
    }
    for (const FrameItem& item : items) {
        printer.print(item);
    }
    return printer.result();
}

int playFrames(FrameFetcher& clip, const std::string& file, const std::vector<FrameItem>& items,
               std::ostream& out) {
    int last = -1;
    for (const FrameItem& item : items) {
        const auto* const range = std::get_if<FrameRange>(&item);
        last = std::max(last, range != nullptr ? range->last : clip.frameCount() - 1);
    }
    PlayedFrames frames(clip, last);
    FramePrinter printer(frames, file, clip.frameCount(), out);
    for (const FrameItem& item : items) {
        printer.print(item);
    }
    return printer.result();
}

} // namespace

int runFrames(const Arguments& arguments, std::ostream& out) {
    Arguments texts = arguments;
    const auto options = std::remove(texts.begin(), texts.end(), "--sequential");
    const bool sequential = options != texts.end();
    texts.erase(options, texts.end());
    if (texts.empty() || texts.front().starts_with("--")) {
        return badUsage("frames", "which frames of which file?");
    }
    const std::string file = texts.front();
    const auto items = readItems({texts.begin() + 1, texts.end()});
    if (!items) {
        return kUnreadable;
    }
    try {
        FrameFetcher clip(file);
        if (!sequential) {
            return seekFrames(clip, file, *items, out);
        }
        return items->empty() ? playAll(clip, file, out) : playFrames(clip, file, *items, out);
    } catch (const theora::TheoraGenericException& error) {
        core::writeStandardError(error.getMessage());
        return kUnreadable;
    }
}

} // namespace inspect
