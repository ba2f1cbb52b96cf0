#include "ui/VersionReader.h"

#include <mutex>
#include <utility>

#include "core/File.h"
#include "core/Log.h"
#include "platform/Clock.h"

namespace ui {
namespace {

/// What one version cannot be read for is in the log of nobody: the window says so. One that the
/// window no longer waits for cannot be read either.
VersionDetails readQuietly(const VersionHistory& history, const recovery::Version& version,
                           const jobs::BackgroundJob::Control& control) {
    const core::LogCollector quiet;
    const core::StoppableReading stoppable([&control] { return control.isCancelled(); });
    return history.read(version);
}

} // namespace

/// Between the thread and the window.
struct VersionReader::Found {
    std::mutex mutex; ///< guards what follows
    std::vector<Row> rows;
    std::vector<std::string> odd;
};

VersionReader::VersionReader(platform::EventLoop& loop, platform::FileSystem& files,
                             VersionHistory history)
    : m_files(files), m_history(std::move(history)), m_found(std::make_shared<Found>()),
      m_rows(loop), m_details(loop) {}

VersionReader::~VersionReader() {
    m_rows.cancel();
    m_details.cancel();
}

void VersionReader::readAll(std::function<void(std::vector<Row>)> onRows,
                            std::function<void()> onEnd) {
    const auto work = [this, found = m_found](jobs::BackgroundJob::Control& control) {
        recovery::VersionList list =
            recovery::listVersions(m_files, platform::nativeClock(), m_history.folder);
        {
            const std::lock_guard lock(found->mutex);
            found->odd = std::move(list.odd);
        }
        for (recovery::Version& version : list.versions) {
            if (control.isCancelled()) {
                return;
            }
            std::string summary = readQuietly(m_history, version, control).summary;
            const std::lock_guard lock(found->mutex);
            found->rows.push_back({std::move(version), std::move(summary)});
            control.report();
        }
    };
    m_rows.start(
        work, [this, onRows] { takeRows(onRows); },
        [this, onRows, onEnd = std::move(onEnd)](bool) {
            takeRows(onRows);
            onEnd();
        });
}

void VersionReader::takeRows(const std::function<void(std::vector<Row>)>& onRows) {
    std::vector<Row> rows;
    std::vector<std::string> odd;
    {
        const std::lock_guard lock(m_found->mutex);
        rows.swap(m_found->rows);
        odd.swap(m_found->odd);
    }
    for (const Row& row : rows) {
        if (row.summary.empty()) {
            odd.push_back(row.version.base);
        }
    }
    if (!odd.empty()) {
        const std::string more =
            odd.size() == 1 ? "" : " and " + std::to_string(odd.size() - 1) + " more";
        core::Log::get()->Write(core::Log::Level::warning,
                                "Ignored among the earlier versions: %s%s", odd.front().c_str(),
                                more.c_str());
    }
    if (!rows.empty()) {
        onRows(std::move(rows));
    }
}

void VersionReader::read(const recovery::Version& version,
                         std::function<void(VersionDetails)> onRead) {
    m_wanted = Wanted{version, std::move(onRead)};
    if (!m_details.isRunning()) {
        readNext();
    }
}

void VersionReader::readNext() {
    const auto details = std::make_shared<VersionDetails>();
    Wanted wanted = std::move(*m_wanted);
    m_wanted.reset();
    const auto work = [this, details,
                       version = wanted.version](jobs::BackgroundJob::Control& control) {
        *details = readQuietly(m_history, version, control);
        if (details->drawMap) {
            details->map = details->drawMap([&control] { return control.isCancelled(); });
        }
    };
    m_details.start(work, {}, [this, details, onRead = std::move(wanted.onRead)](bool) {
        if (m_wanted) {
            readNext(); // another was chosen meanwhile
        } else {
            onRead(std::move(*details));
        }
    });
}

} // namespace ui
