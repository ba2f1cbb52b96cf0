#include "publish/PublishFolder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <optional>

#include "core/Paths.h"
#include "publish/PageList.h"

namespace publish {
namespace {

using platform::FileSystem;
using platform::OpenMode;

constexpr const char* kClipsFolder = "clips";

// Beside the place: the folder in the making, the one that it replaces, and what keeps others out.
constexpr const char* kNew = ".quorvel-new";
constexpr const char* kOld = ".quorvel-old";
constexpr const char* kLock = ".quorvel-lock";

/// Made by the system's own windows in any folder that they show.
bool isLitter(std::string_view name) {
    constexpr std::array<std::string_view, 3> kLitter{"Thumbs.db", "desktop.ini", ".DS_Store"};
    return std::find(kLitter.begin(), kLitter.end(), name) != kLitter.end();
}

/// Whether a page has a file of that name; `folder`: "clips" or empty.
bool isPageFile(const std::string& folder, const std::string& name) {
    constexpr std::array<std::string_view, 6> kNames{"index.html", "player.js", "player.css",
                                                     "scene.js",   "still.jpg", kListName};
    if (folder.empty()) {
        return isLitter(name) || std::find(kNames.begin(), kNames.end(), name) != kNames.end();
    }
    const std::size_t end = std::min(name.find_first_not_of("0123456789"), name.size());
    const std::string_view rest = std::string_view(name).substr(end);
    return isLitter(name) || (end > 0 && (rest == ".webm" || rest == ".js"));
}

bool isListed(const std::vector<PageFile>& list, const std::string& name) {
    return std::any_of(list.begin(), list.end(),
                       [&](const PageFile& file) { return file.name == name; });
}

std::string withoutEnd(std::string path) {
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) {
        path.pop_back();
    }
    return path;
}

} // namespace

PublishFolder::PublishFolder(FileSystem& files, const std::string& path)
    : m_files(files), m_path(withoutEnd(files.resolveLink(withoutEnd(path)))) {}

PublishFolder::~PublishFolder() {
    try {
        if (m_isBegun) {
            removeOurs(m_path + kNew);
        }
        if (m_lock) {
            m_lock->remove();
        }
    } catch (const std::exception&) {
        return; // out of memory: the next page of this place removes what is left
    }
}

PublishFailure PublishFolder::failed(PublishFailure failure, int error) {
    m_details = error != 0 ? m_files.errorText(error) : std::string();
    return failure;
}

PublishFailure PublishFolder::begin() {
    if (m_path.empty()) {
        return PublishFailure::notWritable;
    }
    core::createFolders(m_files, m_path);
    int error = 0;
    m_lock = m_files.lockFile(m_path + kLock, error);
    if (!m_lock) {
        return failed(error == 0 ? PublishFailure::busy : PublishFailure::notWritable, error);
    }
    if (!m_files.info(m_path) && m_files.info(m_path + kOld)) { // a crash amid the exchange
        m_files.replaceFile(m_path + kOld, m_path, error);
    }
    if (!mayReplace()) {
        return PublishFailure::notEmpty;
    }
    m_former = readPageList(m_path + "/" + std::string(kListName));
    removeOurs(m_path + kOld);
    removeOurs(m_path + kNew);
    const std::string aside = m_path + kNew;
    m_isBegun = m_files.createFolder(aside, error);
    if (!m_isBegun || !m_files.createFolder(aside + "/" + kClipsFolder, error)) {
        return failed(PublishFailure::notWritable, error);
    }
    return PublishFailure::none;
}

bool PublishFolder::mayReplace() const {
    const auto info = m_files.info(m_path);
    if (!info) {
        return true;
    }
    std::vector<platform::FolderEntry> entries;
    if (!info->isFolder || !m_files.list(m_path + "/", entries)) {
        return false;
    }
    if (entries.empty()) {
        return true;
    }
    std::vector<PageFile> list = readPageList(m_path + "/" + std::string(kListName));
    if (list.empty()) {
        return false;
    }
    list.push_back({std::string(kListName)});
    return holdsOnly(list, "") && holdsOnly(list, std::string(kClipsFolder) + "/");
}

bool PublishFolder::holdsOnly(const std::vector<PageFile>& list, const std::string& folder) const {
    std::vector<platform::FolderEntry> entries;
    if (!m_files.list(m_path + "/" + folder, entries)) {
        return !m_files.info(m_path + "/" + folder);
    }
    return std::all_of(entries.begin(), entries.end(), [&](const platform::FolderEntry& entry) {
        const std::string name = folder + entry.name;
        return entry.isFolder ? name == kClipsFolder : isLitter(entry.name) || isListed(list, name);
    });
}

std::string PublishFolder::asideOf(const std::string& name) const {
    return m_path + kNew + "/" + name;
}

std::string PublishFolder::add(const std::string& name) {
    m_list.push_back({name});
    return asideOf(name);
}

void PublishFolder::forget(const std::string& name) {
    std::erase_if(m_list, [&](const PageFile& file) { return file.name == name; });
}

void PublishFolder::setSource(const std::string& name, Mark source) {
    for (PageFile& file : m_list) {
        file.source = file.name == name ? source : file.source;
    }
}

bool PublishFolder::reuse(const std::string& name, Mark source,
                          const std::function<bool()>& isCancelled) {
    const std::string clips = std::string(kClipsFolder) + "/";
    const auto former = std::find_if(m_former.begin(), m_former.end(), [&](const PageFile& file) {
        return file.source == source && file.name.starts_with(clips) &&
               isPageFile(kClipsFolder, file.name.substr(clips.size()));
    });
    if (source == 0 || former == m_former.end()) {
        return false;
    }
    const std::optional<Mark> contents = copy(m_path + "/" + former->name, add(name), isCancelled);
    if (contents != former->contents) {
        forget(name);
        return false;
    }
    setSource(name, source);
    return true;
}

/// Removes what was not copied as a whole.
std::optional<Mark> PublishFolder::copy(const std::string& from, const std::string& to,
                                        const std::function<bool()>& isCancelled) {
    int error = 0;
    const auto target = m_files.open(to, OpenMode::write, error);
    if (!target) {
        return std::nullopt;
    }
    std::optional<Mark> contents = markOfFile(m_files, from, 0, [&](std::string_view bytes) {
        return !isCancelled() && target->write(bytes.data(), bytes.size()) == bytes.size();
    });
    if (!target->close() || !contents) {
        contents.reset();
        m_files.removeFile(to, error);
    }
    return contents;
}

PublishFailure PublishFolder::write(const std::string& name, std::string_view text) {
    int error = 0;
    const auto stream = m_files.open(add(name), OpenMode::write, error);
    if (!stream) {
        return failed(PublishFailure::notWritable, error);
    }
    const bool isWritten = stream->write(text.data(), text.size()) == text.size();
    if (!stream->close() || !isWritten) {
        return failed(PublishFailure::noSpace, stream->lastError());
    }
    return PublishFailure::none;
}

PublishFailure PublishFolder::commit() {
    for (PageFile& file : m_list) {
        if (file.source != 0) {
            file.contents = markOfFile(m_files, asideOf(file.name), 0, {}).value_or(0);
        }
    }
    PublishFailure failure = write(std::string(kListName), pageListText(m_list));
    if (failure == PublishFailure::none) {
        failure = sync();
    }
    return failure == PublishFailure::none ? swap() : failure;
}

PublishFailure PublishFolder::sync() {
    int error = 0;
    for (const PageFile& file : m_list) {
        const auto stream = m_files.open(asideOf(file.name), OpenMode::writeInPlace, error);
        if (!stream) {
            return failed(PublishFailure::notWritable, error);
        }
        m_bytes += static_cast<std::uint64_t>(std::max<std::int64_t>(stream->size(), 0));
        const bool isOnDisk = stream->sync();
        if (!stream->close() || !isOnDisk) {
            return failed(PublishFailure::noSpace, stream->lastError());
        }
    }
    m_files.syncFolder(m_path + kNew + "/" + kClipsFolder);
    m_files.syncFolder(m_path + kNew);
    return PublishFailure::none;
}

PublishFailure PublishFolder::swap() {
    int error = 0;
    if (!mayReplace()) { // what has come into it meanwhile
        return PublishFailure::notEmpty;
    }
    const bool isThere = m_files.info(m_path).has_value();
    if (isThere && !m_files.removeFolder(m_path, error) &&
        !m_files.replaceFile(m_path, m_path + kOld, error)) {
        return failed(PublishFailure::inUse, error);
    }
    if (!m_files.replaceFile(m_path + kNew, m_path, error)) {
        int ignored = 0;
        if (isThere && !m_files.replaceFile(m_path + kOld, m_path, ignored)) {
            m_files.createFolder(m_path, ignored); // it was empty
        }
        return failed(PublishFailure::inUse, error);
    }
    m_isBegun = false;
    m_files.syncFolder(core::folderOf(m_path));
    removeOurs(m_path + kOld);
    return PublishFailure::none;
}

/// Only files of names that pages have: a folder that holds others stays, with these.
void PublishFolder::removeOurs(const std::string& folder) const {
    int error = 0;
    for (const std::string& inner : {std::string(kClipsFolder), std::string()}) {
        const std::string place = folder + (inner.empty() ? "" : "/") + inner;
        std::vector<platform::FolderEntry> entries;
        if (!m_files.info(place) || m_files.resolveLink(place) != place ||
            !m_files.list(place + "/", entries)) {
            continue;
        }
        for (const platform::FolderEntry& entry : entries) {
            if (!entry.isFolder && isPageFile(inner, entry.name)) {
                m_files.removeFile(place + "/" + entry.name, error);
            }
        }
        m_files.removeFolder(place, error);
    }
}

} // namespace publish
