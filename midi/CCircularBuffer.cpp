#include "midi/CCircularBuffer.h"

#include <algorithm>
#include <atomic>

namespace
{
/// The other side holds the lock while it copies one record, far shorter than going to sleep and being woken takes.
constexpr int k_triesBeforeSleep = 100;

template <typename Mutex> void lockSoon(Mutex& mutex)
{
    for (int n = 0; n < k_triesBeforeSleep; ++n) {
        if (mutex.try_lock())
            return;
    }
    mutex.lock();
}
} // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): it is written through the reference
long InterlockedExchangeAdd(long* target, long value)
{
    return std::atomic_ref(*target).fetch_add(value, std::memory_order_acq_rel);
}

CCircularBuffer::CCircularBuffer(bool recursive) : m_recursive(recursive) {}

CCircularBuffer::~CCircularBuffer() = default;

void CCircularBuffer::initialize(int size)
{
    // Not cleared: pages that no flood ever reaches never become memory in use.
    m_storage = std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(size));
    m_size = size;
}

int CCircularBuffer::size() const
{
    return m_size;
}

int CCircularBuffer::avail() const
{
    return static_cast<int>(std::atomic_ref(m_count).load(std::memory_order_acquire));
}

int CCircularBuffer::space() const
{
    return size() - avail();
}

int CCircularBuffer::write(const unsigned char* source, int n)
{
    if (source == nullptr || !m_storage)
        return 0;
    const int stored = std::clamp(n, 0, space());
    for (int left = stored; left > 0;) {
        const int count = piece(m_writePosition, left);
        std::copy_n(source, count, m_storage.get() + m_writePosition);
        m_writePosition = advanced(m_writePosition, count);
        source += count;
        left -= count;
    }
    InterlockedExchangeAdd(&m_count, stored);
    return stored;
}

int CCircularBuffer::read(unsigned char* destination, int n)
{
    if (destination == nullptr || !m_storage)
        return 0;
    const int taken = std::clamp(n, 0, avail());
    for (int left = taken; left > 0;) {
        const int count = piece(m_readPosition, left);
        std::copy_n(m_storage.get() + m_readPosition, count, destination);
        m_readPosition = advanced(m_readPosition, count);
        destination += count;
        left -= count;
    }
    InterlockedExchangeAdd(&m_count, -taken);
    return taken;
}

void CCircularBuffer::lock()
{
    m_recursive ? lockSoon(m_recursiveMutex) : lockSoon(m_plainMutex);
}

void CCircularBuffer::unlock()
{
    m_recursive ? m_recursiveMutex.unlock() : m_plainMutex.unlock();
}

int CCircularBuffer::piece(int position, int n) const
{
    return std::min(n, m_size - position);
}

int CCircularBuffer::advanced(int position, int n) const
{
    return position + n == m_size ? 0 : position + n;
}
