// A data source in memory that can fail or be slow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "src/TheoraDataSource.h"
#include "tests/support/OggPager.h"

class MemorySource : public theora::TheoraDataSource {
public:
    /// beforeRead: runs before each read, on its thread; may throw; false = the read fails.
    explicit MemorySource(support::Bytes bytes, std::function<bool()> beforeRead = {})
        : m_bytes(std::move(bytes)), m_beforeRead(std::move(beforeRead)) {}

    std::size_t read(void* buffer, std::size_t count) override {
        const auto at = static_cast<std::size_t>(std::clamp<std::int64_t>(m_at, 0, size()));
        const std::size_t got =
            m_beforeRead && !m_beforeRead() ? 0 : std::min(count, m_bytes.size() - at);
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(at), got,
                    static_cast<std::uint8_t*>(buffer));
        m_at += static_cast<std::int64_t>(got);
        return got;
    }
    [[nodiscard]] std::string repr() const override { return "memory clip"; }
    void seek(std::int64_t offset) override { m_at = offset; }
    std::int64_t size() override { return static_cast<std::int64_t>(m_bytes.size()); }
    [[nodiscard]] std::int64_t tell() const override { return m_at; }

private:
    support::Bytes m_bytes;
    std::function<bool()> m_beforeRead;
    std::int64_t m_at = 0;
};
