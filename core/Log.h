// The program's one diagnostic channel: lines kept in memory and written as "Log.html" in the
// starting directory when the last reference goes. Error lines are also mirrored to stderr as they
// happen. Main thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace core {

class Log {
public:
    enum class Level { information = 0, warning = 1, error = 2 };

    /// The single log, created on the first call. Never empty.
    static std::shared_ptr<Log> get();
    /// Drops the process-wide reference: the file is written once no caller holds another. After
    /// that, and while the file is being written, messages go to stderr alone.
    static void release();

    /// Mirrors errors to `stderr` only and never touches a file; for console programs.
    static void useStandardErrorOnly();

    explicit Log();
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// printf-style; a message longer than 8191 bytes is cut at a UTF-8 boundary. Text from users
    /// or files is always an argument, never the format.
    void Error(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void Write(Level level, const char* format, ...) __attribute__((format(printf, 3, 4)));
};

} // namespace core
