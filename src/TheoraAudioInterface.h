// Where a clip's sound goes. A clip that has none of these is silent.
#pragma once

#include <memory>

namespace theora {

class TheoraVideoClip;

class TheoraAudioInterface {
public:
    virtual ~TheoraAudioInterface() = default;
    /// Takes the next `count` samples of every channel, interleaved; usually, not always, -1 to 1.
    /// Called by TheoraVideoManager::updateClips on its thread, under the clip's audio lock.
    virtual void insertData(const float* samples, int count) = 0;
    /// Discards the samples received so far: the clip has jumped. Same thread as insertData.
    virtual void flush() {}
};

class TheoraAudioInterfaceFactory {
public:
    virtual ~TheoraAudioInterfaceFactory() = default;
    /// Called once for a clip with sound, while it is loaded. Null: the clip stays silent.
    [[nodiscard]] virtual std::unique_ptr<TheoraAudioInterface>
    createInstance(const TheoraVideoClip& clip, int channels, int samplesPerSecond) = 0;
};

} // namespace theora
