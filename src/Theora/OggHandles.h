// RAII guards for the structures of libogg, libtheora and libvorbis. Used by the sources of this
// folder and by tests of the same libraries.
#pragma once

#include <memory>

#include <ogg/ogg.h>
#include <theora/theoradec.h>
#include <vorbis/codec.h>

namespace theora {

/// A C structure with an init and a clear function; neither copied nor moved, as some hold pointers
/// into themselves.
template <typename T, auto Init, auto Clear>
class OggGuard {
public:
    OggGuard() { Init(&m_value); }
    ~OggGuard() { Clear(&m_value); }
    OggGuard(const OggGuard&) = delete;
    OggGuard& operator=(const OggGuard&) = delete;
    [[nodiscard]] T* get() { return &m_value; }
    [[nodiscard]] const T* get() const { return &m_value; }
    T* operator->() { return &m_value; }
    const T* operator->() const { return &m_value; }

private:
    T m_value{};
};

using OggSync = OggGuard<ogg_sync_state, ogg_sync_init, ogg_sync_clear>;
using TheoraInfo = OggGuard<th_info, th_info_init, th_info_clear>;
using TheoraComment = OggGuard<th_comment, th_comment_init, th_comment_clear>;
using VorbisInfo = OggGuard<vorbis_info, vorbis_info_init, vorbis_info_clear>;
using VorbisComment = OggGuard<vorbis_comment, vorbis_comment_init, vorbis_comment_clear>;

class OggStream {
public:
    explicit OggStream(int serial) { ogg_stream_init(&m_value, serial); }
    ~OggStream() { ogg_stream_clear(&m_value); }
    OggStream(const OggStream&) = delete;
    OggStream& operator=(const OggStream&) = delete;
    [[nodiscard]] ogg_stream_state* get() { return &m_value; }

private:
    ogg_stream_state m_value{};
};

template <auto Free>
struct CallFree {
    template <typename T>
    void operator()(T* value) const {
        Free(value);
    }
};
using TheoraSetup = std::unique_ptr<th_setup_info, CallFree<th_setup_free>>;
using TheoraDecoder = std::unique_ptr<th_dec_ctx, CallFree<th_decode_free>>;

} // namespace theora
