// One video being decoded: its queue of converted frames, its timer, and the rules that decide
// which frame is due. The display side belongs to one thread (the UI thread); the manager's workers
// run the decoding side. Derived classes implement the file format.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraDataSource.h"
#include "src/TheoraFrameQueue.h"
#include "src/TheoraMutex.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraTimer.h"
#include "src/TheoraVideoFrame.h"
#include "src/TheoraWorkSignal.h"

namespace theora {

class TheoraWorkerThread;

/// Owned by the manager that made it.
class TheoraVideoClip {
public:
    virtual ~TheoraVideoClip();
    TheoraVideoClip(const TheoraVideoClip&) = delete;
    TheoraVideoClip& operator=(const TheoraVideoClip&) = delete;

    // Display side: one thread.

    /// Changes the pixel format; decoded frames are discarded and decoded again, frame pointers
    /// become invalid. Setting the current mode does nothing. Waits for the packet a worker is
    /// decoding, not for a seek. TH_UNDEFINED throws TheoraGenericException and leaves the clip
    /// unchanged.
    void setOutputMode(TheoraOutputMode mode) EXCLUDES(m_access);
    [[nodiscard]] TheoraOutputMode getOutputMode() const { return m_outputMode.load(); }
    /// Whether the clip restarts at its end; initially false.
    void setRestartAtEnd(bool restart) { m_restartAtEnd.store(restart); }
    /// Advances the timer by timeStep seconds and applies a pending restart. Does nothing while
    /// paused.
    void update(float timeStep);
    /// Moves the timer to the front frame. Does nothing while paused or with no frame ready.
    void advanceToDueFrame();
    /// The frame to show now; null when none is due or a seek is pending. Drops late frames. Valid
    /// until releaseShownFrame, the next peek or a mode change. Never waits for a decode.
    [[nodiscard]] TheoraVideoFrame* peekReadyFrame();
    /// Frees the peeked frame and counts it as displayed.
    void releaseShownFrame();
    /// Passes decoded sound to the audio interface; does nothing without one or while paused.
    virtual void decodedAudioCheck() = 0;

    // Any thread.

    /// Requests a seek: the next frame delivered is exactly `frame`. The last of several requests
    /// wins. A number below 0 counts as 0; one past the end shows the last picture under the
    /// requested number. While the timer is paused no later frame follows.
    void requestSeek(int frame);
    /// Frame to seek to, -1 = none. Set it through requestSeek, which wakes the worker as well.
    std::atomic<int> pendingSeekFrame{-1};
    /// The decoder ran out of data; cleared by every seek.
    std::atomic<bool> endOfFile{false};

    [[nodiscard]] TheoraTimer& getTimer() { return *m_timer; }
    [[nodiscard]] const std::string& getName() const { return m_name; }
    /// -1 when unknown.
    [[nodiscard]] int getNumFrames() const { return m_frameCount; }
    /// Shown pixels: the left half of the picture in modes with alpha.
    [[nodiscard]] int getWidth() const;
    [[nodiscard]] int getHeight() const { return m_height; }
    /// Allocated pixels per row.
    [[nodiscard]] int getStride() const { return m_stride; }
    [[nodiscard]] float getFPS() const { return m_fps; }
    /// Seconds; -1 when unknown.
    [[nodiscard]] float getDuration() const { return m_duration; }
    [[nodiscard]] unsigned getNumDroppedFrames() const { return m_droppedFrames.load(); }
    [[nodiscard]] unsigned getNumDisplayedFrames() const { return m_displayedFrames.load(); }
    [[nodiscard]] int getNumReadyFrames() const;
    [[nodiscard]] int getNumPrecachedFrames() const {
        return m_frameQueue ? m_frameQueue->getSize() : 0;
    }
    /// Whether the file has a sound track, played or not.
    [[nodiscard]] virtual bool hasAudio() const = 0;
    /// Weight among several clips of one manager; above 1 = decoded ahead of others. Initially 1.
    void setPriority(float priority) { m_priority.store(priority); }

    // Manager and workers.

    /// Reads headers and makes the queue. Throws TheoraGenericException; the clip must then be
    /// deleted. Call before any worker knows the clip.
    virtual void load() = 0;
    /// Carries out the pending seek, or else decodes one frame. False when that gave no frame.
    /// Never throws.
    [[nodiscard]] bool decodeOnWorker() EXCLUDES(m_access);
    /// Called, on any thread, for each frame that becomes ready without a worker having waited for
    /// it. Set before any worker knows the clip; must not throw.
    void setFrameReadyCallback(std::function<void()> callback) {
        m_frameReady = std::move(callback);
    }
    /// Makes current work return soon and prevents further work.
    void cancelWork();
    /// Whether there is work for a worker now.
    [[nodiscard]] bool wantsWork() const;
    /// Lower is more urgent: the share of ready frames, weighted by priority and speed.
    [[nodiscard]] float workWeight() const;
    /// The worker on this clip; guarded by the manager's work mutex.
    TheoraWorkerThread* assignedWorker = nullptr;
    /// Rounds of work so far, to balance equal clips; guarded by the manager's work mutex.
    unsigned workCount = 0;

protected:
    /// signal: raised when there may be new work; outlives the clip.
    TheoraVideoClip(std::unique_ptr<TheoraDataSource> source, TheoraOutputMode mode,
                    int precacheCount, bool powerOfTwoStride, TheoraWorkSignal& signal);

    // Decoding side: on a worker, under the access lock.
    /// Jumps to `frame` and puts its picture into the queue. False when interrupted. May throw.
    [[nodiscard]] virtual bool seekTo(int frame) REQUIRES(m_access) = 0;
    /// Decodes the next frame into the queue; false when there is none. May throw.
    [[nodiscard]] virtual bool decodeNextFrame() REQUIRES(m_access) = 0;
    /// Decoding resumes at `frame` after the queue was emptied.
    virtual void continueFrom(int frame) REQUIRES(m_access) = 0;
    /// Returns once no frame of the queue is being filled any more.
    virtual void finishFrames() REQUIRES(m_access) {}

    /// Whether to abandon a seek to `frame`: a newer request, a mode change, destruction. frame -1:
    /// ordinary decoding.
    [[nodiscard]] bool interrupted(int frame) const;
    /// Sets size, stride and rate, then makes the queue. While loading.
    void setGeometry(int width, int height, float fps);
    /// Sets count and duration; -1 = unknown. After setGeometry, while loading.
    void setFrameCount(int frameCount);
    /// Display time of a frame; seeks and frames must use this same expression.
    [[nodiscard]] float timeOfFrame(int frame) const { return static_cast<float>(frame) / m_fps; }
    /// Decoding continues with the first frame; `framesPlayed`: in the pass just finished.
    void wrapAround(std::int64_t framesPlayed);
    /// Stamps a filled frame and passes it to the display side.
    void deliver(TheoraVideoFrame& frame, int number);

    const std::unique_ptr<TheoraDataSource> m_dataSource;
    std::function<void()> m_frameReady;
    TheoraWorkSignal& m_workSignal;
    std::unique_ptr<TheoraFrameQueue> m_frameQueue; ///< made by load(), never replaced
    std::atomic<bool> m_restartAtEnd{false};
    mutable TheoraMutex m_access; ///< decoding against mode changes and destruction

private:
    [[nodiscard]] bool runSeek(int frame) REQUIRES(m_access);
    /// overshoot: seconds since the end of the pass.
    void applyRestart(float overshoot);
    [[nodiscard]] bool isPastSeekTarget(const TheoraVideoFrame& frame) const;
    [[nodiscard]] TheoraFrameFormat frameFormat() const;

    const std::string m_name;
    const int m_precacheCount;
    const bool m_powerOfTwoStride;
    std::unique_ptr<TheoraTimer> m_defaultTimer;
    TheoraTimer* m_timer;

    // Set while loading, constant afterwards.
    int m_width = 0; ///< with the alpha half
    int m_height = 0;
    int m_stride = 0;
    int m_frameCount = -1;
    float m_fps = 1.0F;
    float m_frameDuration = 0.0F;
    float m_duration = -1.0F;

    std::atomic<bool> m_restartPending{
        false};                      ///< the decoder has wrapped around, the timer has not
    std::atomic<int> m_iteration{0}; ///< 0 or 1: the timer's current pass
    std::atomic<TheoraOutputMode> m_outputMode{TheoraOutputMode::TH_UNDEFINED};
    std::atomic<TheoraOutputMode> m_requestedOutputMode;
    std::atomic<unsigned> m_droppedFrames{0};
    std::atomic<unsigned> m_displayedFrames{0};
    std::atomic<int> m_lastIteration{0};
    std::atomic<float> m_priority{1.0F};
    std::atomic<bool> m_seeking{false}; ///< the timer is halted
    std::atomic<int> m_seekTarget{-1};  ///< of the last seek
    /// Seconds from one restart to the next; -1 = unknown.
    std::atomic<float> m_passLength{-1.0F};
    std::atomic<int> m_yieldRequests{0}; ///< threads waiting for the access lock
    std::atomic<bool> m_cancelled{false};
};

} // namespace theora
