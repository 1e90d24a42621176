#include "simulator/transports/CSendGate.h"

#include <QtGlobal>

#include <mutex>

void CSendGate::hold(int n)
{
    Q_ASSERT(n >= 1);
    release();
    const std::scoped_lock lock(m_mutex);
    m_state = State::Waiting;
    m_packetsBefore = n - 1;
}

void CSendGate::release()
{
    const std::scoped_lock lock(m_mutex);
    m_state = State::Open;
    m_released.notify_all();
}

bool CSendGate::isHolding() const
{
    const std::scoped_lock lock(m_mutex);
    return m_state == State::Holding;
}

void CSendGate::pass()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_state != State::Waiting)
        return;
    if (m_packetsBefore > 0) {
        --m_packetsBefore;
        return;
    }
    m_state = State::Holding;
    m_released.wait(lock, [this] { return m_state != State::Holding; });
}
