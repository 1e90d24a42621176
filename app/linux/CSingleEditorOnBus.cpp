#include "app/linux/CSingleEditorOnBus.h"

#include "app/LocalFile.h"
#include "app/common/EditorBus.h"
#include "app/common/linux/SessionBus.h"
#include "app/linux/CDesktopInterface.h"
#include "app/linux/CDeviceOnBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QThread>

#include <optional>
#include <thread>

using EditorBus::k_name;
using EditorBus::k_path;

namespace
{
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

/// Lets the toolkit, which asks the bus for its accessibility service, know that there is none. Has an effect only
/// before the toolkit's own first look. The environment stays as it is.
void doWithoutABus()
{
    constexpr char k_addressVariable[] = "DBUS_SESSION_BUS_ADDRESS";
    const std::optional<QByteArray> address =
        qEnvironmentVariableIsSet(k_addressVariable) ? std::optional(qgetenv(k_addressVariable)) : std::nullopt;
    // No transport has this name, so that the library gives up at once; the toolkit asks it no second time.
    qputenv(k_addressVariable, "disabled:");
    static_cast<void>(QDBusConnection::sessionBus());
    if (address)
        qputenv(k_addressVariable, *address);
    else
        qunsetenv(k_addressVariable);
}
} // namespace

/// A connection of its own: the toolkit's shared one delivers nothing before the event loop runs.
class CSingleEditorOnBus::CBus
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

    void offerDevice(CMainWindow& window)
    {
        m_device = std::make_unique<CDeviceOnBus>(window, m_connection);
        // Where that fails, the desktop's interface stays, and callers hear that there is no device here.
        m_connection.registerObject(EditorBus::k_devicePath, m_device.get(), QDBusConnection::ExportScriptableSlots);
    }

    void withdrawDevice()
    {
        m_connection.unregisterObject(EditorBus::k_devicePath);
        m_device.reset();
    }

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
    std::unique_ptr<CDeviceOnBus> m_device; ///< GUI thread
};

CSingleEditorOnBus::CSingleEditorOnBus(const JoinTimes& times) : m_times(times) {}

CSingleEditorOnBus::~CSingleEditorOnBus() = default;

CSingleEditor::Start CSingleEditorOnBus::start(const QByteArray& file, const ActivationToken& token)
{
    const QString address = SessionBus::answeringAddress(m_times.bus);
    if (address.isEmpty()) {
        doWithoutABus();
        return Start::Editor;
    }
    m_bus = std::make_unique<CBus>(address);
    connect(&m_bus->interface(), &CDesktopInterface::requested, this, &CSingleEditorOnBus::requested,
            Qt::DirectConnection);
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

void CSingleEditorOnBus::offerDevice(CMainWindow& window)
{
    if (m_bus)
        m_bus->offerDevice(window);
}

void CSingleEditorOnBus::refuse()
{
    if (!m_bus)
        return;
    m_bus->withdrawDevice();
    m_bus->interface().refuse();
}

std::unique_ptr<CSingleEditor> makeSingleEditor()
{
    return std::make_unique<CSingleEditorOnBus>();
}
