#include "ctl/CDeviceSession.h"

#include "app/common/Constants.h"
#include "connection/CStartConnectionManager.h"
#include "ctl/CConsole.h"
#include "ctl/CStopRequest.h"
#include "midi/CMIDIPort.h"
#include "midi/MIDIPlatform.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

using namespace std::chrono_literals;

CDeviceSession::CWatch::CWatch(CDeviceSession* session, const ConnectionTimes& times)
    : CConnectionWatch(nullptr, session->m_memory.get(), session->m_options.port, times), m_session(session)
{
}

CDeviceSession::CWatch::~CWatch()
{
    leave();
}

void CDeviceSession::CWatch::tellLoss()
{
    m_session->m_isLost = true;
}

CDeviceSession::CDeviceSession(const Options& options, const CtlTimes& times, CConsole& console, CStopRequest& stop)
    : m_options(options), m_times(times), m_console(console), m_stop(stop)
{
    // The call itself does nothing: that it was made ends a wait of the event loop.
    connect(
        this, &CDeviceSession::heard, this, [] {}, Qt::QueuedConnection);
}

CDeviceSession::~CDeviceSession()
{
    close();
}

void CDeviceSession::close()
{
    if (m_watch)
        m_watch->stop();
    // A device that is gone does not hear it.
    if (m_isAnswered && m_memory && m_memory->isConnectOutput())
        static_cast<void>(m_memory->sendMessage(k_endMessage, 0));
    m_reception.reset();
    m_watch.reset();
    m_memory.reset();
    m_isAnswered = false;
    m_isLost = false;
}

CtlStatus CDeviceSession::open()
{
    const QDeadlineTimer deadline(m_options.wait.value_or(0ms), Qt::PreciseTimer);
    while (true) {
        const CtlStatus status = connectDevice(deadline);
        const bool isFinal = status == CtlStatus::Done || status == CtlStatus::Interrupted;
        if (isFinal || deadline.hasExpired())
            return status;
        close();
        if (waitUntil([] { return false; }, std::min(QDeadlineTimer(m_times.lookPause), deadline)) == Wait::Stopped)
            return failed(Wait::Stopped);
    }
}

CtlStatus CDeviceSession::connectDevice(QDeadlineTimer deadline)
{
    CtlStatus status = find();
    if (status == CtlStatus::Done)
        status = shakeHands(deadline);
    if (status == CtlStatus::Done)
        status = watchConnection();
    return status == CtlStatus::Done ? readAll() : status;
}

CtlStatus CDeviceSession::find()
{
    CMIDIPort ports;
    if (ports.createInputPortList() + ports.createOutputPortList() == 0)
        return failed(CtlStatus::NoDevice, QStringLiteral("no device: this system has no MIDI ports"));
    if (ports.getInputPortByName(m_options.port) < 0 || ports.getOutputPortByName(m_options.port) < 0)
        return failed(CtlStatus::NoDevice, QStringLiteral("no device: there is no port \"%1\"").arg(m_options.port));
    // Once before the ports are opened, so that one who waits disturbs nobody; and again with them open, so that of two
    // that begin together one at least sees the other.
    if (const CtlStatus status = checkIsFree(); status != CtlStatus::Done)
        return status;
    CWireListener& listener = *this;
    m_memory = std::make_unique<CDeviceMemory>(m_options.port, listener, m_options.holdsBack);
    if (!m_memory->isConnectOutput()) {
        return failed(
            CtlStatus::NoDevice,
            QStringLiteral("the port \"%1\" cannot be opened; another program may have it").arg(m_options.port));
    }
    return checkIsFree();
}

CtlStatus CDeviceSession::checkIsFree()
{
    const QStringList others = m_options.force ? QStringList() : MIDIPlatform::otherPrograms();
    for (const char* program : {k_editorProgramName, k_ctlProgramName}) {
        const QString holder = QString::fromLatin1(program);
        if (others.contains(holder))
            return failed(
                CtlStatus::NoDevice,
                QStringLiteral("\"%1\" is running and has the device; --force goes on beside it").arg(holder));
    }
    return CtlStatus::Done;
}

CtlStatus CDeviceSession::shakeHands(QDeadlineTimer deadline)
{
    CStartConnectionManager start(m_memory.get(), m_options.port, m_times.connection);
    for (int attempt = 0; attempt < k_startAttempts || !deadline.hasExpired(); ++attempt) {
        if (!start.sendOnce())
            return failed(Wait::Lost);
        const QDeadlineTimer pause(m_times.startPause, Qt::PreciseTimer);
        Wait wait = waitUntil([&] { return start.isAnswered(); },
                              QDeadlineTimer(m_times.connection.startInterval, Qt::PreciseTimer));
        if (wait == Wait::Met)
            wait = waitUntil([] { return false; }, pause);
        m_isAnswered = start.isAnswered();
        if (wait == Wait::Stopped)
            return failed(wait);
        if (m_isAnswered)
            return CtlStatus::Done;
    }
    return failed(CtlStatus::NoAnswer, QStringLiteral("the device does not answer"));
}

CtlStatus CDeviceSession::watchConnection()
{
    m_watch = std::make_unique<CWatch>(this, m_times.connection);
    m_reception = std::make_unique<CReceptionMonitor>(nullptr, m_memory.get(), m_times.connection);
    m_watch->start();
    // The watch's own patience ends this.
    const Wait wait = waitUntil([this] { return m_memory->isConnected(); }, QDeadlineTimer(QDeadlineTimer::Forever));
    return wait == Wait::Met ? CtlStatus::Done : failed(wait);
}

CtlStatus CDeviceSession::readAll()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_settingsSaid.clear();
        m_valuesSaid.clear();
    }
    for (int attempt = 0; attempt < k_requestAttempts; ++attempt) {
        if (!m_memory->requestAllParam())
            return failed(Wait::Lost);
        Wait wait = waitUntil([this] { return isSaidOfAll(m_settingsSaid); }, QDeadlineTimer(m_times.answer));
        // They belong to the answer and are no turns; that they come is not relied on.
        if (wait == Wait::Met &&
            waitUntil([this] { return isSaidOfAll(m_valuesSaid); }, QDeadlineTimer(m_times.values)) != Wait::Expired)
            wait = m_isLost ? Wait::Lost : wait;
        if (wait != Wait::Expired)
            return wait == Wait::Met ? CtlStatus::Done : failed(wait);
    }
    return failed(CtlStatus::NoAnswer, QStringLiteral("the device does not say what it holds"));
}

bool CDeviceSession::isSaidOfAll(const std::set<int>& knobs) const
{
    const std::scoped_lock lock(m_mutex);
    return knobs.size() == k_numOfKnobs;
}

SettingsTable CDeviceSession::settings() const
{
    return tableOf(m_memory->getParamList());
}

CDeviceMemory& CDeviceSession::memory()
{
    return *m_memory;
}

CtlStatus CDeviceSession::write(const SettingsTable& wanted, QList<int>* sent, QList<int>* left)
{
    const SettingsTable held = settings();
    for (std::size_t knob = 0; knob < wanted.size(); ++knob) {
        const auto isNews = [&](std::size_t setting) {
            return wanted[knob][setting] && wanted[knob][setting] != held[knob][setting];
        };
        bool isChanged = false;
        for (std::size_t setting = 0; setting < k_numOfSettings; ++setting) {
            if (!isNews(setting))
                continue;
            m_memory->setParam(paramIdOf(knob, setting), *wanted[knob][setting]);
            isChanged = true;
        }
        if (isChanged)
            left->append(int(knob));
    }
    while (!left->isEmpty()) {
        QCoreApplication::processEvents(); // a loss, or a stop
        if (m_stop.isRequested())
            return failed(Wait::Stopped);
        if (m_isLost || !m_memory->sendMessage(k_changeParamMessage, left->first()))
            return failed(Wait::Lost);
        sent->append(left->takeFirst());
    }
    return CtlStatus::Done;
}

CDeviceSession::Wait CDeviceSession::waitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline)
{
    QTimer alarm; // ends the wait for events in time
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    while (!condition()) {
        if (m_isLost)
            return Wait::Lost;
        if (m_stop.isRequested())
            return Wait::Stopped;
        if (deadline.hasExpired())
            return Wait::Expired;
        if (!deadline.isForever())
            alarm.start(std::chrono::milliseconds(std::max<qint64>(1, deadline.remainingTime())));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return Wait::Met;
}

bool CDeviceSession::waitForNews(QDeadlineTimer deadline)
{
    const auto isNewsThere = [this] {
        const std::scoped_lock lock(m_mutex);
        return !m_news.isEmpty();
    };
    return waitUntil(isNewsThere, deadline) == Wait::Met;
}

QList<DeviceNews> CDeviceSession::takeNews()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_news, {});
}

qint64 CDeviceSession::lostNews() const
{
    const std::scoped_lock lock(m_mutex);
    return m_lostNews;
}

QList<QByteArray> CDeviceSession::heldMessages() const
{
    const std::scoped_lock lock(m_mutex);
    return m_held;
}

bool CDeviceSession::isLost() const
{
    return m_isLost;
}

QString CDeviceSession::error() const
{
    return m_error;
}

CtlStatus CDeviceSession::failed(CtlStatus status, const QString& error)
{
    m_error = error;
    return status;
}

CtlStatus CDeviceSession::failed(Wait wait)
{
    return wait == Wait::Stopped ? failed(CtlStatus::Interrupted, QStringLiteral("interrupted"))
                                 : failed(CtlStatus::NoAnswer, QStringLiteral("the connection to the device is lost"));
}

void CDeviceSession::traceMessage(const char* direction, const QByteArray& message)
{
    if (!m_options.traces)
        return;
    m_console.trace(QStringLiteral("%1 %2  %3")
                        .arg(QLatin1StringView(direction), QString::fromLatin1(message.toHex(' ').toUpper()),
                             CDeviceMemory::nameOf(message)));
}

void CDeviceSession::messageSent(const QByteArray& message)
{
    traceMessage(">", message);
}

void CDeviceSession::messageHeld(const QByteArray& message)
{
    const std::scoped_lock lock(m_mutex);
    m_held.append(message);
}

void CDeviceSession::messageReceived(const QByteArray& message, int type, const ParamList& data)
{
    traceMessage("<", message);
    if (type != k_noticeValueMessage && type != k_changeParamMessage)
        return;
    const std::scoped_lock lock(m_mutex);
    if (m_news.size() < k_newsLimit)
        m_news.append({std::chrono::steady_clock::now(), type, data});
    else
        ++m_lostNews;
    // One waiting wake-up is enough for all of them.
    if (m_news.size() == 1)
        emit heard();
}

void CDeviceSession::messageTaken(int type, const ParamList& data)
{
    if (type == k_changeParamMessage || type == k_noticeValueMessage) {
        const std::scoped_lock lock(m_mutex);
        const QStringList keys = data.keys();
        for (const QString& key : keys) {
            const bool isValue = key.toInt() >= k_knobValueCategory;
            const int knob = key.toInt() - (isValue ? k_knobValueCategory : 0);
            if (isKnob(knob))
                (isValue ? m_valuesSaid : m_settingsSaid).insert(knob);
        }
    }
    emit heard();
}
