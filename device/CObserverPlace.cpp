#include "device/CObserverPlace.h"

#include "device/CMemAPIObserver.h"

#include <mutex>

void CObserverPlace::set(CMemAPIObserver* observer)
{
    const std::scoped_lock lock(m_mutex);
    m_observer = observer;
}

void CObserverPlace::clear(const CMemAPIObserver* observer)
{
    const std::scoped_lock lock(m_mutex);
    if (m_observer == observer)
        m_observer = nullptr;
}

bool CObserverPlace::notify()
{
    const std::scoped_lock lock(m_mutex);
    if (m_observer == nullptr)
        return false;
    m_observer->paramChanged();
    return true;
}
