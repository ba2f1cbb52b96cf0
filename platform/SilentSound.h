// A sound output that nobody hears: it plays by a clock. Stands in where there is no device; tests
// drive its clock.
#pragma once

#include <memory>

#include "platform/Clock.h"
#include "platform/Sound.h"

namespace platform {

/// clock: outlives the output. Room for 200 ms; playing begins with the first sample.
[[nodiscard]] std::unique_ptr<SoundOutput> openSilentSound(const SoundFormat& format, Clock& clock);

/// A system whose outputs are all silent.
class SilentSound final : public SoundSystem {
public:
    /// clock: outlives the object and its outputs.
    explicit SilentSound(Clock& clock) : m_clock(clock) {}
    [[nodiscard]] std::unique_ptr<SoundOutput> open(const SoundFormat& format) override {
        return isPlayable(format) ? openSilentSound(format, m_clock) : nullptr;
    }

private:
    Clock& m_clock;
};

} // namespace platform
