#pragma once

#include "app/common/CMutex.h"

#include <QThread>

#include <chrono>
#include <condition_variable>

class CConnectionWatch;

/// Has the watch send a keep message at a fixed interval, until told to stop.
///
/// Threads  stop() on any other thread. A thread that was stopped does not run again.
class CConnectionThread : public QThread
{
    Q_OBJECT

  public:
    /// Borrows the watch, which owns this thread and may be null: then there is nothing to do.
    CConnectionThread(CConnectionWatch* watch, std::chrono::milliseconds keepInterval);

    /// Ends the pause at once and waits for the thread to end.
    void stop();

  protected:
    void run() override;

  private:
    [[nodiscard]] bool isContinue();

    /// Sleeps for one interval or until stop().
    void pause();

    CConnectionWatch* m_watch;
    std::chrono::milliseconds m_keepInterval;
    CMutex m_mutex;
    std::condition_variable m_stopRequested;
    bool m_running = true;
};
