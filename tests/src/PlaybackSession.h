// A manager with one clip, used as by the editor: paused, moved by seeks, read by peek and release.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "src/TheoraVideoManager.h"
#include "tests/support/OggPager.h"

/// The number in a frame's picture.
[[nodiscard]] int pictureNumber(const theora::TheoraVideoFrame& frame);

struct ShownFrame {
    int number = -1; ///< -1 = no frame came
    std::uint64_t hash = 0;
    int pictureNumber = -1; ///< the number in the picture
};

class PlaybackSession {
public:
    /// beforeRead: as that of MemorySource.
    explicit PlaybackSession(const support::Bytes& file, int precache = 0,
                             theora::TheoraAudioInterfaceFactory* sound = nullptr,
                             std::function<bool()> beforeRead = {});
    PlaybackSession(const PlaybackSession&) = delete;
    PlaybackSession& operator=(const PlaybackSession&) = delete;
    ~PlaybackSession();

    [[nodiscard]] theora::TheoraVideoClip& clip() { return *m_clip; }

    /// The frame shown after a seek; none after a timeout of 20 seconds.
    ShownFrame seek(int frame);
    /// Whether a paused clip shows no later frame, although more are decoded.
    [[nodiscard]] bool showsNothingLater();
    /// The next frame to show; none after a timeout or at the clip's end.
    ShownFrame nextShown();
    /// Every frame from here to the end of the data, played without seeks.
    [[nodiscard]] std::vector<ShownFrame> playToEnd();

private:
    theora::TheoraVideoManager m_manager{1};
    theora::TheoraVideoClip* m_clip = nullptr;
    std::mutex m_mutex;
    std::condition_variable m_changed;
};
