#include "platform/qt/QtDisplay.h"

#include <QDir>
#include <QLibraryInfo>
#include <QString>
#include <QtGlobal>
#include <cstring>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace platform::qt {

namespace {

class Socket {
public:
    Socket() : m_handle(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
    ~Socket() {
        if (m_handle >= 0) {
            ::close(m_handle);
        }
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] bool connectTo(const std::string& path) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (m_handle < 0 || path.size() >= sizeof address.sun_path) {
            return false;
        }
        std::memcpy(address.sun_path, path.data(), path.size());
        const auto length =
            offsetof(sockaddr_un, sun_path) + path.size() + (path[0] == '/' ? 1 : 0);
        return ::connect(m_handle, reinterpret_cast<const sockaddr*>(&address),
                         static_cast<socklen_t>(length)) == 0;
    }

private:
    int m_handle;
};

/// Tries to connect to a local X server; a remote one is assumed to be there.
bool isXServerThere(const QString& display) {
    const qsizetype colon = display.lastIndexOf(u':');
    if (colon < 0) {
        return false;
    }
    const QString host = display.left(colon);
    if (!host.isEmpty() && host != u"unix") {
        return true;
    }
    const std::string number = display.mid(colon + 1).section(u'.', 0, 0).toStdString();
    const std::string path = "/tmp/.X11-unix/X" + number;
    return Socket().connectTo(path) || Socket().connectTo(std::string(1, '\0') + path);
}

bool isWaylandThere() {
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return false;
    }
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                       QStringLiteral("/platforms"));
    return !plugins.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

} // namespace

bool isDisplayAvailable() {
    const QString chosen = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (!chosen.isEmpty() && !chosen.startsWith(u"xcb") && !chosen.startsWith(u"wayland")) {
        return true;
    }
    return isWaylandThere() || isXServerThere(qEnvironmentVariable("DISPLAY"));
}

} // namespace platform::qt
