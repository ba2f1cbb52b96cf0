// Runs the converter on the calling thread, within limits that no file and no converter can
// overstep.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace imports {

struct RunLimits {
    /// Without any progress.
    std::chrono::milliseconds stall{std::chrono::minutes(2)};
    /// Of what is printed, on both streams together.
    std::size_t printedBytes = std::size_t{64} << 20U;
    std::uint64_t memoryBytes = std::uint64_t{6} << 30U;
    bool isBackground = false; ///< yields the processor to other programs
};

enum class RunEnd {
    exited, ///< by itself, whatever its exit code
    notStarted,
    cancelled,
    stuck,
    flooded, ///< printed without end
    refused, ///< `onOutput` had enough
};

struct RunResult {
    RunEnd end = RunEnd::notStarted;
    int exitCode = 0;       ///< or the system's code when not started
    std::string messages{}; ///< the last 4 KB on standard error
    [[nodiscard]] bool isGood() const { return end == RunEnd::exited && exitCode == 0; }
    /// The last line of the messages, printable.
    [[nodiscard]] std::string lastMessage() const;
};

/// What has been learnt from a piece of standard output.
enum class Heard { nothing, progress, enough };

/// Asks `isCancelled` at least every 50 ms. The converter is gone when this returns.
[[nodiscard]] RunResult runConverter(const std::string& program,
                                     const std::vector<std::string>& arguments,
                                     const RunLimits& limits,
                                     const std::function<Heard(std::string_view)>& onOutput,
                                     const std::function<bool()>& isCancelled);

/// Splits what arrives in pieces into lines. Lines beyond 4 KB are cut.
class Lines {
public:
    /// Without line ends.
    void take(std::string_view piece, const std::function<void(std::string_view)>& onLine);

private:
    std::string m_begun;
};

/// How far a conversion is, from the lines that the converter prints for that.
struct ConverterProgress {
    std::int64_t frames = 0;
    std::int64_t microseconds = 0; ///< of the clip
    std::int64_t bytes = 0;

    /// True if it has gone on.
    bool take(std::string_view line);
};

/// How long the rest takes when `part` of the work has taken so many seconds; -1 while that is too
/// early to say.
[[nodiscard]] double secondsLeft(double part, double elapsed);

} // namespace imports
