#include "check/FactsReader.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "check/ZoneShapes.h"
#include "core/File.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "platform/Geometry.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"
#include "src/TheoraSurvey.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace check {
namespace {

bool isVideoName(std::string_view name) {
    const std::string lower = core::lowerCase(name);
    return lower.ends_with(".ogv") || lower.ends_with(".ogg");
}

void readZones(const std::string& base, platform::Size size, VideoFacts& facts) {
    const core::LogCollector quiet;
    const zone::Scale parts{kPartsOfPixel, kPartsOfPixel};
    const auto shapes = zone::ZoneManager::create(base, zone::kStoredFrameCount, true, parts);
    const auto zones = shapes ? shapes : zone::ZoneManager::create(base, 0, false);
    for (int number = 0; zones && number < zones->zoneCount(); ++number) {
        const zone::Zone& zone = *zones->zone(number);
        facts.zones.push_back(shapes ? factsOf(zone, facts.frameCount, size)
                                     : ZoneFacts{.name = zone.name()});
    }
}

} // namespace

FolderFacts FactsReader::read(const std::set<std::string>& videos,
                              const std::set<std::string>& copying,
                              const std::function<bool()>& isStopped) {
    FolderFacts facts{.copying = copying};
    std::map<std::string, Known> known;
    for (const std::string& name : videos) {
        if (name.empty() || copying.contains(name) || isStopped()) {
            continue;
        }
        const std::string base = core::withoutExtension(m_folder + name);
        const Stamps stamps{stampOf(m_folder + name), stampOf(base + "-ZoneInfo.xml"),
                            stampOf(base + "-ZoneInfo.bin")};
        Known& now = known[name];
        if (const auto before = m_known.find(name); before != m_known.end() &&
                                                    before->second.isSettled &&
                                                    before->second.stamps == stamps) {
            now = before->second;
        } else {
            const std::int64_t time = m_clock.now();
            now = {stamps, std::make_shared<const VideoFacts>(readVideo(name, stamps, isStopped))};
            now.isSettled = std::all_of(stamps.begin(), stamps.end(), [time](const auto& stamp) {
                return !stamp || stamp->modified < time;
            });
        }
        facts.videos[name] = now.facts;
    }
    if (!isStopped()) {
        m_known = std::move(known);
    }
    listFiles(facts);
    return facts;
}

std::optional<FactsReader::Stamp> FactsReader::stampOf(const std::string& path) {
    const std::optional<platform::FileInfo> info = m_files.info(path);
    return info && !info->isFolder
               ? std::optional(Stamp{{info->volume, info->file}, info->size, info->modified})
               : std::nullopt;
}

VideoFacts FactsReader::readVideo(const std::string& name, const Stamps& stamps,
                                  const std::function<bool()>& isStopped) {
    VideoFacts facts{.state = VideoFacts::State::missing,
                     .hasZoneFiles = stamps[1].has_value() || stamps[2].has_value()};
    platform::Size size;
    if (stamps[0]) {
        const theora::ClipSurvey clip = theora::surveyClip(m_folder + name, m_files, isStopped);
        facts.state = clip.isDecodable ? VideoFacts::State::good : VideoFacts::State::unreadable;
        facts.id = stamps[0]->id;
        facts.width = clip.width;
        facts.frameCount = clip.frameCount;
        facts.keyFrameSeconds = clip.keyFrameSeconds;
        size = {clip.width, clip.height};
    }
    if (facts.hasZoneFiles) {
        const core::StoppableReading stoppable(isStopped);
        readZones(core::withoutExtension(m_folder + name), size, facts);
    }
    return facts;
}

void FactsReader::listFiles(FolderFacts& facts) {
    std::vector<platform::FolderEntry> entries;
    (void)m_files.list(m_folder, entries); // what cannot be listed has no unused videos
    for (const platform::FolderEntry& entry : entries) {
        if (!entry.isFolder && isVideoName(entry.name)) {
            const std::optional<Stamp> stamp = stampOf(m_folder + entry.name);
            facts.files[entry.name] = stamp ? stamp->id : FileId{};
        }
    }
}

std::set<std::string> videosOf(const scene::SceneManager& scene) {
    std::set<std::string> videos;
    const scene::BranchManager* const branches = scene.branches();
    for (int i = 0; branches != nullptr && i < branches->branchCount(); ++i) {
        videos.insert(branches->branch(i)->Filename());
    }
    return videos;
}

std::optional<Counts> countFindings(platform::FileSystem& files, platform::Clock& clock,
                                    const std::string& folder,
                                    const std::function<bool()>& isStopped) {
    const core::LogCollector quiet;
    const std::shared_ptr<scene::SceneManager> scene = scene::SceneManager::create();
    if (!scene || !scene->loadFolder(folder)) {
        return std::nullopt;
    }
    SceneCheck check;
    check.setFacts(FactsReader(files, clock, folder).read(videosOf(*scene), {}, isStopped));
    check.checkAll(*scene);
    return isStopped() ? std::nullopt : std::optional(check.counts());
}

} // namespace check
