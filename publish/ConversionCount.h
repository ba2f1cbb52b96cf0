// How far the clips of a page are. Used by PublishJob.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "publish/PublishJob.h"

namespace publish {

/// `frames` is -1 for a clip of unknown length.
class ConversionCount {
public:
    /// One more clip is to be converted.
    void plan(int frames);
    /// The next one is begun; the first starts the clock.
    void begin(const std::string& video, int frames);
    void end();
    /// While it runs.
    [[nodiscard]] PublishProgress at(int frame) const;

private:
    std::chrono::steady_clock::time_point m_begun{};
    std::string m_video;
    int m_frames = 0; ///< of the clip at work
    int m_number = 0;
    int m_count = 0;
    std::int64_t m_doneFrames = 0;
    std::int64_t m_totalFrames = 0;
};

} // namespace publish
