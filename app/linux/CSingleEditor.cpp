#include "app/CSingleEditor.h"

#include "app/LocalFile.h"
#include "app/linux/CDesktopInterface.h"
#include "app/linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QThread>

#include <thread>

namespace
{
constexpr QLatin1StringView k_name("org.ktzjx.Editor");
constexpr QLatin1StringView k_path("/org/ktzjx/Editor");
constexpr QLatin1StringView k_interface("org.freedesktop.Application");
constexpr QLatin1StringView k_busName("org.freedesktop.DBus");

QDBusMessage request(const QByteArray& file, const ActivationToken& token)
{
    const bool open = !file.isEmpty();
    QDBusMessage message = QDBusMessage::createMethodCall(k_name, k_path, k_interface,
                                                          open ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (open)
        message << QStringList(LocalFile::toUri(file));
    message << token.toPlatformData();
    // An editor that ended since must not be started by the bus: this process takes its place.
    message.setAutoStartService(false);
    return message;
}
} // namespace

/// A connection of its own: the toolkit's shared one delivers nothing before the event loop runs.
class CSingleEditor::CBus
{
  public:
    explicit CBus(const QString& address) : m_connection(QDBusConnection::connectToBus(address, k_name))
    {
        m_interface.moveToThread(&m_thread);
        m_thread.start();
    }

    ~CBus()
    {
        m_connection.unregisterObject(k_path);
        m_thread.quit();
        m_thread.wait();
        QDBusConnection::disconnectFromBus(k_name);
    }

    CBus(const CBus&) = delete;
    CBus& operator=(const CBus&) = delete;

    [[nodiscard]] CDesktopInterface& interface()
    {
        return m_interface;
    }

    /// Before the name is: whoever owns it has to answer.
    [[nodiscard]] bool offerInterface()
    {
        return m_connection.isConnected() &&
               m_connection.registerObject(k_path, &m_interface, QDBusConnection::ExportScriptableSlots);
    }

    /// Whether another process has the name. If not, this one has it now, or the bus gives it to nobody.
    [[nodiscard]] bool isNameTaken(std::chrono::milliseconds limit) const
    {
        constexpr quint32 k_doNotQueue = 4;
        constexpr quint32 k_exists = 3;
        const QDBusMessage answer =
            call(QDBusMessage::createMethodCall(k_busName, QStringLiteral("/org/freedesktop/DBus"), k_busName,
                                                QStringLiteral("RequestName"))
                     << QString(k_name) << k_doNotQueue,
                 limit);
        return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toUInt() == k_exists;
    }

    [[nodiscard]] QDBusMessage call(const QDBusMessage& message, std::chrono::milliseconds limit) const
    {
        return m_connection.call(message, QDBus::Block, int(limit.count()));
    }

  private:
    QDBusConnection m_connection;
    CDesktopInterface m_interface;
    QThread m_thread;
};

CSingleEditor::CSingleEditor(const JoinTimes& times) : m_times(times) {}

CSingleEditor::~CSingleEditor() = default;

CSingleEditor::Start CSingleEditor::start(const QByteArray& file, const ActivationToken& token)
{
    const QString address = SessionBus::answeringAddress(m_times.bus);
    if (address.isEmpty()) {
        SessionBus::doWithout();
        return Start::Editor;
    }
    m_bus = std::make_unique<CBus>(address);
    connect(&m_bus->interface(), &CDesktopInterface::requested, this, &CSingleEditor::requested, Qt::DirectConnection);
    if (!m_bus->offerInterface())
        return Start::Editor;

    const QDBusMessage wish = request(file, token);
    const QDeadlineTimer deadline(m_times.handOver);
    while (m_bus->isNameTaken(m_times.bus)) {
        if (deadline.hasExpired())
            return Start::Unanswered;
        const QDBusMessage answer = m_bus->call(wish, std::chrono::milliseconds(deadline.remainingTime()));
        if (answer.type() == QDBusMessage::ReplyMessage)
            return Start::HandedOver;
        // It is ending, or has ended just now.
        std::this_thread::sleep_for(m_times.pause);
    }
    return Start::Editor;
}

void CSingleEditor::refuse()
{
    if (m_bus)
        m_bus->interface().refuse();
}
