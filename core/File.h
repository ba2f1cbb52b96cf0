// A file opened with one of the C mode strings. Text mode writes CR LF for every line feed on every
// system, so files are the same bytes everywhere; reading is always raw. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace core {

/// Every operation but open and close reports "FILE handle is invalid" to the log and fails when
/// nothing is open. The destructor closes.
class File {
public:
    File() = default;

    /// `mode`: "wb", "wt", "rb" or "rt"; any other fails. Closes what was open before.
    [[nodiscard]] bool open(const std::string& path, const std::string& mode);
    /// False when bytes were lost on the way to the disk; closing nothing succeeds.
    bool close();
    /// Brings everything written to the disk.
    [[nodiscard]] bool sync();

    [[nodiscard]] bool read(void* buffer, std::size_t count);
    /// Allocates `count` bytes when `buffer` is empty (it stays empty when that fails, as it does
    /// when more than 16 MB and more than the whole file is asked for), then reads.
    [[nodiscard]] bool readAlloc(std::unique_ptr<std::uint8_t[]>& buffer, std::size_t count);
    [[nodiscard]] bool write(const void* buffer, std::size_t count);
    /// Little-endian.
    [[nodiscard]] bool writeU32(std::uint32_t value);
    /// The text's bytes, plus a zero byte when writeTerminators is set. Empty text: nothing, true.
    [[nodiscard]] bool writeString(const std::string& text);
    /// -1 when unknown, 0 (and a log line) when nothing is open. Leaves the position alone.
    [[nodiscard]] std::int64_t size();
    /// The system's code of the first call that failed since open; 0 when none has.
    [[nodiscard]] int lastError() const;

    bool writeTerminators = false;

private:
    [[nodiscard]] bool isOpen() const;

    std::unique_ptr<platform::FileStream> m_stream;
    bool m_textMode = false;
    int m_error = 0;
};

} // namespace core
