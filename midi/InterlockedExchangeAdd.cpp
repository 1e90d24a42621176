#include "midi/InterlockedExchangeAdd.h"

long InterlockedExchangeAdd(long* target, long value)
{
    return __atomic_fetch_add(target, value, __ATOMIC_ACQ_REL);
}
