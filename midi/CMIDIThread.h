#pragma once

#include "app/common/CMutex.h"

#include <QThread>

#include <condition_variable>

class CMIDIInput;

/// The delivery thread of an input port: sleeps until woken, then drains the input's ring.
///
/// Threads  wake(): any. stop(): the owner's thread, after the MIDI service's thread has ceased to call wake().
/// A wake-up is remembered until the thread takes it, so that neither a record nor a stop can be slept through.
class CMIDIThread : public QThread
{
    Q_OBJECT

  public:
    /// owner   borrowed; outlives the running thread. null: wake-ups are taken and nothing is drained.
    explicit CMIDIThread(CMIDIInput* owner);

    void wake();

    [[nodiscard]] bool isContinue();

    /// Ends the thread and waits for it, however long the drain in progress takes. The thread can be started again.
    void stop();

  protected:
    void run() override;

  private:
    void waitForWake();
    void setContinue(bool on);

    CMIDIInput* const m_owner;
    std::condition_variable m_wakeUp;
    bool m_continue = true;
    bool m_woken = false;
    CMutex m_waitLock; // guards m_woken
    CMutex m_flagLock; // guards m_continue
};
