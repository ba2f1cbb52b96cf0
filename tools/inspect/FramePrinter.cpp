#include "tools/inspect/FramePrinter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <random>
#include <variant>

#include "core/StandardError.h"
#include "tools/inspect/Command.h"

namespace inspect {
namespace {

// Clips cut from longer ones lack frames at their start, recordings in the middle. With many more
// missing, the file is damaged and a line for each is useless.
constexpr std::int64_t kMaxGap = 10'000;

std::string hexText(std::uint64_t value) {
    constexpr std::size_t kDigits = 16;
    std::array<char, kDigits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + kDigits, value, 16).ptr;
    const std::string text(digits.data(), end);
    return std::string(kDigits - text.size(), '0') + text;
}

std::string missingText(std::int64_t first, std::int64_t last) {
    return first == last ? "no frame " + std::to_string(first)
                         : "no frames " + std::to_string(first) + " to " + std::to_string(last);
}

} // namespace

FoundFrame SeekedFrames::find(int frame) {
    m_isPastEnd = m_clip.frameCount() > 0 && frame >= m_clip.frameCount();
    if (m_isPastEnd) {
        return {};
    }
    const auto fetched = m_clip.fetch(frame);
    return fetched ? FoundFrame{fetched->hash, fetched->isOwn} : FoundFrame{};
}

std::optional<int> SeekedFrames::next() {
    if (m_isPastEnd) {
        return std::nullopt;
    }
    const auto played = m_clip.next();
    return played ? std::optional(played->number) : std::nullopt;
}

PlayedFrames::PlayedFrames(FrameFetcher& clip, int last) {
    while (m_hashes.empty() || m_hashes.rbegin()->first < last) {
        const auto frame = clip.next();
        if (!frame) {
            return;
        }
        m_hashes.emplace(frame->number, frame->hash);
    }
}

FoundFrame PlayedFrames::find(int frame) {
    m_lastFound = frame;
    const auto found = m_hashes.find(frame);
    return found == m_hashes.end() ? FoundFrame{} : FoundFrame{found->second, true};
}

std::optional<int> PlayedFrames::next() {
    const auto found = m_hashes.upper_bound(m_lastFound);
    return found == m_hashes.end() ? std::nullopt : std::optional(found->first);
}

void FramePrinter::report(const std::string& message) {
    core::writeStandardError(m_file + ": " + message);
    m_result = kFindings;
}

void FramePrinter::printLine(int number, const std::optional<std::uint64_t>& hash) {
    m_out << number << ' ' << (hash ? hexText(*hash) : "-") << '\n' << std::flush;
    m_result |= hash ? kSuccess : kFindings;
}

void FramePrinter::printRange(const FrameRange& range) {
    const std::int64_t end = std::int64_t{range.last} + 1;
    std::int64_t gapEnd = 0; // frames before it are known to be missing
    for (std::int64_t number = range.first; number < end; ++number) {
        const FoundFrame found = m_source.find(static_cast<int>(number));
        if (!found.isOwn && number >= gapEnd) {
            const std::optional<int> next = m_source.next();
            if (!next && range.endsWithClip) {
                return;
            }
            gapEnd = next ? std::clamp<std::int64_t>(*next, number + 1, end) : end;
            if (!found.hash || gapEnd - number > kMaxGap) {
                report(missingText(number, gapEnd - 1));
            }
            if (gapEnd - number > kMaxGap) {
                printLine(static_cast<int>(number), std::nullopt);
                number = gapEnd - 1;
                continue;
            }
        }
        printLine(static_cast<int>(number), found.hash);
    }
}

void FramePrinter::printRandom(const RandomFrames& frames) {
    if (m_frameCount <= 0) {
        report("no random frames, as its length is not known");
        return;
    }
    std::mt19937 random(frames.seed);
    for (int i = 0; i < frames.count; ++i) {
        const auto number = static_cast<int>(random() % static_cast<std::uint32_t>(m_frameCount));
        printRange({number, number});
    }
}

void FramePrinter::print(const FrameItem& item) {
    if (const auto* const range = std::get_if<FrameRange>(&item)) {
        printRange(*range);
    } else {
        printRandom(std::get<RandomFrames>(item));
    }
}

int playAll(FrameFetcher& clip, const std::string& file, std::ostream& out) {
    int first = 0;
    std::int64_t next = 0;
    std::int64_t played = 0;
    while (const auto frame = clip.next()) {
        first = played++ == 0 ? frame->number : first;
        next = std::int64_t{frame->number} + 1;
        out << frame->number << ' ' << hexText(frame->hash) << '\n';
    }
    if (!clip.atEnd()) {
        out << next << " -\n";
    }
    const std::int64_t promised = std::int64_t{clip.frameCount()} - first;
    if (clip.atEnd() && played >= promised) {
        return kSuccess;
    }
    core::writeStandardError(file + ": " + std::to_string(played) + " frames played" +
                             (played < promised ? " of " + std::to_string(promised) : "") +
                             (clip.atEnd() ? "" : ", then no more came"));
    return kFindings;
}

} // namespace inspect
