#include "app/common/CMutex.h"
#include "midi/CCircularBuffer.h"
#include "midi/mac/CMIDIInput_Mac.h"
#include "tests/fakes/coremidi/CFakeCoreMIDI.h"
#include "tests/support/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace
{
/// An input port whose ring can be reached.
class CInput : public CMIDIInput_Mac
{
  public:
    using CMIDIInput::ring;
    using CMIDIInput::writeRecord;
};

/// Notes how many bytes lie in the ring each time that a record is delivered.
class CRingObserver : public CMIDITransportObserver
{
  public:
    explicit CRingObserver(const CInput& input) : m_input(input) {}

    bool messageReceived(const unsigned char* /*data*/, int /*size*/) override
    {
        const std::scoped_lock lock(m_mutex);
        m_bytesLeft.push_back(m_input.ring()->avail());
        return true;
    }

    [[nodiscard]] std::vector<int> bytesLeft() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_bytesLeft;
    }

  private:
    const CInput& m_input;
    mutable CMutex m_mutex;
    std::vector<int> m_bytesLeft;
};

const QByteArray k_message = QByteArray::fromHex("F0007F7F0400F7");

/// Bytes 0, 1, 2, ... of a packet.
QByteArray packet(int size, int first = 0)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(first + i);
    return bytes;
}
} // namespace

class TestMacInput : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void initializeCreatesTheClientAndTheRing();
    void initializeGivesTheStatusAndLeavesNoClient();
    void openPortCallsInOrder();
    void openPortWithoutClientIsRefused();
    void openPortOnAnOpenInputChangesNothing();
    void openPortOutsideTheSources_data();
    void openPortOutsideTheSources();
    void openPortFails_data();
    void openPortFails();
    void openPortAfterAFailureWithoutCloseIsTakenForOpen();
    void closePortCallsInOrder();
    void closePortWithoutOpenTouchesNothing();
    void closePortIgnoresWhatTheSystemRefuses();
    void destructorDisposesTheClient();
    void destructorWithoutClientDisposesNothing();

    void recordsArriveInOrder_data();
    void recordsArriveInOrder();
    void threePacketsMakeThreeRecordsInOrder();
    void threePacketsMakeOneWakeUpAfterTheLast();
    void aListOfNoPacketsOnlyWakes();
    void aPacketOfLengthZeroMakesNoRecord();
    void theLargestPacketArrivesWhole();
    void withoutObserverTheRingStillEmpties();
    void readProcIgnoresNull();
    void readProcIgnoresAnInputWithoutRing();
    void readProcIgnoresAnInputThatHasGone();
    void readProcStillRunsWhileTheInputGoes();
    void readMessageKeepsTheUpperBytesOfTheSize();
    void readMessageIgnoresNull();
    void aFloodThatFillsTheRingDropsWholeRecords();

  private:
    /// An initialized input; the calls so far are forgotten.
    std::unique_ptr<CInput> initializedInput();

    std::optional<CFakeCoreMIDI> m_fake;
    MIDIEndpointRef m_source = 0;
};

void TestMacInput::init()
{
    CTestCase::init();
    m_fake.emplace();
    m_source = m_fake->addSource("Port3", "Trellwick KTZ-JX");
}

void TestMacInput::cleanup()
{
    QCOMPARE(m_fake->openClients(), 0);
    QCOMPARE(m_fake->openPorts(), 0);
    QCOMPARE(m_fake->heldStrings(), 0);
    QCOMPARE(m_fake->overReleasedStrings(), 0);
}

std::unique_ptr<CInput> TestMacInput::initializedInput()
{
    auto input = std::make_unique<CInput>();
    [&] { QCOMPARE(input->initialize(), noErr); }();
    m_fake->takeCalls();
    return input;
}

void TestMacInput::initializeCreatesTheClientAndTheRing()
{
    CInput input;
    QVERIFY(input.ring() == nullptr);
    QCOMPARE(input.initialize(), noErr);
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIClientCreate(MIDI Client, null, null)"});
    QCOMPARE(input.ring()->size(), 0x3C0000);
    QCOMPARE(input.ring()->avail(), 0);
    QVERIFY(!input.isMIDIConnect());
}

void TestMacInput::initializeGivesTheStatusAndLeavesNoClient()
{
    m_fake->failCall("MIDIClientCreate", 1, -10839);
    CInput input;
    QCOMPARE(input.initialize(), -10839);
    m_fake->takeCalls();
    QVERIFY(!input.openPort(0));
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacInput::openPortCallsInOrder()
{
    const auto input = initializedInput();
    QVERIFY(input->openPort(0));
    QVERIFY(input->isMIDIConnect());
    const QStringList expected{"MIDIInputPortCreate(101, Input port, set, null)", "MIDIGetSource(0)",
                               "MIDIPortConnectSource(201, 301, set)"};
    QCOMPARE(m_fake->takeCalls(), expected);
    input->closePort();
}

void TestMacInput::openPortWithoutClientIsRefused()
{
    CInput input;
    QVERIFY(!input.openPort(0));
    QVERIFY(!input.isMIDIConnect());
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacInput::openPortOnAnOpenInputChangesNothing()
{
    m_fake->addSource("Port4", "Trellwick KTZ-JX");
    const auto input = initializedInput();
    QVERIFY(input->openPort(0));
    m_fake->takeCalls();
    QVERIFY(input->openPort(1));
    QVERIFY(input->isMIDIConnect());
    QCOMPARE(m_fake->takeCalls(), QStringList());
    input->closePort();
}

void TestMacInput::openPortOutsideTheSources_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("one past the last") << 1;
    QTest::newRow("not found by name") << -1;
}

void TestMacInput::openPortOutsideTheSources()
{
    QFETCH(int, index);
    const auto input = initializedInput();
    QVERIFY(!input->openPort(index));
    QVERIFY(!input->isMIDIConnect());
    QCOMPARE(m_fake->openPorts(), 1); // until closePort()
    m_fake->takeCalls();
    input->closePort();
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIPortDispose(201)"});
}

void TestMacInput::openPortFails_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("callsOfOpen");
    QTest::addColumn<QStringList>("callsOfClose");

    const QString create = "MIDIInputPortCreate(101, Input port, set, null)";
    const QString get = "MIDIGetSource(0)";
    const QString connectSource = "MIDIPortConnectSource(201, 301, set)";
    const QString dispose = "MIDIPortDispose(201)";
    QTest::newRow("no port") << "MIDIInputPortCreate" << QStringList{create} << QStringList();
    QTest::newRow("no source") << "MIDIGetSource" << QStringList{create, get} << QStringList{dispose};
    QTest::newRow("not connected") << "MIDIPortConnectSource" << QStringList{create, get, connectSource}
                                   << QStringList{dispose};
}

void TestMacInput::openPortFails()
{
    QFETCH(QString, call);
    const auto input = initializedInput();
    m_fake->failCall(call);
    QVERIFY(!input->openPort(0));
    QVERIFY(!input->isMIDIConnect());
    QTEST(m_fake->takeCalls(), "callsOfOpen");
    input->closePort();
    QTEST(m_fake->takeCalls(), "callsOfClose");

    // Nothing of the failure is left.
    CRecordingObserver observer;
    input->registerObserver(&observer);
    QVERIFY(input->openPort(0));
    m_fake->receive(m_source, {k_message});
    QTRY_COMPARE(observer.records(), QList<QByteArray>{k_message});
    input->closePort();
}

void TestMacInput::openPortAfterAFailureWithoutCloseIsTakenForOpen()
{
    const auto input = initializedInput();
    QVERIFY(!input->openPort(5));
    QVERIFY(input->openPort(0)); // the port exists
    QVERIFY(!input->isMIDIConnect());
    input->closePort();
}

void TestMacInput::closePortCallsInOrder()
{
    const auto input = initializedInput();
    QVERIFY(input->openPort(0));
    m_fake->takeCalls();
    input->closePort();
    QVERIFY(!input->isMIDIConnect());
    const QStringList expected{"MIDIPortDisconnectSource(201, 301)", "MIDIPortDispose(201)"};
    QCOMPARE(m_fake->takeCalls(), expected);
    input->closePort();
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacInput::closePortWithoutOpenTouchesNothing()
{
    CInput uninitialized;
    uninitialized.closePort();
    const auto input = initializedInput();
    input->closePort();
    QCOMPARE(m_fake->takeCalls(), QStringList());
    QVERIFY(!input->isMIDIConnect());
}

void TestMacInput::closePortIgnoresWhatTheSystemRefuses()
{
    const auto input = initializedInput();
    QVERIFY(input->openPort(0));
    m_fake->failCall("MIDIPortDisconnectSource");
    m_fake->failCall("MIDIPortDispose");
    input->closePort();
    QVERIFY(!input->isMIDIConnect());
    QVERIFY(input->openPort(0));
    input->closePort();
}

void TestMacInput::destructorDisposesTheClient()
{
    {
        const auto input = initializedInput();
    }
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIClientDispose(101)"});
}

void TestMacInput::destructorWithoutClientDisposesNothing()
{
    m_fake->failCall("MIDIClientCreate");
    {
        CInput input;
        QCOMPARE(input.initialize(), CFakeCoreMIDI::k_refused);
        m_fake->takeCalls();
    }
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacInput::recordsArriveInOrder_data()
{
    QTest::addColumn<CFakeCoreMIDI::Layout>("layout");
    QTest::addColumn<QList<int>>("sizes");
    for (const auto layout : {CFakeCoreMIDI::Layout::Packed, CFakeCoreMIDI::Layout::Aligned}) {
        const char* name = layout == CFakeCoreMIDI::Layout::Packed ? "packed" : "aligned";
        const auto row = [&](const char* what, const QList<int>& sizes) {
            QTest::addRow("%s: %s", name, what) << layout << sizes;
        };
        row("one byte", {1});
        row("every remainder of 4", {1, 2, 3, 4, 5, 6, 7, 8, 9});
        row("every remainder of 8, odd addresses", {3, 11, 7, 15, 1, 13, 5, 9});
        row("the device's messages", {11, 11, 15, 11, 9, 15});
        row("a whole packet between small ones", {1, 256, 1});
        row("longer than the packet type's array", {300, 2, 4095, 1});
        row("nothing between two records", {5, 0, 0, 5});
        row("the largest behind a small one", {7, CMIDIInput::k_largestRecord, 3});
    }
}

void TestMacInput::recordsArriveInOrder()
{
    QFETCH(CFakeCoreMIDI::Layout, layout);
    QFETCH(QList<int>, sizes);
    CFakeCoreMIDI::setLayout(layout);
    QList<QByteArray> packets;
    QList<QByteArray> records;
    for (const int size : sizes) {
        packets.append(packet(size, static_cast<int>(packets.size())));
        if (size > 0)
            records.append(packets.last());
    }
    CRecordingObserver observer;
    const auto input = initializedInput();
    input->registerObserver(&observer);
    QVERIFY(input->openPort(0));
    std::thread service([&] { m_fake->receive(m_source, packets); });
    service.join();
    QTRY_COMPARE(observer.records(), records);
    input->closePort();
}

void TestMacInput::threePacketsMakeThreeRecordsInOrder()
{
    CRecordingObserver observer;
    const auto input = initializedInput();
    input->registerObserver(&observer);
    QVERIFY(input->openPort(0));
    const QList<QByteArray> packets{packet(3), packet(4), packet(5)};
    m_fake->receive(m_source, packets);
    QTRY_COMPARE(observer.records(), packets);
    input->closePort();
}

void TestMacInput::threePacketsMakeOneWakeUpAfterTheLast()
{
    // The sleeping thread finds all three records: the first is delivered while the other two lie in the ring.
    const auto input = initializedInput();
    for (int round = 0; round < 20; ++round) {
        CRingObserver observer(*input);
        input->registerObserver(&observer);
        QVERIFY(input->openPort(0));
        m_fake->receive(m_source, {packet(3), packet(4), packet(5)});
        const std::vector<int> expected{2 + 4 + 2 + 5, 2 + 5, 0};
        QTRY_VERIFY(observer.bytesLeft() == expected);
        input->closePort();
    }
}

void TestMacInput::aListOfNoPacketsOnlyWakes()
{
    CRecordingObserver observer;
    const auto input = initializedInput();
    input->registerObserver(&observer);
    QVERIFY(input->openPort(0));
    m_fake->receive(m_source, {});
    QCOMPARE(input->ring()->avail(), 0);

    // A record that lies in the ring is delivered by that wake-up.
    QVERIFY(input->writeRecord(reinterpret_cast<const unsigned char*>(k_message.constData()),
                               static_cast<quint16>(k_message.size())));
    m_fake->receive(m_source, {});
    QTRY_COMPARE(observer.records(), QList<QByteArray>{k_message});
    input->closePort();
}

void TestMacInput::aPacketOfLengthZeroMakesNoRecord()
{
    const auto input = initializedInput();
    const QByteArray list = CFakeCoreMIDI::packetList({QByteArray()});
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, input.get());
    QCOMPARE(input->ring()->avail(), 0);
}

void TestMacInput::theLargestPacketArrivesWhole()
{
    CRecordingObserver observer;
    const auto input = initializedInput();
    input->registerObserver(&observer);
    QVERIFY(input->openPort(0));
    const QList<QByteArray> packets{packet(CMIDIInput::k_largestRecord), k_message};
    m_fake->receive(m_source, packets);
    QTRY_COMPARE(observer.records(), packets);
    input->closePort();
}

void TestMacInput::withoutObserverTheRingStillEmpties()
{
    const auto input = initializedInput();
    QVERIFY(input->openPort(0));
    m_fake->receive(m_source, {packet(3), packet(4)});
    QTRY_COMPARE(input->ring()->avail(), 0);

    CRecordingObserver observer;
    input->registerObserver(&observer);
    m_fake->receive(m_source, {k_message});
    QTRY_COMPARE(observer.records(), QList<QByteArray>{k_message});
    input->closePort();
}

void TestMacInput::readProcIgnoresNull()
{
    const auto input = initializedInput();
    const QByteArray list = CFakeCoreMIDI::packetList({k_message});
    CMIDIInput_Mac::midiReadProc(nullptr, nullptr, input.get());
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, nullptr);
    QCOMPARE(input->ring()->avail(), 0);
}

void TestMacInput::readProcIgnoresAnInputWithoutRing()
{
    CInput input;
    const QByteArray list = CFakeCoreMIDI::packetList({k_message});
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, &input);
    QVERIFY(input.ring() == nullptr);
}

void TestMacInput::readProcIgnoresAnInputThatHasGone()
{
    const QByteArray list = CFakeCoreMIDI::packetList({k_message});
    alignas(CInput) std::array<unsigned char, sizeof(CInput)> memory;
    auto* input = new (memory.data()) CInput;
    QCOMPARE(input->initialize(), noErr);
    input->~CInput();
    memory.fill(0xEE); // as whatever uses it next
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, memory.data());
    QCOMPARE(std::ranges::count(memory, 0xEE), std::ssize(memory));
}

void TestMacInput::readProcStillRunsWhileTheInputGoes()
{
    const QByteArray list = CFakeCoreMIDI::packetList({packet(CMIDIInput::k_largestRecord)});
    alignas(CInput) std::array<unsigned char, sizeof(CInput)> memory;
    for (int round = 0; round < 100; ++round) {
        auto* input = new (memory.data()) CInput;
        QCOMPARE(input->initialize(), noErr);
        QVERIFY(input->openPort(0));
        std::atomic<bool> running = false;
        std::atomic<bool> ending = false;
        std::thread service([&] {
            while (!ending) {
                CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr,
                                             memory.data());
                running = true;
            }
        });
        while (!running)
            std::this_thread::yield();
        input->closePort();
        input->~CInput();
        memory.fill(0xEE);
        ending = true;
        service.join();
        QCOMPARE(std::ranges::count(memory, 0xEE), std::ssize(memory));
    }
}

void TestMacInput::readMessageKeepsTheUpperBytesOfTheSize()
{
    const auto input = initializedInput();
    const QByteArray list = CFakeCoreMIDI::packetList({k_message});
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, input.get());
    QByteArray buffer(CMIDIInput::k_largestRecord, '\0');
    int size = 0x12340000 | 0x1FFF;
    input->readMessageFromBuffer(reinterpret_cast<unsigned char*>(buffer.data()), &size);
    QCOMPARE(size, 0x12340000 | static_cast<int>(k_message.size()));
    QCOMPARE(buffer.left(k_message.size()), k_message);
}

void TestMacInput::readMessageIgnoresNull()
{
    unsigned char byte = 0xAA;
    int size = 5;
    CInput withoutRing;
    withoutRing.readMessageFromBuffer(&byte, &size);

    const auto input = initializedInput();
    const QByteArray list = CFakeCoreMIDI::packetList({k_message});
    CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, input.get());
    const int stored = input->ring()->avail();
    input->readMessageFromBuffer(nullptr, &size);
    input->readMessageFromBuffer(&byte, nullptr);
    QCOMPARE(input->ring()->avail(), stored);
    QCOMPARE(size, 5);
    QCOMPARE(byte, 0xAA);
}

void TestMacInput::aFloodThatFillsTheRingDropsWholeRecords()
{
    // Nothing is delivered meanwhile: the ring takes as many records as fit, and the rest is dropped whole and noted.
    CRecordingObserver observer;
    const auto input = initializedInput();
    input->registerObserver(&observer);
    const QByteArray largest = packet(CMIDIInput::k_largestRecord);
    const QByteArray list = CFakeCoreMIDI::packetList({largest});
    const auto fitting = input->ring()->size() / (2 + largest.size());
    for (int i = 0; i < fitting + 2; ++i)
        CMIDIInput_Mac::midiReadProc(reinterpret_cast<const MIDIPacketList*>(list.constData()), nullptr, input.get());
    input->messageReceived();
    QCOMPARE(observer.records(), QByteArrayList(fitting, largest) << CRecordingObserver::k_overran);
}

KTZ_TEST(QCoreApplication, TestMacInput)
#include "TestMacInput.moc"
