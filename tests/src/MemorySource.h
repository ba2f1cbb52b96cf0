// A clip's bytes from memory.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "src/TheoraDataSource.h"
#include "tests/support/OggPager.h"

class MemorySource : public theora::TheoraDataSource {
public:
    explicit MemorySource(support::Bytes bytes) : m_bytes(std::move(bytes)) {}

    std::size_t read(void* buffer, std::size_t count) override {
        const auto at = static_cast<std::size_t>(
            std::clamp<std::int64_t>(m_at, 0, static_cast<std::int64_t>(m_bytes.size())));
        const std::size_t got = std::min(count, m_bytes.size() - at);
        if (got > 0) {
            std::memcpy(buffer, m_bytes.data() + at, got);
        }
        m_at += static_cast<std::int64_t>(got);
        return got;
    }
    [[nodiscard]] std::string repr() const override { return "memory clip"; }
    void seek(std::int64_t offset) override { m_at = offset; }
    std::int64_t size() override { return static_cast<std::int64_t>(m_bytes.size()); }
    [[nodiscard]] std::int64_t tell() const override { return m_at; }

private:
    support::Bytes m_bytes;
    std::int64_t m_at = 0;
};
