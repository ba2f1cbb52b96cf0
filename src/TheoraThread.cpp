#include "src/TheoraThread.h"

namespace theora {

TheoraThread::~TheoraThread() {
    stop();
    join();
}

void TheoraThread::start() {
    join();
    m_running.store(true);
    m_thread = std::thread([this] { execute(); });
}

void TheoraThread::join() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace theora
