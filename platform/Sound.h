// Where sound goes: one stream of samples that its owner keeps filled. Nothing is called back; how
// much has been heard is asked for, and serves as a clock.
//
//   auto output = sound.open({48000, 2});             // null: no device; SilentSound.h stands in
//   output->write(samples, std::min(count, output->space()));
//   output->position();                               // the sample that is being heard
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace platform {

struct SoundFormat {
    int rate = 48000; ///< samples of one channel a second
    int channels = 2;

    friend bool operator==(const SoundFormat&, const SoundFormat&) = default;
};

/// Whether outputs take the format: 8,000 to 192,000 samples a second, one to eight channels.
[[nodiscard]] constexpr bool isPlayable(const SoundFormat& format) {
    return format.rate >= 8000 && format.rate <= 192000 && format.channels >= 1 &&
           format.channels <= 8;
}

/// Counts are of samples of one channel. Closes the device when destroyed. One thread.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;

    /// How many samples write() takes now without waiting.
    [[nodiscard]] virtual std::size_t space() = 0;
    /// Takes `count` samples of every channel, interleaved, of -1 to 1, or the first of them where
    /// there is less space; returns how many. Playing begins a little later, once some are there.
    virtual std::size_t write(const float* samples, std::size_t count) = 0;
    /// How many have been heard since it was opened. Never goes back; stands while paused and while
    /// there is nothing to play.
    [[nodiscard]] virtual std::int64_t position() = 0;
    virtual void pause(bool paused) = 0;
    /// Drops what has not been heard; the next sample to be written has the number position().
    virtual void flush() = 0;
    /// The device is gone: nothing will be heard any more.
    [[nodiscard]] virtual bool isLost() = 0;
};

/// One thread.
class SoundSystem {
public:
    virtual ~SoundSystem() = default;
    /// Null when there is no device, or none that plays the format. Takes milliseconds; seconds, at
    /// most, where the system does not answer.
    [[nodiscard]] virtual std::unique_ptr<SoundOutput> open(const SoundFormat& format) = 0;
};

/// In the library platform_sound alone, which programs without sound need not link.
SoundSystem& nativeSound();

} // namespace platform
