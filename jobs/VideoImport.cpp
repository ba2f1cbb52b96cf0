#include "jobs/VideoImport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "core/UnfinishedFile.h"
#include "platform/Clock.h"

namespace jobs {

namespace {

constexpr std::size_t kBlockBytes = std::size_t{1} << 20U;
constexpr std::int64_t kLeftoverSeconds = 3600;
constexpr std::string_view kTemporaryStart = "VideoCopy";
constexpr std::string_view kTemporaryEnd = ".part";

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

ImportReport failure(core::Text reason) {
    return {ImportResult::failed, core::trStored(reason)};
}

ImportReport failure(FileSystem& files, int error) {
    return {ImportResult::failed,
            error != 0 ? files.errorText(error) : core::trStored("it cannot be read"_tr)};
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
        if (isImportTemporary(core::fileName(m_source))) {
            return failure("it is an unfinished copy"_tr); // which may go at any moment
        }
        removeLeftovers(m_files, folder);
        core::UnfinishedFile temporary(m_files, folder + importTemporary());
        ImportReport report = copyThrough(temporary);
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

    ImportReport copyThrough(core::UnfinishedFile& temporary) {
        ImportReport report = copyTo(temporary);
        if (report.result == ImportResult::copied && m_progress.cancelled) {
            return {ImportResult::cancelled};
        }
        int error = 0;
        if (report.result == ImportResult::copied) {
            if (!m_files.replaceFile(temporary.path(), m_destination, error)) {
                return failure(m_files, error);
            }
            temporary.keep();
        }
        return report;
    }

    ImportReport copyTo(core::UnfinishedFile& temporary) {
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
                             : failure("it became shorter while it was copied"_tr);
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

const std::string& importTemporary() {
    static const std::string name = newTemporary();
    return name;
}

std::string newTemporary() {
    return std::string(kTemporaryStart) + "-" + std::to_string(std::random_device()()) +
           std::string(kTemporaryEnd);
}

bool isImportTemporary(std::string_view name) {
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) {
        return false;
    }
    name.remove_prefix(kTemporaryStart.size());
    name.remove_suffix(kTemporaryEnd.size());
    return name.find_first_not_of("0123456789", name.starts_with('-') ? 1 : 0) == name.npos;
}

void removeLeftovers(FileSystem& files, const std::string& folder) {
    std::vector<platform::FolderEntry> entries;
    (void)files.list(folder, entries);
    const std::int64_t now = core::services().clock->now();
    for (const platform::FolderEntry& entry : entries) {
        const std::string path = folder + entry.name;
        const auto info = isImportTemporary(entry.name) ? files.info(path) : std::nullopt;
        if (info && !info->isFolder && info->modified < now - kLeftoverSeconds) {
            int error = 0;
            files.removeFile(path, error);
        }
    }
}

ImportReport importVideo(FileSystem& files, const std::string& source,
                         const std::string& destination, ImportProgress& progress,
                         const std::function<void()>& onBlock) {
    return Import(files, source, destination, progress, onBlock).run();
}

} // namespace jobs
