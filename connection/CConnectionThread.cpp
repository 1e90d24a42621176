#include "connection/CConnectionThread.h"

#include "connection/CConnectionMonitor.h"

CConnectionThread::CConnectionThread(CConnectionMonitor* monitor, std::chrono::milliseconds keepInterval)
    : m_monitor(monitor), m_keepInterval(keepInterval)
{
}

void CConnectionThread::stop()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_running = false;
        m_stopRequested.wakeAll();
    }
    wait();
}

void CConnectionThread::run()
{
    if (m_monitor == nullptr)
        return;
    while (isContinue()) {
        m_monitor->sendKeepMessage();
        pause();
    }
}

bool CConnectionThread::isContinue()
{
    const QMutexLocker lock(&m_mutex);
    return m_running;
}

void CConnectionThread::pause()
{
    const QDeadlineTimer end(m_keepInterval, Qt::PreciseTimer);
    const QMutexLocker lock(&m_mutex);
    while (m_running && m_stopRequested.wait(&m_mutex, end)) {
    }
}
