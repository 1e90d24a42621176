#pragma once

#include "app/common/CMutex.h"

#include <condition_variable>

/// Lets packets through, and can make one of them wait, as a full pipe does.
///
/// Threads  every operation may be called on any thread.
class CSendGate
{
  public:
    /// The n-th packet from now on (1 is the next) waits; others, behind it too, pass. Replaces an earlier order, and
    /// lets go of a packet that waits already.
    void hold(int n);

    /// Lets go of the packet that waits, or lets the one pass that would.
    void release();

    [[nodiscard]] bool isHolding() const;

    /// A packet's way: blocks as long as it is held.
    void pass();

  private:
    enum class State
    {
        Open,
        Waiting, ///< for the packet that is to be held
        Holding
    };

    mutable CMutex m_mutex;
    std::condition_variable m_released;
    State m_state = State::Open;
    int m_packetsBefore = 0;
};
