// An open file on top of C streams. Used by the POSIX back end's sources only.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace platform {

class PosixFileStream final : public FileStream {
public:
    /// Empty with `error` set when `path` cannot be opened; never waits for another process (a pipe
    /// is refused) and never opens a folder.
    [[nodiscard]] static std::unique_ptr<FileStream> open(const std::string& path, OpenMode mode,
                                                          int& error);

    explicit PosixFileStream(std::FILE* stream) : m_stream(stream) {}

    [[nodiscard]] std::size_t read(void* buffer, std::size_t count) override;
    [[nodiscard]] std::size_t write(const void* buffer, std::size_t count) override;
    [[nodiscard]] bool seek(std::int64_t position) override;
    [[nodiscard]] std::int64_t tell() const override;
    [[nodiscard]] std::int64_t size() const override;
    [[nodiscard]] bool sync() override;
    [[nodiscard]] bool close() override;
    [[nodiscard]] int lastError() const override { return m_error; }

private:
    struct Closer {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };
    bool keepError(bool good);

    std::unique_ptr<std::FILE, Closer> m_stream;
    int m_error = 0;
};

} // namespace platform
