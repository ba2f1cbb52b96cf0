// Why a file could not be written or read, as a value: windows, logs and other programs each make
// their own text of it.
#pragma once

#include <string>

namespace core {

struct FileError {
    std::string file;   ///< path; empty when no file is to blame
    std::string reason; ///< for people, in the system's words; empty when nothing failed

    [[nodiscard]] bool empty() const { return reason.empty(); }
    /// "FILE: REASON", or the reason alone without a file; empty when nothing failed.
    [[nodiscard]] std::string text() const {
        return file.empty() || empty() ? reason : file + ": " + reason;
    }
};

} // namespace core
