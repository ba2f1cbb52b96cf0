#include "jobs/FolderCopy.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "core/Paths.h"
#include "core/Texts.h"
#include "jobs/VideoImport.h"

namespace jobs {

using platform::FileSystem;

struct FolderCopy::Progress {
    ImportProgress file;
    std::atomic<std::uint64_t> doneBytes{0}; ///< of the files before
    std::atomic<std::uint64_t> totalBytes{0};
};

namespace {

constexpr int kMaxDepth = 8;
constexpr std::size_t kMaxEntries = 20'000;

class Copy {
public:
    Copy(FileSystem& files, std::string from, std::string to, LastFile last)
        : m_files(files), m_from(std::move(from)), m_to(std::move(to)), m_last(std::move(last)) {}

    template <class Progress, class Report>
    std::string run(Progress& progress, const Report& report) {
        std::string failure = isLink(m_from)
                                  ? core::trStored("\"{0}\" is a link"_tr, {core::fileName(m_from)})
                                  : collect({}, 0);
        progress.totalBytes = std::max<std::uint64_t>(m_bytes, 1);
        if (!failure.empty()) {
            return failure;
        }
        failure = makeFolder(m_to);
        for (std::size_t i = 0; i < m_folders.size() && failure.empty(); ++i) {
            failure = makeFolder(m_to + m_folders[i]);
        }
        for (std::size_t i = 0; i < m_names.size() && failure.empty(); ++i) {
            m_made.push_back(m_to + m_names[i]);
            const ImportReport copied =
                importVideo(m_files, m_from + m_names[i], m_made.back(), progress.file, report);
            progress.doneBytes += progress.file.copiedBytes.exchange(0);
            failure = copied.result == ImportResult::copied      ? std::string()
                      : copied.result == ImportResult::cancelled ? kCopyCancelled
                                                                 : reasonOf(copied, m_names[i]);
        }
        if (failure.empty()) {
            failure = progress.file.cancelled ? kCopyCancelled : writeLast();
        }
        if (!failure.empty()) {
            removeMade();
        }
        return failure;
    }

    void removeMade() {
        int error = 0;
        for (const std::string& file : m_made) {
            m_files.removeFile(file, error);
        }
        for (auto folder = m_madeFolders.rbegin(); folder != m_madeFolders.rend(); ++folder) {
            m_files.removeFolder(*folder, error);
        }
    }

private:
    static std::string reasonOf(const ImportReport& report, const std::string& name) {
        return "\"" + name.substr(1) + "\": " + report.reason;
    }

    [[nodiscard]] bool isLink(const std::string& path) const {
        return m_files.resolveLink(path) != path;
    }

    /// Lists what is below the folder, which is relative: "" or "/sub". Says why it cannot be
    /// copied.
    std::string collect(const std::string& folder, int depth) {
        std::vector<platform::FolderEntry> entries;
        if (!m_files.list(m_from + folder + "/", entries)) {
            return core::trStored("its folder cannot be read"_tr);
        }
        for (const platform::FolderEntry& entry : entries) {
            const std::string name = folder + "/" + entry.name;
            if (depth == kMaxDepth || m_names.size() + m_folders.size() >= kMaxEntries) {
                return core::trStored("it has too many folders or files"_tr);
            }
            if (isLink(m_from + name)) {
                return core::trStored("\"{0}\" is a link"_tr, {name.substr(1)});
            }
            std::string failure;
            if (entry.isFolder) {
                m_folders.push_back(name);
                failure = collect(name, depth + 1);
            } else if (isImportTemporary(entry.name) ||
                       (folder.empty() && entry.name == m_last.name)) {
                continue;
            } else {
                m_names.push_back(name);
                const auto info = m_files.info(m_from + name);
                m_bytes += info ? info->size : 0;
            }
            if (!failure.empty()) {
                return failure;
            }
        }
        return {};
    }

    std::string makeFolder(const std::string& path) {
        int error = 0;
        if (!m_files.createFolder(path, error)) {
            return m_files.errorText(error);
        }
        m_madeFolders.push_back(path);
        return {};
    }

    /// On the disk before it counts: it makes the copy a whole one.
    std::string writeLast() {
        const std::string path = m_to + "/" + m_last.name;
        int error = 0;
        m_made.push_back(path);
        const auto stream = m_files.open(path, platform::OpenMode::write, error);
        if (!stream) {
            return m_files.errorText(error);
        }
        const bool isWritten =
            stream->write(m_last.bytes.data(), m_last.bytes.size()) == m_last.bytes.size() &&
            stream->sync();
        const bool isClosed = stream->close();
        if (!isWritten || !isClosed) {
            return m_files.errorText(stream->lastError());
        }
        m_files.syncFolder(m_to);
        return {};
    }

    FileSystem& m_files;
    std::string m_from;
    std::string m_to;
    LastFile m_last;
    std::vector<std::string> m_folders; ///< relative, "/" first; outer ones before inner ones
    std::vector<std::string> m_names;   ///< of files, alike
    std::uint64_t m_bytes = 0;
    std::vector<std::string> m_made;
    std::vector<std::string> m_madeFolders;
};

} // namespace

FolderCopy::FolderCopy(platform::EventLoop& loop, FileSystem& files)
    : m_files(files), m_progress(std::make_shared<Progress>()), m_job(loop) {}

FolderCopy::~FolderCopy() {
    cancel();
}

void FolderCopy::start(const std::string& from, const std::string& to, LastFile last,
                       std::function<void()> onProgress, Done onDone) {
    m_progress = std::make_shared<Progress>();
    const auto failure = std::make_shared<std::string>(core::trStored("out of memory"_tr));
    const auto copy = std::make_shared<Copy>(m_files, from, to, std::move(last));
    m_job.start(
        [progress = m_progress, failure, copy](auto& control) {
            try {
                *failure = copy->run(*progress, [&control] { control.report(); });
            } catch (const std::exception&) {
                copy->removeMade();
                throw;
            }
        },
        std::move(onProgress), [failure, done = std::move(onDone)](bool) { done(*failure); });
}

void FolderCopy::cancel() {
    m_progress->file.cancelled = true;
    m_job.cancel();
}

int FolderCopy::percent() const {
    const std::uint64_t total = m_progress->totalBytes;
    const std::uint64_t done = m_progress->doneBytes + m_progress->file.copiedBytes;
    return total == 0 ? 0 : static_cast<int>(std::min<std::uint64_t>(100 * done / total, 100));
}

} // namespace jobs
