#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <windows.h>
// Behind it, whose types they use.
#include <mmreg.h>
#include <mmsystem.h>

#include "platform/Immortal.h"
#include "platform/Sound.h"
#include "platform/win32/Handles.h"

namespace platform {
namespace {

constexpr int kBlocks = 10;
constexpr int kBlocksPerSecond = 50;

struct WaveOutTraits {
    using Type = HWAVEOUT;
    static Type none() { return nullptr; }
    static void close(Type handle) { waveOutClose(handle); }
};
using UniqueWaveOut = win32::Unique<WaveOutTraits>;

/// A part of a second that the device plays in one go.
struct Block {
    WAVEHDR header{};
    std::vector<float> samples;
    bool isPlaying = false;
};

class WaveOutput final : public SoundOutput {
public:
    explicit WaveOutput(const SoundFormat& format)
        : m_format(format),
          m_blockLength(static_cast<std::size_t>(format.rate / kBlocksPerSecond)) {}

    ~WaveOutput() override {
        if (m_device) {
            waveOutReset(m_device.get());
            for (Block& block : m_blocks) {
                waveOutUnprepareHeader(m_device.get(), &block.header, sizeof block.header);
            }
        }
    }

    [[nodiscard]] bool open() {
        const auto frameBytes = static_cast<WORD>(channels() * sizeof(float));
        const auto rate = static_cast<DWORD>(m_format.rate);
        const WAVEFORMATEX wave{WAVE_FORMAT_IEEE_FLOAT,
                                static_cast<WORD>(m_format.channels),
                                rate,
                                rate * frameBytes,
                                frameBytes,
                                static_cast<WORD>(8 * sizeof(float)),
                                0};
        HWAVEOUT device = nullptr;
        if (waveOutOpen(&device, WAVE_MAPPER, &wave, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR) {
            return false;
        }
        m_device.reset(device);
        for (Block& block : m_blocks) {
            block.samples.resize(m_blockLength * channels());
            block.header.lpData = reinterpret_cast<char*>(block.samples.data());
            block.header.dwBufferLength = static_cast<DWORD>(block.samples.size() * sizeof(float));
            if (waveOutPrepareHeader(device, &block.header, sizeof block.header) !=
                MMSYSERR_NOERROR) {
                return false;
            }
        }
        return true;
    }

    std::size_t space() override {
        return m_blockLength *
               static_cast<std::size_t>(std::count_if(m_blocks.begin(), m_blocks.end(),
                                                      [](Block& block) { return isFree(block); }));
    }

    std::size_t write(const float* samples, std::size_t count) override {
        std::size_t done = 0;
        while (done < count && isFree(m_blocks[m_next])) {
            Block& block = m_blocks[m_next];
            const std::size_t part = std::min(m_blockLength, count - done);
            std::copy_n(samples + done * channels(), part * channels(), block.samples.begin());
            block.header.dwBufferLength = static_cast<DWORD>(part * channels() * sizeof(float));
            if (waveOutWrite(m_device.get(), &block.header, sizeof block.header) !=
                MMSYSERR_NOERROR) {
                m_isLost = true;
                break;
            }
            block.isPlaying = true;
            m_next = (m_next + 1) % m_blocks.size();
            done += part;
        }
        m_written += static_cast<std::int64_t>(done);
        return done;
    }

    std::int64_t position() override {
        MMTIME time{};
        time.wType = TIME_SAMPLES;
        if (waveOutGetPosition(m_device.get(), &time, sizeof time) != MMSYSERR_NOERROR) {
            m_isLost = true;
            return m_position;
        }
        const DWORD frameBytes = static_cast<DWORD>(channels() * sizeof(float));
        const DWORD heard = time.wType == TIME_SAMPLES ? time.u.sample : time.u.cb / frameBytes;
        const auto step = static_cast<std::int32_t>(heard - m_heard); // the counter wraps
        if (step > 0) {
            m_heard = heard;
            m_position = std::min(m_position + step, m_written);
        }
        return m_position;
    }

    void pause(bool paused) override {
        if (paused) {
            waveOutPause(m_device.get());
        } else {
            waveOutRestart(m_device.get());
        }
    }

    void flush() override {
        m_written = position();
        waveOutReset(m_device.get()); // its counter begins anew
        m_heard = 0;
        for (Block& block : m_blocks) {
            block.isPlaying = false;
        }
    }

    bool isLost() override { return m_isLost; }

private:
    [[nodiscard]] std::size_t channels() const {
        return static_cast<std::size_t>(m_format.channels);
    }
    [[nodiscard]] static bool isFree(Block& block) {
        // The device sets the flag on a thread of its own.
        const volatile DWORD& flags = block.header.dwFlags;
        return !block.isPlaying || (flags & WHDR_DONE) != 0;
    }

    const SoundFormat m_format;
    const std::size_t m_blockLength;
    std::array<Block, kBlocks> m_blocks; ///< outlive the device
    UniqueWaveOut m_device;
    std::size_t m_next = 0;
    DWORD m_heard = 0; ///< the device's own count
    std::int64_t m_written = 0;
    std::int64_t m_position = 0;
    bool m_isLost = false;
};

class WaveSystem final : public SoundSystem {
public:
    std::unique_ptr<SoundOutput> open(const SoundFormat& format) override {
        if (!isPlayable(format)) {
            return nullptr;
        }
        auto output = std::make_unique<WaveOutput>(format);
        if (!output->open()) {
            return nullptr;
        }
        return output;
    }
};

} // namespace

SoundSystem& nativeSound() {
    static Immortal<WaveSystem> system;
    return system.value;
}

} // namespace platform
