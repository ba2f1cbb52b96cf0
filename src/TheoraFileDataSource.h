// A clip's bytes from a file, which is opened at the first access.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/FileSystem.h"
#include "src/TheoraDataSource.h"

namespace theora {

class TheoraFileDataSource : public TheoraDataSource {
public:
    /// Touches no file. name: UTF-8. files: outlives the source.
    TheoraFileDataSource(std::string name, platform::FileSystem& files);

    // read, seek and size throw TheoraGenericException "Can't open video file: " and the name when
    // the file cannot be opened. A failed read, or any read after a failed seek, throws "Can't read
    // video file: " and the name; the next access reopens the file.
    [[nodiscard]] std::size_t read(void* buffer, std::size_t count) override;
    [[nodiscard]] std::string repr() const override { return m_name; }
    void seek(std::int64_t offset) override;
    [[nodiscard]] std::int64_t size() override;
    /// 0 while the file is not open.
    [[nodiscard]] std::int64_t tell() const override;

private:
    void openIfNeeded();

    std::string m_name;
    platform::FileSystem& m_files;
    std::unique_ptr<platform::FileStream> m_stream;
    std::int64_t m_size = 0;
    bool m_lost = false;
};

} // namespace theora
