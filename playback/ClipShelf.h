// Clips that are opened before they are needed, and closed after: both take milliseconds, which a
// thread of the shelf's own spends.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/ThreadAnnotations.h"
#include "playback/OpenClip.h"
#include "src/TheoraMutex.h"

namespace playback {

/// All but the thread's work: one thread.
class ClipShelf {
public:
    /// files: outlive the shelf.
    explicit ClipShelf(platform::FileSystem& files);
    ~ClipShelf();
    ClipShelf(const ClipShelf&) = delete;
    ClipShelf& operator=(const ClipShelf&) = delete;

    /// Opens these clips, in this order, and closes all others that were not taken.
    void want(std::vector<std::string> paths) EXCLUDES(m_mutex);
    /// The clip at `path`, now the caller's; opened at once if it was not yet. Null when it cannot
    /// be played.
    [[nodiscard]] std::unique_ptr<OpenClip> take(const std::string& path) EXCLUDES(m_mutex);
    /// Closes a clip, later.
    void putAway(std::unique_ptr<OpenClip> clip) EXCLUDES(m_mutex);

private:
    void work() EXCLUDES(m_mutex);
    /// Ends and opens what there is to end and to open, or waits for it. False at the end.
    [[nodiscard]] bool workOnce() EXCLUDES(m_mutex);
    [[nodiscard]] bool isThere(const std::string& path) const REQUIRES(m_mutex);
    [[nodiscard]] std::string nextToOpen() const REQUIRES(m_mutex);

    platform::FileSystem& m_files;
    theora::TheoraMutex m_mutex;
    theora::TheoraCondition m_changed;
    std::vector<std::string> m_wanted GUARDED_BY(m_mutex);
    std::set<std::string> m_refused GUARDED_BY(m_mutex); ///< of the wanted ones
    std::string m_opening GUARDED_BY(m_mutex);           ///< what the thread is at; empty: nothing
    std::vector<std::unique_ptr<OpenClip>> m_ready GUARDED_BY(m_mutex);
    std::vector<std::unique_ptr<OpenClip>> m_old GUARDED_BY(m_mutex);
    bool m_isEnding GUARDED_BY(m_mutex) = false;
    std::thread m_thread; ///< last: it uses all of the above
};

} // namespace playback
