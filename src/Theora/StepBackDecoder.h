// Decodes the frames before the one that is looked at into the plane cache, with a decoder and a
// thread of its own, so that stepping back across a keyframe finds the group before ready.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "src/Theora/PictureDecoder.h"
#include "src/Theora/PlaneCache.h"
#include "src/TheoraMutex.h"
#include "src/TheoraThread.h"

namespace theora {

/// prepare, moveTo and waitFor: one thread at a time (the clip's worker). The thread starts with
/// the first prepare and sleeps when there is nothing to do.
class StepBackDecoder : public TheoraThread {
public:
    /// All references outlive this object.
    StepBackDecoder(SharedSource& source, const TheoraHeaders& headers, const StreamLayout& layout,
                    const GranuleFormat& format, PlaneCache& cache);
    /// Stops between two packets.
    ~StepBackDecoder() override;

    /// Nothing else is to be decoded now: fill the cache below `frame`.
    void prepare(std::int64_t frame) EXCLUDES(m_mutex);
    /// The display went to `frame`: work that is of no use there ends, other work goes on.
    void moveTo(std::int64_t frame) EXCLUDES(m_mutex);
    /// False at once when this decoder is not on its way to `frame`. Else waits, which is shorter
    /// than decoding anew, until it has come past or `giveUp` says yes: the frame may be in the
    /// cache then.
    [[nodiscard]] bool waitFor(std::int64_t frame, const StopCheck& giveUp) EXCLUDES(m_mutex);

protected:
    void execute() override;

private:
    [[nodiscard]] bool waitForGoal(std::int64_t& goal) EXCLUDES(m_mutex);
    [[nodiscard]] std::int64_t chooseGoal() REQUIRES(m_mutex);
    void work(std::int64_t goal) EXCLUDES(m_mutex);
    void keepPicture(std::int64_t number) EXCLUDES(m_mutex);
    [[nodiscard]] bool isOnTheWayTo(std::int64_t frame) const REQUIRES(m_mutex);

    SharedSource& m_source;
    const TheoraHeaders& m_headers;
    const StreamLayout& m_layout;
    const GranuleFormat& m_format;
    PlaneCache& m_cache;
    const StopCheck m_stop;
    std::unique_ptr<PictureDecoder> m_decoder; ///< this thread's; made at the first work
    std::atomic<bool> m_useless{false};        ///< the goal is no longer wanted

    TheoraMutex m_mutex;
    TheoraCondition m_changed;
    TheoraCondition m_progress;
    std::int64_t m_centre GUARDED_BY(m_mutex) = 0;
    std::int64_t m_goal GUARDED_BY(m_mutex) = -1; ///< frame in work, -1 = none
    std::int64_t m_at GUARDED_BY(m_mutex) = -1;   ///< decoded last on the way there, -1 = none yet
    bool m_wanted GUARDED_BY(m_mutex) = false;    ///< prepare() was called and still holds
    bool m_filling GUARDED_BY(m_mutex) = false;   ///< a fill has begun; goes on to a full window
};

} // namespace theora
