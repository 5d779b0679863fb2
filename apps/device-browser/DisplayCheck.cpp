// SPDX-License-Identifier: Apache-2.0
#include "DisplayCheck.h"

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>
#include <memory>

#include <netdb.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace browser
{

namespace
{

constexpr int kFirstDisplayPort = 6000;

bool doesAnswer(int family, const sockaddr *address, socklen_t length)
{
    const int socket = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isAnswered = socket >= 0 && ::connect(socket, address, length) == 0;
    if (socket >= 0)
        ::close(socket);
    return isAnswered;
}

/// @param path  of the socket; a leading NUL stands for a name that is no file
bool doesLocalSocketAnswer(const QByteArray &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || path.size() >= static_cast<int>(sizeof address.sun_path))
        return false;
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    const size_t length = offsetof(sockaddr_un, sun_path) + static_cast<size_t>(path.size());
    return doesAnswer(AF_UNIX, reinterpret_cast<const sockaddr *>(&address), static_cast<socklen_t>(length));
}

bool doesHostAnswer(const QByteArray &host, int port)
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(host.constData(), QByteArray::number(port).constData(), &hints, &found) != 0)
        return false;
    const std::unique_ptr<addrinfo, void (*)(addrinfo *)> addresses(found, freeaddrinfo);
    for (const addrinfo *address = found; address; address = address->ai_next) {
        if (doesAnswer(address->ai_family, address->ai_addr, address->ai_addrlen))
            return true;
    }
    return false;
}

/// @param name  as in DISPLAY: [HOST]:NUMBER[.SCREEN]
bool isXServerThere(const QString &name)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:unix|([^/:]*)(?:/unix)?):(\\d{1,4})(?:\\.\\d+)?$"));
    const QRegularExpressionMatch parts = form.match(name);
    if (!parts.hasMatch())
        return true; // a form that this does not know: the toolkit shall tell
    const QByteArray host = parts.captured(1).toLatin1();
    const int number = parts.captured(2).toInt();
    if (!host.isEmpty())
        return doesHostAnswer(host, kFirstDisplayPort + number);
    const QByteArray path = "/tmp/.X11-unix/X" + QByteArray::number(number);
    return doesLocalSocketAnswer(path) || doesLocalSocketAnswer(QByteArray(1, '\0') + path);
}

bool isCompositorThere(const QString &name)
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString path = name.startsWith(QLatin1Char('/')) ? name : folder + QLatin1Char('/') + name;
    return doesLocalSocketAnswer(QFile::encodeName(path));
}

} // namespace

QString missingDisplay()
{
    const QString otherwise = QStringLiteral("; kel-devices lists the cameras on the terminal");
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && platform != QLatin1String("xcb") && platform != QLatin1String("wayland"))
        return {};
    const QString x = qEnvironmentVariable("DISPLAY");
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (x.isEmpty() && wayland.isEmpty()) {
        return QStringLiteral(
                   "device-browser: there is no display here (DISPLAY and WAYLAND_DISPLAY are not set)") +
               otherwise;
    }
    if ((!x.isEmpty() && isXServerThere(x)) || (!wayland.isEmpty() && isCompositorThere(wayland)))
        return {};
    return QStringLiteral("device-browser: the display \"%1\" cannot be reached from here")
               .arg(x.isEmpty() ? wayland : x) +
           otherwise;
}

} // namespace browser
