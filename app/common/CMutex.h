#pragma once

#include <mutex>

#ifdef __SANITIZE_THREAD__
#include <sanitizer/tsan_interface.h>
#endif

/// A standard mutex whose end ThreadSanitizer sees. The end of a plain one leaves no trace, so that the tool takes the
/// next mutex in the same place of the stack for the same one, and reports lock orders that never were.
template <typename Mutex> class CTraceableMutex : public Mutex
{
#ifdef __SANITIZE_THREAD__
  public:
    ~CTraceableMutex()
    {
        __tsan_mutex_destroy(this->native_handle(), 0);
    }
#endif
};

using CMutex = CTraceableMutex<std::mutex>;
using CRecursiveMutex = CTraceableMutex<std::recursive_mutex>;
