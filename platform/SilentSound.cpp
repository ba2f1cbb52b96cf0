#include "platform/SilentSound.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace platform {
namespace {

class SilentOutput final : public SoundOutput {
public:
    SilentOutput(const SoundFormat& format, Clock& clock)
        : m_rate(format.rate), m_clock(clock), m_since(clock.ticks()) {}

    std::size_t space() override {
        return static_cast<std::size_t>(
            std::max<std::int64_t>(m_rate / 5 - (m_written - position()), 0));
    }

    std::size_t write(const float* /*samples*/, std::size_t count) override {
        if (position() >= m_written) { // it stood: it goes on from now
            startAt(m_written);
        }
        const std::size_t taken = std::min(count, space());
        m_written += static_cast<std::int64_t>(taken);
        return taken;
    }

    std::int64_t position() override {
        if (m_isPaused) {
            return m_start;
        }
        const std::int64_t passed = std::max<std::int64_t>(m_clock.ticks() - m_since, 0);
        return std::min(m_written, m_start + passed * m_rate / 1000);
    }

    void pause(bool paused) override {
        startAt(position());
        m_isPaused = paused;
    }

    void flush() override {
        m_written = position();
        startAt(m_written);
    }

    bool isLost() override { return false; }

private:
    void startAt(std::int64_t sample) {
        m_start = sample;
        m_since = m_clock.ticks();
    }

    const std::int64_t m_rate;
    Clock& m_clock;
    std::int64_t m_written = 0;
    std::int64_t m_start = 0; ///< the position at m_since
    std::int64_t m_since;
    bool m_isPaused = false;
};

} // namespace

std::unique_ptr<SoundOutput> openSilentSound(const SoundFormat& format, Clock& clock) {
    return std::make_unique<SilentOutput>(format, clock);
}

} // namespace platform
