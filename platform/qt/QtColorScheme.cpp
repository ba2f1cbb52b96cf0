#include "platform/qt/QtColorScheme.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFileInfo>
#include <QString>
#include <QVariant>
#include <utility>

#include "platform/Guard.h"

namespace platform::qt {
namespace {

/// A portal that has not started yet must not hold up the first window for longer.
constexpr int kFirstWaitMilliseconds = 300;

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

/// To ask for a bus where there is none would start one.
bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QDBusMessage question() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    message << kGroup << kKey;
    return message;
}

} // namespace

QtColorScheme::QtColorScheme(std::function<void()> changed) : m_changed(std::move(changed)) {
    if (!hasSessionBus()) {
        return;
    }
    m_signal.setSingleShot(true);
    QObject::connect(&m_signal, &QTimer::timeout, &m_signal,
                     [this] { guardedRun("change of colours", [this] { askAgain(); }); });
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), {kGroup, kKey}, {},
                &m_signal, SLOT(start()));
    const QDBusMessage answer = bus.call(question(), QDBus::Block, kFirstWaitMilliseconds);
    take(answer);
    if (QDBusError(answer).type() == QDBusError::NoReply) {
        m_signal.start();
    }
}

void QtColorScheme::askAgain() {
    auto* const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question()), &m_signal); // the parent owns it
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_signal,
                     [this, watcher](auto*) {
                         watcher->deleteLater();
                         guardedRun("change of colours", [&] {
                             const std::optional<bool> before = m_isDark;
                             take(watcher->reply());
                             if (m_isDark != before) {
                                 m_changed();
                             }
                         });
                     });
}

void QtColorScheme::take(const QDBusMessage& answer) {
    constexpr unsigned kDark = 1;
    constexpr unsigned kLight = 2;
    QVariant value =
        answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
    while (value.userType() == qMetaTypeId<QDBusVariant>()) { // one within another
        value = value.value<QDBusVariant>().variant();
    }
    const unsigned scheme = value.toUInt();
    m_isDark = scheme == kDark    ? std::optional(true)
               : scheme == kLight ? std::optional(false)
                                  : std::nullopt;
}

} // namespace platform::qt
