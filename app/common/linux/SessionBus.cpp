#include "app/common/linux/SessionBus.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
constexpr char k_addressVariable[] = "DBUS_SESSION_BUS_ADDRESS";

/// A socket of this machine that closes itself; -1 where there is none.
class CSocket
{
  public:
    CSocket() : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {}
    ~CSocket()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    CSocket(const CSocket&) = delete;
    CSocket& operator=(const CSocket&) = delete;

    /// name  a path, or behind a first byte 0 a name that is no file.
    /// false where nobody listens, and where so many wait already that connecting would block.
    [[nodiscard]] bool connectTo(const QByteArray& name) const
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (name.isEmpty() || std::size_t(name.size()) >= sizeof(address.sun_path))
            return false;
        std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
        // The byte 0 that ends a path does not belong to a name that is no file.
        const auto size =
            socklen_t(offsetof(sockaddr_un, sun_path) + std::size_t(name.size()) + (name[0] == 0 ? 0 : 1));
        return connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), size) == 0;
    }

    [[nodiscard]] bool greet() const
    {
        // A client proves by its socket whose it is, and tells the same as text.
        QByteArray greeting("\0AUTH EXTERNAL ", 15);
        greeting += QByteArray::number(getuid()).toHex() + "\r\n";
        return send(m_descriptor, greeting.constData(), std::size_t(greeting.size()), MSG_NOSIGNAL) == greeting.size();
    }

    [[nodiscard]] bool hearsSomething(std::chrono::milliseconds limit) const
    {
        pollfd waiting{m_descriptor, POLLIN, 0};
        const QDeadlineTimer deadline(limit);
        int ready = -1;
        do
            ready = poll(&waiting, 1, int(deadline.remainingTime()));
        while (ready < 0 && errno == EINTR);
        char byte = 0;
        return ready == 1 && recv(m_descriptor, &byte, 1, 0) == 1;
    }

  private:
    int m_descriptor;
};

/// Where a login keeps its bus, whatever the environment says of it; empty without a login.
QByteArray runtimeSocket()
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : folder + "/bus";
}

/// The socket that one address of the form "transport:key=value,key=value" names; empty for other transports.
QByteArray socketOf(const QByteArray& address)
{
    if (!address.startsWith("unix:"))
        return {};
    const QByteArrayList pairs = address.sliced(5).split(',');
    for (const QByteArray& pair : pairs) {
        const qsizetype equals = pair.indexOf('=');
        const QByteArray key = pair.first(std::max<qsizetype>(equals, 0));
        QByteArray value = QByteArray::fromPercentEncoding(pair.sliced(equals + 1));
        if (key == "path")
            return value;
        if (key == "abstract")
            return QByteArray(1, '\0') + value;
        if (key == "runtime")
            return runtimeSocket();
    }
    return {};
}

/// In the order in which the bus library tries them.
QByteArrayList addresses()
{
    const QByteArray given = qgetenv(k_addressVariable);
    if (!given.isEmpty())
        return given.split(';');
    // An address may not hold a "~" as it is.
    return {"unix:path=" + runtimeSocket().toPercentEncoding("/", "~")};
}
} // namespace

QString SessionBus::answeringAddress(std::chrono::milliseconds limit)
{
    const QByteArrayList all = addresses();
    for (const QByteArray& address : all) {
        const CSocket socket;
        // The bus library goes on to the next address only where it can't connect.
        if (socket.connectTo(socketOf(address)))
            return socket.greet() && socket.hearsSomething(limit) ? QString::fromLatin1(address) : QString();
    }
    return {};
}
