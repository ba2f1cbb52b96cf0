// The data packets of the Theora stream in order, each with its frame number.
//
// libogg gives only the last packet of a page a granule position, so packets are numbered from the
// page: when its position means frame f, the last packet that ends there is f, the one before f -
// 1, and so on. A packet on a page without position follows the one before it. Numbers always
// increase. Empty packets (repeat the last picture) are frames; header packets are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PageReader.h"

namespace theora {

/// A page whose last packet is frame `frame`; reading on gives frame + 1 and later ones.
struct PagePosition {
    std::int64_t offset = 0;
    std::int64_t frame = -1;
    std::int64_t keyframe = -1; ///< that `frame` depends on; -1 = the page has no position
    bool isStart = true;        ///< no such page: the start of the data
};

struct FramePacket {
    ogg_packet packet{};
    std::int64_t number = 0;
    bool isKeyframe = false;
};

/// Where a file keeps its frames; found once at load, shared by all readers of the file.
struct StreamLayout {
    int serial = 0;               ///< of the Theora stream
    std::int64_t dataStart = 0;   ///< StreamHeaders::dataStart
    std::int64_t firstFrame = 0;  ///< number of the first frame in the file
    std::int64_t firstPage = 0;   ///< offset of the first page on which a frame ends
    std::int64_t frameCount = -1; ///< -1 = unknown
};

/// One thread.
class PacketReader {
public:
    /// All references outlive the reader.
    PacketReader(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
                 const GranuleFormat& format);

    /// The next packet will be the first one after `position`.
    void start(const PagePosition& position);
    void rewind() { start(PagePosition{m_layout.dataStart, -1, -1, true}); }
    /// The next packet, the same one until drop(); null at the end of the data or when stopped. Its
    /// bytes stay valid until the first peek() after drop().
    [[nodiscard]] const FramePacket* peek();
    void drop() { ++m_index; }
    [[nodiscard]] bool stopped() const { return m_pages.stopped(); }

private:
    [[nodiscard]] bool loadPage();
    void takePackets(ogg_page& page);

    const StreamLayout& m_layout;
    const GranuleFormat& m_format;
    PageReader m_pages;
    OggStream m_stream;
    std::vector<FramePacket> m_packets; ///< ending on the current page
    std::size_t m_index = 0;
    std::int64_t m_nextNumber = 0;
};

} // namespace theora
