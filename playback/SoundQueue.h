// The decoded sound of a clip on its way to the device, by the numbers of its samples: what is late
// is dropped, what is missing is silence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "platform/Sound.h"
#include "src/TheoraAudioInterface.h"

namespace playback {

/// One thread. A sample is one value for each channel.
class SoundQueue {
public:
    explicit SoundQueue(const platform::SoundFormat& format) : m_format(format) {}

    [[nodiscard]] const platform::SoundFormat& format() const { return m_format; }
    void add(const float* samples, int count);
    void clear() { m_samples.clear(); }
    /// Empties it; the next sample to be added has this number.
    void restartAt(std::int64_t sample);
    /// Forgets the samples before this number.
    void dropUntil(std::int64_t sample);
    /// The samples from this number on, `most` of them or fewer; empty when they have not come yet.
    [[nodiscard]] std::vector<float> take(std::int64_t from, std::size_t most);
    [[nodiscard]] bool isEmpty() const { return m_samples.empty(); }

private:
    [[nodiscard]] std::size_t channels() const {
        return static_cast<std::size_t>(m_format.channels);
    }

    platform::SoundFormat m_format;
    std::deque<float> m_samples;
    std::int64_t m_first = 0; ///< the number of the first sample in the queue
};

/// Makes the queue of a clip while that is loaded.
class SoundQueueFactory final : public theora::TheoraAudioInterfaceFactory {
public:
    [[nodiscard]] std::unique_ptr<theora::TheoraAudioInterface>
    createInstance(const theora::TheoraVideoClip& clip, int channels,
                   int samplesPerSecond) override;
    /// Null for a clip without sound, or with sound of a format that no device plays.
    [[nodiscard]] const std::shared_ptr<SoundQueue>& queue() const { return m_queue; }

private:
    std::shared_ptr<SoundQueue> m_queue;
};

} // namespace playback
