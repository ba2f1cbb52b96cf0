#include <chrono>
#include <cstdint>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/ChildProcess.h"

namespace {

/// What a shell writes on both streams, and its exit code.
std::string output(const std::string& script, std::uint64_t memoryBytes = 0) {
    int error = 0;
    const auto child = platform::startChild({"/bin/sh", {"-c", script}, {}, memoryBytes}, error);
    platform::ChildOutput output;
    std::string text;
    while (child && child->read(std::chrono::milliseconds(1000), output)) {
        text += output.out + output.error;
    }
    return text + (child ? std::to_string(child->exitCode()) : "not started");
}

TEST(PosixChildProcessTest, InheritsNothingButItsPipes) {
    const int open = ::open(".", O_RDONLY); // without O_CLOEXEC
    ASSERT_GE(open, 0);
    // No pipe in the shell's line: its own would be open for a moment.
    EXPECT_EQ(output("ls /proc/$$/fd; readlink /proc/$$/fd/0"), "0\n1\n2\n/dev/null\n0");
    ::close(open);
}

TEST(PosixChildProcessTest, ASignalIsNoExitCode) {
    EXPECT_EQ(output("kill -9 $$"), "-1");
}

TEST(PosixChildProcessTest, MemoryIsLimited) {
    // A program of the system: sanitizers take more than any limit.
    const std::string allocate = "dd if=/dev/zero of=/dev/null bs=200000000 count=1 2>/dev/null";
    EXPECT_EQ(output(allocate), "0");
    EXPECT_EQ(output(allocate, 100000000), "1");
}

} // namespace
