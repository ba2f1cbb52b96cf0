// Any bytes as a clip: headers, sound, playing, seeks. Check sums of pages are put right first, so
// that changed bytes get past libogg.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <numeric>
#include <utility>

#include <ogg/ogg.h>

#include "src/Theora/TheoraVideoClip_Theora.h"
#include "src/TheoraException.h"
#include "tests/fuzz/Require.h"
#include "tests/src/MemorySource.h"

namespace {

using fuzz::require;

constexpr std::size_t kPageHeader = 27;

void mendCheckSums(support::Bytes& file) {
    for (std::size_t at = 0; at + kPageHeader <= file.size(); ++at) {
        if (std::memcmp(file.data() + at, "OggS", 4) != 0) {
            continue;
        }
        const std::size_t header = kPageHeader + file[at + 26];
        const std::size_t left = file.size() - at;
        const std::uint8_t* const page = file.data() + at;
        const std::size_t body =
            header > left ? 0 : std::accumulate(page + kPageHeader, page + header, std::size_t{0});
        if (header + body > left) {
            return;
        }
        ogg_page raw{file.data() + at, static_cast<long>(header), file.data() + at + header,
                     static_cast<long>(body)};
        ogg_page_checksum_set(&raw);
        at += header + body - 1;
    }
}

/// Large pictures only slow the search down; their refusal has tests of its own.
bool isLarge(const support::Bytes& file) {
    const support::Bytes tag = {0x80, 't', 'h', 'e', 'o', 'r', 'a'};
    for (auto at = file.begin();; ++at) {
        at = std::search(at, file.end(), tag.begin(), tag.end());
        if (file.end() - at < 14) {
            return false;
        }
        const unsigned columns = unsigned{at[10]} << 8U | at[11];
        const unsigned rows = unsigned{at[12]} << 8U | at[13];
        if (columns * rows > 256) {
            return true;
        }
    }
}

class SilentSink : public theora::TheoraAudioInterface {
public:
    void insertData(const float* samples, int count) override {
        require(count >= 0 && (count == 0 || samples != nullptr));
    }
};

class SilentFactory : public theora::TheoraAudioInterfaceFactory {
public:
    std::unique_ptr<theora::TheoraAudioInterface> createInstance(const theora::TheoraVideoClip&,
                                                                 int, int) override {
        return std::make_unique<SilentSink>();
    }
};

void play(theora::TheoraVideoClip& clip, int rounds) {
    for (int i = 0; i < rounds; ++i) {
        if (clip.wantsWork()) {
            (void)clip.decodeOnWorker();
        }
        clip.advanceToDueFrame();
        if (const theora::TheoraVideoFrame* frame = clip.peekReadyFrame()) {
            require(frame->getFrameNumber() >= 0);
            clip.releaseShownFrame();
        }
        clip.decodedAudioCheck();
    }
}

void seek(theora::TheoraVideoClip& clip, int frame) {
    clip.requestSeek(frame);
    (void)clip.decodeOnWorker(); // nothing interrupts it here, so one call ends it
    require(clip.pendingSeekFrame.load() == -1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const unsigned variant = data[size - 1];
    support::Bytes file(data, data + size);
    mendCheckSums(file);
    if (isLarge(file)) {
        return 0;
    }
    theora::TheoraWorkSignal signal;
    SilentFactory factory;
    try {
        theora::TheoraVideoClip_Theora clip(
            std::make_unique<MemorySource>(std::move(file)), theora::TheoraOutputMode::TH_RGB, 3,
            (variant & 1U) != 0, signal, (variant & 2U) != 0 ? &factory : nullptr);
        clip.load();
        clip.setRestartAtEnd((variant & 4U) != 0);
        play(clip, 12);
        if ((variant & 8U) != 0) {
            clip.getTimer().pause(); // the second decoder joins in
        }
        const int frames = std::max(clip.getNumFrames(), 1);
        for (const int frame : {frames - 1, 0, frames / 2, 3, 2, frames}) {
            seek(clip, frame);
        }
        play(clip, 6);
        clip.setOutputMode(theora::TheoraOutputMode::TH_ABGR);
        play(clip, 6);
    } catch (const theora::TheoraGenericException&) {
        // refused, as it should be
    }
    return 0;
}
