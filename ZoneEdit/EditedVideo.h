// The video that is edited, as the parts of the zone editor see it: its frames, and the control
// that shows them. UI thread only.
#pragma once

#include <cstdint>

#include "platform/Geometry.h"
#include "video/CVideoUI.h"

namespace zoneedit {

class EditedVideo {
public:
    /// The control that shows it; null while there is none. Not owned: it belongs to the window,
    /// whose controls go after all parts of the editor.
    void setControl(video::CVideoUI* control) { m_control = control; }
    [[nodiscard]] video::CVideoUI* control() const { return m_control; }
    /// The control, or null after a log line with `line`.
    [[nodiscard]] video::CVideoUI* checkedControl(int line) const;

    /// 0 without a video.
    [[nodiscard]] int frameCount() const;
    /// Whether there is a video and it says how long it is.
    [[nodiscard]] bool hasFrames() const { return frameCount() > 0; }
    [[nodiscard]] bool lacksLength() const { return size().width > 0 && !hasFrames(); }
    /// The frame on show, 0 without a video, -1 for one without frames.
    [[nodiscard]] int frame() const;
    /// Above 0, without a video as well.
    [[nodiscard]] double framesPerSecond() const;
    /// Whether the picture is at a point of the window.
    [[nodiscard]] bool shows(platform::Point at) const;
    /// The picture of the frame on show has not come yet.
    [[nodiscard]] bool isWaiting() const;
    /// In its own pixels; empty without a video.
    [[nodiscard]] platform::Size size() const;

    /// A picture of `frame` that came from elsewhere, as playback::PictureSink takes it, is the one
    /// on show.
    void showPlayed(int frame, const std::uint8_t* pixels, platform::Size size) const;
    /// The pictures come from the video again, the one of the frame on show first.
    void endPlayed() const;

    /// Where the zone that is edited was drawn and is to be drawn.
    void repaintZone() const;
    /// Before it returns.
    void repaintZoneNow() const;
    /// A frame that is decoded already need not wait for the system's next paint.
    void repaintDueFrame() const;
    void paintNow() const;

private:
    [[nodiscard]] video::Video* video() const;

    video::CVideoUI* m_control = nullptr;
};

} // namespace zoneedit
