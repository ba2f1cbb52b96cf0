// A manager with one clip as the editor uses it: paused, moved by seeks, read by peek and release.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "src/TheoraVideoManager.h"
#include "tests/support/OggPager.h"

struct ShownFrame {
    int number = -1;
    std::uint64_t hash = 0;
    int carried = -1; ///< the number in the picture
};

class PlaybackSession {
public:
    explicit PlaybackSession(support::Bytes file, int precache = 0,
                             theora::TheoraAudioInterfaceFactory* sound = nullptr);
    explicit PlaybackSession(const std::string& path);
    PlaybackSession(const PlaybackSession&) = delete;
    PlaybackSession& operator=(const PlaybackSession&) = delete;
    ~PlaybackSession();

    [[nodiscard]] theora::TheoraVideoClip& clip() { return *m_clip; }
    [[nodiscard]] theora::TheoraVideoManager& manager() { return m_manager; }

    /// The frame that the clip shows after a seek; nothing when it does not come within 20 seconds.
    [[nodiscard]] std::optional<ShownFrame> seek(int frame);
    /// The next frame to show; nothing when none comes or the clip has ended.
    [[nodiscard]] std::optional<ShownFrame> nextShown();
    /// Every frame from here to the end of the data, played without seeks.
    [[nodiscard]] std::vector<ShownFrame> playToEnd();

private:
    void listen();
    [[nodiscard]] bool waitForFrame();

    theora::TheoraVideoManager m_manager{1};
    theora::TheoraVideoClip* m_clip = nullptr;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_ready = 0;
};
