// The Vorbis track of a clip: decoded on the worker a little ahead of the pictures, passed to the
// audio interface by the display thread. Has its own file position, so that pictures can come from
// a cache while sound continues.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "platform/ThreadAnnotations.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/StreamHeaders.h"
#include "src/TheoraAudioInterface.h"
#include "src/TheoraMutex.h"

namespace theora {

/// Synthesis state and block of one Vorbis stream.
class VorbisSynthesis {
public:
    /// Throws TheoraGenericException when libvorbis refuses. info: outlives the object.
    explicit VorbisSynthesis(vorbis_info& info);
    ~VorbisSynthesis();
    VorbisSynthesis(const VorbisSynthesis&) = delete;
    VorbisSynthesis& operator=(const VorbisSynthesis&) = delete;

    void restart();
    /// Appends the samples that the packet completes, interleaved. Damaged packets give none.
    void decode(ogg_packet& packet, std::vector<float>& samples);

private:
    int m_channels;
    vorbis_dsp_state m_state{};
    vorbis_block m_block{};
};

class AudioTrack {
public:
    /// source, stop, headers: outlive the track.
    AudioTrack(SharedSource& source, const StopCheck& stop, VorbisHeaders& headers,
               std::unique_ptr<TheoraAudioInterface> sink);

    // Worker, one at a time.
    /// Drops queued sound; the next sample is the one at `time` seconds. Sound that starts later is
    /// preceded by silence.
    void seek(float time) EXCLUDES(m_mutex);
    /// Restarts from the beginning, after what is queued.
    void rewind();
    /// Decodes until sound is queued up to `time` seconds; stops at the end of the data, and when
    /// the queue is full.
    void decodeUntil(float time) EXCLUDES(m_mutex);

    /// Passes everything queued to the sink. Display thread.
    void handOver() EXCLUDES(m_mutex);

private:
    [[nodiscard]] std::int64_t sampleAt(float time) const;
    void startAt(std::int64_t offset);
    [[nodiscard]] std::int64_t findPage(std::int64_t sample);
    [[nodiscard]] bool decodePage(std::vector<float>& samples, std::int64_t& first);
    void place(ogg_page& page, std::vector<float>& samples, std::int64_t& first);
    void queue(std::vector<float> samples) EXCLUDES(m_mutex);
    [[nodiscard]] bool isFull() EXCLUDES(m_mutex);

    VorbisHeaders& m_headers;
    PageReader m_pages;
    OggStream m_stream;
    VorbisSynthesis m_synthesis;
    const std::size_t m_channels;
    std::vector<float> m_unplaced;   ///< decoded before any page gave a position
    std::int64_t m_nextSample = -1;  ///< of the stream; -1 = unknown
    std::int64_t m_wantedSample = 0; ///< the next one to be queued
    bool m_ended = false;            ///< end of data reached

    TheoraMutex m_mutex; ///< the clip's audio lock
    const std::unique_ptr<TheoraAudioInterface> m_sink;
    std::deque<std::vector<float>> m_blocks GUARDED_BY(m_mutex); ///< interleaved
    std::size_t m_queued GUARDED_BY(m_mutex) = 0;                ///< floats in m_blocks
    bool m_jumped GUARDED_BY(m_mutex) = false;                   ///< the sink must be flushed
};

} // namespace theora
