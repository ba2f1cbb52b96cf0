#include "tests/src/PlaybackSession.h"

#include <chrono>
#include <utility>

#include "tests/src/MemorySource.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr std::chrono::seconds kTooLong{20};

} // namespace

PlaybackSession::PlaybackSession(support::Bytes file, int precache,
                                 theora::TheoraAudioInterfaceFactory* sound) {
    listen();
    m_manager.setAudioInterfaceFactory(sound);
    m_clip = m_manager.createClip(std::make_unique<MemorySource>(std::move(file)),
                                  theora::TheoraOutputMode::TH_RGB, precache, false);
    m_clip->getTimer().pause();
}

PlaybackSession::PlaybackSession(const std::string& path) {
    listen();
    m_clip = m_manager.createClip(path, theora::TheoraOutputMode::TH_RGB, 0, false);
    m_clip->getTimer().pause();
}

PlaybackSession::~PlaybackSession() {
    m_manager.setFrameReadyCallback({});
}

void PlaybackSession::listen() {
    m_manager.setFrameReadyCallback([this] {
        const std::lock_guard lock(m_mutex);
        ++m_ready;
        m_changed.notify_all();
    });
}

std::optional<ShownFrame> PlaybackSession::seek(int frame) {
    m_clip->requestSeek(frame);
    return nextShown();
}

std::optional<ShownFrame> PlaybackSession::nextShown() {
    const auto until = std::chrono::steady_clock::now() + kTooLong;
    for (;;) {
        std::unique_lock lock(m_mutex);
        const int seen = m_ready;
        lock.unlock();
        m_manager.updateClips(0.0F);
        m_clip->advanceToDueFrame();
        if (theora::TheoraVideoFrame* frame = m_clip->peekReadyFrame()) {
            ShownFrame shown{frame->getFrameNumber(),
                             reference::hashBytes(frame->getBuffer(), frame->getBufferSize()),
                             support::readFrameNumber(frame->getBuffer(), frame->getWidth(),
                                                      frame->getHeight())};
            m_clip->releaseShownFrame();
            return shown;
        }
        if (m_clip->endOfFile.load() && m_clip->getNumReadyFrames() == 0 &&
            m_clip->pendingSeekFrame.load() == -1) {
            return std::nullopt;
        }
        lock.lock();
        // The end of the data calls nobody, hence the short wait.
        m_changed.wait_for(lock, std::chrono::milliseconds(20), [&] { return m_ready != seen; });
        if (std::chrono::steady_clock::now() > until) {
            return std::nullopt;
        }
    }
}

std::vector<ShownFrame> PlaybackSession::playToEnd() {
    std::vector<ShownFrame> frames;
    m_clip->getTimer().play(); // time stands still, but the clip jumps to each frame in turn
    while (const auto frame = nextShown()) {
        frames.push_back(*frame);
    }
    m_clip->getTimer().pause();
    return frames;
}
