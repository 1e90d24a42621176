#pragma once

#include "app/common/CMutex.h"

#include <memory>

/// Adds value to the integer that target points to, atomically, and returns what it was before. An add of 0 reads.
///
/// What a thread wrote before its add is seen by a thread whose later add finds the result.
long InterlockedExchangeAdd(long* target, long value);

/// Byte ring between the MIDI service's thread and the delivery thread.
///
/// Units    every size, count and position is in bytes.
/// Threads  one writer (MIDI service), one reader (CMIDIThread). Each holds the ring's lock for a whole record, so that
///          a length and its data are never parted; the operations themselves do not lock. avail(), space(): any
///          thread.
/// Memory   one allocation, in initialize(). The operations below never allocate, throw or wait.
/// Failure  a call moves what fits and returns how much; a short count is the only signal.
class CCircularBuffer
{
  public:
    /// recursive   whether a thread that holds the lock may lock again.
    explicit CCircularBuffer(bool recursive);
    virtual ~CCircularBuffer();
    CCircularBuffer(const CCircularBuffer&) = delete;
    CCircularBuffer& operator=(const CCircularBuffer&) = delete;

    /// Allocates the storage; called once, before anything else. size is at least 1.
    void initialize(int size);

    [[nodiscard]] int size() const;
    [[nodiscard]] int avail() const; ///< unread bytes
    [[nodiscard]] int space() const; ///< bytes that a write would store

    /// Stores up to n bytes behind the unread ones and returns how many. 0: null source or no storage.
    int write(const unsigned char* source, int n);

    /// Takes up to n of the oldest unread bytes and returns how many. 0: null destination or no storage.
    int read(unsigned char* destination, int n);

    /// The ring's lock, for std::scoped_lock.
    void lock();
    void unlock();

  private:
    /// Bytes from a position to the end of the storage, n at most.
    [[nodiscard]] int piece(int position, int n) const;
    [[nodiscard]] int advanced(int position, int n) const;

    std::unique_ptr<unsigned char[]> m_storage;
    int m_size = 0;
    mutable long m_count = 0; // changed by InterlockedExchangeAdd alone
    int m_writePosition = 0;
    int m_readPosition = 0;
    const bool m_recursive;
    CRecursiveMutex m_recursiveMutex;
    CMutex m_plainMutex;
};
