#include "tools/inspect/FrameFetcher.h"

#include <chrono>
#include <cstddef>

#include "core/StandardError.h"
#include "src/TheoraLog.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraTimer.h"
#include "src/TheoraVideoFrame.h"

namespace inspect {
namespace {

constexpr std::chrono::seconds kTimeOut{10};
constexpr std::chrono::milliseconds kEndCheck{10}; // there is no callback at the end of the data

std::uint64_t hashOf(const theora::TheoraVideoFrame& frame) {
    const auto bytes =
        static_cast<std::size_t>(frame.getRowBytes()) * static_cast<std::size_t>(frame.getHeight());
    std::uint64_t hash = 0xcbf29ce484222325;
    for (std::size_t i = 0; i < bytes; ++i) {
        hash = (hash ^ frame.getBuffer()[i]) * 0x100000001b3;
    }
    return hash;
}

} // namespace

void reportUnknownLength(const theora::TheoraVideoClip& clip) {
    if (clip.getNumFrames() < 0) {
        core::writeStandardError(clip.getName() + ": unable to determine file duration!");
    }
}

FrameFetcher::FrameFetcher(const std::string& file) {
    m_manager.setFrameReadyCallback([this] {
        const std::lock_guard lock(m_mutex);
        ++m_readyCount;
        m_changed.notify_one();
    });
    m_clip = m_manager.createClip(file, theora::TheoraOutputMode::TH_RGB);
    m_clip->setRestartAtEnd(false);
    reportUnknownLength(*m_clip);
    // Later log lines are about single frames, such as a seek past the end.
    theora::setLogHook(core::writeStandardError);
}

FrameFetcher::~FrameFetcher() {
    m_manager.setFrameReadyCallback({});
    theora::setLogHook({});
}

bool FrameFetcher::atEnd() const {
    return m_clip->endOfFile.load() && m_clip->pendingSeekFrame.load() == -1 &&
           m_clip->getNumReadyFrames() == 0;
}

std::optional<FrameHash> FrameFetcher::waitForFrame() {
    const auto until = std::chrono::steady_clock::now() + kTimeOut;
    while (std::chrono::steady_clock::now() < until) {
        std::unique_lock lock(m_mutex);
        const unsigned seen = m_readyCount;
        lock.unlock();
        m_manager.updateClips(0.0F);
        m_clip->advanceToDueFrame();
        if (const theora::TheoraVideoFrame* frame = m_clip->peekReadyFrame()) {
            const FrameHash result{frame->getFrameNumber(), hashOf(*frame), frame->hasOwnPicture()};
            m_clip->releaseShownFrame();
            return result;
        }
        if (atEnd()) {
            return std::nullopt;
        }
        if (!m_clip->getTimer().isPaused() && m_clip->getNumReadyFrames() > 0) {
            continue; // the clock was one ulp short of the frame
        }
        lock.lock();
        m_changed.wait_for(lock, kEndCheck, [&] { return m_readyCount != seen; });
    }
    return std::nullopt;
}

std::optional<FrameHash> FrameFetcher::fetch(int frame) {
    m_clip->getTimer().pause();
    m_clip->requestSeek(frame);
    return waitForFrame();
}

std::optional<FrameHash> FrameFetcher::next() {
    m_clip->getTimer().play();
    return waitForFrame();
}

} // namespace inspect
