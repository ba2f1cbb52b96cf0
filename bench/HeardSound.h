// A sound system that notes when the first sample is heard, and how much since the last flush.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "bench/Samples.h"
#include "platform/Sound.h"

namespace bench {

/// What the outputs of a HeardSound have reported; outlives them.
struct Heard {
    std::optional<Clock::time_point> first{};
    platform::SoundOutput* output = nullptr; ///< the one that is open
    std::int64_t base = 0;                   ///< its position when the clip on show began
    int rate = 1;

    /// Of the clip on show; empty while nothing of it has been heard.
    [[nodiscard]] std::optional<double> seconds() const {
        const std::int64_t heard = output != nullptr ? output->position() - base : 0;
        return heard > 0 ? std::optional(static_cast<double>(heard) / rate) : std::nullopt;
    }
};

class HeardOutput final : public platform::SoundOutput {
public:
    HeardOutput(std::unique_ptr<platform::SoundOutput> output, Heard& heard)
        : m_output(std::move(output)), m_heard(heard) {
        m_heard.output = m_output.get();
        m_heard.base = 0;
    }
    ~HeardOutput() override { m_heard.output = nullptr; }

    [[nodiscard]] std::size_t space() override { return m_output->space(); }
    std::size_t write(const float* samples, std::size_t count) override {
        return m_output->write(samples, count);
    }
    [[nodiscard]] std::int64_t position() override {
        const std::int64_t position = m_output->position();
        if (position > 0 && !m_heard.first) {
            m_heard.first = Clock::now();
        }
        return position;
    }
    void pause(bool paused) override { m_output->pause(paused); }
    void flush() override {
        m_output->flush();
        m_heard.base = m_output->position();
    }
    [[nodiscard]] bool isLost() override { return m_output->isLost(); }

private:
    std::unique_ptr<platform::SoundOutput> m_output;
    Heard& m_heard;
};

class HeardSound final : public platform::SoundSystem {
public:
    HeardSound(platform::SoundSystem& system, Heard& heard) : m_system(system), m_heard(heard) {}
    [[nodiscard]] std::unique_ptr<platform::SoundOutput>
    open(const platform::SoundFormat& format) override {
        m_heard.rate = format.rate;
        auto output = m_system.open(format);
        return output ? std::make_unique<HeardOutput>(std::move(output), m_heard) : nullptr;
    }

private:
    platform::SoundSystem& m_system;
    Heard& m_heard;
};

} // namespace bench
