#include "src/TheoraVideoClip.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <utility>

#include "src/TheoraException.h"
#include "src/TheoraLog.h"

namespace theora {
namespace {

constexpr const char* kSource = "src\\TheoraVideoClip";
constexpr int kInvalidModeLine = 241;
constexpr float kMaxCatchUp = 1.0F;   // seconds into the new pass that a restart may start at
constexpr float kOldPassFrom = 0.5F;  // later frames at a restart belong to the old pass
constexpr float kNewPassUntil = 2.0F; // earlier frames before a restart belong to the next pass
constexpr std::size_t kQueueByteLimit = std::size_t{512} << 20U;

int nextPowerOfTwo(int value) {
    int power = 1;
    while (power < value) {
        power *= 2;
    }
    return power;
}

} // namespace

TheoraVideoClip::TheoraVideoClip(std::unique_ptr<TheoraDataSource> source, TheoraOutputMode mode,
                                 int precacheCount, bool powerOfTwoStride, TheoraWorkSignal& signal)
    : m_dataSource(std::move(source)), m_workSignal(signal), m_name(m_dataSource->repr()),
      m_precacheCount(std::max(precacheCount, 1)), m_powerOfTwoStride(powerOfTwoStride),
      m_defaultTimer(std::make_unique<TheoraTimer>()), m_timer(m_defaultTimer.get()),
      m_requestedOutputMode(mode) {
    setOutputMode(mode);
}

TheoraVideoClip::~TheoraVideoClip() = default;

int TheoraVideoClip::getWidth() const {
    return hasAlpha(m_outputMode.load()) ? m_width / 2 : m_width;
}

TheoraFrameFormat TheoraVideoClip::frameFormat() const {
    return {m_outputMode.load(), getWidth(), m_height, m_stride};
}

void TheoraVideoClip::setGeometry(int width, int height, float fps) {
    m_width = width;
    m_height = height;
    m_stride = m_powerOfTwoStride ? nextPowerOfTwo(width) : width;
    m_fps = fps;
    m_frameDuration = 1.0F / fps;
    // Pictures of absurd size get a shorter queue, so that a small file cannot claim all memory.
    const std::size_t frameBytes =
        static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(height) * 4 + 1;
    const auto affordable =
        static_cast<int>(std::max<std::size_t>(kQueueByteLimit / frameBytes, 2));
    m_frameQueue = std::make_unique<TheoraFrameQueue>(
        [this] { return std::make_unique<TheoraVideoFrame>(frameFormat()); });
    m_frameQueue->setSize(std::min(m_precacheCount, affordable));
}

void TheoraVideoClip::setFrameCount(int frameCount) {
    m_frameCount = frameCount;
    m_duration = static_cast<float>(frameCount) / m_fps;
    m_passLength.store(m_duration);
}

void TheoraVideoClip::setOutputMode(TheoraOutputMode mode) {
    if (bytesPerPixel(mode) == 0) {
        throw TheoraGenericException("Invalid output mode: TH_UNDEFINED for video: " + m_name,
                                     kSource, kInvalidModeLine);
    }
    if (mode == m_outputMode.load()) {
        return;
    }
    m_requestedOutputMode.store(mode);
    m_yieldRequests.fetch_add(1); // a running seek gives up the lock and resumes later
    {
        const TheoraLock lock(m_access);
        finishFrames();
        m_outputMode.store(mode);
        if (m_frameQueue) {
            const int firstLost = m_frameQueue->firstWaitingNumber();
            m_frameQueue->setSize(m_frameQueue->getSize());
            if (firstLost >= 0) {
                continueFrom(firstLost);
                endOfFile.store(false);
            }
        }
    }
    m_yieldRequests.fetch_sub(1);
    m_workSignal.raise();
}

void TheoraVideoClip::requestSeek(int frame) {
    endOfFile.store(false);
    pendingSeekFrame.store(std::max(frame, 0));
    m_workSignal.raise();
}

void TheoraVideoClip::update(float timeStep) {
    if (m_timer->isPaused() || m_seeking.load()) {
        return;
    }
    m_timer->update(timeStep);
    const float time = m_timer->getTime();
    if (m_restartPending.load() && m_restartAtEnd.load() && time >= m_passLength.load()) {
        applyRestart(time - m_passLength.load());
    }
}

void TheoraVideoClip::wrapAround(std::int64_t framesPlayed) {
    if (m_duration < 0) { // known to the decoder only
        m_passLength.store(static_cast<float>(framesPlayed) / m_fps);
    }
    m_restartPending.store(true);
}

void TheoraVideoClip::applyRestart(float overshoot) {
    m_iteration.store(1 - m_iteration.load());
    m_timer->seek(std::min(overshoot, kMaxCatchUp));
    m_restartPending.store(false);
    int handled = 0;
    m_frameQueue->popWhile([&](TheoraVideoFrame& frame) {
        if (frame.getTimeToDisplay() <= kOldPassFrom) {
            return false;
        }
        if (handled++ == 0) { // shown again as the first picture of the new pass
            frame.setTimeToDisplay(overshoot);
            frame.setIteration(1 - frame.getIteration());
            if (overshoot <= kOldPassFrom) {
                return false;
            }
        }
        m_displayedFrames.fetch_add(1);
        return true;
    });
    if (handled > 0) {
        writeLog("dropped " + std::to_string(handled) + " end frames");
    }
    m_workSignal.raise();
}

void TheoraVideoClip::advanceToDueFrame() {
    if (!m_frameQueue) {
        return;
    }
    if (const auto due = m_frameQueue->frontTime()) {
        update(*due - m_timer->getTime());
    }
}

TheoraVideoFrame* TheoraVideoClip::peekReadyFrame() {
    if (!m_frameQueue) {
        return nullptr;
    }
    if (pendingSeekFrame.load() != -1) {
        m_frameQueue->releaseHeld(); // in a short queue the seek may need this very frame
        return nullptr;
    }
    const float time = m_timer->getTime();
    for (;;) {
        TheoraVideoFrame* frame = m_frameQueue->front();
        if (frame == nullptr || frame->getTimeToDisplay() > time || isPastSeekTarget(*frame)) {
            return nullptr;
        }
        const bool late = time > frame->getTimeToDisplay() + m_frameDuration;
        if (!late || m_frameQueue->getReadyCount() < 2) {
            m_lastIteration.store(frame->getIteration());
            return frame;
        }
        if (m_restartPending.load() && frame->getTimeToDisplay() < kNewPassUntil) {
            return nullptr;
        }
        m_droppedFrames.fetch_add(1);
        releaseShownFrame();
    }
}

// From about frame eight million on, neighbours may have the same time. On a paused clock only the
// requested frame is due.
bool TheoraVideoClip::isPastSeekTarget(const TheoraVideoFrame& frame) const {
    const int target = m_seekTarget.load();
    return target >= 0 && frame.getFrameNumber() > target && m_timer->isPaused() &&
           frame.getTimeToDisplay() == timeOfFrame(target);
}

void TheoraVideoClip::releaseShownFrame() {
    if (!m_frameQueue) {
        return;
    }
    m_displayedFrames.fetch_add(1);
    m_frameQueue->pop();
    m_workSignal.raise();
}

int TheoraVideoClip::getNumReadyFrames() const {
    if (pendingSeekFrame.load() != -1 || !m_frameQueue) {
        return 0;
    }
    return m_frameQueue->getReadyCount();
}

bool TheoraVideoClip::wantsWork() const {
    if (m_cancelled.load() || m_yieldRequests.load() > 0 || !m_frameQueue ||
        m_requestedOutputMode.load() != m_outputMode.load()) {
        return false;
    }
    if (pendingSeekFrame.load() != -1) {
        return true;
    }
    return !endOfFile.load() && !m_frameQueue->isFull();
}

float TheoraVideoClip::workWeight() const {
    const auto size = static_cast<float>(std::max(getNumPrecachedFrames(), 1));
    const float urgency = std::max(m_priority.load() * m_timer->getSpeed(), 0.001F);
    return static_cast<float>(getNumReadyFrames()) / size / urgency;
}

void TheoraVideoClip::cancelWork() {
    m_cancelled.store(true);
}

bool TheoraVideoClip::interrupted(int frame) const {
    const int pending = pendingSeekFrame.load(std::memory_order_relaxed);
    return m_cancelled.load(std::memory_order_relaxed) ||
           m_yieldRequests.load(std::memory_order_relaxed) > 0 || pending != frame;
}

bool TheoraVideoClip::decodeOnWorker() {
    const TheoraLock lock(m_access);
    const int wanted = pendingSeekFrame.load();
    try {
        if (m_cancelled.load()) {
            return false;
        }
        return wanted != -1 ? runSeek(wanted) : decodeNextFrame();
    } catch (const std::exception& error) {
        writeFailure(m_name, error);
        endOfFile.store(true);
        int expected = wanted; // a newer request stays pending
        if (wanted != -1) {
            pendingSeekFrame.compare_exchange_strong(expected, -1);
        }
        return false;
    }
}

bool TheoraVideoClip::runSeek(int frame) {
    const float time = timeOfFrame(frame);
    m_seeking.store(true);
    m_seekTarget.store(frame);
    m_timer->seek(time);
    endOfFile.store(false);
    m_restartPending.store(false);
    bool done = false;
    try {
        done = seekTo(frame);
    } catch (...) {
        m_seeking.store(false);
        throw;
    }
    m_timer->seek(time); // undoes a step that was in progress when the clock was halted
    m_seeking.store(false);
    int expected = frame; // a newer request stays pending
    if (done) {
        pendingSeekFrame.compare_exchange_strong(expected, -1);
    }
    return done;
}

void TheoraVideoClip::deliver(TheoraVideoFrame& frame, int number) {
    frame.setFrameNumber(number);
    frame.setTimeToDisplay(timeOfFrame(number));
    const int iteration = m_iteration.load();
    frame.setIteration(m_restartPending.load() ? 1 - iteration : iteration);
    m_frameQueue->markReady(&frame);
}

} // namespace theora
