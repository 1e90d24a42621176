#include "tests/app/CTestBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>

namespace
{
bool write(const QString& path, const QString& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) == text.toUtf8().size();
}
} // namespace

CTestBus::CTestBus(const QProcessEnvironment& environment)
{
    const QString config = m_folder.filePath(QStringLiteral("bus.conf"));
    const bool written =
        write(config, QStringLiteral("<busconfig><type>session</type><listen>unix:path=%1/bus</listen>"
                                     "<servicedir>%1</servicedir><policy context=\"default\">"
                                     "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                                     "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>")
                          .arg(m_folder.path()));
    if (!written)
        return;
    m_daemon.setProcessEnvironment(environment);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + config, QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
    }
    m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
}

CTestBus::~CTestBus()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

bool CTestBus::isRunning() const
{
    return !m_address.isEmpty();
}

QString CTestBus::address() const
{
    return m_address;
}

QString CTestBus::folder() const
{
    return m_folder.path();
}

bool CTestBus::addService(const QString& name, const QString& program) const
{
    return write(m_folder.filePath(name + QStringLiteral(".service")),
                 QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, program));
}

bool CTestBus::hasOwner(const QString& name) const
{
    const QString connection = QStringLiteral("looks for owners");
    const bool owned =
        QDBusConnection::connectToBus(m_address, connection).interface()->isServiceRegistered(name).value();
    QDBusConnection::disconnectFromBus(connection);
    return owned;
}
