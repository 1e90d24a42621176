#include "connection/CConnectionWatch.h"

#include "device/CMemAPI.h"

CConnectionWatch::CConnectionWatch(QObject* parent, CMemAPI* memory, const QString& portName,
                                   const ConnectionTimes& times)
    : QObject(parent), m_memory(memory), m_portName(portName), m_times(times), m_watchdog(new QTimer(this)),
      m_keepThread(std::make_unique<CConnectionThread>(this, times.keepInterval))
{
    m_watchdog->setTimerType(Qt::PreciseTimer);
    connect(m_watchdog, SIGNAL(timeout()), this, SLOT(connectionError()));
    connect(this, SIGNAL(currentThreadParamChanged()), this, SLOT(paramChanged()), Qt::QueuedConnection);
    connect(this, SIGNAL(currentThreadConnectionError()), this, SLOT(connectionError()), Qt::QueuedConnection);
    if (m_memory != nullptr) {
        m_memory->keepReplyObserver().set(this);
        m_memory->receptionEndObserver().set(&m_receptionEnd);
    }
}

CConnectionWatch::~CConnectionWatch()
{
    leave();
}

void CConnectionWatch::leave()
{
    // The owner may never have come to stop(): a window can close in any state.
    stop();
    if (m_memory != nullptr) {
        m_memory->keepReplyObserver().clear(this);
        m_memory->receptionEndObserver().clear(&m_receptionEnd);
    }
}

void CConnectionWatch::start()
{
    m_isRunning = true;
    m_keepThread->start(QThread::InheritPriority);
    m_watchdog->start(m_times.watchdog);
    sendKeepMessage();
}

void CConnectionWatch::stop()
{
    m_isRunning = false;
    m_watchdog->stop();
    m_keepThread->stop();
}

void CConnectionWatch::sendKeepMessage()
{
    if (m_memory != nullptr && !m_memory->sendMessage(m_portName, k_keepMessage, 0))
        emit currentThreadConnectionError();
}

void CConnectionWatch::paramChanged()
{
    // Asked where the reply arrives: one from before start() may get to the GUI thread after it.
    if (!m_isRunning)
        return;
    if (QThread::currentThread() != thread()) {
        emit currentThreadParamChanged();
        return;
    }
    m_watchdog->start(m_times.watchdog);
    if (m_memory == nullptr || m_memory->isConnected())
        return;
    m_memory->setConnected(true);
    emit connected();
}

void CConnectionWatch::CReceptionEnd::paramChanged()
{
    if (m_watch->m_isRunning)
        emit m_watch->currentThreadConnectionError();
}

void CConnectionWatch::connectionError()
{
    if (m_memory != nullptr) {
        if (m_memory->isConnected()) {
            m_memory->setConnected(false);
            emit disconnected();
        }
        m_memory->setOutputConnection(m_portName, false);
    }
    stop();
    tellLoss();
}
