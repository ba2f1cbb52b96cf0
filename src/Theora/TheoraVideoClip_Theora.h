// A clip in an Ogg file: Theora video, and Vorbis sound when an audio interface is set.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/ThreadAnnotations.h"
#include "src/Theora/AudioTrack.h"
#include "src/Theora/FrameConverter.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/PictureDecoder.h"
#include "src/Theora/PlaneCache.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StepBackDecoder.h"
#include "src/Theora/StreamHeaders.h"
#include "src/TheoraAudioInterface.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraVideoClip.h"

namespace theora {

class TheoraVideoClip_Theora : public TheoraVideoClip {
public:
    /// signal, audioFactory (null = silent): outlive the clip.
    TheoraVideoClip_Theora(std::unique_ptr<TheoraDataSource> source, TheoraOutputMode mode,
                           int precacheCount, bool powerOfTwoStride, TheoraWorkSignal& signal,
                           TheoraAudioInterfaceFactory* audioFactory);
    ~TheoraVideoClip_Theora() override;

    void load() override;
    void decodedAudioCheck() override;
    [[nodiscard]] bool hasAudio() const override { return m_headers.vorbis.present; }

protected:
    bool seekTo(int frame) override REQUIRES(m_access);
    bool decodeNextFrame() override REQUIRES(m_access);
    void continueFrom(int frame) override REQUIRES(m_access);
    void finishFrames() override REQUIRES(m_access) { m_converter.finish(); }

private:
    void makeDecoders();
    void makeAudio();
    void decodeSound(std::int64_t frame) REQUIRES(m_access);
    [[nodiscard]] bool deliverPicture(const TheoraPicture& picture, std::int64_t number, bool isOwn)
        REQUIRES(m_access);
    [[nodiscard]] bool deliverMeanwhile() REQUIRES(m_access);
    [[nodiscard]] bool deliverCached(std::int64_t number, bool realOnly) REQUIRES(m_access);
    [[nodiscard]] DecodeResult decodeNextPicture() REQUIRES(m_access);
    [[nodiscard]] bool deliverSought(int frame) REQUIRES(m_access);
    void keepPicture(std::int64_t number) REQUIRES(m_access);
    [[nodiscard]] bool reachedEnd() REQUIRES(m_access);
    /// Has the frames before the current one decoded, while the clip is paused.
    void fillBehind() REQUIRES(m_access);
    void prepareStepBack() REQUIRES(m_access);
    void lookAhead() REQUIRES(m_access);

    TheoraAudioInterfaceFactory* const m_audioFactory;
    StopCheck m_stop;
    std::unique_ptr<SharedSource> m_source;
    StreamHeaders m_headers;
    StreamLayout m_layout;
    std::optional<GranuleFormat> m_format;
    std::unique_ptr<PictureDecoder> m_decoder GUARDED_BY(m_access);
    std::unique_ptr<AudioTrack> m_audio; ///< null: silent
    std::unique_ptr<PlaneCache> m_cache;
    std::int64_t m_keptBefore = 0;             ///< pictures on the way to a frame that are cached
    PictureDecoder::PictureSink m_keep;        ///< stores each decoded picture in the cache
    int m_workingOn GUARDED_BY(m_access) = -1; ///< the seek in progress
    std::int64_t m_nextFrame GUARDED_BY(m_access) = 0; ///< the next to be delivered
    std::int64_t m_centre GUARDED_BY(m_access) = 0;    ///< the current frame
    bool m_goesBack GUARDED_BY(m_access) = false;      ///< the last seek went to an earlier frame
    FrameConverter m_converter; ///< its thread uses the queue and m_decoder's picture
    std::unique_ptr<StepBackDecoder> m_stepBack; ///< last: its thread uses the members above
};

} // namespace theora
