// Decodes the Theora stream to any frame, from the current position when that is shorter, otherwise
// from the previous keyframe.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "src/Theora/OggHandles.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/PageSearch.h"
#include "src/Theora/StreamHeaders.h"
#include "src/TheoraPicture.h"

namespace theora {

enum class DecodeResult {
    reached,     ///< the picture is the wanted one
    endOfStream, ///< the data ended first; the picture is the last one, if any
    stopped      ///< by the stop check; the next decode continues from there
};

/// One thread.
class PictureDecoder {
public:
    /// Called with the number of every frame on the way, the requested one included; picture()
    /// returns it during the call.
    using PictureSink = std::function<void(std::int64_t number)>;

    /// All references outlive the decoder. Throws TheoraGenericException when libtheora refuses.
    PictureDecoder(SharedSource& source, const StopCheck& stop, const TheoraHeaders& headers,
                   const StreamLayout& layout, const GranuleFormat& format);

    /// Decodes up to `frame`; where the file has no such frame, to the last one before it, or else
    /// to the first one.
    [[nodiscard]] DecodeResult decodeTo(std::int64_t frame, const PictureSink& sink);
    /// Decodes the next frame in file order, whatever its number.
    [[nodiscard]] DecodeResult decodeNext(const PictureSink& sink);
    /// Number of the current picture; -1 when there is none.
    [[nodiscard]] std::int64_t position() const { return m_position; }
    /// The current picture, valid until the next decode.
    [[nodiscard]] TheoraPicture picture();

private:
    void makeDecoder();
    [[nodiscard]] TheoraPicture blankPicture();
    bool feed(const FramePacket& packet);
    void startAt(const DecodeStart& start);
    [[nodiscard]] bool reposition(std::int64_t frame);

    const TheoraHeaders& m_headers;
    PageSearch m_search;
    PacketReader m_packets;
    TheoraDecoder m_decoder;
    std::int64_t m_position = -1;
    std::uint64_t m_identity = 0; ///< of the current picture
    bool m_hasPicture = false; ///< of this decoder: before the first one libtheora returns garbage
    std::vector<std::uint8_t> m_blank; ///< one row of grey, shown until then
};

} // namespace theora
