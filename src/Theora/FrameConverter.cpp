#include "src/Theora/FrameConverter.h"

#include <chrono>
#include <utility>

namespace theora {
namespace {

constexpr std::chrono::milliseconds kLongestWait{100}; // an upper bound: every change ends it

} // namespace

FrameConverter::~FrameConverter() {
    stop();
    m_changed.notify_all();
    join();
}

void FrameConverter::begin(const TheoraPicture& picture, TheoraVideoFrame& frame,
                           std::function<void()> done) {
    if (!isRunning()) {
        start();
    }
    {
        const TheoraLock lock(m_mutex);
        m_picture = picture;
        m_frame = &frame;
        m_done = std::move(done);
    }
    m_changed.notify_all();
}

void FrameConverter::finish() {
    const TheoraLock lock(m_mutex);
    while (m_frame != nullptr) {
        m_changed.wait_for(m_mutex, kLongestWait);
    }
}

void FrameConverter::execute() {
    while (isRunning()) {
        TheoraPicture picture;
        TheoraVideoFrame* frame = nullptr;
        std::function<void()> done;
        {
            const TheoraLock lock(m_mutex);
            if (m_frame == nullptr) {
                m_changed.wait_for(m_mutex, kLongestWait);
                continue;
            }
            picture = m_picture;
            frame = m_frame;
            done = std::move(m_done);
        }
        frame->decode(picture);
        done();
        {
            const TheoraLock lock(m_mutex);
            m_frame = nullptr;
        }
        m_changed.notify_all();
    }
}

} // namespace theora
