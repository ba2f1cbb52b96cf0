// Fetches single frames from a clip.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoManager.h"

namespace inspect {

struct FrameHash {
    int number = 0;
    std::uint64_t hash = 0; ///< FNV-1a of the R, G, B bytes, rows packed, top row first
    bool isOwn = true;      ///< TheoraVideoFrame::hasOwnPicture()
};

/// One thread.
class FrameFetcher {
public:
    /// Throws TheoraGenericException.
    explicit FrameFetcher(const std::string& file);
    ~FrameFetcher();
    FrameFetcher(const FrameFetcher&) = delete;
    FrameFetcher& operator=(const FrameFetcher&) = delete;

    [[nodiscard]] int frameCount() const { return m_clip->getNumFrames(); }
    /// Seeks; empty when the frame does not come within ten seconds.
    [[nodiscard]] std::optional<FrameHash> fetch(int frame);
    /// The next frame without a seek; empty at the end, and when it does not come within ten
    /// seconds.
    [[nodiscard]] std::optional<FrameHash> next();
    /// Whether next() returned nothing because the clip has ended.
    [[nodiscard]] bool atEnd() const;

private:
    [[nodiscard]] std::optional<FrameHash> waitForFrame();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    unsigned m_readyCount = 0;
    theora::TheoraVideoManager m_manager{1}; // after the members its callback uses
    theora::TheoraVideoClip* m_clip = nullptr;
};

/// Reports on stderr when the clip's length is unknown.
void reportUnknownLength(const theora::TheoraVideoClip& clip);

} // namespace inspect
