// The headers of an Ogg file: its video and sound streams, and the decoders' settings. Uses the
// first Theora and the first Vorbis stream and skips all others.
#pragma once

#include <cstdint>

#include "src/Theora/OggHandles.h"
#include "src/Theora/SharedSource.h"

namespace theora {

struct TheoraHeaders {
    TheoraInfo info;
    TheoraComment comment;
    TheoraSetup setup; ///< kept: every new decoder needs it
    int serial = 0;
};

struct VorbisHeaders {
    VorbisInfo info;
    VorbisComment comment;
    int serial = 0;
    bool present = false;
};

struct StreamHeaders {
    TheoraHeaders theora;
    VorbisHeaders vorbis;
    /// Set when there is no Theora stream: the file is of another kind.
    bool lacksTheora = false;
    /// Offset of the page that ends the Theora headers; decoding starts here, skipping header
    /// packets.
    std::int64_t dataStart = 0;
};

/// Reads from the start of the file. Throws TheoraGenericException with one of
/// "Error parsing Theora stream headers.", "invalid theora stream",
/// "Error parsing vorbis stream headers", "invalid stream", "End of file found prematurely".
void readStreamHeaders(SharedSource& source, StreamHeaders& headers);

/// Whether a Theora stream begins with this page. The page's flag is not enough: some writers set
/// it on later pages too.
[[nodiscard]] bool beginsTheoraStream(const ogg_page& page);

/// Throws TheoraGenericException as from the clip's source; `line`: a fixed number known to
/// support.
[[noreturn]] void refuseStream(const char* message, int line);

inline constexpr const char* kBadTheoraHeaders = "Error parsing Theora stream headers.";
inline constexpr const char* kBadVorbisHeaders = "Error parsing vorbis stream headers";

/// As in TheoraPicture.
struct ChromaShift {
    int x = 1;
    int y = 1;
};
[[nodiscard]] inline ChromaShift chromaShift(const th_info& info) {
    return {info.pixel_fmt == TH_PF_444 ? 0 : 1, info.pixel_fmt == TH_PF_420 ? 1 : 0};
}

[[nodiscard]] inline bool isHeaderPacket(const ogg_packet& packet) {
    return packet.bytes > 0 && (packet.packet[0] & 0x80U) != 0;
}

} // namespace theora
