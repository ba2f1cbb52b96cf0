// Differences and contents as lines for the author.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Differences.h"
#include "check/Finding.h"

namespace check {
namespace {

/// A line with several branches is as long as the window has room for.
constexpr std::size_t kLineBytes = 64;

std::string quoted(const std::string& name) {
    return "\"" + name + "\"";
}

/// A number with what it counts and how that differs.
struct Part {
    std::size_t number;
    std::string_view one;
    std::string_view many;
    std::string_view word;
};

/// "4 branches, 3 videos fewer": neighbours share their last word.
std::string joined(const std::vector<Part>& parts) {
    std::string text;
    std::string_view word;
    for (const Part& part : parts) {
        if (part.number == 0) {
            continue;
        }
        if (!text.empty()) {
            text += word == part.word ? ", " : " " + std::string(word) + ", ";
        }
        word = part.word;
        text += std::to_string(part.number) + " ";
        text += part.number == 1 ? part.one : part.many;
    }
    return text.empty() ? text : text + " " + std::string(word);
}

void append(std::string& text, const std::string& part) {
    text += (text.empty() ? "" : ", ") + part;
}

/// "3", "3 and 4", "3, 4 and 7", counted from 1.
std::string listed(const std::vector<int>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool isLast = i + 1 == numbers.size();
        text += i == 0 ? "" : isLast ? " and " : ", ";
        text += std::to_string(numbers[i] + 1);
    }
    return text;
}

std::string framesText(const ZoneDifferences::Frames& zone) {
    const auto& [first, last] = zone.frames;
    return "zone " + zone.zone + ": " +
           (first == last ? "frame " + std::to_string(first)
                          : "frames " + std::to_string(first) + " to " + std::to_string(last));
}

void addNames(std::vector<Line>& lines, Line::Kind kind, const char* word,
              const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        lines.push_back({kind, word + quoted(name)});
    }
}

/// Puts `parts` behind `title` on as few lines as have room for them.
void addParts(std::vector<Line>& lines, const std::string& title,
              const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty() && text.size() + part.size() > kLineBytes) {
            lines.push_back({Line::Kind::other, title + std::exchange(text, {})});
        }
        append(text, part);
    }
    if (!text.empty()) {
        lines.push_back({Line::Kind::other, title + text});
    }
}

} // namespace

std::string summaryOf(const SceneDifferences& differences) {
    std::size_t actions = 0;
    for (const SceneDifferences::Actions& changed : differences.actions) {
        actions += changed.numbers.size();
    }
    // Videos that come and go are counted already.
    const bool areVideosCounted = differences.videosMore + differences.videosFewer > 0;
    std::string text = joined(
        {{differences.with.size(), "branch", "branches", "more"},
         {static_cast<std::size_t>(differences.videosMore), "video", "videos", "more"},
         {differences.without.size(), "branch", "branches", "fewer"},
         {static_cast<std::size_t>(differences.videosFewer), "video", "videos", "fewer"},
         {areVideosCounted ? 0 : differences.otherVideos.size(), "video", "videos", "changed"},
         {actions, "action", "actions", "changed"}});
    if (text.empty() && differences.firstBranch) {
        text = "first branch changed";
    }
    if (text.empty() && differences.isOtherOrder) {
        text = "order changed";
    }
    return text.empty() ? "as now" : text;
}

std::string summaryOf(const ZoneDifferences& differences) {
    std::string text = joined({{differences.with.size(), "zone", "zones", "more"},
                               {differences.without.size(), "zone", "zones", "fewer"}});
    for (const ZoneDifferences::Frames& zone : differences.frames) {
        append(text, framesText(zone));
    }
    if (text.empty() && differences.isOtherOrder) {
        text = "order changed";
    }
    return text.empty() ? "as now" : text;
}

std::vector<Line> linesOf(const SceneDifferences& differences) {
    std::vector<Line> lines;
    addNames(lines, Line::Kind::with, "With ", differences.with);
    addNames(lines, Line::Kind::without, "Without ", differences.without);
    std::vector<std::string> actions;
    for (const SceneDifferences::Actions& changed : differences.actions) {
        actions.push_back(quoted(changed.branch) + " " + listed(changed.numbers));
    }
    addParts(lines, "Other actions: ", actions);
    std::vector<std::string> videos;
    std::transform(differences.otherVideos.begin(), differences.otherVideos.end(),
                   std::back_inserter(videos), quoted);
    addParts(lines, "Other videos: ", videos);
    if (differences.firstBranch) {
        lines.push_back({Line::Kind::other, "First branch: " + quoted(*differences.firstBranch)});
    }
    if (differences.isOtherOrder) {
        lines.push_back({Line::Kind::other, "Other order of the branches"});
    }
    return lines;
}

std::vector<Line> linesOf(const ZoneDifferences& differences) {
    std::vector<Line> lines;
    addNames(lines, Line::Kind::with, "With ", differences.with);
    addNames(lines, Line::Kind::without, "Without ", differences.without);
    for (const ZoneDifferences::Frames& zone : differences.frames) {
        std::string text = framesText(zone);
        text.front() = 'Z';
        lines.push_back({Line::Kind::other, std::move(text)});
    }
    if (differences.isOtherOrder) {
        lines.push_back({Line::Kind::other, "Other order of the zones"});
    }
    return lines;
}

} // namespace check
