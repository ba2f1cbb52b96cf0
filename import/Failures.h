// What a run of the converter that did not succeed means to the author.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "import/ConverterRun.h"
#include "import/ImportTypes.h"
#include "platform/FileSystem.h"

namespace imports {

/// Of a probe that was not good.
[[nodiscard]] ImportFailure failureOfProbe(platform::FileSystem& files, const std::string& source,
                                           const RunResult& run);
/// None when the run was good. `frames` had been made when it ended; `takesReadable`: what can
/// be read is enough.
[[nodiscard]] ImportFailure failureOfConversion(platform::FileSystem& files,
                                                const std::string& source, const RunResult& run,
                                                std::int64_t frames, bool takesReadable);
/// Whether the messages say that a file ends before its end.
[[nodiscard]] bool endsTooSoon(std::string_view messages);

} // namespace imports
