// Differences and contents as lines for the author.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "check/Differences.h"
#include "check/Finding.h"
#include "core/Texts.h"

namespace check {
namespace {

/// A line with several branches is as long as the window has room for.
constexpr std::size_t kLineBytes = 64;

/// A number with what it counts and how that differs; `bare`: without the latter.
struct Part {
    std::size_t number;
    core::CountedText bare;
    core::CountedText whole;
    enum class Way { more, fewer, changed } way;
};

constexpr core::CountedText kBranches = "{0} branch|{0} branches"_trn;
constexpr core::CountedText kVideos = "{0} video|{0} videos"_trn;
constexpr core::CountedText kActions = "{0} action|{0} actions"_trn;
constexpr core::CountedText kZones = "{0} zone|{0} zones"_trn;

/// "4 branches, 3 videos fewer": neighbours share how they differ.
std::string joined(std::vector<Part> parts) {
    std::erase_if(parts, [](const Part& part) { return part.number == 0; });
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isShared = i + 1 < parts.size() && parts[i + 1].way == parts[i].way;
        text += text.empty() ? "" : ", ";
        text += core::trStored(isShared ? parts[i].bare : parts[i].whole, parts[i].number);
    }
    return text;
}

void append(std::string& text, const std::string& part) {
    text += (text.empty() ? "" : ", ") + part;
}

/// "3", "3 and 4", "3, 4 and 7", counted from 1.
std::string listed(const std::vector<int>& numbers) {
    if (numbers.empty()) {
        return {};
    }
    std::string text = std::to_string(numbers.front() + 1);
    for (std::size_t i = 1; i + 1 < numbers.size(); ++i) {
        text += ", " + std::to_string(numbers[i] + 1);
    }
    return numbers.size() == 1
               ? text
               : core::trStored("ListAnd|{0} and {1}"_tr, {text, numbers.back() + 1});
}

/// A zone and its frames: at the beginning of a line, or after other words.
std::string framesText(const ZoneDifferences::Frames& zone, bool isBeginning) {
    const auto& [first, last] = zone.frames;
    if (first == last) {
        return core::trStored(isBeginning ? "LineZoneFrame|Zone {0}: frame {1}"_tr
                                          : "ZoneFrame|zone {0}: frame {1}"_tr,
                              {zone.zone, first});
    }
    return core::trStored(isBeginning ? "LineZoneFrames|Zone {0}: frames {1} to {2}"_tr
                                      : "ZoneFrames|zone {0}: frames {1} to {2}"_tr,
                          {zone.zone, first, last});
}

void addNames(std::vector<Line>& lines, Line::Kind kind, core::Text text,
              const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        lines.push_back({kind, core::trStored(text, {name})});
    }
}

constexpr core::Text kAsNow = "as now"_tr;
constexpr core::Text kOrderChanged = "order changed"_tr;
constexpr core::Text kWith = "LineWith|With \"{0}\""_tr;
constexpr core::Text kWithout = "LineWithout|Without \"{0}\""_tr;

/// Puts `parts` into `line`, on as few lines as have room for them.
void addParts(std::vector<Line>& lines, core::Text line, const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty() && text.size() + part.size() > kLineBytes) {
            lines.push_back({Line::Kind::other, core::trStored(line, {std::exchange(text, {})})});
        }
        append(text, part);
    }
    if (!text.empty()) {
        lines.push_back({Line::Kind::other, core::trStored(line, {text})});
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
    using Way = Part::Way;
    std::string text = joined(
        {{differences.with.size(), kBranches, "{0} branch more|{0} branches more"_trn, Way::more},
         {static_cast<std::size_t>(differences.videosMore), kVideos,
          "{0} video more|{0} videos more"_trn, Way::more},
         {differences.without.size(), kBranches, "{0} branch fewer|{0} branches fewer"_trn,
          Way::fewer},
         {static_cast<std::size_t>(differences.videosFewer), kVideos,
          "{0} video fewer|{0} videos fewer"_trn, Way::fewer},
         {areVideosCounted ? 0 : differences.otherVideos.size(), kVideos,
          "{0} video changed|{0} videos changed"_trn, Way::changed},
         {actions, kActions, "{0} action changed|{0} actions changed"_trn, Way::changed}});
    if (text.empty() && differences.firstBranch) {
        text = core::trStored("first branch changed"_tr);
    }
    if (text.empty() && differences.isOtherOrder) {
        text = core::trStored(kOrderChanged);
    }
    return text.empty() ? core::trStored(kAsNow) : text;
}

std::string summaryOf(const ZoneDifferences& differences) {
    using Way = Part::Way;
    std::string text = joined(
        {{differences.with.size(), kZones, "{0} zone more|{0} zones more"_trn, Way::more},
         {differences.without.size(), kZones, "{0} zone fewer|{0} zones fewer"_trn, Way::fewer}});
    for (const ZoneDifferences::Frames& zone : differences.frames) {
        append(text, framesText(zone, false));
    }
    if (text.empty() && differences.isOtherOrder) {
        text = core::trStored(kOrderChanged);
    }
    return text.empty() ? core::trStored(kAsNow) : text;
}

std::vector<Line> linesOf(const SceneDifferences& differences) {
    std::vector<Line> lines;
    addNames(lines, Line::Kind::with, kWith, differences.with);
    addNames(lines, Line::Kind::without, kWithout, differences.without);
    std::vector<std::string> actions;
    for (const SceneDifferences::Actions& changed : differences.actions) {
        actions.push_back(core::trStored("NameNumbers|\"{0}\" {1}"_tr,
                                         {changed.branch, listed(changed.numbers)}));
    }
    addParts(lines, "Other actions: {0}"_tr, actions);
    std::vector<std::string> videos;
    std::transform(
        differences.otherVideos.begin(), differences.otherVideos.end(), std::back_inserter(videos),
        [](const std::string& name) { return core::trStored("QuotedName|\"{0}\""_tr, {name}); });
    addParts(lines, "Other videos: {0}"_tr, videos);
    if (differences.firstBranch) {
        lines.push_back(
            {Line::Kind::other, core::trStored("LineFirstBranch|First branch: \"{0}\""_tr,
                                               {*differences.firstBranch})});
    }
    if (differences.isOtherOrder) {
        lines.push_back({Line::Kind::other, core::trStored("Other order of the branches"_tr)});
    }
    return lines;
}

std::vector<Line> linesOf(const ZoneDifferences& differences) {
    std::vector<Line> lines;
    addNames(lines, Line::Kind::with, kWith, differences.with);
    addNames(lines, Line::Kind::without, kWithout, differences.without);
    for (const ZoneDifferences::Frames& zone : differences.frames) {
        lines.push_back({Line::Kind::other, framesText(zone, true)});
    }
    if (differences.isOtherOrder) {
        lines.push_back({Line::Kind::other, core::trStored("Other order of the zones"_tr)});
    }
    return lines;
}

} // namespace check
