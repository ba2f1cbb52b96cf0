// The program's diagnostic log: lines are kept in memory and written to "Log.html" in the starting
// directory when the last reference is released. Errors also go to stderr at once. Main thread
// only.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace core {

/// The page is kept for the whole run. Beyond 64 MB only information entries are added.
class Log {
public:
    enum class Level { information = 0, warning = 1, error = 2 };

    /// The single log, created on the first call. Never empty.
    static std::shared_ptr<Log> get();
    /// Releases the process-wide reference: the file is written once no caller holds another. From
    /// then on, and while it is being written, messages go to stderr only. Called automatically at
    /// the normal end of the program.
    static void release();
    /// Replaces the process-wide log and returns the previous one, which may be empty. If `log` is
    /// empty, the next get() creates one. For tests.
    static std::shared_ptr<Log> exchange(std::shared_ptr<Log> log);
    /// Writes errors to stderr and never touches a file; for console programs. Call this first.
    static void useStandardErrorOnly();

    /// Writes its page to "Log.html" in the current directory; an old one is deleted.
    explicit Log();
    /// The same for another file. With an empty path the page is never written.
    explicit Log(const std::string& pagePath);
    /// Writes the page.
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// printf-style; a message longer than 8191 bytes is cut at a UTF-8 boundary. Text from users
    /// or files is always an argument, never the format.
    void Error(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void Write(Level level, const char* format, ...) __attribute__((format(printf, 3, 4)));

    /// The page so far: HTML on one line.
    [[nodiscard]] std::string page() const;

private:
    struct StandardErrorOnly {};
    explicit Log(StandardErrorOnly);
    struct Holder;
    static Holder& holder();

    void append(Level level, const std::string& message);

    bool m_keepsPage = true;
    std::string m_pagePath;
    std::vector<std::string> m_pieces;
    std::size_t m_pageBytes = 0;
};

/// While it lives, what the thread that made it logs is kept here instead: for reading files away
/// from the main thread, whose log this leaves alone.
class LogCollector {
public:
    LogCollector();
    ~LogCollector();
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;

    /// The first message; empty if there was none.
    [[nodiscard]] const std::string& first() const { return m_first; }

private:
    friend class Log;

    LogCollector* m_outer;
    std::string m_first;
};

} // namespace core
