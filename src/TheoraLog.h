// The playback library's own debug lines. Written on worker threads, so they never reach the
// program's log file; the program decides where they go.
#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>

namespace theora {

/// Receives one line at a time, without a line ending. Called on any thread, one call at a time;
/// must not throw and must not call setLogHook.
using TheoraLogHook = std::function<void(const std::string& line)>;

/// Sends later lines to `hook`; an empty hook (the initial state) drops them. Any thread.
void setLogHook(TheoraLogHook hook);

/// Any thread.
void writeLog(const std::string& line);
/// "WHAT: " and the error's text, for handlers of exceptions: without memory for it there is no
/// line. Any thread.
void writeFailure(std::string_view what, const std::exception& error) noexcept;

} // namespace theora
