#include "playback/OpenClip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <vector>

#include "platform/Sound.h"
#include "playback/ClipZones.h"
#include "src/TheoraOutputMode.h"

namespace playback {

OpenClip::OpenClip(const std::string& path, platform::FileSystem& files, Zones zones)
    : m_path(path), m_manager(1, files) {
    m_manager.setAudioInterfaceFactory(&m_sounds);
    m_clip = m_manager.createClip(path, theora::TheoraOutputMode::TH_BGRX);
    const int frames = m_clip->getNumFrames();
    m_facts = std::make_shared<const player::Clip>(
        player::Clip{frames, static_cast<double>(m_clip->getFPS()),
                     frames >= 0 && zones == Zones::read ? readZones(path, size())
                                                         : std::vector<player::ZoneTrack>()});
}

std::unique_ptr<OpenClip> OpenClip::open(const std::string& path, platform::FileSystem& files,
                                         Zones zones) {
    try {
        return std::unique_ptr<OpenClip>(new OpenClip(path, files, zones));
    } catch (const std::exception&) { // no clip, no memory, or no further thread
        return nullptr;
    }
}

void OpenClip::seek(int frame) {
    const int wanted = std::max(frame, 0);
    if (SoundQueue* queue = sound()) {
        queue->restartAt(static_cast<std::int64_t>(
            std::llround(wanted / m_facts->framesPerSecond * queue->format().rate)));
    }
    m_clip->requestSeek(wanted);
}

} // namespace playback
