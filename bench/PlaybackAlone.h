// Moves through a clip by the playback library alone: the floor of zoneedit_bench.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Samples.h"
#include "video/Video.h"

namespace bench {

inline constexpr int kRounds = 200;
inline constexpr double kPauseMs = 50; ///< as by a user; the decoder fills its queue meanwhile

struct Move {
    int from;
    int to;
};

/// Moves by `step` from one end of the clip to the other, repeatedly.
inline std::vector<Move> walk(int frames, int step) {
    std::vector<Move> moves;
    int at = step > 0 ? 0 : frames - 1;
    for (int round = 0; round < kRounds; ++round) {
        if (at + step < 0 || at + step >= frames) {
            at = step > 0 ? 0 : frames - 1;
        }
        moves.push_back({at, at + step});
        at += step;
    }
    return moves;
}

inline std::vector<Move> jumps(int frames) {
    std::mt19937 random(1);
    std::vector<Move> moves;
    int at = 0;
    for (int round = 0; round < kRounds; ++round) {
        const int to = static_cast<int>(random() % static_cast<unsigned>(frames));
        moves.push_back({at, to});
        at = to;
    }
    return moves;
}

/// The playback library without any window.
class PlaybackAlone {
public:
    explicit PlaybackAlone(const std::string& clip) {
        m_video.setFrameReadyCallback([this] {
            const std::lock_guard lock(m_mutex);
            m_arrived.notify_all();
        });
        if (!m_video.Load(clip)) {
            throw std::runtime_error("cannot open " + clip);
        }
        goTo(0);
    }
    ~PlaybackAlone() { m_video.setFrameReadyCallback({}); }
    PlaybackAlone(const PlaybackAlone&) = delete;
    PlaybackAlone& operator=(const PlaybackAlone&) = delete;

    Samples measure(const std::vector<Move>& moves) {
        Samples times;
        for (const Move& move : moves) {
            if (m_video.currentFrame != move.from) {
                goTo(move.from);
                pause();
            }
            const auto began = Clock::now();
            goTo(move.to);
            times.add(millisecondsSince(began));
            pause();
        }
        return times;
    }
    [[nodiscard]] int frameCount() const { return m_video.frameCount; }

private:
    void goTo(int frame) {
        m_video.seekTo(frame);
        std::unique_lock lock(m_mutex);
        while (!m_video.RenderFrame(nullptr)) {
            m_arrived.wait_for(lock, std::chrono::milliseconds(1));
        }
    }
    /// At the interval of the editor's timer, which also drives the library.
    void pause() {
        const auto began = Clock::now();
        std::unique_lock lock(m_mutex);
        while (millisecondsSince(began) < kPauseMs) {
            m_arrived.wait_for(lock, std::chrono::milliseconds(10));
            (void)m_video.hasDueFrame();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_arrived;
    video::Video m_video;
};

} // namespace bench
