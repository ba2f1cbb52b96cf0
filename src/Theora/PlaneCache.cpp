#include "src/Theora/PlaneCache.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace theora {
namespace {

constexpr std::size_t kMaxPictures = 512; // limit for tiny clips

int chromaSize(int size, int shift) {
    return (size + (1 << shift) - 1) >> shift;
}

} // namespace

PlaneCache::PlaneCache(std::size_t limitBytes, int width, int height, int chromaShiftX,
                       int chromaShiftY)
    : m_width(width), m_height(height), m_chromaShiftX(chromaShiftX), m_chromaShiftY(chromaShiftY) {
    const std::size_t luma = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const std::size_t chroma = static_cast<std::size_t>(chromaSize(width, chromaShiftX)) *
                               static_cast<std::size_t>(chromaSize(height, chromaShiftY));
    const std::size_t bytes = std::max<std::size_t>(luma + 2 * chroma, 1);
    // One is kept free for the picture that is being copied.
    const auto fitting =
        static_cast<int>(std::clamp<std::size_t>(limitBytes / bytes, 3, kMaxPictures)) - 1;
    // Stepping back is the more frequent case.
    m_ahead = std::max((fitting - 1) / 4, 0);
    m_behind = fitting - 1 - m_ahead;
}

// Weighted so that both ends of the window are equally far.
std::int64_t PlaneCache::distance(std::int64_t frame) const {
    return frame <= m_centre ? (m_centre - frame) * std::max(m_ahead, 1)
                             : (frame - m_centre) * std::max(m_behind, 1);
}

void PlaneCache::setCentre(std::int64_t frame) {
    const TheoraLock lock(m_mutex);
    m_centre = frame;
}

bool PlaneCache::wantsLocked(std::int64_t frame) const {
    return frame >= m_centre - m_behind && frame <= m_centre + m_ahead &&
           m_entries.count(frame) == 0;
}

bool PlaneCache::wants(std::int64_t frame) const {
    const TheoraLock lock(m_mutex);
    return wantsLocked(frame);
}

std::unique_ptr<CachedPicture> PlaneCache::makeBuffer() const {
    auto entry = std::make_unique<CachedPicture>();
    TheoraPicture& picture = entry->picture;
    picture.chromaShiftX = m_chromaShiftX;
    picture.chromaShiftY = m_chromaShiftY;
    std::size_t total = 0;
    for (std::size_t i = 0; i < picture.planes.size(); ++i) {
        TheoraPlane& plane = picture.planes[i];
        plane.width = i == 0 ? m_width : chromaSize(m_width, m_chromaShiftX);
        plane.height = i == 0 ? m_height : chromaSize(m_height, m_chromaShiftY);
        plane.rowBytes = plane.width;
        total += static_cast<std::size_t>(plane.width) * static_cast<std::size_t>(plane.height);
    }
    entry->samples.resize(total);
    const std::uint8_t* at = entry->samples.data();
    for (TheoraPlane& plane : picture.planes) {
        plane.data = at;
        at += plane.rowBytes * plane.height;
    }
    return entry;
}

void PlaneCache::makeRoom() {
    while (m_entries.size() >= static_cast<std::size_t>(capacity())) {
        const auto first = m_entries.begin();
        const auto last = std::prev(m_entries.end());
        m_entries.erase(distance(first->first) >= distance(last->first) ? first : last);
    }
}

PlaneCache::Entry PlaneCache::takeBuffer() {
    {
        const TheoraLock lock(m_mutex);
        makeRoom();
    }
    std::unique_ptr<CachedPicture> buffer;
    {
        const TheoraLock lock(m_pool->mutex);
        if (!m_pool->spare.empty()) {
            buffer = std::move(m_pool->spare.back());
            m_pool->spare.pop_back();
        } else {
            m_pool->spare.reserve(++m_pool->made);
        }
    }
    if (!buffer) {
        buffer = makeBuffer();
    }
    // Must not throw: there is room for every buffer.
    const auto giveBack = [pool = m_pool](CachedPicture* used) {
        std::unique_ptr<CachedPicture> owned(used);
        const TheoraLock lock(pool->mutex);
        pool->spare.push_back(std::move(owned));
    };
    return Entry(buffer.release(), giveBack);
}

bool PlaneCache::repeatEntry(std::int64_t frame, std::uint64_t identity) {
    const TheoraLock lock(m_mutex);
    const auto before = m_entries.find(frame - 1);
    if (identity == 0 || before == m_entries.end() || !before->second->isFrame ||
        before->second->picture.identity != identity) {
        return false;
    }
    const Entry entry = before->second;
    makeRoom();
    m_entries.insert_or_assign(frame, entry);
    return true;
}

void PlaneCache::store(std::int64_t frame, const TheoraPicture& picture, bool isFrame) {
    if (!wants(frame) || (isFrame && repeatEntry(frame, picture.identity))) {
        return;
    }
    const Entry entry = takeBuffer(); // not shared until it is in the map
    entry->isFrame = isFrame;
    entry->picture.identity = picture.identity;
    std::uint8_t* to = entry->samples.data();
    for (std::size_t i = 0; i < picture.planes.size(); ++i) {
        const TheoraPlane& from = picture.planes[i];
        const TheoraPlane& room = entry->picture.planes[i];
        const auto rowBytes = static_cast<std::size_t>(std::min(from.width, room.width));
        for (int row = 0; row < room.height; ++row, to += room.rowBytes) {
            if (row < from.height) {
                std::memcpy(to, from.data + row * from.rowBytes, rowBytes);
            }
        }
    }
    const TheoraLock lock(m_mutex);
    makeRoom();
    m_entries.insert_or_assign(frame, entry);
}

std::shared_ptr<const CachedPicture> PlaneCache::find(std::int64_t frame) const {
    const TheoraLock lock(m_mutex);
    const auto found = m_entries.find(frame);
    return found == m_entries.end() ? nullptr : found->second;
}

std::int64_t PlaneCache::firstMissingBelow(std::int64_t frame, std::int64_t lowest) const {
    const TheoraLock lock(m_mutex);
    const std::int64_t lowestKept = std::max(lowest, m_centre - m_behind);
    std::int64_t missing = frame - 1;
    auto at = m_entries.lower_bound(frame);
    while (missing >= lowestKept && at != m_entries.begin() && std::prev(at)->first == missing) {
        --at;
        --missing;
    }
    return missing < lowestKept ? lowest - 1 : missing;
}

} // namespace theora
