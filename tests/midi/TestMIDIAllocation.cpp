#include "midi/CMIDITransportObserver.h"
#include "tests/midi/CMIDITestInput.h"
#include "tests/support/CTestCase.h"

#include <array>
#include <atomic>
#include <thread>

#if defined(KTZ_SANITIZED) || !defined(__GLIBC__)
#define KTZ_COUNTS_ALLOCATIONS 0
#else
#define KTZ_COUNTS_ALLOCATIONS 1
#endif

namespace
{
std::atomic<bool> g_counting = false;
std::atomic<int> g_allocations = 0;
} // namespace

#if KTZ_COUNTS_ALLOCATIONS
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

// The program's own come before the library's, also for operator new and for Qt.
void* malloc(size_t size)
{
    if (g_counting)
        ++g_allocations;
    return __libc_malloc(size);
}

void* calloc(size_t count, size_t size)
{
    if (g_counting)
        ++g_allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, size_t size)
{
    if (g_counting)
        ++g_allocations;
    return __libc_realloc(block, size);
}
}
#endif

namespace
{
class CCountingObserver : public CMIDITransportObserver
{
  public:
    bool messageReceived(const unsigned char* /*data*/, int /*size*/) override
    {
        ++m_received;
        return true;
    }

    std::atomic<int> m_received = 0;
};

constexpr std::array<unsigned char, 11> k_message = {0xF0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0xF7};

/// Sends messages through ring and delivery thread, and returns when all have arrived.
void passMessages(CMIDITestInput* input, CCountingObserver* observer, int count)
{
    const int goal = observer->m_received + count;
    for (int i = 0; i < count; ++i) {
        while (!input->writeRecord(k_message.data(), k_message.size()))
            std::this_thread::yield();
        input->wakeDelivery();
    }
    while (observer->m_received < goal)
        std::this_thread::yield();
}
} // namespace

class TestMIDIAllocation : public CTestCase
{
    Q_OBJECT

  private slots:
    void countIsNotBlind();
    void receivingAndDeliveringDoNotAllocate();
};

void TestMIDIAllocation::countIsNotBlind()
{
    if (!KTZ_COUNTS_ALLOCATIONS)
        QSKIP("A sanitizer has the heap.");
    g_allocations = 0;
    g_counting = true;
    const QByteArray viaQt(1000, 'x');
    const auto viaNew = std::make_unique<QByteArray>(viaQt);
    g_counting = false;
    QVERIFY(g_allocations >= 2);
    QCOMPARE(viaNew->size(), 1000);
}

void TestMIDIAllocation::receivingAndDeliveringDoNotAllocate()
{
    if (!KTZ_COUNTS_ALLOCATIONS)
        QSKIP("A sanitizer has the heap.");
    CCountingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    passMessages(&input, &observer, 100); // what a thread allocates once

    g_allocations = 0;
    g_counting = true;
    passMessages(&input, &observer, 100'000);
    g_counting = false;
    QCOMPARE(g_allocations.load(), 0);
    QCOMPARE(observer.m_received.load(), 100'100);
}

KTZ_TEST(QCoreApplication, TestMIDIAllocation)
#include "TestMIDIAllocation.moc"
