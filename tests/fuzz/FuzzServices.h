// Services without a disk for one run of a fuzz target.
#pragma once

#include <memory>

#include "core/Log.h"
#include "core/Services.h"
#include "tests/support/FixedClock.h"
#include "tests/support/MemoryFileSystem.h"
#include "tests/support/RecordingProcess.h"

namespace fuzz {

/// Files in memory, a clock that stands still, processes that never start and a log without a page.
struct Services {
    Services() { core::Log::exchange(std::make_shared<core::Log>("")); }

    support::MemoryFileSystem files;
    support::FixedClock clock;
    support::RecordingProcess process;
    core::ServicesOverride replacement{{&files, &clock, &process}};
};

} // namespace fuzz
