// One file from its probe to the clip in the scene's folder, on the calling thread. What it makes
// lies under a temporary name until it is known to be good; whatever happens, nothing else stays.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "import/ImportTypes.h"
#include "platform/FileSystem.h"

namespace imports {

struct JobLimits {
    RunLimits run{};
    std::chrono::seconds length{std::chrono::hours(24)}; ///< of the clip
    std::uint64_t bytes = std::uint64_t{16} << 30U;      ///< of the clip
};

struct JobRequest {
    ImportKind kind = ImportKind::file;
    std::string source{}; ///< absolute
    std::string folder{}; ///< absolute, ends in a separator
    Converter converter{};
    ImportSettings settings{};
    bool takesFreeName = false; ///< another name where its own is taken
    bool takesReadable = false; ///< as much as can be read of a damaged file
    JobLimits limits{};
};

/// How far the conversion is; secondsLeft: -1 = not known yet.
using ProgressSink = std::function<void(int percent, double secondsLeft)>;

struct JobResult {
    ImportState state = ImportState::failed; ///< done, cancelled or failed
    ImportFailure failure{};
    ImportedClip clip{};
};

/// Ends within half a second once `isCancelled` returns true. Throws for want of memory only, with
/// everything cleaned up.
[[nodiscard]] JobResult runImport(platform::FileSystem& files, const JobRequest& request,
                                  const ProgressSink& onProgress,
                                  const std::function<bool()>& isCancelled);

} // namespace imports
