#include "src/Theora/TheoraVideoClip_Theora.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "src/Theora/StreamScan.h"
#include "src/TheoraLog.h"

namespace theora {

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
    m_layout.serial = m_headers.theora.serial;
    m_layout.dataStart = m_headers.dataStart;
    findFirstFrame(*m_source, *m_format, m_layout);
    if (m_layout.firstFrame < 0) {
        m_format->shiftNumbers(-m_layout.firstFrame);
        m_layout.firstFrame = 0;
    }
    m_layout.frameCount = findFrameCount(*m_source, m_layout.serial, *m_format);
    const TheoraLock lock(m_access);
    m_stop = [this]() NO_THREAD_SAFETY_ANALYSIS { return interrupted(m_workingOn); };
    m_decoder =
        std::make_unique<PictureDecoder>(*m_source, m_stop, m_headers.theora, m_layout, *m_format);
    setGeometry(static_cast<int>(info.frame_width), static_cast<int>(info.frame_height),
                static_cast<float>(info.fps_numerator) / static_cast<float>(info.fps_denominator));
    if (m_layout.frameCount < 0)
        writeLog("unable to determine file duration!");
    else
        setFrameCount(static_cast<int>(std::min<std::int64_t>(m_layout.frameCount, INT_MAX)));
}

void TheoraVideoClip_Theora::decodedAudioCheck() {}

bool TheoraVideoClip_Theora::deliverPicture(std::int64_t number) {
    TheoraVideoFrame* frame = m_frameQueue->requestEmptyFrame();
    if (frame == nullptr)
        return false;
    frame->decode(m_decoder->picture());
    deliver(*frame, static_cast<int>(std::min<std::int64_t>(number, INT_MAX)));
    return true;
}

bool TheoraVideoClip_Theora::seekTo(int frame) {
    m_workingOn = frame;
    if (m_frameQueue->advanceTo(frame))
        return true;
    m_frameQueue->clear();
    m_nextFrame = frame;
    const DecodeResult result = m_decoder->decodeTo(frame, [](std::int64_t) {});
    if (result == DecodeResult::stopped)
        return false;
    if (result == DecodeResult::endOfStream) {
        writeLog(getName() + " [seek]: fineseeking failed, _readData failed!");
        endOfFile.store(true);
    }
    m_nextFrame = std::int64_t{frame} + 1;
    if (m_decoder->position() >= 0 && !deliverPicture(frame))
        writeLog(getName() + " [seek]: no frame in the queue");
    return true;
}

bool TheoraVideoClip_Theora::decodeNextFrame() {
    m_workingOn = -1;
    if (m_frameQueue->isFull())
        return false;
    const auto ignore = [](std::int64_t) {};
    DecodeResult result = DecodeResult::reached;
    if (m_decoder->position() != m_nextFrame - 1 && m_decoder->position() != m_nextFrame)
        result = m_decoder->decodeTo(m_nextFrame, ignore);
    if (result == DecodeResult::reached && m_decoder->position() < m_nextFrame)
        result = m_decoder->decodeNext(ignore);
    if (result == DecodeResult::stopped)
        return false;
    if (result == DecodeResult::endOfStream)
        return reachedEnd();
    m_nextFrame = m_decoder->position() + 1;
    return deliverPicture(m_decoder->position());
}

bool TheoraVideoClip_Theora::reachedEnd() {
    if (m_restartAtEnd.load() && m_nextFrame > 0) {
        m_restartPending.store(true);
        m_nextFrame = 0;
    } else {
        endOfFile.store(true);
    }
    return false;
}

void TheoraVideoClip_Theora::continueFrom(int frame) {
    m_nextFrame = frame;
}

} // namespace theora
