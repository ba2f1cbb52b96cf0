#include "playback/Transport.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "platform/SilentSound.h"
#include "playback/SoundQueue.h"
#include "src/TheoraVideoClip.h"

namespace playback {
namespace {

constexpr double kAhead = 0.18;       // seconds of sound written before they are heard
constexpr double kLeastAhead = 0.09;  // seconds of it that bridge a busy moment
constexpr double kSilentBit = 0.02;   // seconds of silence written at a time
constexpr double kSilenceAhead = 0.1; // seconds of it: devices stand with less than 50 ms to play
constexpr double kLongestStep = 0.02; // seconds between two positions of a device, bridged
constexpr double kStalled = 2.0;      // seconds that a device with sound to play may stand

} // namespace

std::int64_t Transport::sampleAt(double seconds) const {
    return std::llround(seconds * m_format.rate);
}

bool Transport::usesSound() const {
    return m_clip != nullptr && m_clip->sound() != nullptr && m_speed == 1.0;
}

bool Transport::isSoundOwed() const {
    const theora::TheoraVideoClip& clip = m_clip->clip();
    return m_clip->sound()->isEmpty() && !clip.endOfFile.load() &&
           (clip.pendingSeekFrame.load() != -1 || clip.getNumReadyFrames() < 2);
}

bool Transport::isReady() const {
    return !usesSound() || !isSoundOwed();
}

bool Transport::isShortOfSound() const {
    return m_isSounding && !m_isPaused && isSoundOwed() &&
           m_written - m_output->position() < sampleAt(kLeastAhead);
}

double Transport::lap() {
    const std::int64_t now = m_clock.ticks();
    const auto passed = static_cast<double>(std::max<std::int64_t>(now - m_then, 0));
    m_then = now;
    return passed / 1000.0;
}

void Transport::load(OpenClip* clip, double seconds) {
    m_clip = clip;
    m_time = seconds;
    m_isGoing = false;
    m_isSounding = false;
    if (m_output) {
        m_output->pause(true);
    }
    if (usesSound()) {
        openOutput(m_clip->sound()->format());
    }
}

void Transport::openOutput(const platform::SoundFormat& format) {
    if (m_output && m_format == format && !m_output->isLost()) {
        return;
    }
    m_output.reset(); // some devices take one stream at a time
    m_format = format;
    m_output = m_system.open(format);
    m_isDevice = m_output != nullptr;
    if (!m_output) {
        m_lacksDevice = true;
        m_output = platform::openSilentSound(format, m_clock);
    }
    m_output->pause(true);
}

void Transport::fallSilent() {
    m_lacksDevice = true;
    m_isDevice = false;
    m_output = platform::openSilentSound(m_format, m_clock);
    startSound();
}

void Transport::go() {
    (void)lap();
    m_isGoing = true;
    if (usesSound() && !m_isPaused) {
        startSound();
    }
}

void Transport::startSound() {
    openOutput(m_clip->sound()->format());
    m_output->flush();
    m_startSample = m_output->position();
    m_startTime = m_time;
    m_written = m_startSample;
    m_nextSample = sampleAt(m_time);
    m_lastPosition = -1;
    m_sinceStep = 0.0;
    m_isSounding = true;
    feed();
    m_output->pause(false);
}

void Transport::setPaused(bool paused) {
    (void)advance();
    m_isPaused = paused;
    if (m_isSounding) {
        m_output->pause(paused);
        m_sinceStep = 0.0;
    } else if (!paused && m_isGoing && usesSound()) {
        startSound();
    }
}

void Transport::setSpeed(double speed) {
    (void)advance();
    m_speed = speed;
    if (!usesSound() && m_isSounding) {
        m_isSounding = false;
        m_output->pause(true);
    } else if (usesSound() && isMoving() && !m_isSounding) {
        startSound();
    }
}

double Transport::advance() {
    if (m_clip == nullptr) {
        return m_time;
    }
    m_clip->fetchSound();
    const double passed = lap();
    if (!isMoving()) {
        return m_time;
    }
    if (m_isSounding) {
        feed();
        m_sinceStep = isSoundOwed() ? 0.0 : m_sinceStep + passed;
        m_time = std::max(m_time, soundTime());
        if (m_output->isLost() || (m_isDevice && m_sinceStep > kStalled)) {
            fallSilent();
        }
    } else {
        m_time += passed * m_speed;
        if (SoundQueue* queue = m_clip->sound()) {
            queue->dropUntil(std::llround(m_time * queue->format().rate));
        }
    }
    return m_time;
}

double Transport::soundTime() {
    const std::int64_t position = m_output->position();
    if (position != m_lastPosition) {
        m_sinceStep = 0.0;
        m_lastPosition = position;
    }
    const std::int64_t heard = position - m_startSample;
    // Between two steps of the device the steady clock goes on, but not before it has begun.
    const double bridged =
        heard > 0 && position < m_written ? std::min(m_sinceStep, kLongestStep) : 0.0;
    return m_startTime + static_cast<double>(heard) / m_format.rate + bridged;
}

void Transport::feed() {
    SoundQueue& queue = *m_clip->sound();
    const auto most = static_cast<std::int64_t>(kAhead * m_format.rate);
    for (;;) {
        const std::int64_t ahead = m_written - m_output->position();
        const std::size_t room = std::min(
            m_output->space(), static_cast<std::size_t>(std::max<std::int64_t>(most - ahead, 0)));
        if (room == 0) {
            return;
        }
        std::vector<float> samples = queue.take(m_nextSample, room);
        if (samples.empty()) {
            // The track is shorter than the pictures, or damaged: it must not hold them up.
            const auto bit = static_cast<std::int64_t>(kSilentBit * m_format.rate);
            if (isSoundOwed() || ahead > sampleAt(kSilenceAhead)) {
                return;
            }
            samples.resize(std::min(room, static_cast<std::size_t>(bit)) *
                           static_cast<std::size_t>(m_format.channels));
        }
        if (!m_isAudible) {
            std::fill(samples.begin(), samples.end(), 0.0F);
        }
        const std::size_t count = samples.size() / static_cast<std::size_t>(m_format.channels);
        const std::size_t taken = m_output->write(samples.data(), count);
        m_written += static_cast<std::int64_t>(taken);
        m_nextSample += static_cast<std::int64_t>(taken);
        if (taken < count) {
            return; // what was left out is silence: space() was asked just before
        }
    }
}

} // namespace playback
