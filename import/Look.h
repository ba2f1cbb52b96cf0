// What a file is, by the converter's probe.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "import/Converter.h"
#include "import/ConverterRun.h"
#include "import/ImportTypes.h"
#include "import/Source.h"
#include "platform/FileSystem.h"

namespace imports {

struct LookResult {
    std::optional<Source> source{}; ///< with a video; empty after a failure or a cancellation
    ImportFailure failure{};        ///< none after a cancellation
};
/// `path`: absolute. Ends within half a second once `isCancelled` returns true. Any thread.
[[nodiscard]] LookResult lookAt(platform::FileSystem& files, const std::string& path,
                                const Converter& converter, const RunLimits& limits,
                                const std::function<bool()>& isCancelled);

/// Has the probe list the packets of one stream of the file into `times`. Ends as lookAt() does.
[[nodiscard]] RunResult readPackets(const std::string& path, int stream, PacketTimes& times,
                                    const Converter& converter, const RunLimits& limits,
                                    const std::function<bool()>& isCancelled);

} // namespace imports
