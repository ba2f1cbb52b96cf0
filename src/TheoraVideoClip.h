// One video that is being decoded: its queue of converted frames, its timer, and the rules that say
// which frame is due. The display side belongs to one thread (the user interface's); the decoding
// side is run by the manager's workers. The format is the derived class's business.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

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

    /// Changes the pixel format; decoded frames are discarded and decoded anew, frame pointers die.
    /// The current mode changes nothing. Waits for the worker's packet in work, not for a seek.
    /// TH_UNDEFINED throws TheoraGenericException and leaves the clip unchanged.
    void setOutputMode(TheoraOutputMode mode) EXCLUDES(m_access);
    [[nodiscard]] TheoraOutputMode getOutputMode() const { return m_outputMode.load(); }
    /// Whether the clip starts again when its end is passed; initially not.
    void setRestartAtEnd(bool restart) { m_restartAtEnd.store(restart); }
    /// Advances the timer by timeStep seconds and follows a restart. Nothing while paused.
    void update(float timeStep);
    /// Moves the timer straight to the front frame. Nothing while paused or with no frame ready.
    void advanceToDueFrame();
    /// The frame to show now; null when none is due or a seek is pending. Late frames are dropped
    /// on the way. Valid until releaseShownFrame, the next peek or a mode change. Never waits for a
    /// decode.
    [[nodiscard]] TheoraVideoFrame* peekReadyFrame();
    /// Frees the peeked frame and counts it as displayed.
    void releaseShownFrame();
    /// Hands decoded sound to the audio interface; nothing without one or while paused.
    virtual void decodedAudioCheck() = 0;

    // Any thread.

    /// Asks for a jump: the next frame handed out is frame `frame` exactly. Of several requests the
    /// last one holds. A number below 0 counts as 0; one behind the end shows the last picture
    /// under the number asked for. While the timer is paused no later frame follows it.
    void requestSeek(int frame);
    /// Frame to seek to, -1 = none. Set it through requestSeek, which wakes the worker as well.
    std::atomic<int> pendingSeekFrame{-1};
    /// The decoder ran out of data; cleared by every seek.
    std::atomic<bool> endOfFile{false};

    [[nodiscard]] TheoraTimer& getTimer() { return *m_timer; }
    [[nodiscard]] const std::string& getName() const { return m_name; }
    /// -1 when the file does not tell.
    [[nodiscard]] int getNumFrames() const { return m_frameCount; }
    /// Shown pixels: the left half of the picture in modes with alpha.
    [[nodiscard]] int getWidth() const;
    [[nodiscard]] int getHeight() const { return m_height; }
    /// Pixels that a row of a frame's memory has room for.
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

    /// Reads headers and makes the queue. Throws TheoraGenericException; the clip is then good for
    /// nothing but deletion. Before any worker knows the clip.
    virtual void load() = 0;
    /// Carries out the pending seek, or else decodes one frame. False when no frame came of it.
    /// Never throws.
    [[nodiscard]] bool decodeOnWorker() EXCLUDES(m_access);
    /// Makes the work in progress return soon and keeps later work from starting.
    void cancelWork();
    /// Whether a worker would find something to do now.
    [[nodiscard]] bool wantsWork() const;
    /// Small = urgent: the share of ready frames, weighted by priority and speed.
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
    /// Jumps to `frame` and brings its picture into the queue. False when interrupted() put an end
    /// to it. May throw.
    [[nodiscard]] virtual bool seekTo(int frame) REQUIRES(m_access) = 0;
    /// Decodes the next frame into the queue; false when there is none. May throw.
    [[nodiscard]] virtual bool decodeNextFrame() REQUIRES(m_access) = 0;
    /// Makes `frame` the next one to be decoded after the queue was emptied.
    virtual void continueFrom(int frame) REQUIRES(m_access) = 0;

    /// Whether the work on a seek to `frame` is to be given up: a newer request, a mode change, the
    /// end. frame -1: work that is no seek.
    [[nodiscard]] bool interrupted(int frame) const;
    /// Sets size, stride and rate, then makes the queue. While loading.
    void setGeometry(int width, int height, float fps);
    /// Sets count and duration; -1 = the file does not tell. After setGeometry, while loading.
    void setFrameCount(int frameCount);
    /// Display time of a frame; the one expression that seeks and frames share.
    [[nodiscard]] float timeOfFrame(int frame) const { return static_cast<float>(frame) / m_fps; }
    /// The decoder goes on with the first frame; `framesPlayed`: of the pass that it has ended.
    void wrapRound(std::int64_t framesPlayed);
    /// Stamps and hands a filled frame to the display side.
    void deliver(TheoraVideoFrame& frame, int number);

    const std::unique_ptr<TheoraDataSource> m_dataSource;
    TheoraWorkSignal& m_workSignal;
    std::unique_ptr<TheoraFrameQueue> m_frameQueue; ///< made by load(), then never replaced
    std::atomic<bool> m_restartAtEnd{false};
    mutable TheoraMutex m_access; ///< decoding against mode changes and destruction

private:
    [[nodiscard]] bool runSeek(int frame) REQUIRES(m_access);
    /// overshoot: seconds since the end of the pass.
    void followRestart(float overshoot);
    [[nodiscard]] bool isBehindSeek(const TheoraVideoFrame& frame) const;
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

    std::atomic<bool> m_restartPending{false}; ///< the decoder has wrapped round, the timer has not
    std::atomic<int> m_iteration{0};           ///< 0 or 1: the pass that the timer is in
    std::atomic<TheoraOutputMode> m_outputMode{TheoraOutputMode::TH_UNDEFINED};
    std::atomic<TheoraOutputMode> m_requestedOutputMode;
    std::atomic<unsigned> m_droppedFrames{0};
    std::atomic<unsigned> m_displayedFrames{0};
    std::atomic<int> m_lastIteration{0};
    std::atomic<float> m_priority{1.0F};
    std::atomic<bool> m_seeking{false}; ///< the timer stands still
    std::atomic<int> m_soughtFrame{-1}; ///< of the last seek
    /// Seconds from one restart to the next; -1 = not known yet.
    std::atomic<float> m_passLength{-1.0F};
    std::atomic<int> m_yieldRequests{0}; ///< threads that wait for the access lock
    std::atomic<bool> m_cancelled{false};
};

} // namespace theora
