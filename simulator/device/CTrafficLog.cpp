#include "simulator/device/CTrafficLog.h"

#include <algorithm>

void CTrafficLog::add(qint64 time, Traffic::Direction direction, const QByteArray& bytes)
{
    if (m_entries.size() == k_limit)
        m_entries.pop_front();
    m_entries.push_back({m_next++, time, direction, bytes});
}

QList<Traffic> CTrafficLog::since(qint64 number) const
{
    const qint64 first = m_next - static_cast<qint64>(m_entries.size());
    const qint64 skipped = std::clamp<qint64>(number - first, 0, static_cast<qint64>(m_entries.size()));
    return {m_entries.begin() + skipped, m_entries.end()};
}

void CTrafficLog::clear()
{
    m_entries.clear();
}
