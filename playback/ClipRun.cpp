#include "playback/ClipRun.h"

#include "player/Clip.h"
#include "src/TheoraTimer.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoFrame.h"

namespace playback {

void ClipRun::begin(OpenClip& clip, int frame) {
    m_clip = &clip;
    m_hasPicture = false;
    m_isWaiting = true;
    m_nextFrame = frame;
    m_time = timeOf(frame);
    m_transport.load(m_clip, m_time);
}

void ClipRun::end() {
    m_transport.load(nullptr, 0.0);
    m_clip = nullptr;
    m_isWaiting = false;
}

// As the clip reckons, in floats: both have to agree on when a frame is due.
float ClipRun::timeOf(int frame) const {
    return static_cast<float>(frame) / m_clip->clip().getFPS();
}

int ClipRun::endFrame() const {
    const int count = m_clip != nullptr ? m_clip->facts()->frameCount : -1;
    return count >= 0 ? count : m_nextFrame;
}

bool ClipRun::tick(const PictureSink& show) {
    if (m_clip == nullptr) {
        return false;
    }
    m_time = static_cast<float>(m_transport.advance());
    theora::TheoraVideoClip& clip = m_clip->clip();
    clip.getTimer().seek(m_time);
    const theora::TheoraVideoFrame* frame = clip.peekReadyFrame();
    if (frame != nullptr) {
        m_late += m_hasPicture && m_time >= timeOf(frame->getFrameNumber() + 1) ? 1U : 0U;
        ++m_shown;
        m_frame = frame->getFrameNumber();
        m_nextFrame = m_frame + 1;
        show(frame->getBuffer(), {frame->getWidth(), frame->getHeight()});
        clip.releaseShownFrame();
        m_hasPicture = true;
    }
    if (m_hasPicture && !m_transport.isGoing() && m_transport.isReady()) {
        m_transport.go();
    }
    const int count = m_clip->facts()->frameCount;
    const bool isOver = count >= 0 && m_nextFrame >= count;
    m_isWaiting = !m_transport.isGoing() || m_transport.isShortOfSound() ||
                  (!isOver && !clip.endOfFile.load() && m_time >= timeOf(m_nextFrame));
    return frame != nullptr;
}

bool ClipRun::isAtEnd() const {
    if (m_clip == nullptr) {
        return false;
    }
    const int count = m_clip->facts()->frameCount;
    if (m_hasPicture && count >= 0 && m_time >= timeOf(count)) {
        return true;
    }
    // A file that ends early, or whose length is known only at its end.
    theora::TheoraVideoClip& clip = m_clip->clip();
    return clip.endOfFile.load() && clip.pendingSeekFrame.load() == -1 &&
           clip.getNumReadyFrames() == 0 && m_time >= timeOf(m_nextFrame);
}

} // namespace playback
