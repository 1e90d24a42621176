#pragma once

#include "app/common/CMutex.h"

#include <QList>
#include <QMap>

#include <condition_variable>
#include <thread>
#include <vector>

class CMemAPIObserver;

/// Who wants to hear of which parameter.
///
/// Threads  any. Observers are called with no lock held, and may add and remove observers while they are called.
/// Borrows  the observers. One that has been removed is not called any more, and may be destroyed.
class CObserverTable
{
  public:
    /// Adds the observer to the id's; once more each time it is called.
    void add(int id, CMemAPIObserver* observer);

    /// Forgets the id's observers if this one is the only one, however often it was added; otherwise leaves them all,
    /// this one included. Waits for a call of this observer that another thread is making.
    void remove(int id, CMemAPIObserver* observer);

    /// Calls the id's observers, first added first.
    void notify(int id);

  private:
    struct Call
    {
        CMemAPIObserver* observer;
        std::thread::id thread;

        bool operator==(const Call&) const = default;
    };

    CMutex m_mutex;
    QMap<int, QList<CMemAPIObserver*>> m_observers;
    std::vector<Call> m_calls; ///< being made
    std::condition_variable m_callEnded;
};
