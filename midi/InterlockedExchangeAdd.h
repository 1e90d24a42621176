#pragma once

/// Adds value to the integer that target points to, atomically, and returns what it was before. An add of 0 reads.
///
/// What a thread wrote before its add is seen by a thread whose later add finds the result.
long InterlockedExchangeAdd(long* target, long value);
