// How large the author wants the picture and which part of it in the middle: as large as there is
// room for, or zoomed. Owned by the control that shows the picture; knows neither window nor
// video. UI thread only.
#pragma once

#include "platform/Geometry.h"
#include "video/PictureView.h"

namespace video {

class PictureZoom {
public:
    /// Where the picture lies; both may change from call to call.
    struct Place {
        platform::Rect room;    ///< in window pixels
        platform::Size picture; ///< in display pixels, not empty
    };

    /// At first.
    void fit() { m_isFit = true; }
    [[nodiscard]] bool isFit() const { return m_isFit; }
    /// Window pixels per display pixel at which all of the picture just fits; 1 without room.
    [[nodiscard]] static double fittingScale(const Place& place);
    /// What the pointer at `about` is on stays under it, as far as the picture's edges allow.
    void zoomTo(double scale, platform::Point about, const Place& place);
    /// By window pixels.
    void moveBy(platform::Point delta, const Place& place);
    /// Brings a display pixel to the middle.
    void center(platform::Point display, const Place& place);

    /// No gap opens at a side beyond which there is more of the picture; what is smaller than the
    /// room stands in its middle.
    [[nodiscard]] PictureView view(const Place& place) const;

private:
    void moveTo(double left, double top, const Place& place);

    bool m_isFit = true;
    double m_scale = 1;
    // The part of the picture, in display pixels, that is in the middle of the room.
    double m_x = 0;
    double m_y = 0;
};

} // namespace video
