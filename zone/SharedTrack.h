// A zone's track, which copies of the zone share until one of them changes it. A snapshot of the
// zones costs next to nothing this way, and another thread may read it while the editor goes on.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

#include "zone/ShapeTrack.h"

namespace zone {

class SharedTrack {
public:
    SharedTrack() = default;
    SharedTrack(const SharedTrack& other)
        : m_track(other.m_track), m_contentId(other.m_contentId), m_isShared(true) {
        // A track that is shared already belongs to a snapshot as well, which is only read.
        if (!other.m_isShared) {
            other.m_isShared = true;
        }
    }
    SharedTrack(SharedTrack&& other) noexcept = default; ///< the other is not used any more
    SharedTrack& operator=(const SharedTrack&) = delete;
    SharedTrack& operator=(SharedTrack&&) noexcept = default;
    ~SharedTrack() = default;

    /// One that shares nothing.
    [[nodiscard]] SharedTrack copy() const {
        return {std::make_shared<ShapeTrack>(get()), m_contentId};
    }
    void swap(SharedTrack& other) noexcept { std::swap(*this, other); }

    [[nodiscard]] const ShapeTrack& get() const { return *m_track; }
    [[nodiscard]] const ShapeTrack* operator->() const { return m_track.get(); }
    /// Another number for every change, which copies take along: tracks with the same number are
    /// equal.
    [[nodiscard]] std::uint64_t contentId() const { return m_contentId; }
    /// For a change, which is over before contentId() is read. Copies a shared track first, so it
    /// may throw; after a call without another copy of this object in between it does not.
    [[nodiscard]] ShapeTrack& own() {
        if (m_isShared) {
            m_track = std::make_shared<ShapeTrack>(*m_track);
            m_isShared = false;
        }
        m_contentId = nextContentId();
        return *m_track;
    }

private:
    SharedTrack(std::shared_ptr<ShapeTrack> track, std::uint64_t contentId)
        : m_track(std::move(track)), m_contentId(contentId) {}

    /// Zones are read on other threads, too.
    [[nodiscard]] static std::uint64_t nextContentId() noexcept {
        static std::atomic<std::uint64_t> last{0};
        return ++last;
    }

    std::shared_ptr<ShapeTrack> m_track = std::make_shared<ShapeTrack>();
    std::uint64_t m_contentId = 0; ///< 0: an empty track
    /// Stays set after the others are gone: when a reader on another thread ends is not known.
    mutable bool m_isShared = false;
};

} // namespace zone
