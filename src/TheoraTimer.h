// The playback clock of a clip, in seconds. The display advances it, the worker sets it on a seek;
// every field is atomic, so both may do so at any time.
#pragma once

#include <atomic>

namespace theora {

class TheoraTimer {
public:
    virtual ~TheoraTimer() = default;

    [[nodiscard]] virtual float getTime() const { return m_time.load(); }
    /// Adds speed * timeStep unless paused.
    virtual void update(float timeStep);
    virtual void pause() { m_paused.store(true); }
    virtual void play() { m_paused.store(false); }
    [[nodiscard]] virtual bool isPaused() const { return m_paused.load(); }
    /// Does nothing: to stop the clock, pause it.
    virtual void stop() {}
    virtual void setSpeed(float speed) { m_speed.store(speed); }
    [[nodiscard]] virtual float getSpeed() const { return m_speed.load(); }
    /// Sets the time, paused or not.
    virtual void seek(float time) { m_time.store(time); }

private:
    std::atomic<float> m_time{0.0F};
    std::atomic<float> m_speed{1.0F};
    std::atomic<bool> m_paused{false};
};

} // namespace theora
