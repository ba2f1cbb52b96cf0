// A clip in the hands of a very patient display: it asks for a frame and waits for it.
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
    /// Milliseconds from the request to the frame in the display's hands. `release`: free it at
    /// once.
    double seek(int frame, bool release = true);
    /// Plays from frame 0 to the end as fast as it goes; frames a second.
    double playAll();
    /// Waits until the clip has had nothing to do for so long.
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
