#include "recovery/DraftFolder.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "core/Paths.h"
#include "core/Reason.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "core/WholeFile.h"
#include "recovery/Places.h"

namespace recovery {
namespace {

constexpr const char* kInfoName = "Draft.txt";
constexpr const char* kLockName = "Lock";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kTemporaryStart = ".quorvel-saving";
constexpr std::string_view kContentEndings[] = {kDraftScene, kDraftZoneList, kDraftZoneShapes};
constexpr std::size_t kMaxInfoBytes = std::size_t{64} * 1024;
constexpr int kMaxDrafts = 10000; // of one scene
/// How often another program may remove a folder in which this one makes another.
constexpr int kMaxAttempts = 3;

platform::FileSystem& files() {
    return *core::services().fileSystem;
}

std::string parentOf(const std::string& folder) {
    return core::folderOf(folder.substr(0, folder.size() - 1));
}

/// A link may lead to files that are nobody's draft.
bool isLink(std::string path) {
    if (path.back() == '/') {
        path.pop_back();
    }
    return files().resolveLink(path) != path;
}

/// False if it exists or cannot be made; `error` is 0 if it exists.
bool createFolder(const std::string& path, int& error) {
    if (files().createFolder(path, error)) {
        return true;
    }
    if (files().info(path)) {
        error = 0;
    }
    return false;
}

/// "17-Scene.xml", or what a kill left of a writing.
bool isOfSomeWriting(std::string_view name) {
    const std::size_t digits = std::min(name.find_first_not_of(kDigits), name.size());
    const std::string_view rest = name.substr(digits);
    return name.starts_with(kTemporaryStart) ||
           (digits > 0 && std::any_of(std::begin(kContentEndings), std::end(kContentEndings),
                                      [&](std::string_view ending) {
                                          return rest.starts_with('-') && rest.substr(1) == ending;
                                      }));
}

} // namespace

std::string draftFilePrefix(std::uint32_t number) {
    return std::to_string(number) + "-";
}

std::vector<std::string> draftFileNames(const DraftInfo& info) {
    const std::string prefix = draftFilePrefix(info.number);
    if (info.video.empty()) {
        return {prefix + kDraftScene};
    }
    return {prefix + kDraftZoneList, prefix + kDraftZoneShapes};
}

DraftFolder::DraftFolder(std::string path, std::unique_ptr<platform::FileLock> lock)
    : m_path(std::move(path)), m_lock(std::move(lock)) {}

std::unique_ptr<DraftFolder> DraftFolder::claim(const std::string& sceneFolder,
                                                core::FileError& failure) {
    int error = 0;
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        createFolder(parentOf(sceneFolder), error);
        createFolder(sceneFolder, error);
        for (int number = 1; number <= kMaxDrafts; ++number) {
            const std::string path = sceneFolder + std::to_string(number) + "/";
            if (!createFolder(path, error)) {
                if (error != 0) {
                    break;
                }
                continue;
            }
            if (auto lock = files().lockFile(path + kLockName, error)) {
                return std::make_unique<DraftFolder>(path, std::move(lock));
            }
        }
    }
    failure = {sceneFolder,
               error == 0 ? core::reason("too many drafts"_tr) : files().errorText(error)};
    return nullptr;
}

std::unique_ptr<DraftFolder> DraftFolder::open(const std::string& path, std::string& problem) {
    problem.clear();
    const std::string name = core::fileName(path.substr(0, path.size() - 1));
    if (name.empty() || name.find_first_not_of(kDigits) != std::string::npos) {
        problem = "its name is not a number";
        return nullptr; // not even a lock is put there
    }
    if (isLink(path) || isLink(parentOf(path))) {
        problem = "it is a link";
        return nullptr;
    }
    int error = 0;
    auto lock = files().lockFile(path + kLockName, error);
    if (!lock) {
        problem = error == 0 ? "" : files().errorText(error);
        return nullptr;
    }
    auto folder = std::make_unique<DraftFolder>(path, std::move(lock));
    problem = folder->read();
    return folder->m_info.number != 0 ? std::move(folder) : nullptr;
}

DraftFolder::~DraftFolder() {
    if (m_info.number != 0 || m_isForeign || !m_lock->isIntact()) {
        return;
    }
    try {
        clear();
        m_lock->remove();
        int error = 0; // others may be in there
        files().removeFolder(m_path, error) && files().removeFolder(parentOf(m_path), error) &&
            files().removeFolder(parentOf(parentOf(m_path)), error);
    } catch (const std::exception&) {
        return; // out of memory: the folder goes when drafts are looked for
    }
}

std::string DraftFolder::read() {
    const std::string path = m_path + kInfoName;
    if (!files().info(path)) {
        return {};
    }
    m_isForeign = true;
    const auto text = isLink(path) ? std::nullopt : core::readWholeFile(path, kMaxInfoBytes);
    const auto info = text ? draftInfo(*text) : std::nullopt;
    if (!info || info->number == 0) {
        return "it cannot be read";
    }
    const std::string folder = parentOf(m_path);
    if (core::fileName(folder.substr(0, folder.size() - 1)) != encodedName(info->scene)) {
        return "it is of another scene";
    }
    const std::vector<std::string> names = draftFileNames(*info);
    bool isWhole = names.size() == info->sizes.size();
    for (std::size_t i = 0; isWhole && i < names.size(); ++i) {
        const auto file = files().info(m_path + names[i]);
        isWhole =
            file && !file->isFolder && file->size == info->sizes[i] && !isLink(m_path + names[i]);
    }
    if (!isWhole) {
        return "it is incomplete";
    }
    m_isForeign = false;
    m_info = *info;
    return {};
}

core::FileError DraftFolder::write(DraftInfo info, const DraftContent& content) {
    if (m_info.number != 0) {
        info.scene = m_info.scene; // the folder is named after it, whatever the scene is called now
    }
    info.number = std::max(m_info.number + 1, std::uint32_t{1});
    info.sizes.clear();
    core::FileError failure;
    for (const DraftFile& file : content) {
        const std::string name = draftFilePrefix(info.number) + file.ending;
        failure = writeFile(name, file);
        if (!failure.empty()) {
            break;
        }
        const auto written = files().info(m_path + name);
        info.sizes.push_back(written ? written->size : 0);
    }
    if (failure.empty()) {
        const std::string text = toText(info);
        failure = writeFile(kInfoName,
                            {{}, [&text](core::File& file) { return file.writeString(text); }});
    }
    if (failure.empty()) {
        m_info = std::move(info);
    }
    removeOtherWritings();
    return failure;
}

core::FileError DraftFolder::writeFile(const std::string& name, const DraftFile& file) {
    if (int error = 0; isLink(m_path + name)) {
        files().removeFile(m_path + name, error); // or the save would replace what it leads to
    }
    core::SafeSave save(core::SafeSave::Failures::silent);
    if (save.open(m_path + name, "wb") && file.write(save.file()) && save.prepare() &&
        save.commit()) {
        return {};
    }
    const core::FileError failure = save.failure();
    return failure.empty() ? core::FileError{m_path + name, core::reason("cannot be written"_tr)}
                           : failure;
}

void DraftFolder::removeOtherWritings() {
    std::vector<platform::FolderEntry> entries;
    if (!files().list(m_path, entries)) {
        return;
    }
    const std::string current = draftFilePrefix(m_info.number);
    int error = 0;
    for (const platform::FolderEntry& entry : entries) {
        if (isOfSomeWriting(entry.name) && !entry.name.starts_with(current)) {
            files().removeFile(m_path + entry.name, error);
        }
    }
}

void DraftFolder::clear() {
    int error = 0;
    files().removeFile(m_path + kInfoName, error); // first: without it the rest counts for nothing
    m_info = {};
    removeOtherWritings();
}

} // namespace recovery
