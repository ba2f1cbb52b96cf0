// Decodes the frames before the current one into the plane cache, with its own decoder and thread,
// so that stepping back across a keyframe finds the previous group ready.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/ThreadAnnotations.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/PictureDecoder.h"
#include "src/Theora/PlaneCache.h"
#include "src/Theora/StepBackPlan.h"
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

    /// No other decoding is due: fill the cache below `frame`.
    void prepare(std::int64_t frame) EXCLUDES(m_mutex);
    /// The display moved to `frame`: work that is no longer useful stops.
    void moveTo(std::int64_t frame) EXCLUDES(m_mutex);
    /// False at once when this decoder is not about to reach `frame`. Otherwise waits, which beats
    /// decoding it again, until it has passed it or `giveUp` returns true: the frame may be in the
    /// cache then.
    [[nodiscard]] bool waitFor(std::int64_t frame, const StopCheck& giveUp) EXCLUDES(m_mutex);

protected:
    void execute() override;

private:
    [[nodiscard]] bool waitForGoal(std::int64_t& goal) EXCLUDES(m_mutex);
    void work(std::int64_t goal) EXCLUDES(m_mutex);
    void keepPicture(std::int64_t number) EXCLUDES(m_mutex);
    [[nodiscard]] bool isOnTheWayTo(std::int64_t frame) const REQUIRES(m_mutex);

    SharedSource& m_source;
    const TheoraHeaders& m_headers;
    const StreamLayout& m_layout;
    const GranuleFormat& m_format;
    PlaneCache& m_cache;
    const StopCheck m_stop;
    std::unique_ptr<PictureDecoder> m_decoder; ///< of this thread; made on first use
    std::atomic<bool> m_useless{false};        ///< the goal is obsolete

    TheoraMutex m_mutex;
    TheoraCondition m_changed;
    TheoraCondition m_progress;
    StepBackPlan m_plan GUARDED_BY(m_mutex);
    std::int64_t m_centre GUARDED_BY(m_mutex) = 0;
    std::int64_t m_goal GUARDED_BY(m_mutex) = -1; ///< target frame, -1 = none
    std::int64_t m_at GUARDED_BY(m_mutex) = -1;   ///< last frame decoded on the way, -1 = none yet
    bool m_wanted GUARDED_BY(m_mutex) = false;    ///< prepare() was called and is still valid
};

} // namespace theora
