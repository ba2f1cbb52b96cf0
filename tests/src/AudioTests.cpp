// The sound that a clip hands out: all of it when played, and from the exact sample on after a
// seek.
#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <ogg/ogg.h>
#include <vorbis/codec.h>

#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"

namespace {

using Samples = std::vector<float>;

class Recorder : public theora::TheoraAudioInterfaceFactory {
public:
    std::unique_ptr<theora::TheoraAudioInterface>
    createInstance(const theora::TheoraVideoClip&, int channels, int samplesPerSecond) override {
        EXPECT_EQ(channels, 1);
        EXPECT_EQ(samplesPerSecond, support::kClipSoundRate);
        return std::make_unique<Sink>(*this);
    }

    Samples samples;
    int flushes = 0;

private:
    class Sink : public theora::TheoraAudioInterface {
    public:
        explicit Sink(Recorder& owner) : m_owner(owner) {}
        void insertData(const float* data, int count) override {
            m_owner.samples.insert(m_owner.samples.end(), data, data + count);
        }
        void flush() override {
            ++m_owner.flushes;
            m_owner.samples.clear();
        }

    private:
        Recorder& m_owner;
    };
};

/// The whole track, decoded by libvorbis alone. What comes before sample 0 is left out.
Samples decodeTrack(support::Bytes file) {
    Samples result;
    ogg_sync_state sync;
    ogg_stream_state stream;
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state state{};
    vorbis_block block{};
    ogg_sync_init(&sync);
    vorbis_info_init(&info);
    vorbis_comment_init(&comment);
    std::memcpy(ogg_sync_buffer(&sync, static_cast<long>(file.size())), file.data(), file.size());
    ogg_sync_wrote(&sync, static_cast<long>(file.size()));
    bool found = false;
    int headers = 0;
    std::int64_t firstPageEnd = -1;
    ogg_page page;
    ogg_packet packet;
    while (ogg_sync_pageout(&sync, &page) > 0) {
        if (!found && std::memcmp(page.body, "\x01vorbis", 7) == 0) {
            ogg_stream_init(&stream, ogg_page_serialno(&page));
            found = true;
        }
        if (!found || ogg_page_serialno(&page) != stream.serialno) {
            continue;
        }
        ogg_stream_pagein(&stream, &page);
        while (ogg_stream_packetout(&stream, &packet) > 0) {
            if (headers < 3) {
                vorbis_synthesis_headerin(&info, &comment, &packet);
                if (++headers == 3) {
                    vorbis_synthesis_init(&state, &info);
                    vorbis_block_init(&state, &block);
                }
                continue;
            }
            if (vorbis_synthesis(&block, &packet) == 0) {
                vorbis_synthesis_blockin(&state, &block);
            }
            float** pcm = nullptr;
            for (int n = 0; (n = vorbis_synthesis_pcmout(&state, &pcm)) > 0;) {
                result.insert(result.end(), pcm[0], pcm[0] + n);
                vorbis_synthesis_read(&state, n);
            }
        }
        if (headers == 3 && !result.empty() && firstPageEnd < 0) {
            firstPageEnd = ogg_page_granulepos(&page);
            const auto early = static_cast<std::int64_t>(result.size()) - firstPageEnd;
            if (early > 0) {
                result.erase(result.begin(), result.begin() + early);
            }
        }
    }
    vorbis_block_clear(&block);
    vorbis_dsp_clear(&state);
    vorbis_comment_clear(&comment);
    vorbis_info_clear(&info);
    ogg_stream_clear(&stream);
    ogg_sync_clear(&sync);
    return result;
}

support::ClipSpec soundingClip(support::Sound sound) {
    support::ClipSpec spec;
    spec.frames = 100;
    spec.sound = sound;
    spec.pages = {3, 255};
    return spec;
}

void expectTail(const Samples& whole, std::size_t from, const Samples& got, const char* what) {
    ASSERT_GT(got.size(), 1000U) << what;
    ASSERT_LE(from + got.size(), whole.size()) << what;
    for (std::size_t i = 0; i < got.size(); ++i) {
        ASSERT_EQ(got[i], whole[from + i]) << what << " sample " << i;
    }
}

TEST(Audio, PlayingHandsOutEverySample) {
    for (const auto sound : {support::Sound::before, support::Sound::after}) {
        const auto file = support::makeClip(soundingClip(sound));
        const Samples whole = decodeTrack(file);
        Recorder recorder;
        PlaybackSession session(file, 0, &recorder);
        EXPECT_TRUE(session.clip().hasAudio());
        ASSERT_EQ(session.playToEnd().size(), 100U);
        expectTail(whole, 0, recorder.samples, "whole");
        EXPECT_NEAR(static_cast<double>(recorder.samples.size()), 4.0 * support::kClipSoundRate,
                    0.1 * support::kClipSoundRate);
    }
}

TEST(Audio, ASeekContinuesAtTheExactSample) {
    const auto file = support::makeClip(soundingClip(support::Sound::after));
    const Samples whole = decodeTrack(file);
    Recorder recorder;
    PlaybackSession session(file, 0, &recorder);
    for (const int frame : {50, 51, 3, 80, 0, 79, 50}) {
        ASSERT_TRUE(session.seek(frame));
        EXPECT_EQ(session.playToEnd().size(), static_cast<std::size_t>(99 - frame));
        const auto from = static_cast<std::size_t>(frame) * support::kClipSoundRate / 25;
        ASSERT_NO_FATAL_FAILURE(
            expectTail(whole, from, recorder.samples, std::to_string(frame).c_str()));
    }
    EXPECT_EQ(recorder.flushes, 7);
}

TEST(Audio, SoundThatStartsLateIsPrecededBySilence) {
    auto spec = soundingClip(support::Sound::after);
    const Samples whole = decodeTrack(support::makeClip(spec));
    spec.soundDelay = 16000; // two seconds
    const auto file = support::makeClip(spec);
    Recorder recorder;
    PlaybackSession session(file, 0, &recorder);
    for (const int frame : {10, 60}) {
        ASSERT_TRUE(session.seek(frame));
        (void)session.playToEnd();
        const int at = frame * support::kClipSoundRate / 25;
        const auto silence = static_cast<std::size_t>(std::max(16000 - at, 0));
        ASSERT_GT(recorder.samples.size(), silence + 1000);
        for (std::size_t i = 0; i < silence; ++i) {
            ASSERT_EQ(recorder.samples[i], 0.0F);
        }
        const Samples sound(recorder.samples.begin() + static_cast<std::ptrdiff_t>(silence),
                            recorder.samples.end());
        // The delayed stream loses no sample to the start of the file.
        const auto early = static_cast<std::size_t>(std::max(at - 16000, 0));
        ASSERT_GT(sound.size(), 1000U);
        float worst = 1.0F;
        for (std::size_t shift = 0; shift < 1200 && worst > 0; ++shift) {
            worst = 0;
            for (std::size_t i = 0; i < 1000; ++i) {
                worst = std::max(worst, std::abs(sound[i + shift] - whole[early + i]));
            }
        }
        EXPECT_EQ(worst, 0.0F) << frame;
    }
}

TEST(Audio, APausedClipKeepsItsSound) {
    Recorder recorder;
    PlaybackSession session(support::makeClip(soundingClip(support::Sound::before)), 0, &recorder);
    ASSERT_TRUE(session.seek(20));
    session.manager().updateClips(0.1F);
    EXPECT_TRUE(recorder.samples.empty());
}

} // namespace
