#include "ctl/bus/CSessionBusEditor.h"

#include "app/common/EditorBus.h"
#include "app/common/linux/SessionBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusServiceWatcher>

namespace
{
constexpr QLatin1StringView k_connection("asks the editor");
}

CEditorBus* CSessionBusEditor::connectToBus(CEditorListener& listener, const EditorBusTimes& times)
{
    const QString address = SessionBus::answeringAddress(times.bus);
    if (address.isEmpty())
        return nullptr;
    const QDBusConnection bus = QDBusConnection::connectToBus(address, k_connection);
    return bus.isConnected() ? new CSessionBusEditor(bus, listener, times.answer) : nullptr;
}

CSessionBusEditor::CSessionBusEditor(const QDBusConnection& bus, CEditorListener& listener,
                                     std::chrono::milliseconds patience)
    : m_bus(bus), m_listener(listener), m_patience(patience)
{
    // Of any sender, since the editor says it to this connection alone.
    const auto hear = [this](const QString& signal, const char* slot) {
        m_bus.connect({}, EditorBus::k_devicePath, EditorBus::k_deviceInterface, signal, this, slot);
    };
    hear(QStringLiteral("Turned"), SLOT(turned(int, int)));
    hear(QStringLiteral("Changed"), SLOT(changed(int, QByteArray)));
    hear(QStringLiteral("Lost"), SLOT(lost()));
    const auto* owner =
        new QDBusServiceWatcher(EditorBus::k_name, m_bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(owner, SIGNAL(serviceUnregistered(QString)), this, SLOT(lost()));
}

CSessionBusEditor::~CSessionBusEditor()
{
    QDBusConnection::disconnectFromBus(k_connection);
}

void CSessionBusEditor::ask(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(EditorBus::k_name, EditorBus::k_devicePath,
                                                          EditorBus::k_deviceInterface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, int(m_patience.count())), this);
    connect(call, SIGNAL(finished(QDBusPendingCallWatcher*)), this, SLOT(answer(QDBusPendingCallWatcher*)));
}

void CSessionBusEditor::answer(QDBusPendingCallWatcher* call)
{
    call->deleteLater();
    const QDBusMessage reply = call->reply();
    m_listener.answered(reply.errorName(), reply.arguments().value(0).toByteArray());
}

void CSessionBusEditor::turned(int knob, int value)
{
    m_listener.turned(knob, value);
}

void CSessionBusEditor::changed(int knob, const QByteArray& settings)
{
    m_listener.changed(knob, settings);
}

void CSessionBusEditor::lost()
{
    m_listener.lost();
}

/// What the program finds in the library.
extern "C" Q_DECL_EXPORT CEditorBus* connectToEditor(CEditorListener& listener, const EditorBusTimes& times)
{
    return CSessionBusEditor::connectToBus(listener, times);
}
