#include "ctl/CDeviceSession.h"

#include "app/common/Constants.h"
#include "connection/CStartConnectionManager.h"
#include "midi/CMIDIPort.h"
#include "midi/MIDIPlatform.h"

#include <QRandomGenerator>

#include <algorithm>
#include <utility>

namespace
{
/// What messages say of knobs: those of one packet are decoded into one list.
QList<KnobNews> newsIn(const ParamList& data)
{
    const SettingsTable said = tableOf(data);
    QList<KnobNews> all;
    for (auto it = data.cbegin(); it != data.cend(); ++it) {
        const bool isValue = it.key().toInt() >= k_knobValueCategory;
        const int knob = it.key().toInt() - (isValue ? k_knobValueCategory : 0);
        if (!isKnob(knob))
            continue;
        if (isValue)
            all.append({.knob = std::size_t(knob), .value = it.value().toInt()});
        else
            all.append({.knob = std::size_t(knob), .settings = said[std::size_t(knob)]});
    }
    return all;
}
} // namespace

void CDeviceSession::Answer::take(const KnobNews& said)
{
    if (said.value)
        values.insert(said.knob);
    else
        settings[said.knob] = said.settings;
}

bool CDeviceSession::Answer::hasSettings() const
{
    return std::ranges::find(settings, KnobSettingsRow()) == settings.end();
}

bool CDeviceSession::Answer::isWhole() const
{
    return values.size() == k_numOfKnobs && hasSettings();
}

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
    m_session->setLost();
}

CDeviceSession::~CDeviceSession()
{
    if (m_watch)
        m_watch->stop();
    // A device that is gone does not hear it.
    if (m_isAnswered && m_memory->isConnectOutput())
        static_cast<void>(m_memory->sendMessage(k_endMessage, 0));
    m_reception.reset();
    m_watch.reset();
}

CtlStatus CDeviceSession::open(QDeadlineTimer deadline)
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
    // that begin together one at least sees the other. Where both do, each leaves and looks again after a time of its
    // own: the first to be back finds nobody, the other finds it.
    for (int attempt = 1;; ++attempt) {
        CtlStatus status = checkIsFree();
        if (status == CtlStatus::Done)
            status = openPorts();
        if (status != CtlStatus::Done)
            return status;
        status = checkIsFree();
        if (status == CtlStatus::Done || attempt == k_openAttempts)
            return status;
        m_memory.reset();
        const auto pause = QRandomGenerator::global()->bounded(qint64(m_times.meetingPause.count()) + 1);
        if (const Wait wait = waitUntil([] { return false; }, QDeadlineTimer(pause)); wait == Wait::Stopped)
            return failed(wait);
    }
}

CtlStatus CDeviceSession::openPorts()
{
    CWireListener& listener = *this;
    m_memory = std::make_unique<CDeviceMemory>(m_options.port, listener);
    if (m_memory->isConnectOutput())
        return CtlStatus::Done;
    return failed(CtlStatus::NoDevice,
                  QStringLiteral("the port \"%1\" cannot be opened; another program may have it").arg(m_options.port));
}

CtlStatus CDeviceSession::checkIsFree()
{
    const QStringList others = m_options.force ? QStringList() : MIDIPlatform::otherPrograms();
    for (const char* program : {k_editorProgramName, k_ctlProgramName}) {
        if (others.contains(QLatin1StringView(program)))
            return failedAsTaken(program);
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
        // Of one who is told to stop the answer may be on its way.
        m_isAnswered = start.isAnswered() || wait == Wait::Stopped;
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
        const std::scoped_lock lock(m_answerMutex);
        m_answer = {};
    }
    for (int attempt = 0; attempt < k_requestAttempts; ++attempt) {
        if (!m_memory->requestAllParam())
            return failed(Wait::Lost);
        Wait wait = waitUntil([this] { return answer().hasSettings(); }, QDeadlineTimer(m_times.answer));
        // They belong to the answer and are no turns; that they come is not relied on.
        if (wait == Wait::Met &&
            waitUntil([this] { return answer().isWhole(); }, QDeadlineTimer(m_times.values)) != Wait::Expired)
            wait = isLost() ? Wait::Lost : wait;
        if (wait != Wait::Expired)
            return wait == Wait::Met ? CtlStatus::Done : failed(wait);
    }
    return failed(CtlStatus::NoAnswer, QStringLiteral("the device does not say what it holds"));
}

CDeviceSession::Answer CDeviceSession::answer() const
{
    const std::scoped_lock lock(m_answerMutex);
    return m_answer;
}

CtlStatus CDeviceSession::beginWatch(SettingsTable* held)
{
    {
        const std::scoped_lock lock(m_answerMutex);
        if (std::exchange(m_answer.isOver, true)) {
            *held = m_answer.settings;
            return CtlStatus::Done;
        }
    }
    forgetNews();
    *held = settings();
    return CtlStatus::Done;
}

SettingsTable CDeviceSession::settings() const
{
    return tableOf(m_memory->getParamList());
}

CtlStatus CDeviceSession::writeKnob(std::size_t knob, const KnobSettingsRow& given)
{
    SettingsTable change;
    change[knob] = given;
    m_memory->take(change);
    return m_memory->sendMessage(k_changeParamMessage, int(knob)) ? CtlStatus::Done : failed(Wait::Lost);
}

void CDeviceSession::traceMessage(const char* direction, const QByteArray& message)
{
    // A flood that nobody reads is not made into text.
    if (!m_options.traces)
        return;
    trace(QStringLiteral("%1 %2  %3")
              .arg(QLatin1StringView(direction), QString::fromLatin1(message.toHex(' ').toUpper()),
                   CDeviceMemory::nameOf(message)));
}

void CDeviceSession::messageSent(const QByteArray& message)
{
    traceMessage(">", message);
}

void CDeviceSession::messageReceived(const QByteArray& message, int type, const ParamList& data)
{
    traceMessage("<", message);
    if (type != k_changeParamMessage && type != k_noticeValueMessage)
        return;
    for (const KnobNews& news : newsIn(data))
        addNews(news);
}

void CDeviceSession::messageTaken(const ParamList& data)
{
    {
        const std::scoped_lock lock(m_answerMutex);
        if (!m_answer.isOver) {
            for (const KnobNews& news : newsIn(data))
                m_answer.take(news);
            m_answer.isOver = m_answer.isWhole();
            // What the answer says is no news, and what follows is.
            if (m_answer.isOver)
                forgetNews();
        }
    }
    emit heard();
}
