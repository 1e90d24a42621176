#pragma once

#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// A socket on which nobody answers, or who comes later.
class CDeafSocket
{
  public:
    explicit CDeafSocket(int waitingRoom) : m_listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        qstrncpy(name.sun_path, path().toLocal8Bit().constData(), sizeof(name.sun_path));
        m_listens = bind(m_listener, reinterpret_cast<sockaddr*>(&name), sizeof(name)) == 0 &&
                    listen(m_listener, waitingRoom) == 0;
    }
    ~CDeafSocket()
    {
        close(m_listener);
    }
    CDeafSocket(const CDeafSocket&) = delete;
    CDeafSocket& operator=(const CDeafSocket&) = delete;

    [[nodiscard]] bool listens() const
    {
        return m_listens;
    }
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("bus"));
    }
    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + path();
    }

    /// Says that who waits there is welcome.
    void answerFirst() const
    {
        const int caller = accept(m_listener, nullptr, nullptr);
        static_cast<void>(send(caller, "OK 0123456789abcdef0123456789abcdef\r\n", 37, MSG_NOSIGNAL));
        close(caller);
    }

    /// Lets someone wait who takes a place.
    [[nodiscard]] bool fill() const
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        qstrncpy(name.sun_path, path().toLocal8Bit().constData(), sizeof(name.sun_path));
        const int waiting = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0); // stays until the test program ends
        return ::connect(waiting, reinterpret_cast<sockaddr*>(&name), sizeof(name)) == 0;
    }

  private:
    QTemporaryDir m_folder;
    int m_listener;
    bool m_listens = false;
};
