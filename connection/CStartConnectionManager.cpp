#include "connection/CStartConnectionManager.h"

#include "device/CMemAPI.h"

#include <thread>

CStartConnectionManager::CStartConnectionManager(CMemAPI* memory, const QString& portName, const ConnectionTimes& times)
    : m_memory(memory), m_portName(portName), m_startInterval(times.startInterval)
{
    if (m_memory != nullptr)
        m_memory->startReplyObserver().set(this);
}

CStartConnectionManager::~CStartConnectionManager()
{
    if (m_memory != nullptr)
        m_memory->startReplyObserver().clear(this);
}

bool CStartConnectionManager::sendStartMessage()
{
    bool sent = false;
    while (m_waiting) {
        sent = sendOnce();
        // The device gets its whole second after each message.
        std::this_thread::sleep_for(m_startInterval);
    }
    return sent;
}

bool CStartConnectionManager::sendOnce()
{
    return m_memory != nullptr && m_memory->sendMessage(m_portName, k_startMessage, 0);
}

bool CStartConnectionManager::isAnswered() const
{
    return !m_waiting;
}

void CStartConnectionManager::paramChanged()
{
    m_waiting = false;
}
