#include "midi/CMIDIThread.h"

#include "midi/CMIDIInput.h"

CMIDIThread::CMIDIThread(CMIDIInput* owner) : m_owner(owner) {}

void CMIDIThread::run()
{
    while (isContinue()) {
        waitForWake();
        if (m_owner != nullptr)
            m_owner->messageReceived();
    }
}

void CMIDIThread::waitForWake()
{
    std::unique_lock<std::mutex> lock(m_waitLock);
    m_wakeUp.wait(lock, [this] { return m_woken; });
    m_woken = false;
}

void CMIDIThread::wake()
{
    {
        const std::scoped_lock lock(m_waitLock);
        if (m_woken)
            return;
        m_woken = true;
    }
    m_wakeUp.notify_one();
}

bool CMIDIThread::isContinue()
{
    const std::scoped_lock lock(m_flagLock);
    return m_continue;
}

void CMIDIThread::setContinue(bool on)
{
    const std::scoped_lock lock(m_flagLock);
    m_continue = on;
}

void CMIDIThread::stop()
{
    setContinue(false);
    wake();
    wait();
    setContinue(true);
}
