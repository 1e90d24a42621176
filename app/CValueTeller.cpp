#include "app/CValueTeller.h"

#include <utility>

CValueTeller::CValueTeller(Tell tell, std::chrono::milliseconds interval)
    : m_tell(std::move(tell)), m_interval(interval)
{
}

void CValueTeller::changed(QObject* object)
{
    if (m_timer.isActive()) {
        if (!m_changed.contains(object))
            m_changed.append(object);
        return;
    }
    m_timer.start(static_cast<int>(m_interval.count()), this);
    m_tell(object);
}

void CValueTeller::timerEvent(QTimerEvent* /*event*/)
{
    if (m_changed.isEmpty())
        m_timer.stop();
    const QList<QPointer<QObject>> due = std::exchange(m_changed, {});
    for (const QPointer<QObject>& object : due) {
        if (!object.isNull())
            m_tell(object);
    }
}
