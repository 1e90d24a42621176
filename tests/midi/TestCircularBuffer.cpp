#include "midi/CCircularBuffer.h"
#include "tests/support/CTestCase.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;

namespace
{
constexpr int k_ringSize = 8;

/// Endless bytes in which every one of 251 neighbours differs, so that a byte lost, doubled or moved shows.
class CByteSequence
{
  public:
    unsigned char next()
    {
        m_next = static_cast<unsigned char>(m_next == 250 ? 0 : m_next + 1);
        return m_next;
    }

    QByteArray next(int n)
    {
        QByteArray bytes;
        for (int i = 0; i < n; ++i)
            bytes.append(static_cast<char>(next()));
        return bytes;
    }

  private:
    unsigned char m_next = 0;
};

int write(CCircularBuffer* ring, const QByteArray& bytes)
{
    return ring->write(reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<int>(bytes.size()));
}

QByteArray read(CCircularBuffer* ring, int n)
{
    QByteArray bytes(n, '\xEE');
    bytes.truncate(ring->read(reinterpret_cast<unsigned char*>(bytes.data()), n));
    return bytes;
}

/// Brings both positions of an empty ring to a place.
void moveTo(CCircularBuffer* ring, int position)
{
    QCOMPARE(write(ring, QByteArray(position, 'x')), position);
    QCOMPARE(read(ring, position).size(), position);
}
} // namespace

class TestCircularBuffer : public CTestCase
{
    Q_OBJECT

  private slots:
    void emptyAfterConstruction();
    void emptyAfterInitialize();
    void withoutStorageNothingMoves();
    void nullPointersMoveNothing();
    void negativeCountsMoveNothing();
    void writeStoresWhatFits_data();
    void writeStoresWhatFits();
    void readTakesWhatIsThere_data();
    void readTakesWhatIsThere();
    void positionOnTheEndBecomesZero();
    void everyPositionAndSize();
    void lockMayBeTakenAgainWhenRecursive();
    void lockKeepsOthersOut_data();
    void lockKeepsOthersOut();
    void lockHeldForLongIsWaitedFor();
    void oneWriterAndOneReaderNeedNoLock_data();
    void oneWriterAndOneReaderNeedNoLock();
    void exchangeAddReturnsTheOldValue();
    void exchangeAddIsAtomic();
};

void TestCircularBuffer::emptyAfterConstruction()
{
    const CCircularBuffer ring(true);
    QCOMPARE(ring.size(), 0);
    QCOMPARE(ring.avail(), 0);
    QCOMPARE(ring.space(), 0);
}

void TestCircularBuffer::emptyAfterInitialize()
{
    CCircularBuffer ring(true);
    ring.initialize(0x3C0000);
    QCOMPARE(ring.size(), 3932160);
    QCOMPARE(ring.avail(), 0);
    QCOMPARE(ring.space(), 3932160);
}

void TestCircularBuffer::withoutStorageNothingMoves()
{
    CCircularBuffer ring(false);
    QCOMPARE(write(&ring, "abc"), 0);
    QCOMPARE(read(&ring, 3), QByteArray());
}

void TestCircularBuffer::nullPointersMoveNothing()
{
    CCircularBuffer ring(false);
    ring.initialize(k_ringSize);
    QCOMPARE(ring.write(nullptr, 3), 0);
    QCOMPARE(ring.avail(), 0);
    QCOMPARE(write(&ring, "abc"), 3);
    QCOMPARE(ring.read(nullptr, 3), 0);
    QCOMPARE(ring.avail(), 3);
}

void TestCircularBuffer::negativeCountsMoveNothing()
{
    CCircularBuffer ring(false);
    ring.initialize(k_ringSize);
    QCOMPARE(write(&ring, "abc"), 3);
    unsigned char byte = 0;
    QCOMPARE(ring.write(&byte, -1), 0);
    QCOMPARE(ring.read(&byte, -1), 0);
    QCOMPARE(read(&ring, k_ringSize), "abc");
}

void TestCircularBuffer::writeStoresWhatFits_data() // ring of 8 bytes
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("stored");
    QTest::newRow("nothing") << 0 << 0 << 0;
    QTest::newRow("one byte") << 0 << 1 << 1;
    QTest::newRow("ends on the last byte, position becomes 0") << 5 << 3 << 3;
    QTest::newRow("one past the end, copied in two pieces") << 5 << 4 << 4;
    QTest::newRow("all of the ring, from the start") << 0 << 8 << 8;
    QTest::newRow("all of the ring, in two pieces") << 3 << 8 << 8;
    QTest::newRow("one more than the ring holds") << 0 << 9 << 8;
    QTest::newRow("far more than the ring holds, in two pieces") << 7 << 100 << 8;
}

void TestCircularBuffer::writeStoresWhatFits()
{
    QFETCH(int, position);
    QFETCH(int, asked);
    QFETCH(int, stored);
    CCircularBuffer ring(false);
    ring.initialize(k_ringSize);
    moveTo(&ring, position);

    const QByteArray bytes = CByteSequence().next(asked);
    QCOMPARE(write(&ring, bytes), stored);
    QCOMPARE(ring.avail(), stored);
    QCOMPARE(ring.space(), k_ringSize - stored);
    QCOMPARE(read(&ring, k_ringSize), bytes.first(stored));
}

void TestCircularBuffer::readTakesWhatIsThere_data() // ring of 8 bytes
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("there");
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("taken");
    QTest::newRow("nothing there") << 0 << 0 << 3 << 0;
    QTest::newRow("nothing asked") << 0 << 3 << 0 << 0;
    QTest::newRow("less than there is") << 0 << 5 << 2 << 2;
    QTest::newRow("more than there is") << 0 << 5 << 6 << 5;
    QTest::newRow("ends on the last byte, position becomes 0") << 5 << 3 << 3 << 3;
    QTest::newRow("one past the end, copied in two pieces") << 5 << 4 << 4 << 4;
    QTest::newRow("a full ring in two pieces") << 6 << 8 << 8 << 8;
}

void TestCircularBuffer::readTakesWhatIsThere()
{
    QFETCH(int, position);
    QFETCH(int, there);
    QFETCH(int, asked);
    QFETCH(int, taken);
    CCircularBuffer ring(false);
    ring.initialize(k_ringSize);
    moveTo(&ring, position);

    const QByteArray bytes = CByteSequence().next(there);
    QCOMPARE(write(&ring, bytes), there);
    QCOMPARE(read(&ring, asked), bytes.first(taken));
    QCOMPARE(ring.avail(), there - taken);
    QCOMPARE(read(&ring, k_ringSize), bytes.sliced(taken));
}

void TestCircularBuffer::positionOnTheEndBecomesZero()
{
    CCircularBuffer ring(false);
    ring.initialize(k_ringSize);
    moveTo(&ring, k_ringSize);
    QCOMPARE(write(&ring, "abcdefgh"), 8);
    QCOMPARE(read(&ring, 8), "abcdefgh");
}

void TestCircularBuffer::everyPositionAndSize()
{
    for (int position = 0; position < k_ringSize; ++position) {
        for (int size = 1; size <= k_ringSize; ++size) {
            CCircularBuffer ring(false);
            ring.initialize(k_ringSize);
            moveTo(&ring, position);
            CByteSequence written;
            CByteSequence expected;
            // Enough rounds for both positions to come by every place.
            for (int round = 0; round < k_ringSize; ++round) {
                QCOMPARE(write(&ring, written.next(size)), size);
                QCOMPARE(read(&ring, size), expected.next(size));
            }
            QCOMPARE(ring.avail(), 0);
        }
    }
}

void TestCircularBuffer::lockMayBeTakenAgainWhenRecursive()
{
    CCircularBuffer ring(true);
    ring.initialize(k_ringSize);
    const std::scoped_lock outer(ring);
    const std::scoped_lock inner(ring);
    QCOMPARE(write(&ring, "a"), 1);
}

void TestCircularBuffer::lockKeepsOthersOut_data()
{
    QTest::addColumn<bool>("recursive");
    QTest::newRow("recursive") << true;
    QTest::newRow("not recursive") << false;
}

void TestCircularBuffer::lockKeepsOthersOut()
{
    QFETCH(bool, recursive);
    CCircularBuffer ring(recursive);
    int together = 0;
    const auto count = [&] {
        for (int i = 0; i < 10000; ++i) {
            const std::scoped_lock lock(ring);
            ++together;
        }
    };
    std::thread other(count);
    count();
    other.join();
    QCOMPARE(together, 20000);
}

void TestCircularBuffer::lockHeldForLongIsWaitedFor()
{
    CCircularBuffer ring(true);
    std::atomic<bool> entered = false;
    ring.lock();
    std::thread other([&] {
        const std::scoped_lock lock(ring);
        entered = true;
    });
    std::this_thread::sleep_for(5ms); // longer by far than any number of tries
    QVERIFY(!entered);
    ring.unlock();
    other.join();
    QVERIFY(entered);
}

void TestCircularBuffer::oneWriterAndOneReaderNeedNoLock_data()
{
    QTest::addColumn<int>("ringSize");
    QTest::addColumn<int>("writeStep");
    QTest::addColumn<int>("readStep");
    QTest::newRow("one byte") << 1 << 1 << 1;
    QTest::newRow("two bytes, odd steps") << 2 << 3 << 1;
    QTest::newRow("steps of the ring's size") << 7 << 7 << 7;
    QTest::newRow("steps without a common divisor") << 13 << 5 << 3;
    QTest::newRow("reader asks for more than the ring holds") << 61 << 8 << 100;
    QTest::newRow("writer offers more than the ring holds") << 61 << 100 << 8;
    QTest::newRow("a power of two and its neighbours") << 4096 << 4095 << 4097;
}

void TestCircularBuffer::oneWriterAndOneReaderNeedNoLock()
{
    QFETCH(int, ringSize);
    QFETCH(int, writeStep);
    QFETCH(int, readStep);
    CCircularBuffer ring(false);
    ring.initialize(ringSize);
    // A busy machine may give either side a turn only now and then, for no more than the ring holds.
    const int total = std::min(200'000, 2'000 * ringSize);

    std::thread writer([&] {
        CByteSequence sequence;
        QByteArray waiting;
        for (int left = total; left > 0 || !waiting.isEmpty();) {
            if (waiting.isEmpty()) {
                waiting = sequence.next(std::min(writeStep, left));
                left -= static_cast<int>(waiting.size());
            }
            waiting.remove(0, write(&ring, waiting));
            if (!waiting.isEmpty())
                std::this_thread::yield();
        }
    });

    CByteSequence expected;
    int received = 0;
    bool inOrder = true;
    while (received < total) {
        const QByteArray bytes = read(&ring, readStep);
        inOrder = inOrder && bytes == expected.next(static_cast<int>(bytes.size()));
        received += static_cast<int>(bytes.size());
        if (bytes.isEmpty())
            std::this_thread::yield();
    }
    writer.join();
    QVERIFY(inOrder);
    QCOMPARE(received, total);
    QCOMPARE(ring.avail(), 0);
}

void TestCircularBuffer::exchangeAddReturnsTheOldValue()
{
    long value = 5;
    QCOMPARE(InterlockedExchangeAdd(&value, 3), 5);
    QCOMPARE(InterlockedExchangeAdd(&value, -10), 8);
    QCOMPARE(InterlockedExchangeAdd(&value, 0), -2);
    QCOMPARE(value, -2);
}

void TestCircularBuffer::exchangeAddIsAtomic()
{
    long value = 0;
    const auto add = [&] {
        for (int i = 0; i < 100'000; ++i)
            InterlockedExchangeAdd(&value, 1);
    };
    std::thread other(add);
    add();
    other.join();
    QCOMPARE(value, 200'000);
}

KTZ_TEST(QCoreApplication, TestCircularBuffer)
#include "TestCircularBuffer.moc"
