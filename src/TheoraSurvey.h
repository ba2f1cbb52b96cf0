// What is known of a clip without playing it: its size and length, whether a frame can be decoded
// and how far its key frames lie apart. For checks of files that are not open.
#pragma once

#include <functional>
#include <string>

#include "platform/FileSystem.h"

namespace theora {

struct ClipSurvey {
    /// False if the headers cannot be read or no frame can be decoded; the rest is unset then.
    bool isDecodable = false;
    int width = 0; ///< as the editor shows the clip
    int height = 0;
    int pictureX = 0; ///< where in that the picture begins that other programs show
    int pictureY = 0;
    int frameCount = -1; ///< -1 if unknown
    double framesPerSecond = 0.0;
    bool hasSound = false;
    /// The longest way from one key frame to the next, or to the end; 0 if the file's format keeps
    /// it below five seconds. Of very large files only samples are read.
    double keyFrameSeconds = 0.0;
};

/// Reads the file at `path` (UTF-8). The time does not grow with the file beyond a few hundred
/// megabytes, whatever it holds. Ends early, with any result, once `isStopped`, which is not empty,
/// returns true. Never throws. Any thread.
[[nodiscard]] ClipSurvey surveyClip(const std::string& path, platform::FileSystem& files,
                                    const std::function<bool()>& isStopped);
/// Whether the clip's last frame can be decoded, found as by a seek. The rest as above.
[[nodiscard]] bool decodesToItsEnd(const std::string& path, platform::FileSystem& files,
                                   const std::function<bool()>& isStopped);

} // namespace theora
