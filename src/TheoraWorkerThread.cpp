#include "src/TheoraWorkerThread.h"

#include <chrono>
#include <cstdint>
#include <thread>

#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoManager.h"
#include "src/TheoraWorkSignal.h"

namespace theora {
namespace {

// Upper bounds only: a seek, a released frame or a stop ends either wait at once.
constexpr std::chrono::milliseconds kIdleWait{500};
constexpr std::chrono::milliseconds kNoFrameWait{1};

} // namespace

TheoraWorkerThread::~TheoraWorkerThread() {
    stop();
    m_manager.workSignal().raise();
    join();
}

void TheoraWorkerThread::execute() {
    TheoraWorkSignal& signal = m_manager.workSignal();
    while (isRunning()) {
        const std::uint64_t seen = signal.count();
        TheoraVideoClip* clip = m_manager.requestWork(this);
        if (clip == nullptr) {
            if (isRunning()) {
                signal.wait(seen, kIdleWait);
            }
            continue;
        }
        const bool produced = clip->decodeOnWorker();
        const bool displayWaits = clip->getNumReadyFrames() <= 1;
        m_manager.workDone(*clip); // the clip may be deleted from here on
        if (produced) {
            m_manager.notifyFrameReady();
            // The display may have been scheduled on this very processor, where it would wait a
            // whole time slice behind frames being decoded ahead.
            if (displayWaits) {
                std::this_thread::yield();
            }
        } else if (isRunning()) {
            signal.wait(seen, kNoFrameWait);
        }
    }
}

} // namespace theora
