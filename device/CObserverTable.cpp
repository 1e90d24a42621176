#include "device/CObserverTable.h"

#include "device/CMemAPIObserver.h"

#include <algorithm>

void CObserverTable::add(int id, CMemAPIObserver* observer)
{
    const std::scoped_lock lock(m_mutex);
    m_observers[id].append(observer);
}

void CObserverTable::remove(int id, CMemAPIObserver* observer)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    QList<CMemAPIObserver*> others = m_observers.value(id);
    others.removeAll(observer);
    // An id that others watch keeps its whole list.
    if (others.isEmpty())
        m_observers.remove(id);
    // A call of this very thread is one that led here.
    m_callEnded.wait(lock, [&] {
        return std::ranges::none_of(m_calls, [&](const Call& call) {
            return call.observer == observer && call.thread != std::this_thread::get_id();
        });
    });
}

void CObserverTable::notify(int id)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const QList<CMemAPIObserver*> observers = m_observers.value(id);
    for (CMemAPIObserver* observer : observers) {
        // It may have been removed while another was called.
        if (!m_observers.value(id).contains(observer))
            continue;
        const Call call{observer, std::this_thread::get_id()};
        m_calls.push_back(call);
        lock.unlock();
        observer->paramChanged();
        lock.lock();
        m_calls.erase(std::ranges::find(m_calls, call));
        m_callEnded.notify_all();
    }
}
