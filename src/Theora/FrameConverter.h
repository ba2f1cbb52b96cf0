// Converts decoded pictures on a thread of its own, so that the next one is decoded meanwhile. For
// clips that play; the thread starts with the first picture.
#pragma once

#include <functional>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"
#include "src/TheoraPicture.h"
#include "src/TheoraThread.h"
#include "src/TheoraVideoFrame.h"

namespace theora {

/// One thread, except for what runs on the converter's own.
class FrameConverter final : private TheoraThread {
public:
    FrameConverter() = default;
    ~FrameConverter() override;

    /// Converts `picture` into `frame`, then calls `done` on the converter's thread; it must not
    /// throw. Nothing is under way before. Both stay as they are until finish() returns.
    void begin(const TheoraPicture& picture, TheoraVideoFrame& frame, std::function<void()> done)
        EXCLUDES(m_mutex);
    /// Waits until nothing is under way.
    void finish() EXCLUDES(m_mutex);

private:
    void execute() override EXCLUDES(m_mutex);

    TheoraMutex m_mutex;
    TheoraCondition m_changed;
    TheoraPicture m_picture GUARDED_BY(m_mutex);
    TheoraVideoFrame* m_frame GUARDED_BY(m_mutex) = nullptr; ///< null: nothing is under way
    std::function<void()> m_done GUARDED_BY(m_mutex);
};

} // namespace theora
