#include "import/Failures.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/ChildProcess.h"

namespace imports {
namespace {

/// How the converter ends when too many frames were faulty.
constexpr int kTooManyFaults = 69;

template <std::size_t N>
bool saysAny(std::string_view messages, const std::array<std::string_view, N>& words) {
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
        return messages.find(word) != std::string_view::npos;
    });
}

bool saysDamaged(std::string_view messages) {
    constexpr std::array<std::string_view, 7> kWords{"Invalid data",     "corrupt",
                                                     "while decoding",   "ended prematurely",
                                                     "partial file",     "Input/output error",
                                                     "submitting packet"};
    return saysAny(messages, kWords);
}

/// What is true of every run that did not end by itself, or not well.
ImportFailure generalFailure(platform::FileSystem& files, const std::string& source,
                             const RunResult& run) {
    const std::string details = run.lastMessage();
    switch (run.end) {
    case RunEnd::notStarted:
        return {Failure::noConverter, 0, {}, files.errorText(run.exitCode)};
    case RunEnd::stuck:
        return {Failure::stuck, 0, {}, details};
    case RunEnd::refused:
        return {Failure::tooLarge, 0, {}, details};
    case RunEnd::flooded:
        return {Failure::stopped, platform::ChildProcess::kKilled, {}, details};
    case RunEnd::exited:
    case RunEnd::cancelled:
        break;
    }
    if (!files.info(source)) {
        return {Failure::vanished, 0, {}, details};
    }
    constexpr std::array<std::string_view, 2> kMemory{"Cannot allocate memory", "Out of memory"};
    if (saysAny(run.messages, kMemory)) {
        return {Failure::noMemory, 0, {}, details};
    }
    return {Failure::stopped, run.exitCode, {}, details};
}

} // namespace

bool endsTooSoon(std::string_view messages) {
    constexpr std::array<std::string_view, 2> kWords{"ended prematurely", "partial file"};
    return saysAny(messages, kWords);
}

ImportFailure failureOfProbe(platform::FileSystem& files, const std::string& source,
                             const RunResult& run) {
    ImportFailure failure = generalFailure(files, source, run);
    // The probe fails for one reason of its own: it makes nothing of the file.
    if (failure.kind == Failure::stopped && run.end == RunEnd::exited &&
        run.exitCode != platform::ChildProcess::kKilled) {
        failure.kind = Failure::unreadable;
    }
    return failure.kind == Failure::tooLarge ? ImportFailure{Failure::unreadable} : failure;
}

ImportFailure failureOfConversion(platform::FileSystem& files, const std::string& source,
                                  const RunResult& run, std::int64_t frames, bool takesReadable) {
    if (run.isGood()) {
        return {};
    }
    ImportFailure failure = generalFailure(files, source, run);
    if (failure.kind != Failure::stopped || run.end != RunEnd::exited ||
        run.exitCode == platform::ChildProcess::kKilled) {
        return failure;
    }
    if (run.messages.find("No space left") != std::string::npos) {
        failure.kind = Failure::diskFull;
    } else if (takesReadable && run.exitCode == kTooManyFaults && frames > 0) {
        return {};
    } else if (saysDamaged(run.messages)) {
        failure.kind = frames > 0 ? Failure::cut : Failure::unreadable;
    }
    return failure;
}

} // namespace imports
