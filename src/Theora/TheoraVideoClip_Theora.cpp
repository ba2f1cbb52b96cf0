#include "src/Theora/TheoraVideoClip_Theora.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <utility>

#include "src/Theora/OggHandles.h"
#include "src/Theora/StepBackPlan.h"
#include "src/Theora/StreamScan.h"
#include "src/TheoraDataSource.h"
#include "src/TheoraFrameQueue.h"
#include "src/TheoraLog.h"
#include "src/TheoraMutex.h"
#include "src/TheoraPicture.h"
#include "src/TheoraTimer.h"
#include "src/TheoraVideoFrame.h"

namespace theora {
namespace {

constexpr std::size_t kCacheBytes = 128'000'000; // includes the picture converted ahead
constexpr std::size_t kMaxBytesPerPixel = 4;
constexpr std::int64_t kLookAhead = 24; // frames: two steps of ten, and some
constexpr float kSoundAhead = 0.5F;     // seconds of sound decoded ahead of the pictures

} // namespace

TheoraVideoClip_Theora::TheoraVideoClip_Theora(std::unique_ptr<TheoraDataSource> source,
                                               TheoraOutputMode mode, int precacheCount,
                                               bool powerOfTwoStride, TheoraWorkSignal& signal,
                                               TheoraAudioInterfaceFactory* audioFactory)
    : TheoraVideoClip(std::move(source), mode, precacheCount, powerOfTwoStride, signal),
      m_audioFactory(audioFactory) {}

TheoraVideoClip_Theora::~TheoraVideoClip_Theora() = default;

void TheoraVideoClip_Theora::load() {
    m_source = std::make_unique<SharedSource>(*m_dataSource);
    readStreamHeaders(*m_source, m_headers);
    const th_info& info = *m_headers.theora.info.get();
    m_format.emplace(info);
    m_layout = scanStream(*m_source, m_headers, *m_format);
    if (m_layout.frameCount < 0) {
        writeLog("unable to determine file duration!");
    }
    makeDecoders();
    setGeometry(static_cast<int>(info.frame_width), static_cast<int>(info.frame_height),
                static_cast<float>(info.fps_numerator) / static_cast<float>(info.fps_denominator));
    if (m_layout.frameCount >= 0) {
        setFrameCount(static_cast<int>(std::min<std::int64_t>(m_layout.frameCount, INT_MAX)));
    }
    makeAudio();
}

void TheoraVideoClip_Theora::makeDecoders() {
    const th_info& info = *m_headers.theora.info.get();
    const TheoraLock lock(m_access);
    // Both are called by the decoder only, under the access lock.
    m_stop = [this]() NO_THREAD_SAFETY_ANALYSIS { return interrupted(m_workingOn); };
    m_keep = [this](std::int64_t number) NO_THREAD_SAFETY_ANALYSIS { keepPicture(number); };
    m_decoder =
        std::make_unique<PictureDecoder>(*m_source, m_stop, m_headers.theora, m_layout, *m_format);
    const std::size_t convertedBytes =
        kMaxBytesPerPixel * std::size_t{info.frame_width} * info.frame_height;
    const ChromaShift shift = chromaShift(info);
    m_cache = std::make_unique<PlaneCache>(kCacheBytes - std::min(convertedBytes, kCacheBytes),
                                           static_cast<int>(info.frame_width),
                                           static_cast<int>(info.frame_height), shift.x, shift.y);
    // The step-back decoder gets those further back while the frame is on the screen.
    m_keptBefore = StepBackPlan::keptBefore(*m_cache, m_format->longestGroup());
    m_stepBack = std::make_unique<StepBackDecoder>(*m_source, m_headers.theora, m_layout, *m_format,
                                                   *m_cache);
}

void TheoraVideoClip_Theora::makeAudio() {
    if (!m_headers.vorbis.present || m_audioFactory == nullptr) {
        return;
    }
    const vorbis_info& info = *m_headers.vorbis.info.get();
    auto sink = m_audioFactory->createInstance(*this, info.channels, static_cast<int>(info.rate));
    if (sink) {
        m_audio =
            std::make_unique<AudioTrack>(*m_source, m_stop, m_headers.vorbis, std::move(sink));
    }
}

void TheoraVideoClip_Theora::decodedAudioCheck() {
    if (m_audio && !getTimer().isPaused() && pendingSeekFrame.load() == -1) {
        m_audio->handOver();
    }
}

void TheoraVideoClip_Theora::decodeSound(std::int64_t frame) {
    if (m_audio) {
        m_audio->decodeUntil(timeOfFrame(static_cast<int>(frame)) + kSoundAhead);
    }
}

bool TheoraVideoClip_Theora::deliverPicture(const TheoraPicture& picture, std::int64_t number,
                                            bool isOwn) {
    m_converter.finish();
    TheoraVideoFrame* frame = m_frameQueue->requestEmptyFrame();
    if (frame == nullptr) {
        return false;
    }
    if (!m_frameQueue->reusePixels(*frame, picture.identity)) {
        frame->decode(picture);
    }
    frame->setHasOwnPicture(isOwn);
    deliver(*frame, static_cast<int>(std::min<std::int64_t>(number, INT_MAX)));
    return true;
}

// The decoder keeps the picture through the next one, which is predicted from it, but no longer: at
// most one is being converted while the next is decoded.
bool TheoraVideoClip_Theora::deliverMeanwhile() {
    m_converter.finish();
    TheoraVideoFrame* frame = m_frameQueue->requestEmptyFrame();
    if (frame == nullptr) {
        return false;
    }
    const TheoraPicture picture = m_decoder->picture();
    const int number = static_cast<int>(std::min<std::int64_t>(m_decoder->position(), INT_MAX));
    frame->setHasOwnPicture(true);
    if (m_frameQueue->reusePixels(*frame, picture.identity)) {
        deliver(*frame, number);
        return true;
    }
    m_converter.begin(picture, *frame, [this, frame, number] {
        deliver(*frame, number);
        if (m_frameReady) {
            m_frameReady();
        }
    });
    return true;
}

bool TheoraVideoClip_Theora::deliverCached(std::int64_t number, bool realOnly) {
    const auto cached = m_cache->find(number);
    return cached && (cached->isFrame || !realOnly) &&
           deliverPicture(cached->picture, number, cached->isFrame);
}

// Only paused clips are stepped through.
void TheoraVideoClip_Theora::keepPicture(std::int64_t number) {
    if (getTimer().isPaused() && number >= m_centre - m_keptBefore && m_cache->wants(number)) {
        m_cache->store(number, m_decoder->picture());
    }
}

bool TheoraVideoClip_Theora::seekTo(int frame) {
    m_converter.finish();
    m_workingOn = frame;
    m_goesBack = frame < m_centre;
    m_centre = frame;
    m_cache->setCentre(frame);
    m_stepBack->moveTo(frame);
    if (m_audio) {
        m_audio->seek(timeOfFrame(frame));
    }
    if (m_frameQueue->advanceTo(frame)) {
        return true;
    }
    m_frameQueue->clear();
    m_nextFrame = std::int64_t{frame} + 1;
    const bool isDone = deliverSought(frame);
    if (isDone) { // right behind a keyframe there is no time to lose: filling the queue takes long
        fillBehind();
    }
    return isDone;
}

bool TheoraVideoClip_Theora::deliverSought(int frame) {
    if (deliverCached(frame, false) ||
        (m_stepBack->waitFor(frame, m_stop) && deliverCached(frame, false))) {
        return true;
    }
    const DecodeResult result = m_decoder->decodeTo(frame, m_keep);
    if (result == DecodeResult::stopped || m_stop()) { // the picture is no longer needed
        return false;
    }
    if (result == DecodeResult::endOfStream) {
        writeLog(getName() + " [seek]: fineseeking failed, _readData failed!");
        endOfFile.store(true);
    }
    return m_decoder->position() < 0 ||
           deliverPicture(m_decoder->picture(), frame, m_decoder->position() == frame);
}

DecodeResult TheoraVideoClip_Theora::decodeNextPicture() {
    const std::int64_t position = m_decoder->position();
    if (position != m_nextFrame && position != m_nextFrame - 1) {
        const DecodeResult result = m_decoder->decodeTo(m_nextFrame, m_keep);
        if (result != DecodeResult::reached) {
            return result;
        }
    }
    // Skip frames that the file lacks.
    return m_decoder->position() < m_nextFrame ? m_decoder->decodeNext(m_keep)
                                               : DecodeResult::reached;
}

bool TheoraVideoClip_Theora::decodeNextFrame() {
    m_workingOn = -1;
    const bool plays = !getTimer().isPaused() && m_decoder->position() == m_nextFrame - 1;
    if (!plays) {
        m_converter.finish();
    }
    if (m_frameQueue->isFull()) {
        return false;
    }
    m_centre = std::max(m_centre, m_nextFrame - m_frameQueue->getSize());
    m_cache->setCentre(m_centre);
    if (deliverCached(m_nextFrame, true)) {
        ++m_nextFrame;
    } else {
        const DecodeResult result = decodeNextPicture();
        if (result == DecodeResult::stopped || m_stop()) { // do not delay a seek by a conversion
            return false;
        }
        if (result == DecodeResult::endOfStream) {
            return reachedEnd();
        }
        m_nextFrame = m_decoder->position() + 1;
        if (!(plays ? deliverMeanwhile()
                    : deliverPicture(m_decoder->picture(), m_decoder->position(), true))) {
            return false;
        }
    }
    decodeSound(m_nextFrame);
    if (m_frameQueue->isFull() && getTimer().isPaused()) {
        m_converter.finish();
        prepareStepBack();
        lookAhead();
    }
    return true;
}

// Decodes past a full queue, so that steps of ten find their frame in the cache.
void TheoraVideoClip_Theora::lookAhead() {
    const std::int64_t last = m_centre + std::min<std::int64_t>(kLookAhead, m_cache->ahead());
    if (m_decoder->position() < m_nextFrame - 1) {
        return; // elsewhere: the queue was filled from the cache
    }
    while (m_decoder->position() < last && !m_stop() &&
           m_decoder->decodeNext(m_keep) == DecodeResult::reached) {
    }
}

bool TheoraVideoClip_Theora::reachedEnd() {
    m_converter.finish();
    if (m_audio) {
        m_audio->decodeUntil(getDuration());
    }
    if (m_restartAtEnd.load() && m_nextFrame > 0) {
        wrapAround(m_nextFrame);
        m_nextFrame = 0;
        m_centre = 0;
        if (m_audio) {
            m_audio->rewind();
        }
    } else {
        endOfFile.store(true);
        prepareStepBack();
    }
    return false;
}

void TheoraVideoClip_Theora::fillBehind() {
    if (getTimer().isPaused()) {
        const std::int64_t count = m_layout.frameCount;
        m_stepBack->prepare(count > 0 ? std::min(m_centre, count) : m_centre);
    }
}

void TheoraVideoClip_Theora::prepareStepBack() {
    fillBehind();
    // A step back is likely to be followed by another, so convert that one now. A step forward
    // would have to wait for the conversion.
    if (!getTimer().isPaused() || !m_goesBack || m_stop()) {
        return;
    }
    if (const auto before = m_cache->find(m_centre - 1)) {
        m_frameQueue->prepare(before->picture);
    }
}

void TheoraVideoClip_Theora::continueFrom(int frame) {
    m_nextFrame = frame;
}

} // namespace theora
