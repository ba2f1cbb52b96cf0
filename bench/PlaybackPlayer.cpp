#include "bench/PlaybackPlayer.h"

#include <thread>
#include <utility>

#include "bench/Samples.h"

namespace bench {

PlaybackPlayer::PlaybackPlayer(std::unique_ptr<theora::TheoraDataSource> source, int queueLength) {
    m_manager.setFrameReadyCallback([this] {
        const std::lock_guard lock(m_mutex);
        ++m_ready;
        m_changed.notify_one();
    });
    m_clip = m_manager.createClip(std::move(source), theora::TheoraOutputMode::TH_RGB, queueLength);
    m_clip->getTimer().pause();
}

PlaybackPlayer::~PlaybackPlayer() {
    m_manager.setFrameReadyCallback({});
}

void PlaybackPlayer::waitForChange(int seen) {
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(5), [&] { return m_ready != seen; });
}

double PlaybackPlayer::seek(int frame, bool release) {
    const auto start = Clock::now();
    m_clip->requestSeek(frame);
    for (;;) {
        int seen = 0;
        {
            const std::lock_guard lock(m_mutex);
            seen = m_ready;
        }
        if (m_clip->peekReadyFrame() != nullptr) {
            break;
        }
        waitForChange(seen);
    }
    const double time = millisecondsSince(start);
    if (release) {
        m_clip->releaseShownFrame();
    }
    return time;
}

double PlaybackPlayer::playAll() {
    seek(0);
    const auto start = Clock::now();
    m_clip->getTimer().play();
    int shown = 1;
    while (shown < m_clip->getNumFrames()) {
        int seen = 0;
        {
            const std::lock_guard lock(m_mutex);
            seen = m_ready;
        }
        m_clip->advanceToDueFrame();
        if (m_clip->peekReadyFrame() != nullptr) {
            m_clip->releaseShownFrame();
            ++shown;
        } else if (m_clip->getNumReadyFrames() == 0) {
            if (m_clip->endOfFile.load()) {
                break;
            }
            waitForChange(seen);
        }
    }
    m_clip->getTimer().pause();
    return shown / (millisecondsSince(start) / 1000.0);
}

void PlaybackPlayer::settle(std::chrono::milliseconds quiet) {
    // The second decoder has no completion callback, so poll.
    for (auto since = Clock::now(); Clock::now() - since < quiet;) {
        if (m_clip->wantsWork()) {
            since = Clock::now();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

} // namespace bench
