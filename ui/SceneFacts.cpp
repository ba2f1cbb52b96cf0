#include "ui/SceneFacts.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

namespace ui {
namespace {

using Summary = std::optional<scene::SceneSummary>;

struct Shared {
    std::mutex mutex;
    std::vector<std::pair<std::size_t, Summary>> read; ///< guarded by the mutex
};

Summary summaryOfFile(platform::FileSystem& files, const std::string& path) {
    int error = 0;
    const auto stream = files.open(path, platform::OpenMode::read, error);
    if (!stream || stream->size() < 0 ||
        static_cast<std::uint64_t>(stream->size()) > scene::kMaxSceneFileBytes) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(stream->size()), '\0');
    text.resize(stream->read(text.data(), text.size()));
    return stream->lastError() == 0 ? scene::summaryOf(text) : std::nullopt;
}

void handOver(Shared& shared, const SceneFacts::Arrived& arrived) {
    std::vector<std::pair<std::size_t, Summary>> read;
    {
        const std::lock_guard lock(shared.mutex);
        read.swap(shared.read);
    }
    for (const auto& [place, summary] : read) {
        arrived(place, summary);
    }
}

} // namespace

void SceneFacts::read(std::vector<std::string> paths, Arrived arrived) {
    const auto shared = std::make_shared<Shared>();
    const auto take = [shared, arrived = std::move(arrived)] { handOver(*shared, arrived); };
    m_job.start(
        [shared, paths = std::move(paths), &files = m_files](auto& control) {
            for (std::size_t place = 0; place < paths.size() && !control.isCancelled(); ++place) {
                Summary summary = summaryOfFile(files, paths[place]);
                {
                    const std::lock_guard lock(shared->mutex);
                    shared->read.emplace_back(place, std::move(summary));
                }
                control.report();
            }
        },
        take, [take](bool) { take(); });
}

} // namespace ui
