// Reads what the files of many scenes say, in the background. UI thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "scene/SceneSummary.h"

namespace ui {

class SceneFacts {
public:
    /// Empty for a scene that cannot be read.
    using Arrived =
        std::function<void(std::size_t place, const std::optional<scene::SceneSummary>&)>;

    /// The loop outlives the object, whose end stops the reading.
    explicit SceneFacts(platform::EventLoop& loop) : m_job(loop) {}

    /// Reads these scene files in their order, and calls `arrived` with the place of each. Once.
    void read(std::vector<std::string> paths, Arrived arrived);

private:
    jobs::BackgroundJob m_job;
};

} // namespace ui
