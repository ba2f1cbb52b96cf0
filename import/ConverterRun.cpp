#include "import/ConverterRun.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "platform/ChildProcess.h"

namespace imports {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kSlice{50};
constexpr std::size_t kKeptMessages = 4096;
constexpr std::size_t kMaxLine = 4096;
constexpr std::size_t kMaxShown = 200;
constexpr double kSecondsBeforeEstimate = 1.5;

} // namespace

std::string RunResult::lastMessage() const {
    std::string_view text = messages;
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') {
        text.remove_suffix(1);
    }
    text.remove_prefix(text.find_last_of("\r\n") + 1);
    std::string line = core::validUtf8(core::cutUtf8(text, kMaxShown));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

RunResult runConverter(const std::string& program, const std::vector<std::string>& arguments,
                       const RunLimits& limits,
                       const std::function<Heard(std::string_view)>& onOutput,
                       const std::function<bool()>& isCancelled) {
    RunResult result;
    const platform::ChildRequest request{
        program, arguments, {}, limits.memoryBytes, limits.isBackground};
    const auto child = platform::startChild(request, result.exitCode);
    if (!child) {
        return result;
    }
    std::size_t printed = 0;
    auto lastProgress = steady_clock::now();
    platform::ChildOutput output;
    while (child->read(kSlice, output)) {
        printed += output.out.size() + output.error.size();
        result.messages += output.error;
        result.messages.erase(0, result.messages.size() -
                                     std::min(result.messages.size(), kKeptMessages));
        const Heard heard = output.out.empty() ? Heard::nothing : onOutput(output.out);
        const auto now = steady_clock::now();
        lastProgress = heard == Heard::progress ? now : lastProgress;
        const RunEnd end = isCancelled()                       ? RunEnd::cancelled
                           : heard == Heard::enough            ? RunEnd::refused
                           : printed > limits.printedBytes     ? RunEnd::flooded
                           : now - lastProgress > limits.stall ? RunEnd::stuck
                                                               : RunEnd::exited;
        if (end != RunEnd::exited) {
            child->end();
            result.end = end;
            return result;
        }
    }
    result.end = isCancelled() ? RunEnd::cancelled : RunEnd::exited;
    result.exitCode = child->exitCode();
    return result;
}

void Lines::take(std::string_view piece, const std::function<void(std::string_view)>& onLine) {
    for (;;) {
        const std::size_t end = std::min(piece.find('\n'), piece.size());
        m_begun.append(piece.substr(0, std::min(end, kMaxLine - m_begun.size())));
        if (end == piece.size()) {
            return;
        }
        std::string_view line = m_begun;
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        onLine(line);
        m_begun.clear();
        piece.remove_prefix(end + 1);
    }
}

bool ConverterProgress::take(std::string_view line) {
    const std::pair<std::string_view, std::int64_t*> known[] = {
        {"frame=", &frames}, {"out_time_us=", &microseconds}, {"total_size=", &bytes}};
    for (const auto& [name, value] : known) {
        std::int64_t read = 0;
        const std::string_view text = line.starts_with(name) ? line.substr(name.size()) : "";
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
        if (error == std::errc() && read > *value) {
            *value = read;
            return true;
        }
    }
    return false;
}

double secondsLeft(double part, double elapsed) {
    return part > 0 && elapsed > kSecondsBeforeEstimate ? elapsed * (1 - part) / part : -1;
}

} // namespace imports
