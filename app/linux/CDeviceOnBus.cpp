#include "app/linux/CDeviceOnBus.h"

#include "app/CMainWindow.h"
#include "app/common/EditorBus.h"
#include "connection/CConnectionMonitor.h"
#include "device/CMemAPIWrapper.h"

#include <QDBusError>
#include <QTimer>

#include <utility>

namespace
{
bool isEdit(int knob, const QByteArray& settings)
{
    const auto isAllowed = [](char byte, const SettingParam& setting) {
        const auto value = static_cast<unsigned char>(byte);
        return value == EditorBus::k_unchanged || value <= setting.highest;
    };
    return isKnob(knob) && std::ranges::equal(settings, k_settingParams, isAllowed);
}

/// Puts what is given into the table. false: it was there already.
bool store(CMemAPIWrapper& memory, int knob, const QByteArray& settings)
{
    bool isNews = false;
    for (std::size_t i = 0; i < k_numOfSettings; ++i) {
        const int id = k_settingCategories[i] + knob;
        const auto value = static_cast<unsigned char>(settings[qsizetype(i)]);
        if (value == EditorBus::k_unchanged || value == memory.getParam(id))
            continue;
        memory.setParam(id, value);
        isNews = true;
    }
    return isNews;
}
} // namespace

CDeviceOnBus::CDeviceOnBus(CMainWindow& window, const QDBusConnection& bus, std::chrono::milliseconds patience)
    : m_window(window), m_memory(window.memory()), m_connection(bus), m_patience(patience)
{
    m_watchers.setConnection(m_connection);
    m_watchers.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_watchers, &QDBusServiceWatcher::serviceUnregistered, this,
            [this](const QString& caller) { m_watchers.removeWatchedService(caller); });
    connect(&window.connectionMonitor(), &CConnectionMonitor::disconnected, this, &CDeviceOnBus::tellLoss);
}

QByteArray CDeviceOnBus::Read()
{
    return refuseWithoutDevice() ? QByteArray() : allSettings();
}

QByteArray CDeviceOnBus::Ask()
{
    if (refuseWithoutDevice())
        return {};
    setDelayedReply(true);
    hear();
    const int number = ++m_lastQuestion;
    Question question{.number = number, .call = message(), .knobs = {}};
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        question.knobs.insert(knob);
    m_questions.append(question);
    QTimer::singleShot(m_patience, this, [this, number] { giveUp(number); });
    // One that cannot be sent is not answered.
    m_memory.requestAllParam();
    return {};
}

void CDeviceOnBus::Write(int knob, const QByteArray& settings)
{
    if (!isEdit(knob, settings)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No knob, or not its settings."));
        return;
    }
    if (refuseWithoutDevice())
        return;
    if (!m_window.isFree()) {
        sendErrorReply(EditorBus::k_busyError, QStringLiteral("The editor is busy with its user."));
        return;
    }
    const QByteArray before = CDeviceReports::settingsOf(m_memory, knob);
    if (!store(m_memory, knob, settings))
        return;
    if (!m_memory.sendMessage(k_changeParamMessage, knob)) {
        // As a field that is edited goes back to what it was.
        store(m_memory, knob, before);
        sendErrorReply(EditorBus::k_lostError, QStringLiteral("The device cannot be told."));
    }
    m_memory.updateKnob(knob);
}

void CDeviceOnBus::Watch()
{
    if (refuseWithoutDevice())
        return;
    hear();
    m_watchers.addWatchedService(message().service());
}

bool CDeviceOnBus::refuseWithoutDevice()
{
    if (!m_window.isInitializing() && m_memory.isConnected())
        return false;
    sendErrorReply(EditorBus::k_noDeviceError, QStringLiteral("The editor is not connected to a device."));
    return true;
}

QByteArray CDeviceOnBus::allSettings() const
{
    QByteArray all;
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        all.append(CDeviceReports::settingsOf(m_memory, knob));
    return all;
}

void CDeviceOnBus::hear()
{
    if (m_reports != nullptr)
        return;
    m_reports = new CDeviceReports(&m_window, m_memory);
    connect(m_reports, &CDeviceReports::turned, this, [this](int knob, int value) {
        tellWatchers(QStringLiteral("Turned"), {knob, value});
    });
    connect(m_reports, &CDeviceReports::changed, this, [this](int knob, const QByteArray& settings, bool isDevices) {
        if (isDevices)
            takeAnswer(knob);
        tellWatchers(QStringLiteral("Changed"), {knob, settings});
    });
}

void CDeviceOnBus::takeAnswer(int knob)
{
    for (Question& question : m_questions) {
        question.knobs.erase(knob);
        if (question.knobs.empty())
            m_connection.send(question.call.createReply(allSettings()));
    }
    m_questions.removeIf([](const Question& question) { return question.knobs.empty(); });
}

void CDeviceOnBus::giveUp(int number)
{
    const auto isIt = [number](const Question& question) { return question.number == number; };
    for (const Question& question : std::as_const(m_questions)) {
        if (isIt(question))
            m_connection.send(question.call.createErrorReply(EditorBus::k_silentError,
                                                             QStringLiteral("The device does not say what it holds.")));
    }
    m_questions.removeIf(isIt);
}

void CDeviceOnBus::tellLoss()
{
    const QList<Question> questions = std::exchange(m_questions, {});
    for (const Question& question : questions)
        m_connection.send(
            question.call.createErrorReply(EditorBus::k_lostError, QStringLiteral("The device is lost.")));
    tellWatchers(QStringLiteral("Lost"), {});
}

void CDeviceOnBus::tellWatchers(const QString& signal, const QVariantList& arguments)
{
    const QStringList watchers = m_watchers.watchedServices();
    for (const QString& watcher : watchers) {
        QDBusMessage message =
            QDBusMessage::createTargetedSignal(watcher, EditorBus::k_devicePath, EditorBus::k_deviceInterface, signal);
        message.setArguments(arguments);
        m_connection.send(message);
    }
}
