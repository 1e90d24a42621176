#include "connection/CConnectionThread.h"

#include "connection/CConnectionWatch.h"

CConnectionThread::CConnectionThread(CConnectionWatch* watch, std::chrono::milliseconds keepInterval)
    : m_watch(watch), m_keepInterval(keepInterval)
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
    // What the thread did is seen here, also by tools that do not look into the toolkit: its last act took this lock.
    const std::scoped_lock lock(m_mutex);
}

void CConnectionThread::run()
{
    while (isContinue() && m_watch != nullptr) {
        m_watch->sendKeepMessage();
        pause();
    }
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
