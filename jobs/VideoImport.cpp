#include "jobs/VideoImport.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
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

/// The file to which a copy is written before it replaces the destination. Removed at the end
/// unless it was moved, so its stream must be closed first. Another editor that copies into the
/// same folder may have put its own file there in the meantime: that one is never touched.
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

    /// Empty if the file cannot be created.
    std::unique_ptr<FileStream> make(int& error) {
        // A leftover of a killed program, or a link to somewhere else: never write through it.
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
    bool moveTo(const std::string& destination, int& error) {
        m_made = !m_files.replaceFile(m_path, destination, error);
        return !m_made;
    }

private:
    FileSystem& m_files;
    std::string m_path;
    bool m_made = false;
    std::optional<FileInfo> m_identity;
};

ImportReport failure(const char* reason) {
    return {ImportResult::failed, reason};
}

ImportReport failure(FileSystem& files, int error) {
    return {ImportResult::failed, error != 0 ? files.errorText(error) : "it cannot be read"};
}

/// One import; see importVideo.
class Import {
public:
    Import(FileSystem& files, const std::string& source, const std::string& destination,
           ImportProgress& progress, const std::function<void()>& onBlock)
        : m_files(files), m_source(source), m_destination(destination), m_progress(progress),
          m_onBlock(onBlock) {}

    ImportReport run() {
        if (m_source == m_destination) {
            return {ImportResult::sameFile};
        }
        const auto info = m_files.info(m_source);
        if (!info || info->isFolder) {
            int error = 0; // for the system's message
            (void)m_files.open(m_source, OpenMode::read, error);
            return failure(m_files, error);
        }
        if (auto report = checkDestination(*info)) {
            return *std::move(report);
        }
        const std::string folder = core::folderOf(m_destination);
        core::createFolders(m_files, folder);
        m_progress.copiedBytes = 0;
        m_progress.totalBytes = info->size;
        const std::string path = folder + kImportTemporary;
        const auto leftover = m_files.info(path);
        if (leftover && isSameFile(m_files, m_source, *info, path, *leftover)) {
            return failure("it is an unfinished copy"); // the new copy would replace it
        }
        ImportReport report = copyThrough(Temporary(m_files, path));
        if (report.result == ImportResult::copied) {
            m_files.syncFolder(folder);
        }
        return report;
    }

private:
    /// Empty if the copy may begin.
    std::optional<ImportReport> checkDestination(const FileInfo& source) {
        const auto existing = m_files.info(m_destination);
        if (!existing) {
            return std::nullopt;
        }
        if (isSameFile(m_files, m_source, source, m_destination, *existing)) {
            return ImportReport{ImportResult::sameFile};
        }
        int error = 0;
        // A write-protected file is not replaced either.
        if (!m_files.open(m_destination, OpenMode::writeInPlace, error)) {
            return failure(m_files, error);
        }
        return std::nullopt;
    }

    ImportReport copyThrough(Temporary&& temporary) {
        ImportReport report = copyTo(temporary);
        if (report.result == ImportResult::copied && m_progress.cancelled) {
            return {ImportResult::cancelled};
        }
        if (!temporary.isOurs()) {
            return failure("another program copies into this folder");
        }
        int error = 0;
        if (report.result == ImportResult::copied && !temporary.moveTo(m_destination, error)) {
            return failure(m_files, error);
        }
        return report;
    }

    ImportReport copyTo(Temporary& temporary) {
        int error = 0;
        const std::unique_ptr<FileStream> from = m_files.open(m_source, OpenMode::read, error);
        const std::unique_ptr<FileStream> to = from ? temporary.make(error) : nullptr;
        if (!to) {
            return failure(m_files, error);
        }
        ImportReport report = copyBlocks(*from, *to);
        if (report.result != ImportResult::copied) {
            return report;
        }
        const bool synced = to->sync();
        return to->close() && synced ? report : failure(m_files, to->lastError());
    }

    ImportReport copyBlocks(FileStream& from, FileStream& to) {
        std::vector<std::byte> block(kBlockBytes);
        while (!m_progress.cancelled) {
            const std::size_t count = from.read(block.data(), block.size());
            if (from.lastError() != 0) {
                return failure(m_files, from.lastError()); // not the end of the file
            }
            if (to.write(block.data(), count) != count) {
                return failure(m_files, to.lastError());
            }
            m_progress.copiedBytes += count;
            if (count < block.size()) {
                const bool whole = m_progress.copiedBytes >= m_progress.totalBytes;
                return whole ? ImportReport{ImportResult::copied}
                             : failure("it became shorter during the copy");
            }
            m_onBlock();
        }
        return {ImportResult::cancelled};
    }

    FileSystem& m_files;
    const std::string& m_source;
    const std::string& m_destination;
    ImportProgress& m_progress;
    const std::function<void()>& m_onBlock;
};

} // namespace

ImportReport importVideo(FileSystem& files, const std::string& source,
                         const std::string& destination, ImportProgress& progress,
                         const std::function<void()>& onBlock) {
    return Import(files, source, destination, progress, onBlock).run();
}

} // namespace jobs
