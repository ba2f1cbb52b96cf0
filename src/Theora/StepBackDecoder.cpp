#include "src/Theora/StepBackDecoder.h"

#include <algorithm>
#include <chrono>
#include <exception>

#include "platform/ThreadPriority.h"
#include "src/Theora/PacketReader.h"
#include "src/TheoraLog.h"

namespace theora {
namespace {

constexpr std::int64_t kMaxBehind =
    256; // frames; with small pictures the cache could hold far more
constexpr std::chrono::milliseconds kPollInterval{1}; // between two calls of giveUp

} // namespace

StepBackDecoder::StepBackDecoder(SharedSource& source, const TheoraHeaders& headers,
                                 const StreamLayout& layout, const GranuleFormat& format,
                                 PlaneCache& cache)
    : m_source(source), m_headers(headers), m_layout(layout), m_format(format), m_cache(cache),
      m_stop([this] { return !isRunning() || m_useless.load(); }) {}

StepBackDecoder::~StepBackDecoder() {
    stop();
    {
        const TheoraLock lock(m_mutex); // not between check and wait
    }
    m_changed.notify_all();
    join();
}

void StepBackDecoder::prepare(std::int64_t frame) {
    {
        const TheoraLock lock(m_mutex);
        m_centre = frame;
        m_wanted = true;
    }
    if (!isRunning()) {
        start();
    }
    m_changed.notify_all();
}

void StepBackDecoder::moveTo(std::int64_t frame) {
    const TheoraLock lock(m_mutex);
    m_centre = frame;
    const bool isBehind = m_goal >= 0 && m_goal < frame && frame - m_goal <= m_cache.behind();
    if (isBehind || isOnTheWayTo(frame)) {
        return;
    }
    m_useless.store(true);
    m_wanted = false;
    m_filling = false;
}

bool StepBackDecoder::isOnTheWayTo(std::int64_t frame) const {
    return m_at >= 0 && m_at < frame && frame <= m_goal && !m_useless.load();
}

bool StepBackDecoder::waitFor(std::int64_t frame, const StopCheck& giveUp) {
    const TheoraLock lock(m_mutex);
    if (!isOnTheWayTo(frame)) {
        return false;
    }
    while (isOnTheWayTo(frame) && !giveUp()) {
        m_progress.wait_for(m_mutex, kPollInterval);
    }
    return true;
}

std::int64_t StepBackDecoder::chooseGoal() {
    const std::int64_t window = std::min<std::int64_t>(m_cache.behind(), kMaxBehind);
    const std::int64_t lowest = std::max(m_centre - window, m_layout.firstFrame);
    const std::int64_t missing = m_cache.firstMissingBelow(m_centre, lowest);
    if (missing < lowest) { // or the cache's window has moved on with playback
        m_filling = false;
        return -1;
    }
    // A whole group must be decoded, which pays off only when much of the window is empty.
    if (!m_filling && m_centre - missing > window / 2) {
        return -1;
    }
    m_filling = true;
    return missing;
}

bool StepBackDecoder::waitForGoal(std::int64_t& goal) {
    const TheoraLock lock(m_mutex);
    for (;;) {
        m_goal = m_at = -1;
        m_progress.notify_all();
        if (!isRunning()) {
            return false;
        }
        if (m_wanted) {
            m_goal = goal = chooseGoal();
            if (goal >= 0) {
                m_useless.store(false);
                return true;
            }
            m_wanted = false;
        }
        m_changed.wait(m_mutex);
    }
}

void StepBackDecoder::work(std::int64_t goal) {
    if (!m_decoder) {
        m_decoder =
            std::make_unique<PictureDecoder>(m_source, m_stop, m_headers, m_layout, m_format);
    }
    const DecodeResult result =
        m_decoder->decodeTo(goal, [this](std::int64_t number) { keepPicture(number); });
    if (result == DecodeResult::stopped) {
        return;
    }
    if (m_decoder->position() < 0) {
        const TheoraLock lock(m_mutex);
        m_wanted = false;
    } else if (m_decoder->position() != goal || m_cache.wants(goal)) {
        m_cache.store(goal, m_decoder->picture(), m_decoder->position() == goal);
    }
}

void StepBackDecoder::keepPicture(std::int64_t number) {
    if (m_cache.wants(number)) {
        m_cache.store(number, m_decoder->picture());
    }
    {
        const TheoraLock lock(m_mutex);
        m_at = number;
    }
    m_progress.notify_all();
}

void StepBackDecoder::execute() {
    platform::lowerThreadPriority(); // the display and its worker come first
    std::int64_t goal = -1;
    while (waitForGoal(goal)) {
        try {
            work(goal);
        } catch (const std::exception& error) {
            writeFailure("stepping back is not prepared", error);
            const TheoraLock lock(m_mutex);
            m_wanted = false;
            m_decoder.reset();
        }
    }
}

} // namespace theora
