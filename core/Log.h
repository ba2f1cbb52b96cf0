// The program's one diagnostic channel: lines kept in memory and written as "Log.html" in the
// starting directory when the last reference goes. Error lines are also mirrored to stderr as they
// happen. Main thread only.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace core {

/// The page is kept for the whole run. Past 64 MB only information entries are added to it.
class Log {
public:
    enum class Level { information = 0, warning = 1, error = 2 };

    /// The single log, created on the first call. Never empty.
    static std::shared_ptr<Log> get();
    /// Drops the process-wide reference: the file is written once no caller holds another. After
    /// that, and while the file is being written, messages go to stderr alone. Happens at the
    /// normal end of the program by itself.
    static void release();
    /// Puts `log` into the process-wide place and returns the one that was there, which may be
    /// none. With an empty `log` the next get() creates one again. For tests.
    static std::shared_ptr<Log> exchange(std::shared_ptr<Log> log);
    /// Mirrors errors to stderr only and never touches a file; for console programs. Call it
    /// before anything else.
    static void useStandardErrorOnly();

    /// A log whose page goes to "Log.html" in the current directory; the old one is deleted.
    explicit Log();
    /// The same for another file. An empty path: the page is never written.
    explicit Log(const std::string& pagePath);
    /// Writes the page.
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// printf-style; a message longer than 8191 bytes is cut at a UTF-8 boundary. Text from users
    /// or files is always an argument, never the format.
    void Error(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void Write(Level level, const char* format, ...) __attribute__((format(printf, 3, 4)));

    /// The page as far as it has come: HTML on one line.
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

} // namespace core
