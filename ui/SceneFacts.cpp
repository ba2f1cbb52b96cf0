#include "ui/SceneFacts.h"

#include <memory>
#include <mutex>
#include <utility>

#include "core/File.h"
#include "core/WholeFile.h"

namespace ui {
namespace {

using Summary = std::optional<scene::SceneSummary>;

struct Shared {
    std::mutex mutex;
    std::vector<std::pair<std::size_t, Summary>> read; ///< guarded by the mutex
};

Summary summaryOfFile(const std::string& path) {
    const auto text = core::readWholeFile(path, scene::kMaxSceneFileBytes);
    return text ? scene::summaryOf(*text) : std::nullopt;
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
        [shared, paths = std::move(paths)](auto& control) {
            const core::StoppableReading stoppable([&control] { return control.isCancelled(); });
            for (std::size_t place = 0; place < paths.size() && !control.isCancelled(); ++place) {
                Summary summary = summaryOfFile(paths[place]);
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
