// A clip with a very patient display, which requests a frame and waits for it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "src/TheoraVideoManager.h"

namespace bench {

class PlaybackPlayer {
public:
    explicit PlaybackPlayer(std::unique_ptr<theora::TheoraDataSource> source, int queueLength = 0);
    ~PlaybackPlayer();
    PlaybackPlayer(const PlaybackPlayer&) = delete;
    PlaybackPlayer& operator=(const PlaybackPlayer&) = delete;

    [[nodiscard]] theora::TheoraVideoClip& clip() { return *m_clip; }
    /// Milliseconds from the request until the display has the frame. `release`: free it at once.
    double seek(int frame, bool release = true);
    /// Plays from frame 0 to the end as fast as possible; returns frames per second.
    double playAll();
    /// Waits until the clip has been idle for that long.
    void settle(std::chrono::milliseconds quiet = std::chrono::milliseconds(200));

private:
    void waitForChange(int seen);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_ready = 0;
    theora::TheoraVideoManager m_manager{1};
    theora::TheoraVideoClip* m_clip = nullptr;
};

} // namespace bench
