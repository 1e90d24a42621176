#pragma once

#include <QDeadlineTimer>
#include <QMutex>
#include <QWaitCondition>

/// QWaitCondition whose release and return of the mutex ThreadSanitizer sees (see CRecursiveMutex for the reason).
class CWaitCondition
{
  public:
    /// Gives the locked mutex free, waits for a wake-up or the deadline, and locks it again.
    /// false: the deadline passed first.
    bool wait(QMutex* mutex, QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever))
    {
        QtTsan::mutexPreUnlock(mutex, 0u);
        QtTsan::mutexPostUnlock(mutex, 0u);
        const bool woken = m_condition.wait(mutex, deadline);
        QtTsan::mutexPreLock(mutex, 0u);
        QtTsan::mutexPostLock(mutex, 0u, 0);
        return woken;
    }

    void wakeOne()
    {
        m_condition.wakeOne();
    }

    void wakeAll()
    {
        m_condition.wakeAll();
    }

  private:
    QWaitCondition m_condition;
};
