#include "platform/qt/QtSignals.h"

#include <atomic>
#include <utility>

#include "platform/Guard.h"

namespace platform::qt {

namespace {

/// The write end of the living object's pipe; a handler may touch lock-free atomics only.
std::atomic<int> signalPipe{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void passSignalOn(int /*signal*/) {
    const int pipe = signalPipe.load();
    const char byte = 1;
    if (pipe >= 0) {
        // A full pipe has a signal waiting already; there is nothing else to do about a failure.
        [[maybe_unused]] const auto written = ::write(pipe, &byte, 1);
    }
}

} // namespace

QtSignals::QtSignals(std::function<void()> onSignal)
    : m_notifier(m_pipe.readEnd(), QSocketNotifier::Read), m_onSignal(std::move(onSignal)) {
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        char byte = 0;
        while (::read(m_pipe.readEnd(), &byte, 1) > 0) {
        }
        guardedRun("end of the program", m_onSignal);
    });
    signalPipe = m_pipe.writeEnd();
    struct sigaction action {};
    action.sa_handler = passSignalOn;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGTERM, &action, &m_formerTerminate);
    sigaction(SIGINT, &action, &m_formerInterrupt);
}

QtSignals::~QtSignals() {
    sigaction(SIGTERM, &m_formerTerminate, nullptr);
    sigaction(SIGINT, &m_formerInterrupt, nullptr);
    signalPipe = -1;
}

} // namespace platform::qt
