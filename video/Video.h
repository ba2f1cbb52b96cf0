// One loaded video: a playback manager, the one clip it plays, and the frame the editor is on. The
// clip's clock stands still; the editor moves by asking for frames. Used by CVideoUI and the zone
// editor. UI thread only, except for the frame-ready callback.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "src/TheoraVideoManager.h"

namespace video {

class Video {
public:
    /// A video with a running manager and no clip yet.
    Video();
    Video(const Video&) = delete;
    Video& operator=(const Video&) = delete;

    /// `path`: UTF-8. False, with the log line "Unable to load Theora video", when the file cannot
    /// be opened or is no Theora video; the object stays empty. A good load puts the editor on
    /// frame 0. To be called once.
    [[nodiscard]] bool Load(const std::string& path);

    /// Makes `target` the current frame and asks the clip for it. False, nothing changed, unless
    /// 0 <= target < frameCount.
    bool seekTo(int target);
    /// Takes the clip's due frame, if there is one, and copies it into `target`. False when no
    /// frame was due. A null target only takes the frame.
    ///
    /// The copy is bottom-up, blue-green-red, rows packed at width * 3 bytes: a width whose row is
    /// no multiple of 4 bytes shows sheared. Intended. Bytes beyond the buffer are left out, so a
    /// buffer made for another video's size is safe.
    bool RenderFrame(platform::FrameBuffer* target);
    /// Makes `frame` the current one and copies its picture, which came from elsewhere, into
    /// `target` as RenderFrame does: `size.height` rows of `size.width` pixels, blue, green, red
    /// and one more byte, from the top. Nothing when it has not the video's size. Until the next
    /// seekTo, RenderFrame takes the clip's frames and shows none.
    void takePlayed(int frame, const std::uint8_t* pixels, platform::Size size,
                    platform::FrameBuffer* target);
    /// Whether RenderFrame would take a frame now.
    [[nodiscard]] bool hasDueFrame();

    /// `callback` runs on a worker thread each time a frame has been decoded; must not throw. None
    /// runs after an empty one was set.
    void setFrameReadyCallback(std::function<void()> callback);

    int currentFrame = -1; ///< -1 until a video with at least one frame is loaded
    int shownFrame = -1;   ///< the number of the frame that RenderFrame took last
    int frameCount = 0;
    int width = 0; ///< shown pixels: without the alpha half of an alpha clip
    int height = 0;
    double framesPerSecond = 0; ///< 0 without a video

private:
    [[nodiscard]] theora::TheoraVideoFrame* dueFrame();

    std::unique_ptr<theora::TheoraVideoManager> m_manager;
    theora::TheoraVideoClip* m_clip = nullptr; ///< the manager's
    bool m_isPlayed = false;                   ///< the picture on show came from elsewhere
};

/// Copies a top-down picture of `height` packed rows of `width` R, G, B pixels into `target` as
/// described at Video::RenderFrame.
void copyBottomUp(const std::uint8_t* source, int width, int height, std::uint8_t* target,
                  std::size_t targetBytes);

} // namespace video
