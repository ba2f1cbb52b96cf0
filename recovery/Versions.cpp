#include "recovery/Versions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <tuple>
#include <utility>

#include "core/Paths.h"
#include "jobs/VideoImport.h"

namespace recovery {
namespace {

using platform::FileSystem;

constexpr std::array kEndings{kSceneVersionEnding, kZoneListVersionEnding,
                              kZoneShapesVersionEnding};
constexpr std::string_view kDamaged = "-damaged";
constexpr std::int64_t kSecondsOfDay = 86'400;
constexpr std::size_t kBlockBytes = std::size_t{256} * 1024;

std::string stampOf(std::int64_t time) {
    const std::chrono::sys_seconds moment{std::chrono::seconds(time)};
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day day(midnight);
    const std::chrono::hh_mm_ss clock(moment - midnight);
    std::array<char, 64> text{};
    std::snprintf(
        text.data(), text.size(), "%04d%02u%02uT%02d%02d%02dZ",
        std::clamp(static_cast<int>(day.year()), 0, 9999), static_cast<unsigned>(day.month()),
        static_cast<unsigned>(day.day()), static_cast<int>(clock.hours().count()),
        static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
    return text.data();
}

/// Takes a number of `digits` digits, or of 1 to 4 for 0, off the start of `text`.
std::optional<int> takeNumber(std::string_view& text, std::size_t digits) {
    int value = 0;
    const std::size_t room = digits == 0 ? std::min<std::size_t>(text.size(), 4) : digits;
    if (text.size() < room || room == 0 || text.front() == '-') {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + room, value);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || (digits != 0 && length != digits)) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return value;
}

bool take(std::string_view& text, std::string_view what) {
    const bool there = text.starts_with(what);
    text.remove_prefix(there ? what.size() : 0);
    return there;
}

std::optional<std::int64_t> takeStamp(std::string_view& text) {
    const auto year = takeNumber(text, 4);
    const auto month = takeNumber(text, 2);
    const auto day = takeNumber(text, 2);
    const bool isDate = take(text, "T");
    const auto hour = takeNumber(text, 2);
    const auto minute = takeNumber(text, 2);
    const auto second = takeNumber(text, 2);
    if (!take(text, "Z") || !isDate || !year || !month || !day || !hour || !minute || !second) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return days * kSecondsOfDay + *hour * 3600 + *minute * 60 + *second;
}

/// The version, with one of its endings, that has a file of this name.
std::optional<Version> parse(std::string_view name) {
    const auto ending =
        std::find_if(kEndings.begin(), kEndings.end(),
                     [&](std::string_view possible) { return name.ends_with(possible); });
    if (ending == kEndings.end()) {
        return std::nullopt;
    }
    name.remove_suffix(ending->size());
    Version version;
    const auto kept = takeStamp(name);
    const bool hasNumber = take(name, "-");
    const auto number = takeNumber(name, 0);
    const bool hasSaved = take(name, "-");
    const auto saved = takeStamp(name);
    version.isDamaged = take(name, kDamaged);
    if (!kept || !hasNumber || !number || !hasSaved || !saved || !name.empty()) {
        return std::nullopt;
    }
    version.kept = *kept;
    version.number = *number;
    version.saved = *saved;
    version.endings.emplace_back(*ending);
    return version;
}

bool isNewer(const Version& a, const Version& b) {
    return std::tie(a.kept, a.number, a.base) > std::tie(b.kept, b.number, b.base);
}

/// What lies below one folder of a scene's versions, and those of its videos.
void addBelow(FileSystem& files, platform::Clock& clock, const std::string& folder,
              VersionList& all, int levels, const std::stop_token& stop) {
    VersionList here = listVersions(files, clock, folder);
    std::move(here.versions.begin(), here.versions.end(), std::back_inserter(all.versions));
    std::move(here.odd.begin(), here.odd.end(), std::back_inserter(all.odd));
    std::vector<platform::FolderEntry> entries;
    if (levels == 0 || !files.list(folder, entries)) {
        return;
    }
    for (const platform::FolderEntry& entry : entries) {
        const std::string path = folder + entry.name;
        if (!entry.isFolder || stop.stop_requested()) {
            continue;
        }
        if (files.resolveLink(path) == path) {
            addBelow(files, clock, path + "/", all, levels - 1, stop);
        } else {
            all.odd.push_back(path); // a link leads out of here, or in circles
        }
    }
}

} // namespace

std::string Version::baseIn(const std::string& folder) const {
    return folder + stampOf(kept) + "-" + std::to_string(number) + "-" + stampOf(saved) +
           std::string(isDamaged ? kDamaged : "");
}

VersionList listVersions(FileSystem& files, platform::Clock& clock, const std::string& folder) {
    const std::int64_t latest = clock.now() + kMostDaysAhead * kSecondsOfDay;
    VersionList list;
    std::vector<platform::FolderEntry> entries;
    (void)files.list(folder, entries);
    std::map<std::string, Version> byBase;
    for (const platform::FolderEntry& entry : entries) {
        if (entry.isFolder || jobs::isImportTemporary(entry.name)) {
            continue; // an unfinished copy is written again
        }
        const std::string path = folder + entry.name;
        std::optional<Version> found = parse(entry.name);
        if (found && found->kept > latest) {
            found.reset();
        }
        const auto info = found ? files.info(path) : std::nullopt;
        if (!info || info->isFolder || files.resolveLink(path) != path) {
            list.odd.push_back(path);
            continue;
        }
        const std::string& ending = found->endings.front();
        std::string base = path.substr(0, path.size() - ending.size());
        Version& version = byBase.try_emplace(base, *found).first->second;
        if (version.base.empty()) {
            version.base = std::move(base);
        } else {
            version.endings.push_back(ending);
        }
        version.bytes += info->size;
    }
    for (auto& [base, version] : byBase) {
        std::sort(version.endings.begin(), version.endings.end());
        list.versions.push_back(std::move(version));
    }
    std::sort(list.versions.begin(), list.versions.end(), isNewer);
    return list;
}

std::vector<Version> surplusOf(const std::vector<Version>& versions, platform::Clock& clock) {
    const std::int64_t firstKept = clock.now() - kDaysKept * kSecondsOfDay;
    const auto dayOf = [&clock](const Version& version) {
        const platform::LocalTime time = clock.localTime(version.kept);
        return std::tuple(time.year, time.month, time.day);
    };
    std::vector<Version> surplus;
    std::size_t newer = 0;
    for (std::size_t i = 0; i < versions.size(); ++i) {
        const Version& version = versions[i];
        newer += version.isDamaged ? 0 : 1;
        if (version.isDamaged || newer <= kNewestKept) {
            continue;
        }
        // The state that a day began with is worth more than the steps between.
        const bool isFirstOfDay =
            i + 1 == versions.size() || dayOf(versions[i + 1]) != dayOf(version);
        if (version.kept < firstKept || !isFirstOfDay) {
            surplus.push_back(version);
        }
    }
    return surplus;
}

bool haveEqualBytes(FileSystem& files, const std::string& a, const std::string& b,
                    const std::stop_token& stop) {
    const auto infoA = files.info(a);
    const auto infoB = files.info(b);
    if (!infoA || !infoB || infoA->size != infoB->size) {
        return false;
    }
    int error = 0;
    const auto streamA = files.open(a, platform::OpenMode::read, error);
    const auto streamB = files.open(b, platform::OpenMode::read, error);
    if (!streamA || !streamB) {
        return false;
    }
    std::string blockA(kBlockBytes, '\0');
    std::string blockB(kBlockBytes, '\0');
    for (std::uint64_t compared = 0; compared < infoA->size;) {
        const std::size_t read = streamA->read(blockA.data(), blockA.size());
        if (stop.stop_requested() || read == 0 ||
            streamB->read(blockB.data(), blockB.size()) != read ||
            blockA.compare(0, read, blockB, 0, read) != 0) {
            return false;
        }
        compared += read;
    }
    return true;
}

void removeVersion(FileSystem& files, const Version& version) {
    for (const std::string& ending : version.endings) {
        int error = 0; // what cannot be removed is met again the next time
        files.removeFile(version.base + ending, error);
    }
}

std::vector<std::string> tidy(FileSystem& files, platform::Clock& clock, const std::string& backups,
                              const std::string& folder, std::uint64_t maxBytes,
                              const std::stop_token& stop) {
    for (const Version& version : surplusOf(listVersions(files, clock, folder).versions, clock)) {
        removeVersion(files, version);
    }
    VersionList all;
    addBelow(files, clock, backups, all, 2, stop);
    if (stop.stop_requested()) {
        return {}; // what is missing may be the newest of a folder
    }
    std::sort(all.versions.begin(), all.versions.end(), isNewer);
    std::uint64_t bytes = 0;
    std::set<std::string> folders;
    std::vector<Version> others;
    for (Version& version : all.versions) {
        bytes += version.bytes;
        const bool isNewest =
            !version.isDamaged && folders.insert(core::folderOf(version.base)).second;
        if (!version.isDamaged && !isNewest) {
            others.push_back(std::move(version));
        }
    }
    for (auto oldest = others.rbegin(); oldest != others.rend() && bytes > maxBytes; ++oldest) {
        bytes -= oldest->bytes;
        removeVersion(files, *oldest);
    }
    return all.odd;
}

} // namespace recovery
