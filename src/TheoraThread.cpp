#include "src/TheoraThread.h"

namespace theora {

TheoraThread::~TheoraThread() {
    stop();
    join();
}

void TheoraThread::start() {
    join();
    m_running.store(true);
    try {
        m_thread = std::thread([this] { execute(); });
    } catch (...) {
        m_running.store(false); // or nobody would try again, and some would wait for its work
        throw;
    }
}

void TheoraThread::join() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace theora
