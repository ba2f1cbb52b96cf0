#include "src/Theora/AudioTrack.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace theora {
namespace {

constexpr int kSynthesisLine = 311;
constexpr int kMaxProbes = 64;
constexpr std::int64_t kWalkBytes = 64 * 1024;
constexpr std::int64_t kSilenceChunk = 4096; // samples
// Floats: over a minute of stereo. A damaged file may claim any rate, or sound that starts hours
// on.
constexpr std::size_t kMaxQueued = std::size_t{1} << 23U;
// Damaged positions: above any real clip, low enough that sums of them cannot overflow.
constexpr std::int64_t kHighestSample = std::int64_t{1} << 48U;

bool isVorbisHeader(const ogg_packet& packet) {
    return packet.bytes > 0 && (packet.packet[0] & 1U) != 0;
}

} // namespace

VorbisSynthesis::VorbisSynthesis(vorbis_info& info) : m_channels(info.channels) {
    if (vorbis_synthesis_init(&m_state, &info) != 0) {
        vorbis_dsp_clear(&m_state);
        refuseStream(kBadVorbisHeaders, kSynthesisLine);
    }
    vorbis_block_init(&m_state, &m_block);
}

VorbisSynthesis::~VorbisSynthesis() {
    vorbis_block_clear(&m_block);
    vorbis_dsp_clear(&m_state);
}

void VorbisSynthesis::restart() {
    vorbis_synthesis_restart(&m_state);
}

void VorbisSynthesis::decode(ogg_packet& packet, std::vector<float>& samples) {
    if (vorbis_synthesis(&m_block, &packet) == 0) {
        vorbis_synthesis_blockin(&m_state, &m_block);
    }
    float** channels = nullptr;
    for (int count = 0; (count = vorbis_synthesis_pcmout(&m_state, &channels)) > 0;) {
        for (int i = 0; i < count; ++i) {
            for (int channel = 0; channel < m_channels; ++channel) {
                samples.push_back(channels[channel][i]);
            }
        }
        vorbis_synthesis_read(&m_state, count);
    }
}

AudioTrack::AudioTrack(SharedSource& source, const StopCheck& stop, VorbisHeaders& headers,
                       std::unique_ptr<TheoraAudioInterface> sink)
    : m_headers(headers), m_pages(source, stop), m_stream(headers.serial),
      m_synthesis(*headers.info.get()),
      m_channels(static_cast<std::size_t>(headers.info->channels)), m_sink(std::move(sink)) {
    rewind();
}

std::int64_t AudioTrack::sampleAt(float time) const {
    const double sample = static_cast<double>(time) * static_cast<double>(m_headers.info->rate);
    return std::llround(std::min(sample, static_cast<double>(kHighestSample)));
}

void AudioTrack::startAt(std::int64_t offset) {
    ogg_stream_reset(m_stream.get());
    m_synthesis.restart();
    m_pages.seek(offset);
    m_unplaced.clear();
    m_nextSample = -1;
    m_ended = false;
}

void AudioTrack::rewind() {
    startAt(0);
    m_wantedSample = 0;
}

// The last page that ends at or before the sample: its packets prime the synthesis.
std::int64_t AudioTrack::findPage(std::int64_t sample) {
    std::int64_t low = 0;
    std::int64_t high = m_pages.sourceSize();
    const auto nextPage = [&](std::int64_t limit) {
        ogg_page page;
        while (m_pages.next(page, limit)) {
            if (ogg_page_serialno(&page) == m_headers.serial && ogg_page_granulepos(&page) >= 0) {
                return static_cast<std::int64_t>(ogg_page_granulepos(&page));
            }
        }
        return std::int64_t{-1};
    };
    for (int round = 0; round < kMaxProbes && high - low > kWalkBytes; ++round) {
        const std::int64_t middle = low + (high - low) / 2;
        m_pages.seek(middle);
        const std::int64_t end = nextPage(high);
        if (end < 0 || end > sample) {
            high = middle;
        } else {
            low = m_pages.pageOffset();
        }
    }
    m_pages.seek(low);
    for (std::int64_t end = nextPage(INT64_MAX); end >= 0 && end <= sample;
         end = nextPage(INT64_MAX)) {
        low = m_pages.pageOffset();
    }
    return low;
}

void AudioTrack::seek(float time) {
    const std::int64_t sample = sampleAt(time);
    startAt(findPage(sample));
    m_wantedSample = sample;
    const TheoraLock lock(m_mutex);
    m_blocks.clear();
    m_queued = 0;
    m_jumped = true;
}

bool AudioTrack::decodePage(std::vector<float>& samples, std::int64_t& first) {
    ogg_page page;
    do {
        if (!m_pages.next(page)) {
            return false;
        }
    } while (ogg_page_serialno(&page) != m_headers.serial);
    ogg_stream_pagein(m_stream.get(), &page);
    ogg_packet packet;
    for (int got = 0; (got = ogg_stream_packetout(m_stream.get(), &packet)) != 0;) {
        if (got > 0 && !isVorbisHeader(packet)) {
            m_synthesis.decode(packet, m_unplaced);
        }
    }
    place(page, samples, first);
    return true;
}

// A page gives the position of its last packet's end, and so of all samples before it.
void AudioTrack::place(ogg_page& page, std::vector<float>& samples, std::int64_t& first) {
    const std::int64_t granule = std::min<std::int64_t>(ogg_page_granulepos(&page), kHighestSample);
    if (granule < 0 && m_nextSample < 0) {
        return;
    }
    auto count = static_cast<std::int64_t>(m_unplaced.size() / m_channels);
    if (m_nextSample < 0) {
        m_nextSample = granule - count; // below 0: samples that only prime the synthesis
    } else if (ogg_page_eos(&page) != 0 && granule >= 0 && granule < m_nextSample + count) {
        count = std::max<std::int64_t>(granule - m_nextSample, 0); // padding at the end
    } else if (granule >= 0) {
        m_nextSample = std::max(granule - count, std::int64_t{0}); // data may be missing in between
    }
    first = m_nextSample;
    m_nextSample += count;
    m_unplaced.resize(static_cast<std::size_t>(count) * m_channels);
    samples.swap(m_unplaced);
    m_unplaced.clear();
}

void AudioTrack::queue(std::vector<float> samples) {
    m_wantedSample += static_cast<std::int64_t>(samples.size() / m_channels);
    const TheoraLock lock(m_mutex);
    m_queued += samples.size();
    m_blocks.push_back(std::move(samples));
}

bool AudioTrack::isFull() {
    const TheoraLock lock(m_mutex);
    return m_queued >= kMaxQueued;
}

void AudioTrack::decodeUntil(float time) {
    const std::int64_t until = sampleAt(time);
    while (!m_ended && m_wantedSample < until && !isFull()) {
        std::vector<float> samples;
        std::int64_t first = m_wantedSample;
        if (!decodePage(samples, first)) {
            m_ended = !m_pages.stopped();
            return;
        }
        // Silence up to the start of the sound, a long one in chunks.
        while (!samples.empty() && first > m_wantedSample) {
            const std::int64_t chunk = std::min(first - m_wantedSample, kSilenceChunk);
            if (m_wantedSample >= until || isFull()) {
                m_nextSample = -1; // this page is decoded again when its time comes
                startAt(findPage(m_wantedSample));
                return;
            }
            queue(std::vector<float>(static_cast<std::size_t>(chunk) * m_channels));
        }
        const auto surplus =
            static_cast<std::size_t>(std::max<std::int64_t>(m_wantedSample - first, 0)) *
            m_channels;
        if (surplus < samples.size()) {
            samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(surplus));
            queue(std::move(samples));
        }
    }
}

void AudioTrack::handOver() {
    const TheoraLock lock(m_mutex);
    if (std::exchange(m_jumped, false)) {
        m_sink->flush();
    }
    for (const std::vector<float>& samples : m_blocks) {
        m_sink->insertData(samples.data(), static_cast<int>(samples.size() / m_channels));
    }
    m_blocks.clear();
    m_queued = 0;
}

} // namespace theora
