// Where in a clip playing has got to: by the sound that was heard, or by the steady clock where
// there is none. Feeds the device as it goes.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/Clock.h"
#include "platform/Sound.h"
#include "playback/OpenClip.h"

namespace playback {

/// UI thread only.
class Transport {
public:
    /// Both outlive the transport.
    Transport(platform::SoundSystem& sound, platform::Clock& clock)
        : m_system(sound), m_clock(clock) {}

    /// Stands at `seconds` of the clip, which outlives its use here, until go(). Null: none.
    void load(OpenClip* clip, double seconds);
    /// The sound that belongs to the first picture is there, or there is none.
    [[nodiscard]] bool isReady() const;
    /// Whether the sound may run out before the decoder, which is behind, brings more.
    [[nodiscard]] bool isShortOfSound() const;
    /// The first picture is shown: time begins to pass.
    void go();
    void setPaused(bool paused);
    /// 1: the clip's own. At any other it is silent.
    void setSpeed(double speed);
    void setAudible(bool audible) { m_isAudible = audible; }
    /// The time in the clip, now; feeds the sound meanwhile. Never goes back.
    double advance();

    [[nodiscard]] double speed() const { return m_speed; }
    [[nodiscard]] bool isGoing() const { return m_isGoing; }
    [[nodiscard]] bool isPaused() const { return m_isPaused; }
    /// A clip with sound has come up and there was no device for it.
    [[nodiscard]] bool lacksDevice() const { return m_lacksDevice; }

private:
    [[nodiscard]] bool usesSound() const;
    /// Whether the decoder still owes the sound that comes next.
    [[nodiscard]] bool isSoundOwed() const;
    [[nodiscard]] bool isMoving() const { return m_isGoing && !m_isPaused; }
    void openOutput(const platform::SoundFormat& format);
    void fallSilent();
    void startSound();
    void feed();
    double soundTime();
    [[nodiscard]] std::int64_t sampleAt(double seconds) const;
    /// Seconds of the steady clock since the last call.
    double lap();

    platform::SoundSystem& m_system;
    platform::Clock& m_clock;
    OpenClip* m_clip = nullptr;
    std::unique_ptr<platform::SoundOutput> m_output;
    platform::SoundFormat m_format; ///< of the output
    bool m_isDevice = false;        ///< the output is heard
    bool m_lacksDevice = false;
    bool m_isPaused = false;
    bool m_isGoing = false;
    bool m_isAudible = true;
    bool m_isSounding = false; ///< the output plays this clip
    double m_speed = 1.0;
    double m_time = 0.0;
    std::int64_t m_then = 0; ///< ticks at the last lap
    // While it is sounding.
    double m_startTime = 0.0; ///< of the clip, when the output was at m_startSample
    std::int64_t m_startSample = 0;
    std::int64_t m_nextSample = 0; ///< of the clip: the next to be written
    std::int64_t m_written = 0;    ///< the output's number of that sample
    std::int64_t m_lastPosition = -1;
    double m_sinceStep = 0.0; ///< seconds since the position last moved
};

} // namespace playback
