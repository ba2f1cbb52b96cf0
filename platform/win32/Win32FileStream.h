// An open file: the C library's buffering over a handle that the wide calls opened.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace platform::win32 {

class Win32FileStream final : public FileStream {
public:
    /// Empty on failure, with the system's code in `error`.
    [[nodiscard]] static std::unique_ptr<FileStream> open(const std::string& path, OpenMode mode,
                                                          int& error);
    /// Takes the stream over.
    explicit Win32FileStream(std::FILE* stream) : m_stream(stream) {}

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

} // namespace platform::win32
