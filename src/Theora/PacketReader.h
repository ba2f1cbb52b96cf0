// The data packets of the Theora stream in order, each with its frame number.
//
// libogg gives a granule position to the last packet of a page only, so packets are numbered from
// the page: on a page whose granule position says frame f, the last packet that ends there is f,
// the one before f - 1, and so on. A packet on a page that says nothing follows the one before it.
// Numbers always grow. Empty packets (repeat the last picture) are frames; header packets are none.
#pragma once

#include <cstdint>
#include <vector>

#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PageReader.h"

namespace theora {

/// A page whose last packet is frame `frame`; reading behind it gives frame + 1 and later ones.
struct PagePlace {
    std::int64_t offset = 0;
    std::int64_t frame = -1;
    std::int64_t keyframe = -1; ///< that `frame` depends on, as the page says; -1 = not said
    bool isStart = true;        ///< no such page: the start of the data
};

struct FramePacket {
    ogg_packet packet{};
    std::int64_t number = 0;
    bool isKeyframe = false;
};

/// Where a file keeps its frames; found once at load, the same for every reader of the file.
struct StreamLayout {
    int serial = 0;               ///< of the Theora stream
    std::int64_t dataStart = 0;   ///< StreamHeaders::dataStart
    std::int64_t firstFrame = 0;  ///< number of the first frame in the file
    std::int64_t firstPage = 0;   ///< offset of the first page that a frame ends on
    std::int64_t frameCount = -1; ///< -1 = the file does not tell
};

/// One thread.
class PacketReader {
public:
    /// All references outlive the reader.
    PacketReader(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
                 const GranuleFormat& format);

    /// The next packet will be the first one behind `place`.
    void start(const PagePlace& place);
    void rewind() { start(PagePlace{m_layout.dataStart, -1, -1, true}); }
    /// The next packet, again and again until drop(); null at the end of the data or when stopped.
    /// Its bytes stay valid until a peek() after the drop().
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
    std::vector<FramePacket> m_packets; ///< that end on the current page
    std::size_t m_index = 0;
    std::int64_t m_nextNumber = 0;
};

} // namespace theora
