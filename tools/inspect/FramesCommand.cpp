#include <algorithm>
#include <array>
#include <charconv>
#include <set>

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

int seekFrames(FrameFetcher& clip, const std::vector<int>& frames, std::ostream& out) {
    int result = kGood;
    for (const int frame : frames) {
        const auto fetched = clip.fetch(frame);
        if (fetched) {
            out << frame << ' ' << hexText(fetched->hash) << '\n';
        } else {
            out << frame << " -\n";
            result = kFindings;
        }
        out.flush();
    }
    return result;
}

/// wanted: empty = all.
int playFrames(FrameFetcher& clip, const std::set<int>& wanted, std::ostream& out) {
    int expected = 0;
    while (const auto frame = clip.next()) {
        expected = frame->number + 1;
        if (wanted.empty() || wanted.count(frame->number) > 0)
            out << frame->number << ' ' << hexText(frame->hash) << '\n';
        if (!wanted.empty() && expected > *wanted.rbegin())
            return kGood;
    }
    if (clip.atEnd())
        return kGood;
    out << expected << " -\n";
    return kFindings;
}

} // namespace

int runFrames(const Arguments& arguments, std::ostream& out) {
    Arguments items = arguments;
    const auto options = std::remove(items.begin(), items.end(), "--sequential");
    const bool sequential = options != items.end();
    items.erase(options, items.end());
    if (items.empty() || items.front().starts_with("--"))
        return badUsage("frames", "which frames of which file?");
    try {
        FrameFetcher clip(items.front());
        items.erase(items.begin());
        std::vector<int> frames;
        for (const std::string& item : items)
            if (!addFrames(item, clip.frameCount(), frames))
                return badUsage("frames", "which frames of which file?");
        if (sequential)
            return playFrames(clip, {frames.begin(), frames.end()}, out);
        if (items.empty())
            for (int frame = 0; frame < clip.frameCount(); ++frame)
                frames.push_back(frame);
        return seekFrames(clip, frames, out);
    } catch (const theora::TheoraGenericException& error) {
        core::tellStandardError(error.getMessage());
        return kUnreadable;
    }
}

} // namespace inspect
