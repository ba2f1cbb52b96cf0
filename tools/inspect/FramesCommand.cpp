#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>

#include "core/StandardError.h"
#include "src/TheoraException.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/FrameFetcher.h"
#include "tools/inspect/FrameList.h"

namespace inspect {
namespace {

std::string hexText(std::uint64_t value) {
    constexpr std::size_t kDigits = 16;
    std::array<char, kDigits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + kDigits, value, 16).ptr;
    const std::string text(digits.data(), end);
    return std::string(kDigits - text.size(), '0') + text;
}

/// Prints one line; a frame that did not come is a finding.
int printFrame(int number, const std::optional<std::uint64_t>& hash, std::ostream& out) {
    out << number << ' ' << (hash ? hexText(*hash) : "-") << '\n';
    return hash ? kGood : kFindings;
}

int seekFrames(FrameFetcher& clip, const std::vector<int>& frames, std::ostream& out) {
    int result = kGood;
    for (const int frame : frames) {
        const auto fetched = clip.fetch(frame);
        result |= printFrame(frame, fetched ? std::optional(fetched->hash) : std::nullopt, out);
        out.flush();
    }
    return result;
}

int playAll(FrameFetcher& clip, std::ostream& out) {
    int expected = 0;
    while (const auto frame = clip.next()) {
        expected = frame->number + 1;
        (void)printFrame(frame->number, frame->hash, out);
    }
    return clip.atEnd() ? kGood : printFrame(expected, std::nullopt, out);
}

/// Prints in the order asked for, although the frames come in their own.
int playFrames(FrameFetcher& clip, const std::vector<int>& frames, std::ostream& out) {
    if (frames.empty()) {
        return kGood;
    }
    const int last = *std::max_element(frames.begin(), frames.end());
    std::map<int, std::uint64_t> played;
    while (played.empty() || played.rbegin()->first < last) {
        const auto frame = clip.next();
        if (!frame) {
            break;
        }
        played.emplace(frame->number, frame->hash);
    }
    int result = kGood;
    for (const int frame : frames) {
        const auto found = played.find(frame);
        result |= printFrame(
            frame, found == played.end() ? std::nullopt : std::optional(found->second), out);
    }
    return result;
}

} // namespace

int runFrames(const Arguments& arguments, std::ostream& out) {
    Arguments items = arguments;
    const auto options = std::remove(items.begin(), items.end(), "--sequential");
    const bool sequential = options != items.end();
    items.erase(options, items.end());
    if (items.empty() || items.front().starts_with("--")) {
        return badUsage("frames", "which frames of which file?");
    }
    try {
        FrameFetcher clip(items.front());
        items.erase(items.begin());
        std::vector<int> frames;
        for (const std::string& item : items) {
            if (!addFrames(item, clip.frameCount(), frames)) {
                return badUsage("frames", "which frames of which file?");
            }
        }
        if (sequential) {
            return items.empty() ? playAll(clip, out) : playFrames(clip, frames, out);
        }
        if (items.empty()) {
            for (int frame = 0; frame < clip.frameCount(); ++frame) {
                frames.push_back(frame);
            }
        }
        return seekFrames(clip, frames, out);
    } catch (const theora::TheoraGenericException& error) {
        core::tellStandardError(error.getMessage());
        return kUnreadable;
    }
}

} // namespace inspect
