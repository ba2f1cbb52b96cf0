// Decoded pictures around the current frame, so that stepping back needs no decoding. Filled by the
// clip's decoder and by the step-back decoder; bounded in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"
#include "src/TheoraPicture.h"

namespace theora {

struct CachedPicture {
    TheoraPicture picture; ///< points into `samples`
    std::vector<std::uint8_t> samples;
    bool isFrame = true; ///< false: stands in for a frame that the file lacks
};

/// Any thread.
class PlaneCache {
public:
    /// width, height: of the luma plane. Cached pictures never take more than limitBytes, excluding
    /// those in use elsewhere.
    PlaneCache(std::size_t limitBytes, int width, int height, int chromaShiftX, int chromaShiftY);

    /// Sets the current frame. The pictures farthest from it are dropped first.
    void setCentre(std::int64_t frame) EXCLUDES(m_mutex);
    /// Whether store() would keep this picture.
    [[nodiscard]] bool wants(std::int64_t frame) const EXCLUDES(m_mutex);
    /// Copies the picture, if wanted; repeats of the previous frame share one copy. picture: of the
    /// size given at construction.
    void store(std::int64_t frame, const TheoraPicture& picture, bool isFrame = true)
        EXCLUDES(m_mutex);
    /// Null when not cached. Stays valid while held.
    [[nodiscard]] std::shared_ptr<const CachedPicture> find(std::int64_t frame) const
        EXCLUDES(m_mutex);
    /// The highest number in [lowest, frame) whose picture is missing and would be kept; lowest - 1
    /// when there is none.
    [[nodiscard]] std::int64_t firstMissingBelow(std::int64_t frame, std::int64_t lowest) const
        EXCLUDES(m_mutex);

    /// Pictures that fit.
    [[nodiscard]] int capacity() const { return m_behind + m_ahead + 1; }
    /// Pictures before the centre that are always wanted.
    [[nodiscard]] int behind() const { return m_behind; }
    /// Pictures after the centre that are always wanted.
    [[nodiscard]] int ahead() const { return m_ahead; }

private:
    using Entry = std::shared_ptr<CachedPicture>;

    /// Buffers for reuse: new memory is slow. Pictures return here when no longer used.
    struct Pool {
        TheoraMutex mutex;
        std::vector<std::unique_ptr<CachedPicture>> spare GUARDED_BY(mutex);
        std::size_t made GUARDED_BY(mutex) = 0; ///< buffers so far
    };

    [[nodiscard]] std::int64_t distance(std::int64_t frame) const REQUIRES(m_mutex);
    [[nodiscard]] bool wantsLocked(std::int64_t frame) const REQUIRES(m_mutex);
    [[nodiscard]] Entry takeBuffer() EXCLUDES(m_mutex);
    [[nodiscard]] bool repeatEntry(std::int64_t frame, std::uint64_t identity) EXCLUDES(m_mutex);
    [[nodiscard]] std::unique_ptr<CachedPicture> makeBuffer() const;
    void makeRoom() REQUIRES(m_mutex);

    const int m_width;
    const int m_height;
    const int m_chromaShiftX;
    const int m_chromaShiftY;
    int m_behind = 0; ///< constant after construction, as is m_ahead
    int m_ahead = 0;
    const std::shared_ptr<Pool> m_pool = std::make_shared<Pool>();
    mutable TheoraMutex m_mutex;
    std::int64_t m_centre GUARDED_BY(m_mutex) = 0;
    std::map<std::int64_t, Entry> m_entries GUARDED_BY(m_mutex);
};

} // namespace theora
