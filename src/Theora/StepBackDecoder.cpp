#include "src/Theora/StepBackDecoder.h"

#include <chrono>
#include <exception>

#include "platform/ThreadPriority.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/PacketReader.h"
#include "src/TheoraLog.h"

namespace theora {
namespace {

constexpr std::chrono::milliseconds kPollInterval{1}; // between two calls of giveUp

} // namespace

StepBackDecoder::StepBackDecoder(SharedSource& source, const TheoraHeaders& headers,
                                 const StreamLayout& layout, const GranuleFormat& format,
                                 PlaneCache& cache)
    : m_source(source), m_headers(headers), m_layout(layout), m_format(format), m_cache(cache),
      m_stop([this] { return !isRunning() || m_useless.load(); }),
      m_plan(cache, layout.firstFrame, format.longestGroup()) {}

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
    m_plan.reset();
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

bool StepBackDecoder::waitForGoal(std::int64_t& goal) {
    const TheoraLock lock(m_mutex);
    for (;;) {
        m_goal = m_at = -1;
        m_progress.notify_all();
        if (!isRunning()) {
            return false;
        }
        if (m_wanted) {
            m_goal = goal = m_plan.goalBelow(m_centre);
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
        m_plan.passed(number);
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
