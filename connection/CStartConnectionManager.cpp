#include "connection/CStartConnectionManager.h"

#include "app/common/CMutex.h"
#include "device/CMemAPI.h"

#include <condition_variable>

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
    CMutex pauseMutex;
    std::condition_variable pause; // nobody wakes it: the device gets its whole second after each message
    std::unique_lock<std::mutex> lock(pauseMutex); // cppcheck-suppress localMutex ; what the condition asks for

    bool sent = false;
    while (m_waiting) {
        if (m_memory != nullptr)
            sent = m_memory->sendMessage(m_portName, k_startMessage, 0);
        pause.wait_for(lock, m_startInterval, [] { return false; });
    }
    return sent;
}

void CStartConnectionManager::paramChanged()
{
    m_waiting = false;
}
