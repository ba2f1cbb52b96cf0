#include "tests/src/PlaybackSession.h"

#include <chrono>
#include <memory>
#include <utility>

#include "tests/src/MemorySource.h"
#include "tests/src/ReferenceDecoder.h"
#include "tests/support/ClipMaker.h"

namespace {

constexpr int kMaxWaits = 1000;
constexpr std::chrono::milliseconds kWait{20};

} // namespace

int pictureNumber(const theora::TheoraVideoFrame& frame) {
    return support::readFrameNumber(frame.getBuffer(), frame.getWidth(), frame.getHeight(),
                                    frame.getBpp());
}

PlaybackSession::PlaybackSession(const support::Bytes& file, int precache,
                                 theora::TheoraAudioInterfaceFactory* sound,
                                 std::function<bool()> beforeRead) {
    m_manager.setFrameReadyCallback([this] {
        const std::lock_guard lock(m_mutex); // not between check and wait
        m_changed.notify_all();
    });
    m_manager.setAudioInterfaceFactory(sound);
    m_clip = m_manager.createClip(std::make_unique<MemorySource>(file, std::move(beforeRead)),
                                  theora::TheoraOutputMode::TH_RGB, precache);
    m_clip->getTimer().pause();
}

PlaybackSession::~PlaybackSession() {
    m_manager.setFrameReadyCallback({});
}

ShownFrame PlaybackSession::seek(int frame) {
    m_clip->requestSeek(frame);
    return nextShown();
}

bool PlaybackSession::showsNothingLater() {
    std::unique_lock lock(m_mutex);
    while (m_clip->getNumReadyFrames() == 0 && !m_clip->endOfFile.load()) {
        m_changed.wait_for(lock, kWait);
    }
    return m_clip->peekReadyFrame() == nullptr;
}

ShownFrame PlaybackSession::nextShown() {
    std::unique_lock lock(m_mutex);
    for (int wait = 0; wait < kMaxWaits; ++wait) {
        m_manager.updateClips(0.0F);
        m_clip->advanceToDueFrame();
        if (const theora::TheoraVideoFrame* frame = m_clip->peekReadyFrame()) {
            const ShownFrame shown{frame->getFrameNumber(),
                                   reference::hashBytes(frame->getBuffer(), frame->getBufferSize()),
                                   pictureNumber(*frame)};
            m_clip->releaseShownFrame();
            return shown;
        }
        if (m_clip->endOfFile.load() && m_clip->getNumReadyFrames() == 0 &&
            m_clip->pendingSeekFrame.load() == -1) {
            break;
        }
        m_changed.wait_for(lock, kWait); // there is no callback at the end of the data
    }
    return {};
}

std::vector<ShownFrame> PlaybackSession::playToEnd() {
    std::vector<ShownFrame> frames;
    m_clip->getTimer().play(); // no time passes, but the clip jumps to each frame in turn
    for (ShownFrame frame = nextShown(); frame.number >= 0; frame = nextShown()) {
        frames.push_back(frame);
    }
    m_clip->getTimer().pause();
    return frames;
}
