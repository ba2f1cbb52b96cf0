#include "recovery/Backups.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "core/Log.h"
#include "core/Paths.h"
#include "core/Reason.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "jobs/VideoImport.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "recovery/Places.h"
#include "recovery/Versions.h"

namespace recovery {
namespace {

using platform::FileSystem;

/// How often another program may take the name that a version was to have.
constexpr int kMaxAttempts = 10;

std::string folderIn(const std::string& folder, const std::string& name) {
    return folder.empty() ? std::string() : folder + encodedName(name) + "/";
}

/// Of the file's version: "-Scene.xml", or what follows the video in the name of its zone files.
std::string_view endingOf(const std::string& path) {
    for (const std::string_view ending : {kZoneListVersionEnding, kZoneShapesVersionEnding}) {
        if (path.ends_with(ending)) {
            return ending;
        }
    }
    return kSceneVersionEnding;
}

bool areEqual(FileSystem& disk, const Version& a, const Version& b, const std::stop_token& stop) {
    return a.endings == b.endings &&
           std::all_of(a.endings.begin(), a.endings.end(), [&](const std::string& ending) {
               return haveEqualBytes(disk, a.base + ending, b.base + ending, stop);
           });
}

} // namespace

std::string sceneVersionsFolder(const std::string& scene) {
    return folderIn(backupsFolder(), scene);
}

std::string zoneVersionsFolder(const std::string& scene, const std::string& video) {
    return folderIn(sceneVersionsFolder(scene), video);
}

Backups::Backups(std::function<std::string()> folder, std::function<bool()> isWanted)
    : m_folderNow(std::move(folder)), m_isWanted(std::move(isWanted)) {}

Backups::~Backups() {
    try {
        stop();
    } catch (const std::exception&) {
        return; // a line less in the log
    }
}

void Backups::begin(const std::vector<std::string>& paths, Need need) noexcept {
    try {
        stop();
        m_files.clear();
        m_must = need == Need::must;
        if (m_must || m_isWanted()) {
            start(paths);
        }
    } catch (const std::exception&) {
        m_report.failure = {{}, core::reason("out of memory"_tr)};
    }
}

void Backups::start(const std::vector<std::string>& paths) {
    FileSystem& disk = *core::services().fileSystem;
    std::int64_t saved = 0;
    for (const std::string& path : paths) {
        const std::string end = disk.resolveLink(path); // as the save will
        const auto info = end.empty() ? std::nullopt : disk.info(end);
        if (info && !info->isFolder) {
            saved = std::max(saved, info->modified);
            m_files.push_back({end, std::string(endingOf(path))});
        }
    }
    m_folder = m_folderNow();
    if (m_files.empty()) {
        return;
    }
    if (m_folder.empty()) {
        m_files.clear();
        m_report.failure = {{}, core::reason("the folder of the earlier versions is unknown"_tr)};
        return;
    }
    core::createFolders(disk, m_folder);
    m_mayBeEqual = !m_must && m_files.size() == paths.size();
    const std::vector<File> endings = std::exchange(m_files, {});
    for (int attempt = 0; m_files.empty() && attempt < kMaxAttempts; ++attempt) {
        const std::string base = freeBase(saved);
        for (const File& file : endings) {
            m_files.push_back({file.path, base + file.version});
        }
        linkOrCopy();
    }
    if (m_files.empty()) {
        m_report.failure = {m_folder, core::reason("other programs keep versions in it"_tr)};
    }
}

std::string Backups::freeBase(std::int64_t saved) const {
    platform::Clock& clock = *core::services().clock;
    const std::int64_t now = clock.now();
    Version version;
    version.kept = now;
    version.saved = saved <= 0 ? now : std::min(saved, now);
    version.isDamaged = m_must;
    const VersionList there = listVersions(*core::services().fileSystem, clock, m_folder);
    // Behind the newest even if the clock has been set back: older ones go first.
    if (!there.versions.empty() && there.versions.front().kept >= now) {
        const Version& newest = there.versions.front();
        const bool isLast = newest.number >= kMaxVersionNumber;
        version.kept = newest.kept + (isLast ? 1 : 0);
        version.number = isLast ? 0 : newest.number + 1;
    }
    return version.baseIn(m_folder);
}

void Backups::linkOrCopy() {
    FileSystem& disk = *core::services().fileSystem;
    std::vector<File> linked;
    std::vector<File> left;
    for (const File& file : m_files) {
        int error = 0;
        const bool isLinked = disk.linkFile(file.path, file.version, error);
        (isLinked ? linked : left).push_back(file);
        if (!isLinked && disk.info(file.version)) { // another program was faster
            m_files = std::move(linked);
            drop();
            return;
        }
    }
    if (left.empty()) {
        return;
    }
    run([this, &disk, left = std::move(left)](const std::stop_token& stop) {
        jobs::ImportProgress progress;
        const std::stop_callback cancelling(stop, [&progress] { progress.cancelled = true; });
        for (const File& file : left) {
            const jobs::ImportReport copy =
                jobs::importVideo(disk, file.path, file.version, progress, [] {});
            if (copy.result != jobs::ImportResult::copied) {
                m_report.failure = {m_folder, copy.reason};
                return;
            }
        }
    });
}

core::FileError Backups::beforeReplace() noexcept {
    try {
        if (m_thread.joinable()) {
            m_thread.join();
        }
        const core::FileError failure = std::exchange(m_report.failure, {});
        if (failure.empty()) {
            if (!m_files.empty()) {
                (void)core::services().fileSystem->syncFolder(m_folder);
            }
            return {};
        }
        drop();
        say("Earlier version not kept: " + failure.text());
        return m_must ? failure : core::FileError{};
    } catch (const std::exception&) {
        return m_must ? core::FileError{{}, core::reason("out of memory"_tr)} : core::FileError{};
    }
}

void Backups::end(bool replaced) noexcept {
    try {
        if (!replaced) {
            stop(); // the save may have failed before it was ready
            drop();
        } else if (!m_files.empty()) {
            tidyUp();
        }
    } catch (const std::exception&) {
        m_files.clear(); // the next save tidies up
    }
}

void Backups::drop() {
    for (const File& file : m_files) {
        int error = 0;
        core::services().fileSystem->removeFile(file.version, error);
    }
    m_files.clear();
    m_report = {};
}

void Backups::tidyUp() {
    FileSystem& disk = *core::services().fileSystem;
    platform::Clock& clock = *core::services().clock;
    run([this, &disk, &clock, backups = backupsFolder()](const std::stop_token& stop) {
        removeSuperfluous(disk, clock, stop);
        m_report.odd = tidy(disk, clock, backups, m_folder, kMaxBackupBytes, stop);
    });
}

void Backups::removeSuperfluous(FileSystem& disk, platform::Clock& clock,
                                const std::stop_token& stop) const {
    const std::vector<Version> versions = listVersions(disk, clock, m_folder).versions;
    const auto ours = std::find_if(versions.begin(), versions.end(), [this](const Version& v) {
        return m_files.front().version.starts_with(v.base + "-");
    });
    if (ours == versions.end()) {
        return;
    }
    const auto before = std::next(ours);
    const auto isAsBefore = [&](auto version) {
        return std::next(version) != versions.end() && !version->isDamaged &&
               areEqual(disk, *version, *std::next(version), stop);
    };
    const auto isAsSaved = [&](const File& file) {
        return haveEqualBytes(disk, file.version, file.path, stop);
    };
    if (m_mayBeEqual &&
        (isAsBefore(ours) || std::all_of(m_files.begin(), m_files.end(), isAsSaved))) {
        removeVersion(disk, *ours);
    }
    if (before != versions.end() && isAsBefore(before)) {
        removeVersion(disk, *before); // an earlier comparison was stopped
    }
}

void Backups::run(std::function<void(const std::stop_token&)> work) {
    const auto guarded = [this, work = std::move(work)](const std::stop_token& stop) {
        try {
            work(stop);
        } catch (const std::exception&) {
            m_report.failure = {{}, core::reason("out of memory"_tr)};
        }
    };
    try {
        m_thread = std::jthread(guarded);
    } catch (const std::exception&) {
        guarded({}); // no thread: late is better than not
    }
}

void Backups::stop() {
    m_thread.request_stop();
    settle();
}

void Backups::settle() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    const Report report = std::exchange(m_report, {});
    if (!report.odd.empty()) {
        say("Ignored among the earlier versions: " + report.odd.front() +
            (report.odd.size() == 1 ? std::string()
                                    : " and " + std::to_string(report.odd.size() - 1) + " more"));
    }
}

void Backups::say(const std::string& text) {
    if (m_said.insert(text).second) {
        core::Log::get()->Write(core::Log::Level::warning, "%s", text.c_str());
    }
}

} // namespace recovery
