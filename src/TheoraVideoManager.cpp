#include "src/TheoraVideoManager.h"

#include <atomic>
#include <cstddef>
#include <utility>

#include <theora/theoradec.h>
#include <vorbis/codec.h>

#include "src/Theora/TheoraVideoClip_Theora.h"
#include "src/TheoraException.h"
#include "src/TheoraFileDataSource.h"
#include "src/TheoraLog.h"
#include "src/TheoraTimer.h"

namespace theora {
namespace {

constexpr int kDefaultPrecacheCount = 8;
constexpr const char* kVersion = "1.0";
constexpr std::size_t kRuleLength = 36;

std::atomic<TheoraVideoManager*> g_instance{nullptr};

void writeBanner() {
    writeLog(std::string("Initializing Theora Playback Library (") + kVersion + ")\n");
    writeLog(std::string("  - libtheora version: ") + th_version_string());
    writeLog(std::string("  - libvorbis version: ") + vorbis_version_string());
    writeLog(std::string(kRuleLength, '-'));
}

} // namespace

TheoraVideoManager* TheoraVideoManager::getInstance() {
    return g_instance.load();
}

TheoraVideoManager::TheoraVideoManager(int workerCount, platform::FileSystem& files)
    : m_files(files) {
    writeBanner();
    for (int i = 0; i < workerCount; ++i) {
        m_workers.push_back(std::make_unique<TheoraWorkerThread>(*this));
        m_workers.back()->start();
    }
    g_instance.store(this); // last: starting the threads may throw
}

TheoraVideoManager::~TheoraVideoManager() {
    for (auto& worker : m_workers) {
        worker->stop();
    }
    {
        const TheoraLock lock(m_workMutex);
        for (auto& clip : m_clips) {
            clip->cancelWork();
        }
    }
    m_workSignal.raise();
    for (auto& worker : m_workers) {
        worker->join();
    }
    m_workers.clear();
    {
        const TheoraLock lock(m_workMutex);
        m_clips.clear();
    }
    TheoraVideoManager* self = this;
    g_instance.compare_exchange_strong(self, nullptr);
}

TheoraVideoClip* TheoraVideoManager::createClip(const std::string& path, TheoraOutputMode mode,
                                                int precacheCount, bool powerOfTwoStride) {
    return createClip(std::make_unique<TheoraFileDataSource>(path, m_files), mode, precacheCount,
                      powerOfTwoStride);
}

TheoraVideoClip* TheoraVideoManager::createClip(std::unique_ptr<TheoraDataSource> source,
                                                TheoraOutputMode mode, int precacheCount,
                                                bool powerOfTwoStride) {
    writeLog("Creating video from data source:" + source->repr());
    auto clip = std::make_unique<TheoraVideoClip_Theora>(
        std::move(source), mode, precacheCount > 0 ? precacheCount : kDefaultPrecacheCount,
        powerOfTwoStride, m_workSignal, m_audioFactory);
    try {
        clip->load();
    } catch (const TheoraGenericException& error) {
        writeLog(error.getErrorText()); // the caller shows less
        throw;
    }
    clip->setFrameReadyCallback([this] { notifyFrameReady(); });
    TheoraVideoClip* created = clip.get();
    {
        const TheoraLock lock(m_workMutex);
        m_clips.push_back(std::move(clip));
    }
    m_workSignal.raise();
    return created;
}

void TheoraVideoManager::updateClips(float timeStep) {
    std::vector<TheoraVideoClip*> clips; // no lock is held while clips pass on their sound
    {
        const TheoraLock lock(m_workMutex);
        for (auto& clip : m_clips) {
            clips.push_back(clip.get());
        }
    }
    for (TheoraVideoClip* clip : clips) {
        clip->update(timeStep);
        clip->decodedAudioCheck();
    }
}

TheoraVideoClip* TheoraVideoManager::mostUrgentClip(bool pausedToo) const {
    TheoraVideoClip* best = nullptr;
    float bestWeight = 0.0F;
    for (const auto& clip : m_clips) {
        if (clip->assignedWorker != nullptr || (!pausedToo && clip->getTimer().isPaused()) ||
            !clip->wantsWork()) {
            continue;
        }
        const float weight = clip->workWeight();
        if (best == nullptr || weight < bestWeight ||
            (weight == bestWeight && clip->workCount < best->workCount)) {
            best = clip.get();
            bestWeight = weight;
        }
    }
    return best;
}

TheoraVideoClip* TheoraVideoManager::requestWork(TheoraWorkerThread* worker) {
    const TheoraLock lock(m_workMutex);
    TheoraVideoClip* clip = mostUrgentClip(false);
    if (clip == nullptr) {
        clip = mostUrgentClip(true);
    }
    if (clip != nullptr) {
        clip->assignedWorker = worker;
        ++clip->workCount;
    }
    return clip;
}

void TheoraVideoManager::workDone(TheoraVideoClip& clip) {
    const TheoraLock lock(m_workMutex);
    clip.assignedWorker = nullptr;
}

void TheoraVideoManager::setFrameReadyCallback(std::function<void()> callback) {
    const TheoraLock lock(m_callbackMutex);
    m_frameReady = std::move(callback);
}

void TheoraVideoManager::notifyFrameReady() {
    const TheoraLock lock(m_callbackMutex);
    if (m_frameReady) {
        m_frameReady();
    }
}

} // namespace theora
