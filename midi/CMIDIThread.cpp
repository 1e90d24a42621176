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
    const QMutexLocker lock(&m_waitLock);
    while (!m_woken)
        m_wakeUp.wait(&m_waitLock);
    m_woken = false;
}

void CMIDIThread::wake()
{
    {
        const QMutexLocker lock(&m_waitLock);
        if (m_woken)
            return;
        m_woken = true;
    }
    m_wakeUp.wakeOne();
}

bool CMIDIThread::isContinue()
{
    const QMutexLocker lock(&m_flagLock);
    return m_continue;
}

void CMIDIThread::setContinue(bool on)
{
    const QMutexLocker lock(&m_flagLock);
    m_continue = on;
}

void CMIDIThread::stop()
{
    setContinue(false);
    wake();
    wait();
    setContinue(true);
}
