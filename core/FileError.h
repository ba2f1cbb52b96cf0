// Why a file could not be written or read, as a value that windows and logs turn into text.
#pragma once

#include <string>

namespace core {

struct FileError {
    std::string file;   ///< path; empty if it is not about a file
    std::string reason; ///< for people, in the system's words; empty if nothing failed

    [[nodiscard]] bool empty() const { return reason.empty(); }
    /// "FILE: REASON", or the reason alone if there is no file; empty if nothing failed.
    [[nodiscard]] std::string text() const {
        return file.empty() || empty() ? reason : file + ": " + reason;
    }
};

} // namespace core
