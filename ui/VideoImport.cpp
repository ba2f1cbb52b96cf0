#include "ui/VideoImport.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "core/Paths.h"

namespace ui {

namespace {

constexpr std::size_t kBlockBytes = std::size_t{1} << 20U;

using platform::FileInfo;
using platform::FileStream;
using platform::FileSystem;
using platform::OpenMode;

bool isSameFile(FileSystem& files, const std::string& a, const FileInfo& infoA,
                const std::string& b, const FileInfo& infoB) {
    const bool known = infoA.volume != 0 || infoA.file != 0;
    if (known) {
        return infoA.volume == infoB.volume && infoA.file == infoB.file;
    }
    const std::string fullA = files.fullPath(a);
    return !fullA.empty() && fullA == files.fullPath(b);
}

/// Makes the folder and all above it; what exists already is skipped, failures show in the copy.
void createFolders(FileSystem& files, const std::string& folder) {
    for (std::size_t end = folder.find_first_of("/\\", 1); end != std::string::npos;
         end = folder.find_first_of("/\\", end + 1)) {
        const std::string part = folder.substr(0, end);
        if (!files.info(part)) {
            int error = 0;
            files.createFolder(part, error);
        }
    }
}

/// Removes the temporary unless it was moved to its place.
class TemporaryGuard {
public:
    TemporaryGuard(FileSystem& files, std::string path) : m_files(files), m_path(std::move(path)) {}
    ~TemporaryGuard() {
        if (!m_path.empty()) {
            int error = 0;
            m_files.removeFile(m_path, error);
        }
    }
    TemporaryGuard(const TemporaryGuard&) = delete;
    TemporaryGuard& operator=(const TemporaryGuard&) = delete;
    void release() { m_path.clear(); }

private:
    FileSystem& m_files;
    std::string m_path;
};

ImportResult copyBlocks(FileStream& from, FileStream& to, ImportProgress& progress,
                        const std::function<void()>& onBlock) {
    std::vector<std::byte> block(kBlockBytes);
    while (!progress.cancelled) {
        const std::size_t count = from.read(block.data(), block.size());
        if (to.write(block.data(), count) != count) {
            return ImportResult::failed;
        }
        progress.copiedBytes += count;
        if (count < block.size()) {
            // A source that ends before its announced size broke off while being read.
            const bool whole = progress.copiedBytes >= progress.totalBytes;
            return whole ? ImportResult::copied : ImportResult::failed;
        }
        onBlock();
    }
    return ImportResult::cancelled;
}

/// made: the temporary's identity once it is there.
ImportResult copyToTemporary(FileSystem& files, const std::string& source,
                             const std::string& temporary, std::optional<FileInfo>& made,
                             ImportProgress& progress, const std::function<void()>& onBlock) {
    int error = 0;
    const std::unique_ptr<FileStream> from = files.open(source, OpenMode::read, error);
    if (!from) {
        return ImportResult::failed;
    }
    // A left-over of a killed program, or a link somewhere else: never written through.
    files.removeFile(temporary, error);
    const std::unique_ptr<FileStream> to = files.open(temporary, OpenMode::write, error);
    if (!to) {
        return ImportResult::failed;
    }
    made = files.info(temporary);
    const ImportResult result = copyBlocks(*from, *to, progress, onBlock);
    if (result != ImportResult::copied) {
        return result;
    }
    const bool synced = to->sync();
    return to->close() && synced ? ImportResult::copied : ImportResult::failed;
}

/// What speaks against a copy to `destination`, if anything does.
std::optional<ImportResult> objection(FileSystem& files, const std::string& source,
                                      const FileInfo& sourceInfo, const std::string& destination) {
    const auto existing = files.info(destination);
    if (!existing) {
        return std::nullopt;
    }
    if (isSameFile(files, source, sourceInfo, destination, *existing)) {
        return ImportResult::sameFile;
    }
    int error = 0;
    if (existing->isFolder || !files.open(destination, OpenMode::writeInPlace, error)) {
        return ImportResult::failed; // a file that is protected against writing stays, too
    }
    return std::nullopt;
}

} // namespace

ImportResult importVideo(FileSystem& files, const std::string& source,
                         const std::string& destination, ImportProgress& progress,
                         const std::function<void()>& onBlock) {
    if (source == destination) {
        return ImportResult::sameFile;
    }
    const auto sourceInfo = files.info(source);
    if (!sourceInfo || sourceInfo->isFolder) {
        return ImportResult::failed;
    }
    if (const auto result = objection(files, source, *sourceInfo, destination)) {
        return *result;
    }
    const std::string folder = core::folderOf(destination);
    createFolders(files, folder);
    progress.copiedBytes = 0;
    progress.totalBytes = sourceInfo->size;
    const std::string temporary = folder + kImportTemporary;
    const auto leftover = files.info(temporary);
    if (leftover && isSameFile(files, source, *sourceInfo, temporary, *leftover)) {
        return ImportResult::failed; // the copy would take its place
    }
    TemporaryGuard guard(files, temporary);
    std::optional<FileInfo> made;
    const ImportResult result = copyToTemporary(files, source, temporary, made, progress, onBlock);
    const auto now = files.info(temporary);
    if (made && now && !isSameFile(files, temporary, *made, temporary, *now)) {
        guard.release(); // another editor copies into this folder: its file, not ours to touch
        return ImportResult::failed;
    }
    if (result != ImportResult::copied) {
        return result;
    }
    int error = 0;
    if (progress.cancelled) {
        return ImportResult::cancelled;
    }
    if (!files.replaceFile(temporary, destination, error)) {
        return ImportResult::failed;
    }
    guard.release();
    files.syncFolder(folder);
    return ImportResult::copied;
}

} // namespace ui
