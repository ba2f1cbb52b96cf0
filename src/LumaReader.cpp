#include "src/LumaReader.h"

#include <cstdint>
#include <exception>
#include <utility>

#include "src/StoppableSource.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PictureDecoder.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"
#include "src/TheoraException.h"

namespace theora {
namespace {

constexpr int kSizeLine = 2;

/// Headers that are read when they are made: they cannot be moved.
struct ReadHeaders : StreamHeaders {
    explicit ReadHeaders(SharedSource& source) { readStreamHeaders(source, *this); }
};

} // namespace

class LumaReader::Decoding {
public:
    Decoding(const std::string& path, platform::FileSystem& files, std::function<bool()> stop)
        : m_stop(std::move(stop)), m_file(path, files, m_stop), m_source(m_file),
          m_headers(m_source), m_format(*m_headers.theora.info.get()),
          m_layout(scanStream(m_source, m_headers, m_format)),
          m_decoder(m_source, m_stop, m_headers.theora, m_layout, m_format) {}

    [[nodiscard]] platform::Size size() const {
        const th_info& info = *m_headers.theora.info.get();
        return {static_cast<int>(info.frame_width), static_cast<int>(info.frame_height)};
    }
    [[nodiscard]] PictureDecoder& decoder() { return m_decoder; }

private:
    std::function<bool()> m_stop;
    StoppableSource m_file;
    SharedSource m_source;
    ReadHeaders m_headers;
    GranuleFormat m_format;
    StreamLayout m_layout;
    PictureDecoder m_decoder;
};

LumaReader::LumaReader(const std::string& path, platform::FileSystem& files,
                       std::function<bool()> stop)
    : m_decoding(std::make_unique<Decoding>(path, files, std::move(stop))) {
    const TheoraPlane plane = luma();
    if (plane.width < size().width || plane.height < size().height) {
        throw TheoraGenericException("the picture is smaller than its frame", "src\\LumaReader",
                                     kSizeLine);
    }
}

LumaReader::~LumaReader() = default;

platform::Size LumaReader::size() const {
    return m_decoding->size();
}

bool LumaReader::goTo(int frame) noexcept {
    try {
        PictureDecoder& decoder = m_decoding->decoder();
        return frame >= 0 && decoder.decodeTo(frame, [](std::int64_t) {}) == DecodeResult::reached;
    } catch (const std::exception&) {
        return false;
    }
}

TheoraPlane LumaReader::luma() {
    return m_decoding->decoder().picture().planes[0];
}

} // namespace theora
