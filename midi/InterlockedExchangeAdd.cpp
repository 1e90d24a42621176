#include "midi/InterlockedExchangeAdd.h"

// NOLINTNEXTLINE(readability-non-const-parameter): the built-in function writes it
long InterlockedExchangeAdd(long* target, long value)
{
    return __atomic_fetch_add(target, value, __ATOMIC_ACQ_REL);
}
