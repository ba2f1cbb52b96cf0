// A clip's file that somebody may stop reading. This module's sources only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/FileSystem.h"
#include "src/TheoraDataSource.h"
#include "src/TheoraException.h"
#include "src/TheoraFileDataSource.h"

namespace theora {

/// A source that fails once it is to stop: reading headers ends in no other way.
class StoppableSource final : public TheoraDataSource {
public:
    StoppableSource(const std::string& path, platform::FileSystem& files,
                    const std::function<bool()>& stop)
        : m_file(path, files), m_stop(stop) {}

    [[nodiscard]] std::size_t read(void* buffer, std::size_t count) override {
        if (m_stop()) {
            throw TheoraGenericException("stopped", "src\\StoppableSource", kStopLine);
        }
        return m_file.read(buffer, count);
    }
    [[nodiscard]] std::string repr() const override { return m_file.repr(); }
    void seek(std::int64_t offset) override { m_file.seek(offset); }
    [[nodiscard]] std::int64_t size() override { return m_file.size(); }
    [[nodiscard]] std::int64_t tell() const override { return m_file.tell(); }

private:
    static constexpr int kStopLine = 1;

    TheoraFileDataSource m_file;
    const std::function<bool()>& m_stop;
};

} // namespace theora
