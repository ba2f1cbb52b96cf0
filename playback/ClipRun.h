// One clip on its way to the screen: takes the pictures that are due from its decoder and lets time
// begin once the first is shown.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/Geometry.h"
#include "playback/OpenClip.h"
#include "playback/Transport.h"

namespace playback {

/// Takes `size.height` rows of `size.width` pixels, blue, green, red, 255, from the top, unpadded;
/// valid during the call.
using PictureSink = std::function<void(const std::uint8_t* pixels, platform::Size size)>;

/// UI thread only.
class ClipRun {
public:
    /// Outlives the run.
    explicit ClipRun(Transport& transport) : m_transport(transport) {}

    /// Frame `frame` of the clip, which is about to come, is shown first. The clip outlives its use
    /// here, until end().
    void begin(OpenClip& clip, int frame);
    void end();
    /// Goes on to the present. True when a picture was shown.
    bool tick(const PictureSink& show);

    /// The frame shown last.
    [[nodiscard]] int frame() const { return m_frame; }
    /// The picture of this moment, or the sound after it, has not been decoded yet.
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }
    /// The last picture has been on show for its time.
    [[nodiscard]] bool isAtEnd() const;
    /// Where the clip ends, even if that is known only there.
    [[nodiscard]] int endFrame() const;

    [[nodiscard]] unsigned shownCount() const { return m_shown; }
    /// Shown when the next was due already.
    [[nodiscard]] unsigned lateCount() const { return m_late; }

private:
    [[nodiscard]] float timeOf(int frame) const;

    Transport& m_transport;
    OpenClip* m_clip = nullptr;
    float m_time = 0.0F;
    bool m_hasPicture = false; ///< since begin()
    bool m_isWaiting = false;
    int m_frame = 0;
    int m_nextFrame = 0; ///< the one that is shown next
    unsigned m_shown = 0;
    unsigned m_late = 0;
};

} // namespace playback
