// A worker of the playback manager: asks for a clip with work, decodes one frame, asks again.
#pragma once

#include "src/TheoraThread.h"

namespace theora {

class TheoraVideoManager;

class TheoraWorkerThread : public TheoraThread {
public:
    /// manager: outlives the thread.
    explicit TheoraWorkerThread(TheoraVideoManager& manager) : m_manager(manager) {}
    ~TheoraWorkerThread() override;

protected:
    void execute() override;

private:
    TheoraVideoManager& m_manager;
};

} // namespace theora
