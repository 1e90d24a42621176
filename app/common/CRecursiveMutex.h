#pragma once

#include <QMutex>

/// QRecursiveMutex whose lock order ThreadSanitizer sees: Qt's own library is built without it, so that the locking
/// inside is invisible to the tool. Costs nothing in other builds. BasicLockable: use it with std::scoped_lock.
class CRecursiveMutex
{
  public:
    void lock()
    {
        QtTsan::mutexPreLock(this, QtTsan::MutexWriteReentrant);
        m_mutex.lock();
        QtTsan::mutexPostLock(this, QtTsan::MutexWriteReentrant, 0);
    }

    void unlock()
    {
        QtTsan::mutexPreUnlock(this, 0u);
        m_mutex.unlock();
        QtTsan::mutexPostUnlock(this, 0u);
    }

  private:
    QRecursiveMutex m_mutex;
};
