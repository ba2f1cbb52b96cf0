// A clip that can be played at once: its decoder runs ahead from the first frame, its zones are
// read.
#pragma once

#include <memory>
#include <string>

#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "playback/SoundQueue.h"
#include "player/Clip.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoManager.h"

namespace playback {

/// Made and ended on any thread, used by one at a time.
class OpenClip {
public:
    enum class Zones { read, left };
    /// `path`: UTF-8. `files` outlive the clip. Null when it cannot be played.
    [[nodiscard]] static std::unique_ptr<OpenClip>
    open(const std::string& path, platform::FileSystem& files, Zones zones = Zones::read);

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] const std::shared_ptr<const player::Clip>& facts() const { return m_facts; }
    [[nodiscard]] platform::Size size() const { return {m_clip->getWidth(), m_clip->getHeight()}; }
    /// Its pictures are in the byte order blue, green, red, 255.
    [[nodiscard]] theora::TheoraVideoClip& clip() { return *m_clip; }
    /// Null without sound.
    [[nodiscard]] SoundQueue* sound() { return m_sounds.queue().get(); }
    /// Fetches the sound decoded meanwhile.
    void fetchSound() { m_manager.updateClips(0.0F); }
    /// Frame `frame` is the next to be shown, with the sound from there on.
    void seek(int frame);

private:
    OpenClip(const std::string& path, platform::FileSystem& files, Zones zones);

    std::string m_path;
    SoundQueueFactory m_sounds; ///< outlives the manager
    theora::TheoraVideoManager m_manager;
    theora::TheoraVideoClip* m_clip; ///< the manager's
    std::shared_ptr<const player::Clip> m_facts;
};

} // namespace playback
