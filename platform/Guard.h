// The boundary between the system's callbacks and our code: no exception may cross it.
#pragma once

#include <cstdio>
#include <exception>

namespace platform {

/// Runs `work` and returns its result; when it throws, writes a line to stderr and returns
/// `fallback`.
template <typename Work, typename Result>
Result guarded(const char* where, Result fallback, Work&& work) noexcept {
    try {
        return work();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", where, error.what());
    } catch (...) {
        std::fprintf(stderr, "%s: unknown exception\n", where);
    }
    return fallback;
}

template <typename Work>
void guardedRun(const char* where, Work&& work) noexcept {
    guarded(where, true, [&] {
        work();
        return true;
    });
}

} // namespace platform
