#include "connection/CConnectionThread.h"

#include "connection/CConnectionMonitor.h"

#include <QMutex> // QtTsan

CConnectionThread::CConnectionThread(CConnectionMonitor* monitor, std::chrono::milliseconds keepInterval)
    : m_monitor(monitor), m_keepInterval(keepInterval)
{
}

void CConnectionThread::stop()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_running = false;
        m_stopRequested.notify_all();
    }
    wait();
    // Qt's own library is built without ThreadSanitizer, which so cannot see that the thread has ended.
    QtTsan::futexAcquire(this);
}

void CConnectionThread::run()
{
    while (m_monitor != nullptr && isContinue()) {
        m_monitor->sendKeepMessage();
        pause();
    }
    QtTsan::futexRelease(this); // see stop()
}

bool CConnectionThread::isContinue()
{
    const std::scoped_lock lock(m_mutex);
    return m_running;
}

void CConnectionThread::pause()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_stopRequested.wait_for(lock, m_keepInterval, [this] { return !m_running; });
}
