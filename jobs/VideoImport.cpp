#include "jobs/VideoImport.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "core/Paths.h"

namespace jobs {

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

/// The file a copy is written to before it takes the video's place. What was made and not moved
/// there is removed at the end, so the stream made here goes first. Another editor that copies into
/// the same folder may have put its own file in the meantime: that one is never touched.
class Temporary {
public:
    Temporary(FileSystem& files, std::string path) : m_files(files), m_path(std::move(path)) {}
    ~Temporary() {
        if (m_made && isOurs()) {
            int error = 0;
            m_files.removeFile(m_path, error);
        }
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;

    /// Empty when the file cannot be made.
    std::unique_ptr<FileStream> make() {
        int error = 0;
        // A left-over of a killed program, or a link somewhere else: never written through.
        m_files.removeFile(m_path, error);
        std::unique_ptr<FileStream> stream = m_files.open(m_path, OpenMode::write, error);
        m_made = stream != nullptr;
        m_identity = m_made ? m_files.info(m_path) : std::nullopt;
        return stream;
    }
    bool isOurs() const {
        const auto now = m_files.info(m_path);
        return !now || !m_identity || isSameFile(m_files, m_path, *m_identity, m_path, *now);
    }
    bool moveTo(const std::string& destination) {
        int error = 0;
        m_made = !m_files.replaceFile(m_path, destination, error);
        return !m_made;
    }

private:
    FileSystem& m_files;
    std::string m_path;
    bool m_made = false;
    std::optional<FileInfo> m_identity;
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

ImportResult copyToTemporary(FileSystem& files, const std::string& source, Temporary& temporary,
                             ImportProgress& progress, const std::function<void()>& onBlock) {
    int error = 0;
    const std::unique_ptr<FileStream> from = files.open(source, OpenMode::read, error);
    const std::unique_ptr<FileStream> to = from ? temporary.make() : nullptr;
    if (!to) {
        return ImportResult::failed;
    }
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
    const std::string path = folder + kImportTemporary;
    const auto leftover = files.info(path);
    if (leftover && isSameFile(files, source, *sourceInfo, path, *leftover)) {
        return ImportResult::failed; // the copy would take its place
    }
    Temporary temporary(files, path);
    const ImportResult result = copyToTemporary(files, source, temporary, progress, onBlock);
    if (!temporary.isOurs()) {
        return ImportResult::failed;
    }
    if (result != ImportResult::copied) {
        return result;
    }
    if (progress.cancelled) {
        return ImportResult::cancelled;
    }
    if (!temporary.moveTo(destination)) {
        return ImportResult::failed;
    }
    files.syncFolder(folder);
    return ImportResult::copied;
}

} // namespace jobs
