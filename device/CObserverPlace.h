#pragma once

#include "app/common/CMutex.h"

class CMemAPIObserver;

/// The place of the one observer of something, as of a kind of reply; empty until an observer is set.
///
/// Threads  any. clear() waits for a call in flight on another thread, so that the observer may be destroyed after it.
class CObserverPlace
{
  public:
    /// Borrowed until clear(); replaces any earlier one.
    void set(CMemAPIObserver* observer);

    /// Empties the place if this observer holds it.
    void clear(const CMemAPIObserver* observer);

    /// Calls the observer's paramChanged(). false: there is none.
    bool notify();

  private:
    // Held during the call, which is what clear() waits for. The observers only set a flag or post a signal.
    CRecursiveMutex m_mutex;
    CMemAPIObserver* m_observer = nullptr;
};
