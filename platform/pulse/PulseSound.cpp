#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <pulse/pulseaudio.h>

#include "platform/Immortal.h"
#include "platform/Sound.h"

namespace platform {
namespace {

constexpr pa_usec_t kLongestWait = 2 * PA_USEC_PER_SEC; // for a server that does not answer
constexpr std::uint32_t kAny = UINT32_MAX;
constexpr int kBufferedPart = 5; // of a second
constexpr int kNeededPart = 50;  // of a second, before playing begins

struct LoopFree {
    void operator()(pa_threaded_mainloop* loop) const {
        pa_threaded_mainloop_stop(loop);
        pa_threaded_mainloop_free(loop);
    }
};
struct ContextFree {
    void operator()(pa_context* context) const {
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
};
struct StreamFree {
    void operator()(pa_stream* stream) const {
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
};

class Lock {
public:
    explicit Lock(pa_threaded_mainloop* loop) : m_loop(loop) { pa_threaded_mainloop_lock(m_loop); }
    ~Lock() { pa_threaded_mainloop_unlock(m_loop); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

void wake(void* loop) {
    pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop*>(loop), 0);
}

void forget(pa_operation* operation) {
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

class PulseOutput final : public SoundOutput {
public:
    explicit PulseOutput(const SoundFormat& format)
        : m_format(format), m_frameBytes(static_cast<std::size_t>(format.channels) * sizeof(float)),
          m_loop(pa_threaded_mainloop_new()) {}

    ~PulseOutput() override {
        if (m_isRunning) {
            const Lock lock(m_loop.get());
            m_stream.reset();
            m_context.reset();
        }
    }

    [[nodiscard]] bool open() {
        m_isRunning = m_loop && pa_threaded_mainloop_start(m_loop.get()) == 0;
        if (!m_isRunning) {
            return false;
        }
        const Lock lock(m_loop.get());
        return connect() && openStream();
    }

    std::size_t space() override {
        const Lock lock(m_loop.get());
        return spaceLocked();
    }

    std::size_t write(const float* samples, std::size_t count) override {
        const Lock lock(m_loop.get());
        const std::size_t taken = std::min(count, spaceLocked());
        if (taken == 0 || pa_stream_write(m_stream.get(), samples, taken * m_frameBytes, nullptr, 0,
                                          PA_SEEK_RELATIVE) < 0) {
            return 0;
        }
        m_written += static_cast<std::int64_t>(taken);
        return taken;
    }

    std::int64_t position() override {
        const Lock lock(m_loop.get());
        return positionLocked();
    }

    void pause(bool paused) override {
        const Lock lock(m_loop.get());
        m_isPaused = paused;
        if (m_stream) {
            forget(pa_stream_cork(m_stream.get(), paused ? 1 : 0, nullptr, nullptr));
        }
    }

    // A stream of its own for what follows: its time then begins with the first sample heard,
    // however much the device had taken already.
    void flush() override {
        const Lock lock(m_loop.get());
        m_begin = positionLocked();
        m_written = m_begin;
        m_stream.reset();
        m_isLost = m_isLost || !openStream();
    }

    bool isLost() override {
        const Lock lock(m_loop.get());
        return m_isLost || !m_stream || !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get()));
    }

private:
    /// Waits for `isDone`, asked again whenever the server has said something; false for too long.
    template <class Condition>
    [[nodiscard]] bool waitFor(Condition isDone) {
        bool isLate = false;
        struct Late {
            pa_threaded_mainloop* loop;
            bool* flag;
        } late{m_loop.get(), &isLate};
        pa_time_event* timer = pa_context_rttime_new(
            m_context.get(), pa_rtclock_now() + kLongestWait,
            [](pa_mainloop_api*, pa_time_event*, const timeval*, void* data) {
                const auto* waiting = static_cast<Late*>(data);
                *waiting->flag = true;
                wake(waiting->loop);
            },
            &late);
        while (!isDone() && !isLate) {
            pa_threaded_mainloop_wait(m_loop.get());
        }
        if (timer != nullptr) {
            pa_threaded_mainloop_get_api(m_loop.get())->time_free(timer);
        }
        return !isLate;
    }

    [[nodiscard]] bool connect() {
        m_context.reset(pa_context_new(pa_threaded_mainloop_get_api(m_loop.get()), "Quorvel"));
        if (!m_context) {
            return false;
        }
        pa_context_set_state_callback(
            m_context.get(), [](pa_context*, void* loop) { wake(loop); }, m_loop.get());
        if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
            return false;
        }
        const auto state = [this] { return pa_context_get_state(m_context.get()); };
        return waitFor(
                   [&] { return state() == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state()); }) &&
               state() == PA_CONTEXT_READY;
    }

    [[nodiscard]] bool openStream() {
        const pa_sample_spec sample{PA_SAMPLE_FLOAT32NE, static_cast<std::uint32_t>(m_format.rate),
                                    static_cast<std::uint8_t>(m_format.channels)};
        m_stream.reset(pa_stream_new(m_context.get(), "Preview", &sample, nullptr));
        if (!m_stream) {
            return false;
        }
        pa_stream_set_state_callback(
            m_stream.get(), [](pa_stream*, void* loop) { wake(loop); }, m_loop.get());
        const auto bytes = [this](int part) {
            return static_cast<std::uint32_t>(static_cast<std::size_t>(m_format.rate / part) *
                                              m_frameBytes);
        };
        // prebuf is not 0: without anything to play, the stream's time has to stand.
        const pa_buffer_attr buffer{kAny, bytes(kBufferedPart), bytes(kNeededPart), kAny, kAny};
        const unsigned flags = PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE |
                               PA_STREAM_ADJUST_LATENCY |
                               (m_isPaused ? PA_STREAM_START_CORKED : PA_STREAM_NOFLAGS);
        if (pa_stream_connect_playback(m_stream.get(), nullptr, &buffer,
                                       static_cast<pa_stream_flags_t>(flags), nullptr,
                                       nullptr) < 0) {
            return false;
        }
        const auto state = [this] { return pa_stream_get_state(m_stream.get()); };
        return waitFor([&] { return state() == PA_STREAM_READY || !PA_STREAM_IS_GOOD(state()); }) &&
               state() == PA_STREAM_READY;
    }

    [[nodiscard]] std::size_t spaceLocked() {
        const std::size_t bytes = m_stream ? pa_stream_writable_size(m_stream.get()) : 0;
        return bytes == static_cast<std::size_t>(-1) ? 0 : bytes / m_frameBytes;
    }

    [[nodiscard]] std::int64_t positionLocked() {
        pa_usec_t heard = 0;
        if (m_stream && pa_stream_get_time(m_stream.get(), &heard) >= 0) {
            const auto samples = static_cast<std::int64_t>(
                heard * static_cast<pa_usec_t>(m_format.rate) / PA_USEC_PER_SEC);
            m_position = std::clamp(m_begin + samples, m_position, std::max(m_position, m_written));
        }
        return m_position;
    }

    const SoundFormat m_format;
    const std::size_t m_frameBytes;
    std::unique_ptr<pa_threaded_mainloop, LoopFree> m_loop; ///< its lock guards all below
    std::unique_ptr<pa_context, ContextFree> m_context;
    std::unique_ptr<pa_stream, StreamFree> m_stream;
    bool m_isRunning = false;
    bool m_isPaused = false;
    bool m_isLost = false;
    std::int64_t m_begin = 0; ///< the number of the stream's first sample
    std::int64_t m_written = 0;
    std::int64_t m_position = 0;
};

class PulseSystem final : public SoundSystem {
public:
    std::unique_ptr<SoundOutput> open(const SoundFormat& format) override {
        if (!isPlayable(format)) {
            return nullptr;
        }
        auto output = std::make_unique<PulseOutput>(format);
        if (!output->open()) {
            return nullptr;
        }
        return output;
    }
};

} // namespace

SoundSystem& nativeSound() {
    static Immortal<PulseSystem> system;
    return system.value;
}

} // namespace platform
