// Another program that works for this one: started from a list of arguments without any shell, read
// through pipes, and ended together with every program that it has started itself.
//
//   int error = 0;
//   auto child = platform::startChild({"/usr/bin/ffprobe", {"-version"}}, error);
//   platform::ChildOutput output;
//   while (child && child->read(std::chrono::milliseconds(100), output)) { use(output); }
//
// Reading takes a thread of its own: none of this belongs on the UI thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform {

struct ChildRequest {
    std::string program;                ///< absolute path, UTF-8
    std::vector<std::string> arguments; ///< UTF-8; the program gets each of them unchanged
    std::string workingFolder{};        ///< absolute; empty for this program's own
    std::uint64_t memoryBytes = 0;      ///< what it may allocate; 0 for no limit
    bool isBackground = false;          ///< yields the processor to other programs
};

/// What a call of read() has taken out of the pipes.
struct ChildOutput {
    std::string out;   ///< standard output
    std::string error; ///< standard error
};

/// All calls on one thread, which is the one that started it: on some systems a child ends with
/// that thread.
class ChildProcess {
public:
    /// No call of read() takes more than this from each pipe.
    static constexpr std::size_t kReadBytes = 65536;
    /// exitCode() of a program that did not end by itself.
    static constexpr int kKilled = -1;

    /// Ends it as end() does.
    virtual ~ChildProcess() = default;
    /// Replaces `output` by what the program has written since the last call; waits for that, up to
    /// `wait`, so `output` may be empty. False once the program has ended and all that it wrote
    /// has been read. What it leaves running does not count: that is ended then.
    [[nodiscard]] virtual bool read(std::chrono::milliseconds wait, ChildOutput& output) = 0;
    /// Ends the program and all programs started by it, at once and without asking, and waits
    /// until it is gone. Nothing can be read afterwards.
    virtual void end() = 0;
    /// Once read() has returned false: what the program returned, kKilled if something ended it.
    [[nodiscard]] virtual int exitCode() const = 0;
};

/// Starts the program. It reads nothing from its standard input, has no console window, inherits
/// nothing but its pipes, and ends when this program ends, in whatever way. Empty when it cannot be
/// started; `error` has the system's code then. Never throws but for want of memory. Any thread.
[[nodiscard]] std::unique_ptr<ChildProcess> startChild(const ChildRequest& request, int& error);

} // namespace platform
