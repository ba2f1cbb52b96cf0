// The desktop's wish for dark windows, told by its portal: here one of ours on a bus of its own.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QThread>
#include <QVariant>
#include <algorithm>
#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Gui.h"
#include "platform/Window.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

namespace {

using platform::Appearance;

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

/// Answers on a thread of its own, as the program waits for it.
class Portal final : public QDBusVirtualObject {
public:
    explicit Portal(const QString& bus)
        : m_bus(QDBusConnection::connectToBus(bus, QStringLiteral("portal"))) {
        moveToThread(&m_thread);
        m_thread.start();
        EXPECT_TRUE(m_bus.registerVirtualObject(kPath, this));
        EXPECT_TRUE(m_bus.registerService(kService));
    }
    ~Portal() override {
        m_bus.unregisterObject(kPath);
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        m_thread.quit();
        m_thread.wait();
    }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QStringLiteral("Read") ||
            message.arguments() != QVariantList{kGroup, kKey}) {
            return false;
        }
        const auto inner = QVariant::fromValue(QDBusVariant(scheme.load()));
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(inner))));
    }
    void change(unsigned value) {
        scheme = value;
        QDBusMessage signal =
            QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("SettingChanged"));
        signal << kGroup << kKey << QVariant::fromValue(QDBusVariant(value));
        EXPECT_TRUE(m_bus.send(signal));
    }

    std::atomic<unsigned> scheme = 1;

private:
    QThread m_thread;
    QDBusConnection m_bus;
};

class SessionBus {
public:
    SessionBus() {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--print-address")});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
        }
        address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~SessionBus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    QString address;

private:
    QProcess m_daemon;
};

TEST(ColorScheme, TheDesktopsWishCountsBeforeTheColoursOfQt) {
    SessionBus bus;
    ASSERT_FALSE(bus.address.isEmpty());
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address.toUtf8());
    platform::WindowHost& windows = test::gui().windows(); // its own colours are light
    Portal portal(bus.address);
    test::TestWindow window;
    window.show();

    windows.setAppearance(Appearance::asSystem);
    EXPECT_TRUE(windows.isDark()) << "from the first window on";
    static_cast<void>(window.takeEvents());
    for (const auto& [scheme, isDark] :
         {std::pair(2U, false), {1U, true}, {0U, false}, {1U, true}}) {
        portal.change(scheme);
        EXPECT_TRUE(test::pumpUntil([&windows, dark = isDark] { return windows.isDark() == dark; }))
            << scheme;
        const std::vector<std::string> events = window.takeEvents();
        EXPECT_EQ(std::count(events.begin(), events.end(), "appearance"), 1) << scheme;
    }
    windows.setAppearance(Appearance::light);
    EXPECT_FALSE(windows.isDark());
}

} // namespace
