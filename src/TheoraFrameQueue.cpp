#include "src/TheoraFrameQueue.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "src/TheoraLog.h"
#include "src/TheoraPicture.h"

namespace theora {

TheoraFrameQueue::TheoraFrameQueue(FrameFactory factory) : m_factory(std::move(factory)) {}

void TheoraFrameQueue::setSize(int count) {
    int made = 0;
    {
        const TheoraLock lock(m_mutex);
        m_slots.clear();
        m_prepared.reset(); // of the old format
        try {
            for (; made < count; ++made) {
                m_slots.push_back(Slot{m_factory(), false, false, false, false});
            }
        } catch (const std::bad_alloc&) {
            // Playback works with fewer frames; logged below.
        }
    }
    if (made < count) {
        writeLog("TheoraFrameQueue: unable to create " + std::to_string(count) +
                 " frames, out of memory. Created " + std::to_string(made) + " frames.");
    }
}

int TheoraFrameQueue::getSize() const {
    const TheoraLock lock(m_mutex);
    return static_cast<int>(m_slots.size());
}

int TheoraFrameQueue::readyCountLocked() const {
    return static_cast<int>(
        std::count_if(m_slots.begin(), m_slots.end(), [](const Slot& slot) { return slot.ready; }));
}

int TheoraFrameQueue::getReadyCount() const {
    const TheoraLock lock(m_mutex);
    return readyCountLocked();
}

bool TheoraFrameQueue::isFull() const {
    const TheoraLock lock(m_mutex);
    return std::all_of(m_slots.begin(), m_slots.end(), [](const Slot& slot) { return slot.inUse; });
}

TheoraVideoFrame* TheoraFrameQueue::requestEmptyFrame() {
    const TheoraLock lock(m_mutex);
    for (Slot& slot : m_slots) {
        if (!slot.inUse) {
            slot.inUse = true;
            return slot.frame.get();
        }
    }
    return nullptr;
}

bool TheoraFrameQueue::reusePixels(TheoraVideoFrame& frame, std::uint64_t identity) {
    const TheoraLock lock(m_mutex);
    if (identity != 0 && m_prepared && m_prepared->getPictureIdentity() == identity) {
        frame.swapPixels(*m_prepared);
        return true;
    }
    for (const Slot& slot : m_slots) {
        if (identity == 0 || slot.frame->getPictureIdentity() != identity) {
            continue;
        }
        if (slot.inUse) {
            frame.sharePixels(*slot.frame);
        } else { // the old picture stays available for reuse
            frame.swapPixels(*slot.frame);
        }
        return true;
    }
    for (auto slot = m_slots.rbegin(); slot != m_slots.rend() && slot->frame.get() != &frame;
         ++slot) {
        if (!slot->inUse) {
            frame.swapPixels(*slot->frame);
            break;
        }
    }
    return false;
}

bool TheoraFrameQueue::hasPicture(std::uint64_t identity) const {
    return (m_prepared && m_prepared->getPictureIdentity() == identity) ||
           std::any_of(m_slots.begin(), m_slots.end(), [&](const Slot& slot) {
               return slot.frame->getPictureIdentity() == identity;
           });
}

void TheoraFrameQueue::prepare(const TheoraPicture& picture) {
    std::unique_ptr<TheoraVideoFrame> frame;
    {
        const TheoraLock lock(m_mutex);
        if (picture.identity == 0 || hasPicture(picture.identity)) {
            return;
        }
        frame = std::move(m_prepared);
    }
    if (!frame) {
        frame = m_factory();
    }
    frame->decode(picture); // unlocked: the display reads frames meanwhile
    const TheoraLock lock(m_mutex);
    m_prepared = std::move(frame);
}

void TheoraFrameQueue::markReady(const TheoraVideoFrame* frame) {
    const TheoraLock lock(m_mutex);
    for (Slot& slot : m_slots) {
        if (slot.frame.get() == frame) {
            slot.ready = true;
        }
    }
}

void TheoraFrameQueue::clear() {
    const TheoraLock lock(m_mutex);
    for (Slot& slot : m_slots) {
        slot.ready = false;
        slot.stale = slot.held;
        slot.inUse = slot.held;
    }
}

bool TheoraFrameQueue::advanceTo(int frameNumber) {
    const TheoraLock lock(m_mutex);
    const auto wanted = std::find_if(m_slots.begin(), m_slots.end(), [&](const Slot& slot) {
        return slot.ready && slot.frame->getFrameNumber() == frameNumber;
    });
    if (wanted == m_slots.end()) {
        return false;
    }
    auto slot = m_slots.begin();
    while (slot != wanted) {
        const auto current = slot++;
        if (current->held) {
            current->ready = false;
            current->stale = true;
            continue;
        }
        if (current->stale) {
            continue;
        }
        current->ready = false;
        current->inUse = false;
        m_slots.splice(m_slots.end(), m_slots, current);
    }
    return true;
}

int TheoraFrameQueue::firstWaitingNumber() const {
    const TheoraLock lock(m_mutex);
    for (const Slot& slot : m_slots) {
        if (slot.ready && !slot.held) {
            return slot.frame->getFrameNumber();
        }
    }
    return -1;
}

void TheoraFrameQueue::moveFrontToBack() {
    Slot& slot = m_slots.front();
    slot.ready = slot.inUse = slot.held = slot.stale = false;
    m_slots.splice(m_slots.end(), m_slots, m_slots.begin());
}

// A frame discarded while the display holds it stays at the front until released.
void TheoraFrameQueue::releaseHeldLocked() {
    while (!m_slots.empty() && m_slots.front().stale) {
        moveFrontToBack();
    }
    if (!m_slots.empty()) {
        m_slots.front().held = false;
    }
}

void TheoraFrameQueue::releaseHeld() {
    const TheoraLock lock(m_mutex);
    releaseHeldLocked();
}

std::optional<float> TheoraFrameQueue::frontTime() const {
    const TheoraLock lock(m_mutex);
    for (const Slot& slot : m_slots) {
        if (!slot.stale) {
            return slot.ready ? std::optional(slot.frame->getTimeToDisplay()) : std::nullopt;
        }
    }
    return std::nullopt;
}

TheoraVideoFrame* TheoraFrameQueue::front() {
    const TheoraLock lock(m_mutex);
    releaseHeldLocked();
    if (m_slots.empty() || !m_slots.front().ready) {
        return nullptr;
    }
    m_slots.front().held = true;
    return m_slots.front().frame.get();
}

void TheoraFrameQueue::pop() {
    const TheoraLock lock(m_mutex);
    if (!m_slots.empty() && (m_slots.front().ready || m_slots.front().stale)) {
        moveFrontToBack();
    }
}

void TheoraFrameQueue::popWhile(const std::function<bool(TheoraVideoFrame&)>& visit) {
    const TheoraLock lock(m_mutex);
    releaseHeldLocked();
    while (!m_slots.empty() && m_slots.front().ready && visit(*m_slots.front().frame)) {
        moveFrontToBack();
    }
}

} // namespace theora
