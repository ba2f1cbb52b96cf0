// Owner of the clips and of the worker threads that decode them ahead of display. Entry point of
// the library: make a manager, create a clip, then call updateClips, peekReadyFrame and
// releaseShownFrame from the display's timer.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/ThreadAnnotations.h"
#include "src/TheoraAudioInterface.h"
#include "src/TheoraDataSource.h"
#include "src/TheoraMutex.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraWorkSignal.h"
#include "src/TheoraWorkerThread.h"

namespace theora {

/// One thread (the UI thread), except for the part for the workers.
class TheoraVideoManager {
public:
    /// Writes the banner to the library's log and starts the workers. files: outlives the manager.
    explicit TheoraVideoManager(int workerCount,
                                platform::FileSystem& files = platform::nativeFileSystem());
    /// Stops and joins the workers, interrupting them between packets, then deletes the clips.
    virtual ~TheoraVideoManager();
    TheoraVideoManager(const TheoraVideoManager&) = delete;
    TheoraVideoManager& operator=(const TheoraVideoManager&) = delete;

    /// The most recently made manager that still exists; null when there is none.
    [[nodiscard]] static TheoraVideoManager* getInstance();

    /// Loads the file at `path` (UTF-8). precacheCount: frames in the clip's queue, 0 = 8. The
    /// manager owns the clip, which starts decoding at once. Never null; throws
    /// TheoraGenericException, leaving no clip behind.
    TheoraVideoClip* createClip(const std::string& path, TheoraOutputMode mode,
                                int precacheCount = 0, bool powerOfTwoStride = false);
    /// The same from any source; the clip takes ownership.
    TheoraVideoClip* createClip(std::unique_ptr<TheoraDataSource> source, TheoraOutputMode mode,
                                int precacheCount = 0, bool powerOfTwoStride = false);
    /// Advances every clip by timeStep seconds and passes on its decoded sound. Never decodes or
    /// seeks.
    void updateClips(float timeStep);

    /// Called on a worker, or on another thread of a clip's, whenever a frame becomes ready,
    /// holding only the callback lock; must not throw or call the manager. An empty function
    /// disables it: no call runs after this returns.
    void setFrameReadyCallback(std::function<void()> callback) EXCLUDES(m_callbackMutex);
    /// For clips created later. factory: outlives the manager; null (initially) = silence.
    void setAudioInterfaceFactory(TheoraAudioInterfaceFactory* factory) {
        m_audioFactory = factory;
    }

    // For the workers: any thread.
    /// A clip with something to do, now assigned to `worker`; null when there is none.
    [[nodiscard]] TheoraVideoClip* requestWork(TheoraWorkerThread* worker) EXCLUDES(m_workMutex);
    /// Ends the assignment that requestWork made.
    void workDone(TheoraVideoClip& clip) EXCLUDES(m_workMutex);
    /// Runs the callback, if any.
    void notifyFrameReady() EXCLUDES(m_callbackMutex);
    /// What idle workers wait for.
    [[nodiscard]] TheoraWorkSignal& workSignal() { return m_workSignal; }

private:
    [[nodiscard]] TheoraVideoClip* mostUrgentClip(bool pausedToo) const REQUIRES(m_workMutex);

    platform::FileSystem& m_files;
    TheoraAudioInterfaceFactory* m_audioFactory = nullptr;
    TheoraWorkSignal m_workSignal;
    TheoraMutex m_workMutex;
    std::vector<std::unique_ptr<TheoraVideoClip>> m_clips GUARDED_BY(m_workMutex);
    TheoraMutex m_callbackMutex;
    std::function<void()> m_frameReady GUARDED_BY(m_callbackMutex);
    std::vector<std::unique_ptr<TheoraWorkerThread>> m_workers; ///< last: they use all of the above
};

} // namespace theora
