#include "device/CParamManager.h"

#include <mutex>

int CParamManager::getParam(int id) const
{
    const std::scoped_lock guard(m_mutex);
    return m_list.value(paramKey(id)).toInt();
}

void CParamManager::setParam(int id, int value)
{
    const std::scoped_lock guard(m_mutex);
    m_list.insert(paramKey(id), value);
    m_dirty = true;
}

ParamList CParamManager::getParamList() const
{
    const std::scoped_lock guard(m_mutex);
    return m_list;
}

void CParamManager::setParamList(const ParamList& list)
{
    const std::scoped_lock guard(m_mutex);
    m_list = list;
    m_dirty = true;
}

bool CParamManager::isDirty() const
{
    const std::scoped_lock guard(m_mutex);
    return m_dirty;
}

void CParamManager::setDirty(bool dirty)
{
    const std::scoped_lock guard(m_mutex);
    m_dirty = dirty;
}

void CParamManager::lock()
{
    m_mutex.lock();
}

void CParamManager::unlock()
{
    m_mutex.unlock();
}
