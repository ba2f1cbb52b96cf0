// Starting another program, detached: it outlives this one and shares no console with it.
#pragma once

#include <string>

namespace platform {

struct LaunchRequest {
    std::string program;       ///< absolute path, UTF-8
    std::string arguments;     ///< appended to the command line after one blank; may be empty
    std::string workingFolder; ///< absolute
};

class Process {
public:
    virtual ~Process() = default;
    /// True once the program runs; does not wait for it.
    [[nodiscard]] virtual bool launch(const LaunchRequest& request) = 0;
};

Process& nativeProcess();

} // namespace platform
