// Ogg pages one after another from any byte offset of a file, with the offset of each.
#pragma once

#include <cstdint>
#include <functional>

#include <ogg/ogg.h>

#include "src/Theora/OggHandles.h"
#include "src/Theora/SharedSource.h"

namespace theora {

/// Called between reads; true = stop reading now.
using StopCheck = std::function<bool()>;

/// One thread.
class PageReader {
public:
    /// source, stop: outlive the reader. An empty stop check never stops.
    PageReader(SharedSource& source, const StopCheck& stop) : m_source(source), m_stop(stop) {}

    /// The next page will be the first one that starts at or after `offset`.
    void seek(std::int64_t offset);
    /// The next whole and undamaged page that starts before `limit`. False at the end of the data,
    /// at the limit, or when stopped. The page is valid until the next call.
    [[nodiscard]] bool next(ogg_page& page, std::int64_t limit = INT64_MAX);
    /// Offset of the page that next() returned last.
    [[nodiscard]] std::int64_t pageOffset() const { return m_pageOffset; }
    /// Offset just past that page.
    [[nodiscard]] std::int64_t offset() const { return m_offset; }
    [[nodiscard]] bool stopped() const { return m_stop && m_stop(); }
    [[nodiscard]] std::int64_t sourceSize() const { return m_source.size(); }

private:
    SharedSource& m_source;
    const StopCheck& m_stop;
    OggSync m_sync;
    std::int64_t m_readOffset = 0; ///< of the next byte to fetch
    std::int64_t m_offset = 0;     ///< of the next byte to look at
    std::int64_t m_pageOffset = 0;
};

} // namespace theora
