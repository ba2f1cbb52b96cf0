// The frames of one clip, circulating between the worker that fills them and the display that shows
// them. Frames are made by setSize and never freed during playback. Every operation holds the
// queue's lock throughout, except during the conversion in prepare().
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"
#include "src/TheoraVideoFrame.h"

namespace theora {

class TheoraFrameQueue {
public:
    /// Makes a frame; may throw std::bad_alloc.
    using FrameFactory = std::function<std::unique_ptr<TheoraVideoFrame>()>;

    explicit TheoraFrameQueue(FrameFactory factory);

    /// Deletes every frame, then makes `count` new ones. When memory runs out it logs that, keeps
    /// the frames made and returns normally. Invalidates all frame pointers. Not while a worker
    /// holds a frame.
    void setSize(int count) EXCLUDES(m_mutex);
    /// Frames in the queue, whatever their state.
    [[nodiscard]] int getSize() const EXCLUDES(m_mutex);
    /// Decoded frames waiting for the display.
    [[nodiscard]] int getReadyCount() const EXCLUDES(m_mutex);
    /// No frame is free.
    [[nodiscard]] bool isFull() const EXCLUDES(m_mutex);

    // Worker side.
    /// The first free frame, now the caller's; null when there is none. Pass it to markReady when
    /// filled.
    [[nodiscard]] TheoraVideoFrame* requestEmptyFrame() EXCLUDES(m_mutex);
    /// True: `frame`, taken by the caller, now shows the picture with this identity, from another
    /// frame or from prepare(). False: it has the memory of the free frame that would be filled
    /// last, so that the pictures of the others can be reused later.
    [[nodiscard]] bool reusePixels(TheoraVideoFrame& frame, std::uint64_t identity)
        EXCLUDES(m_mutex);
    /// Converts a picture that is likely to be requested soon into separate memory, where
    /// reusePixels finds it until the next prepare(). Does nothing when a frame shows it already or
    /// its identity is unknown. One thread at a time.
    void prepare(const TheoraPicture& picture) EXCLUDES(m_mutex);
    /// Passes a filled frame from requestEmptyFrame() to the display side.
    void markReady(const TheoraVideoFrame* frame) EXCLUDES(m_mutex);
    /// Discards every decoded frame. A frame held by the display stays untouched until released,
    /// but is no longer counted.
    void clear() EXCLUDES(m_mutex);
    /// When a ready frame has this number: discards the frames before it and returns true.
    /// Otherwise changes nothing.
    [[nodiscard]] bool advanceTo(int frameNumber) EXCLUDES(m_mutex);
    /// The number of the first ready frame that the display does not hold; -1 when there is none.
    [[nodiscard]] int firstWaitingNumber() const EXCLUDES(m_mutex);

    // Display side.
    /// The first frame if it is ready, else null. The frame stays valid and untouched until pop(),
    /// the next front() or setSize(), even when a seek discards it meanwhile.
    [[nodiscard]] TheoraVideoFrame* front() EXCLUDES(m_mutex);
    /// Releases the frame that front() returned, without removing it from the queue.
    void releaseHeld() EXCLUDES(m_mutex);
    /// Display time of the first frame, if ready.
    [[nodiscard]] std::optional<float> frontTime() const EXCLUDES(m_mutex);
    /// Frees the first frame for reuse.
    void pop() EXCLUDES(m_mutex);
    /// Calls `visit` with the front frame while it is ready and until `visit` returns false. visit:
    /// true = pop the frame and continue, false = keep it and stop.
    void popWhile(const std::function<bool(TheoraVideoFrame&)>& visit) EXCLUDES(m_mutex);

private:
    struct Slot {
        std::unique_ptr<TheoraVideoFrame> frame;
        bool ready = false; ///< decoded, waiting for the display
        bool inUse = false; ///< taken by the worker or waiting
        bool held = false;  ///< being read by the display
        bool stale = false; ///< discarded while held
    };

    void moveFrontToBack() REQUIRES(m_mutex);
    void releaseHeldLocked() REQUIRES(m_mutex);
    [[nodiscard]] int readyCountLocked() const REQUIRES(m_mutex);
    [[nodiscard]] bool hasPicture(std::uint64_t identity) const REQUIRES(m_mutex);

    const FrameFactory m_factory;
    mutable TheoraMutex m_mutex;
    std::list<Slot> m_slots GUARDED_BY(m_mutex);
    /// Outside the queue; made by the first prepare(), null while one is running.
    std::unique_ptr<TheoraVideoFrame> m_prepared GUARDED_BY(m_mutex);
};

} // namespace theora
