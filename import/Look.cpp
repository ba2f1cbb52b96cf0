#include "import/Look.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "import/Failures.h"
#include "import/Plan.h"

namespace imports {

using platform::FileSystem;
using platform::OpenMode;

LookResult lookAt(FileSystem& files, const std::string& path, const Converter& converter,
                  const RunLimits& limits, const std::function<bool()>& isCancelled) {
    if (!converter.isFound()) {
        return {{}, {Failure::noConverter}};
    }
    const auto info = files.info(path);
    if (!info) {
        return {{}, {Failure::vanished}};
    }
    int error = 0;
    if (info->isFolder || !files.open(path, OpenMode::read, error)) {
        return {{}, {Failure::unreadable, 0, {}, error != 0 ? files.errorText(error) : ""}};
    }
    constexpr std::size_t kMaxText = std::size_t{4} << 20U;
    std::string text;
    const RunResult run = runConverter(
        converter.ffprobe, probeArguments(path), limits,
        [&](std::string_view piece) {
            text += piece;
            return text.size() > kMaxText ? Heard::enough : Heard::nothing;
        },
        isCancelled);
    if (run.end == RunEnd::cancelled) {
        return {};
    }
    if (!run.isGood()) {
        return {{}, failureOfProbe(files, path, run)};
    }
    Source source = readSource(text);
    if (!source.video) {
        return {{}, {Failure::noPicture}};
    }
    return {std::move(source), {}};
}

RunResult readPackets(const std::string& path, int stream, PacketTimes& times,
                      const Converter& converter, const RunLimits& limits,
                      const std::function<bool()>& isCancelled) {
    Lines lines;
    return runConverter(
        converter.ffprobe, packetArguments(path, stream), limits,
        [&](std::string_view piece) {
            lines.take(piece, [&](std::string_view line) { times.take(line); });
            return Heard::progress;
        },
        isCancelled);
}

} // namespace imports
