#include "midi/CMIDIThread.h"
#include "midi/CMIDITransportObserver.h"
#include "tests/midi/CMIDITestInput.h"
#include "tests/support/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

#include <cstring>
#include <thread>

namespace
{
/// A record that carries its number and bytes that follow from it.
QByteArray numberedRecord(quint32 number, int size)
{
    QByteArray record(std::max(size, int{sizeof number}), static_cast<char>(number * 31));
    std::memcpy(record.data(), &number, sizeof number);
    return record;
}

/// Takes numbered records and finds out which is missing, out of order or garbled.
class CNumberChecker : public CMIDITransportObserver
{
  public:
    bool messageReceived(const unsigned char* data, int size) override
    {
        quint32 number = 0;
        std::memcpy(&number, data, sizeof number);
        if (m_received > 0 && number <= m_last)
            m_outOfOrder = true;
        const auto filler = static_cast<unsigned char>(number * 31);
        for (int i = sizeof number; i < size; ++i)
            m_garbled = m_garbled || data[i] != filler;
        m_last = number;
        ++m_received;
        return true;
    }

    std::atomic<quint32> m_received = 0;
    std::atomic<quint32> m_last = 0;
    std::atomic<bool> m_outOfOrder = false;
    std::atomic<bool> m_garbled = false;
};
} // namespace

class TestMIDIInput : public CTestCase
{
    Q_OBJECT

  private slots:
    void nothingThereBeforeInitialize();
    void connectedBetweenOpenAndClose();
    void threePacketsAreThreeRecordsInOrder();
    void observerRunsOnTheDeliveryThread();
    void packetOfLengthZeroMakesNoRecord();
    void emptyBatchOnlyWakesTheDeliveryThread();
    void recordOfEverySizeArrivesWhole_data();
    void recordOfEverySizeArrivesWhole();
    void withoutObserverRecordsAreDroppedAndTheRingEmpties();
    void laterObserverReplacesTheEarlier();
    void unregisteredObserverHearsNothing();
    void readKeepsTheUpperBitsOfTheSize();
    void readWithANullPointerTakesNothing();
    void recordFormatIsLengthThenData();
    void recordGoesInWholeOrNotAtAll_data();
    void recordGoesInWholeOrNotAtAll();
    void recordsAroundTheEndOfTheRingStayWhole();
    void recordThatComesDuringADrainIsDeliveredWithoutAnotherPacket();
    void closeWaitsForTheCallInFlight();
    void lossIsToldOnceAfterTheRecords();
    void lossDuringADrainIsToldWithoutAnotherPacket();
    void recordOfLengthZeroIsNoLoss();
    void endIsToldOnceAfterTheLastRecord();
    void notesAreToldOnTheDeliveryThread();
    void notesOfAnEarlierOpeningAreForgotten();
    void notesWithoutObserverAreDropped();
    void flowsAgainAfterCloseAndOpen();
    void closeOfANeverOpenedInput();
    void millionRecordsFromAnotherThread();
    void floodDropsWholeRecordsOnly();
};

void TestMIDIInput::nothingThereBeforeInitialize()
{
    CMIDITestInput input;
    QVERIFY(!input.isMIDIConnect());
    QVERIFY(input.ring() == nullptr);
    QVERIFY(!input.write("abc"));
    input.messageReceived();
    unsigned char byte = 0x55;
    int size = 0;
    input.readMessageFromBuffer(&byte, &size);
    QCOMPARE(byte, 0x55);
    QCOMPARE(size, 0);
    input.wakeDelivery();
    QVERIFY(input.openPort(0));
    input.closePort();
}

void TestMIDIInput::connectedBetweenOpenAndClose()
{
    CMIDITestInput input;
    QCOMPARE(input.initialize(), 0);
    QVERIFY(!input.isMIDIConnect());
    QVERIFY(input.openPort(0));
    QVERIFY(input.isMIDIConnect());
    input.closePort();
    QVERIFY(!input.isMIDIConnect());
}

void TestMIDIInput::threePacketsAreThreeRecordsInOrder()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    const QByteArrayList packets{"\xF0\x01", "two", QByteArray("\0\xF7", 2)};
    QCOMPARE(input.receive(packets), 3);
    QTRY_COMPARE(observer.records(), packets);
}

void TestMIDIInput::observerRunsOnTheDeliveryThread()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    input.receive({"a"});
    QTRY_COMPARE(observer.records().size(), 1);
    QVERIFY(observer.thread() != QThread::currentThread());
    QVERIFY(qobject_cast<CMIDIThread*>(observer.thread()) != nullptr);
}

void TestMIDIInput::packetOfLengthZeroMakesNoRecord()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(!input.write(QByteArray()));
    QCOMPARE(input.ring()->avail(), 0);
    QVERIFY(input.openPort(0));
    QCOMPARE(input.receive({"a", "", "b"}), 2);
    QTRY_COMPARE(observer.records(), QByteArrayList({"a", "b"}));
}

void TestMIDIInput::emptyBatchOnlyWakesTheDeliveryThread()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    // Written without a wake-up: it is the empty batch that brings it.
    QVERIFY(input.write("a"));
    input.receive({});
    QTRY_COMPARE(observer.records(), QByteArrayList{"a"});
}

void TestMIDIInput::recordOfEverySizeArrivesWhole_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {1, 2, 11, 15, 255, 256, 257, 4095, 4096, 4097, 65534, 65535})
        QTest::addRow("%d bytes", size) << size;
}

void TestMIDIInput::recordOfEverySizeArrivesWhole()
{
    QFETCH(int, size);
    QByteArray record;
    for (int i = 0; i < size; ++i)
        record.append(static_cast<char>(i * 13 + 1));

    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    QCOMPARE(input.receive({"before", record, "after"}), 3);
    QTRY_COMPARE(observer.records(), QByteArrayList({"before", record, "after"}));
}

void TestMIDIInput::withoutObserverRecordsAreDroppedAndTheRingEmpties()
{
    CMIDITestInput input;
    input.initialize();
    QVERIFY(input.openPort(0));
    QCOMPARE(input.receive({"a", "b", "c"}), 3);
    QTRY_COMPARE(input.ring()->avail(), 0);

    CRecordingObserver observer;
    input.registerObserver(&observer);
    input.receive({"d"});
    QTRY_COMPARE(observer.records(), QByteArrayList{"d"});
}

void TestMIDIInput::laterObserverReplacesTheEarlier()
{
    CRecordingObserver earlier;
    CRecordingObserver later;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&earlier);
    input.registerObserver(&later);
    QVERIFY(input.openPort(0));
    input.receive({"a"});
    QTRY_COMPARE(later.records(), QByteArrayList{"a"});
    QVERIFY(earlier.records().isEmpty());
}

void TestMIDIInput::unregisteredObserverHearsNothing()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    input.unregisterObserver();
    QVERIFY(input.openPort(0));
    input.receive({"a"});
    QTRY_COMPARE(input.ring()->avail(), 0);
    input.closePort();
    QVERIFY(observer.records().isEmpty());
}

void TestMIDIInput::readKeepsTheUpperBitsOfTheSize()
{
    CMIDITestInput input;
    input.initialize();
    QVERIFY(input.write("abc"));
    QVERIFY(input.write("de"));
    QByteArray data(CMIDIInput::k_largestRecord, '\0');
    auto* bytes = reinterpret_cast<unsigned char*>(data.data());
    int size = 4096;
    input.readMessageFromBuffer(bytes, &size);
    QCOMPARE(size, 3);
    QCOMPARE(data.first(3), "abc");
    size = 0x7ABC1234;
    input.readMessageFromBuffer(bytes, &size);
    QCOMPARE(size, 0x7ABC0002);
    QCOMPARE(data.first(2), "de");
}

void TestMIDIInput::readWithANullPointerTakesNothing()
{
    CMIDITestInput input;
    input.initialize();
    QVERIFY(input.write("abc"));
    unsigned char byte = 0;
    int size = 0;
    input.readMessageFromBuffer(nullptr, &size);
    input.readMessageFromBuffer(&byte, nullptr);
    QCOMPARE(size, 0);
    QCOMPARE(input.ring()->avail(), 5);
}

void TestMIDIInput::recordFormatIsLengthThenData()
{
    CMIDITestInput input;
    input.initialize();
    QVERIFY(input.write(QByteArray(0x0102, 'x')));
    unsigned char header[2] = {};
    QCOMPARE(input.ring()->read(header, 2), 2);
    quint16 length = 0;
    std::memcpy(&length, header, sizeof length);
    QCOMPARE(length, 0x0102);
    QCOMPARE(input.ring()->avail(), 0x0102);
}

void TestMIDIInput::recordGoesInWholeOrNotAtAll_data() // ring of 16 bytes
{
    QTest::addColumn<int>("before"); // bytes of the record that is there already, 0 for none
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("stored");
    QTest::newRow("fills the ring") << 0 << 14 << true;
    QTest::newRow("one byte too many") << 0 << 15 << false;
    QTest::newRow("only its length would fit") << 0 << 16 << false;
    QTest::newRow("fills what is left") << 5 << 7 << true;
    QTest::newRow("one byte more than is left") << 5 << 8 << false;
    QTest::newRow("only the length fits") << 12 << 1 << false;
    QTest::newRow("not even the length fits") << 13 << 1 << false;
    QTest::newRow("the ring is full") << 14 << 1 << false;
}

void TestMIDIInput::recordGoesInWholeOrNotAtAll()
{
    QFETCH(int, before);
    QFETCH(int, size);
    QFETCH(bool, stored);
    CRecordingObserver observer;
    CMIDITestInput input(16);
    input.initialize();
    input.registerObserver(&observer);

    QByteArrayList expected;
    if (before > 0) {
        expected.append(QByteArray(before, 'b'));
        QVERIFY(input.write(expected.last()));
    }
    const int used = input.ring()->avail();
    const QByteArray record(size, 'r');
    QCOMPARE(input.write(record), stored);
    QCOMPARE(input.ring()->avail(), stored ? used + 2 + size : used);
    if (stored)
        expected.append(record);

    QVERIFY(input.openPort(0));
    input.receive({});
    QTRY_COMPARE(observer.records(), expected);
    QCOMPARE(input.ring()->avail(), 0);
}

void TestMIDIInput::recordsAroundTheEndOfTheRingStayWhole()
{
    // The record's length and its data are cut by the ring's end at every place in turn.
    CRecordingObserver observer;
    CMIDITestInput input(17);
    input.initialize();
    input.registerObserver(&observer);
    QByteArrayList expected;
    for (int i = 0; i < 17 * 3; ++i) {
        expected.append(numberedRecord(static_cast<quint32>(i), 4 + i % 3));
        QVERIFY(input.write(expected.last()));
        input.messageReceived();
    }
    QCOMPARE(observer.records(), expected);
}

void TestMIDIInput::recordThatComesDuringADrainIsDeliveredWithoutAnotherPacket()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    observer.hold();
    input.receive({"a"});
    observer.entered();
    input.receive({"b"});
    observer.go();
    observer.entered();
    observer.letGo();
    QTRY_COMPARE(observer.records(), QByteArrayList({"a", "b"}));
}

void TestMIDIInput::closeWaitsForTheCallInFlight()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    observer.hold();
    input.receive({"a"});
    observer.entered();
    std::atomic<bool> closed = false;
    std::thread closing([&] {
        input.closePort();
        closed = true;
    });
    QTest::qWait(20); // gives a close that does not wait the time to show
    QVERIFY(!closed);
    observer.letGo();
    closing.join();
    QCOMPARE(observer.records(), QByteArrayList{"a"});
}

void TestMIDIInput::lossIsToldOnceAfterTheRecords()
{
    CRecordingObserver observer;
    CMIDITestInput input(16);
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.write("first"));
    QVERIFY(!input.write("too long for it"));
    QVERIFY(!input.write("this one as well"));
    QVERIFY(input.write("second"));
    input.messageReceived();
    const QByteArrayList expected{"first", "second", CRecordingObserver::k_overran};
    QCOMPARE(observer.records(), expected);
    input.messageReceived();
    QCOMPARE(observer.records(), expected);
}

void TestMIDIInput::lossDuringADrainIsToldWithoutAnotherPacket()
{
    CRecordingObserver observer;
    CMIDITestInput input(16);
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    observer.hold();
    input.receive({"a"});
    observer.entered();
    input.receive({"longer than the ring"});
    observer.letGo();
    QTRY_COMPARE(observer.records(), QByteArrayList({"a", CRecordingObserver::k_overran}));
}

void TestMIDIInput::recordOfLengthZeroIsNoLoss()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(!input.write(QByteArray()));
    input.messageReceived();
    QCOMPARE(observer.records(), QByteArrayList());
}

void TestMIDIInput::endIsToldOnceAfterTheLastRecord()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.write("last"));
    input.noteOverrun();
    input.noteEnd();
    input.messageReceived();
    input.messageReceived();
    QCOMPARE(observer.records(), QByteArrayList({"last", CRecordingObserver::k_overran, CRecordingObserver::k_ended}));
}

void TestMIDIInput::notesAreToldOnTheDeliveryThread()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));
    input.noteEnd();
    input.wakeDelivery();
    QTRY_COMPARE(observer.records(), QByteArrayList{CRecordingObserver::k_ended});
    QVERIFY(qobject_cast<CMIDIThread*>(observer.thread()) != nullptr);
}

void TestMIDIInput::notesOfAnEarlierOpeningAreForgotten()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    input.noteOverrun();
    input.noteEnd();
    QVERIFY(input.openPort(0));
    input.receive({"a"});
    QTRY_COMPARE(observer.records(), QByteArrayList{"a"});
    input.closePort();
    QCOMPARE(observer.records(), QByteArrayList{"a"});
}

void TestMIDIInput::notesWithoutObserverAreDropped()
{
    CMIDITestInput input;
    input.initialize();
    input.noteOverrun();
    input.noteEnd();
    input.messageReceived();
    CRecordingObserver observer;
    input.registerObserver(&observer);
    input.messageReceived();
    QCOMPARE(observer.records(), QByteArrayList());
}

void TestMIDIInput::flowsAgainAfterCloseAndOpen()
{
    CRecordingObserver observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QByteArrayList expected;
    for (int round = 0; round < 100; ++round) {
        QVERIFY(input.openPort(0));
        expected.append(QByteArray::number(round));
        input.receive({expected.last()});
        QTRY_COMPARE_WITH_TIMEOUT(observer.records().size(), expected.size(), 30000);
        input.closePort();
    }
    QCOMPARE(observer.records(), expected);
}

void TestMIDIInput::closeOfANeverOpenedInput()
{
    CMIDITestInput input;
    input.initialize();
    input.closePort();
    input.closePort();
    QVERIFY(!input.isMIDIConnect());
}

void TestMIDIInput::millionRecordsFromAnotherThread()
{
    constexpr quint32 total = 1'000'000;
    CNumberChecker observer;
    CMIDITestInput input;
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));

    std::thread service([&] {
        for (quint32 number = 0; number < total;) {
            // A batch of any size, and records of the sizes that the device sends and others.
            for (quint32 batch = 1 + number % 5; batch > 0 && number < total;) {
                if (input.write(numberedRecord(number, 4 + static_cast<int>(number % 23)))) {
                    ++number;
                    --batch;
                } else {
                    input.wakeDelivery();
                    std::this_thread::yield();
                }
            }
            input.wakeDelivery();
        }
    });
    service.join();
    // Nothing more comes: the last record has to arrive by itself.
    QTRY_COMPARE_WITH_TIMEOUT(observer.m_received.load(), total, 120000);
    QCOMPARE(observer.m_last.load(), total - 1);
    QVERIFY(!observer.m_outOfOrder);
    QVERIFY(!observer.m_garbled);
}

void TestMIDIInput::floodDropsWholeRecordsOnly()
{
    constexpr quint32 total = 200'000;
    CNumberChecker observer;
    CMIDITestInput input(997);
    input.initialize();
    input.registerObserver(&observer);
    QVERIFY(input.openPort(0));

    quint32 stored = 0;
    quint32 lastStored = 0;
    std::thread service([&] {
        for (quint32 number = 0; number < total; ++number) {
            if (input.receive({numberedRecord(number, 4 + static_cast<int>(number % 61))}) == 1) {
                ++stored;
                lastStored = number;
            }
        }
    });
    service.join();
    QTRY_COMPARE_WITH_TIMEOUT(observer.m_received.load(), stored, 120000);
    QCOMPARE(observer.m_last.load(), lastStored);
    QVERIFY(!observer.m_outOfOrder);
    QVERIFY(!observer.m_garbled);
}

KTZ_TEST(QCoreApplication, TestMIDIInput)
#include "TestMIDIInput.moc"
