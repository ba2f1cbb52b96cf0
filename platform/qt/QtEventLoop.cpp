#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaObject>
#include <QTimer>
#include <utility>

namespace platform::qt {

namespace {

constexpr int kLongestWaitMs = 20;

} // namespace

QtEventLoop::QtEventLoop()
    : m_tasks([this] {
          return QMetaObject::invokeMethod(
              &m_receiver, [this] { m_tasks.runWaiting(); }, Qt::QueuedConnection);
      }) {}

int QtEventLoop::run() {
    if (m_ending) {
        return 0;
    }
    if (m_pendingQuit) {
        return *std::exchange(m_pendingQuit, std::nullopt);
    }
    QEventLoop loop;
    m_running.push_back({++m_lastId, &loop});
    const int code = loop.exec();
    m_running.pop_back();
    return code;
}

void QtEventLoop::postQuit(int code) {
    if (m_running.empty()) {
        m_pendingQuit = code;
        return;
    }
    // The loop is chosen now: the quit is not for one that starts before it is handled.
    post([this, code, id = m_running.back().id] {
        for (const Running& running : m_running) {
            if (running.id == id) {
                running.loop->exit(code);
            }
        }
    });
}

void QtEventLoop::processEvents(bool wait) {
    if (!wait) {
        QCoreApplication::processEvents();
        return;
    }
    QTimer limit; // its timeout is an event, so that the wait ends
    limit.setSingleShot(true);
    limit.start(kLongestWaitMs);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtEventLoop::post(std::function<void()> task) {
    m_tasks.add(std::move(task));
}

void QtEventLoop::endAll() {
    m_ending = true;
    for (const Running& running : m_running) {
        running.loop->exit(0);
    }
}

} // namespace platform::qt
