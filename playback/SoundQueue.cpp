#include "playback/SoundQueue.h"

#include <algorithm>
#include <utility>

namespace playback {
namespace {

class Sink final : public theora::TheoraAudioInterface {
public:
    explicit Sink(std::shared_ptr<SoundQueue> queue) : m_queue(std::move(queue)) {}
    void insertData(const float* samples, int count) override { m_queue->add(samples, count); }
    void flush() override { m_queue->clear(); }

private:
    std::shared_ptr<SoundQueue> m_queue;
};

} // namespace

void SoundQueue::add(const float* samples, int count) {
    m_samples.insert(m_samples.end(), samples,
                     samples + static_cast<std::size_t>(std::max(count, 0)) * channels());
}

void SoundQueue::restartAt(std::int64_t sample) {
    m_samples.clear();
    m_first = sample;
}

void SoundQueue::dropUntil(std::int64_t sample) {
    const auto held = static_cast<std::int64_t>(m_samples.size() / channels());
    const std::int64_t late = std::clamp<std::int64_t>(sample - m_first, 0, held);
    m_samples.erase(m_samples.begin(),
                    m_samples.begin() + static_cast<std::ptrdiff_t>(late) * m_format.channels);
    m_first += late;
}

std::vector<float> SoundQueue::take(std::int64_t from, std::size_t most) {
    dropUntil(from);
    if (m_first != from) {
        return {};
    }
    const std::size_t count = std::min(m_samples.size(), most * channels());
    const auto end = m_samples.begin() + static_cast<std::ptrdiff_t>(count);
    std::vector<float> taken(m_samples.begin(), end);
    m_samples.erase(m_samples.begin(), end);
    m_first += static_cast<std::int64_t>(count / channels());
    return taken;
}

std::unique_ptr<theora::TheoraAudioInterface>
SoundQueueFactory::createInstance(const theora::TheoraVideoClip& /*clip*/, int channels,
                                  int samplesPerSecond) {
    const platform::SoundFormat format{samplesPerSecond, channels};
    if (!platform::isPlayable(format)) {
        return nullptr;
    }
    m_queue = std::make_shared<SoundQueue>(format);
    return std::make_unique<Sink>(m_queue);
}

} // namespace playback
