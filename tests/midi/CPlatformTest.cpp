#include "tests/midi/CPlatformTest.h"

#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPort.h"
#include "midi/CMIDIThread.h"
#include "midi/MIDIPlatform.h"
#include "tests/support/CRecordingObserver.h"

#include <QElapsedTimer>

#include <chrono>

namespace
{
const QByteArray k_message = QByteArray::fromHex("F0007F7F0400F7");

/// size bytes of one message, no two neighbours alike.
QByteArray message(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 127);
    bytes.front() = '\xF0';
    bytes.back() = '\xF7';
    return bytes;
}

bool send(CMIDIOutput& output, const QByteArray& bytes)
{
    return output.sendMessage(reinterpret_cast<const unsigned char*>(bytes.constData()),
                              static_cast<int>(bytes.size()));
}

/// The platform's port objects, initialized, the input last; they close themselves.
struct Ports
{
    Ports()
    {
        initialized = output->initialize() == 0 && input->initialize() == 0;
        input->registerObserver(&observer);
    }

    ~Ports()
    {
        close();
    }

    Q_DISABLE_COPY_MOVE(Ports)

    [[nodiscard]] bool open(int index) const
    {
        return initialized && input->openPort(index) && output->openPort(index);
    }

    void close() const
    {
        input->closePort();
        output->closePort();
    }

    CRecordingObserver observer;
    std::unique_ptr<CMIDIInput> input = MIDIPlatform::createInput();
    std::unique_ptr<CMIDIOutput> output = MIDIPlatform::createOutput();
    bool initialized = false;
};
} // namespace

void CPlatformTest::init()
{
    CTestCase::init();
    m_rig = createRig();
}

void CPlatformTest::cleanup()
{
    m_rig.reset();
}

void CPlatformTest::plugOne()
{
    m_rig->plug("Synth", "Jack");
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::listDestinations(), 1);
}

void CPlatformTest::systemWithoutDevicesHasNoPorts()
{
    QCOMPARE(MIDIPlatform::listSources(), 0);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
    QCOMPARE(MIDIPlatform::sourceCount(), 0);
    QCOMPARE(MIDIPlatform::destinationCount(), 0);
    QCOMPARE(MIDIPlatform::source(0), 0u);
    QCOMPARE(MIDIPlatform::destination(0), 0u);
}

void CPlatformTest::portsAreListedUnderTheirNames()
{
    m_rig->plug("Synth", "Jack");
    m_rig->plug("Organ", "Plug");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    QCOMPARE(MIDIPlatform::listDestinations(), 2);
    QCOMPARE(MIDIPlatform::sourceCount(), 2);
    QCOMPARE(MIDIPlatform::destinationCount(), 2);
    for (const MIDIEndpoint endpoint : {MIDIPlatform::source(0), MIDIPlatform::destination(0)}) {
        QCOMPARE(MIDIPlatform::deviceName(endpoint), "Synth");
        QCOMPARE(MIDIPlatform::endpointName(endpoint), "Jack");
        QCOMPARE(CMIDIPort::getPortName(endpoint, 0), "Synth Jack");
    }
    for (const MIDIEndpoint endpoint : {MIDIPlatform::source(1), MIDIPlatform::destination(1)})
        QCOMPARE(CMIDIPort::getPortName(endpoint, 1), "Organ Plug");
}

void CPlatformTest::indexOutsideTheListHasNoEndpoint()
{
    plugOne();
    m_rig->plug("Organ", "Plug");
    // Counting sees the second, and lists nothing.
    QCOMPARE(MIDIPlatform::sourceCount(), 2);
    QCOMPARE(MIDIPlatform::destinationCount(), 2);
    for (const int index : {-1, 1, 2, 1000}) {
        QCOMPARE(MIDIPlatform::source(index), 0u);
        QCOMPARE(MIDIPlatform::destination(index), 0u);
    }
}

void CPlatformTest::indexKeepsItsPortUntilTheNextList()
{
    m_rig->plug("Synth", "Jack");
    m_rig->plug("Organ", "Plug");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    const MIDIEndpoint organ = MIDIPlatform::source(1);
    m_rig->unplug(0);
    QCOMPARE(MIDIPlatform::sourceCount(), 1);
    QCOMPARE(MIDIPlatform::source(1), organ);
    QCOMPARE(MIDIPlatform::deviceName(organ), "Organ");
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::source(0)), "Organ");
    QCOMPARE(MIDIPlatform::source(1), 0u);
}

void CPlatformTest::portsComeClosed()
{
    plugOne();
    const Ports ports;
    QVERIFY(ports.initialized);
    QVERIFY(!ports.input->isMIDIConnect());
    QVERIFY(!ports.output->isMIDIConnect());
    QVERIFY(!send(*ports.output, k_message));
    m_rig->say(0, k_message);
    QVERIFY(m_rig->heard(0).isEmpty());
    QCOMPARE(ports.observer.count(), 0);
}

void CPlatformTest::portsOpenCloseAndOpenAgain()
{
    plugOne();
    const Ports ports;
    QByteArrayList messages;
    for (int round = 1; round <= 3; ++round) {
        QVERIFY(ports.open(0));
        QVERIFY(ports.input->isMIDIConnect());
        QVERIFY(ports.output->isMIDIConnect());
        QVERIFY(send(*ports.output, k_message));
        m_rig->say(0, k_message);
        messages.append(k_message);
        QCOMPARE(m_rig->heard(0), messages);
        QTRY_COMPARE(ports.observer.records(), messages);
        ports.close();
        QVERIFY(!ports.input->isMIDIConnect());
        QVERIFY(!ports.output->isMIDIConnect());
        QVERIFY(!send(*ports.output, k_message));
        ports.close();
    }
    QCOMPARE(m_rig->heard(0), messages);
}

void CPlatformTest::openOfAnOpenPortChangesNothing()
{
    m_rig->plug("Synth", "Jack");
    m_rig->plug("Organ", "Plug");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    QCOMPARE(MIDIPlatform::listDestinations(), 2);
    const Ports ports;
    QVERIFY(ports.open(0));
    QVERIFY(ports.open(1));
    QVERIFY(ports.open(77));
    QVERIFY(send(*ports.output, k_message));
    QCOMPARE(m_rig->heard(0), QByteArrayList{k_message});
    QVERIFY(m_rig->heard(1).isEmpty());
    m_rig->say(1, message(9));
    m_rig->say(0, k_message);
    QTRY_COMPARE(ports.observer.records(), QByteArrayList{k_message});
}

void CPlatformTest::openOutsideTheListFails_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("not found by name") << -1;
    QTest::newRow("one past the last") << 1;
}

void CPlatformTest::openOutsideTheListFails()
{
    QFETCH(int, index);
    plugOne();
    const Ports ports;
    QVERIFY(!ports.input->openPort(index));
    QVERIFY(!ports.output->openPort(index));
    QVERIFY(!ports.input->isMIDIConnect());
    QVERIFY(!ports.output->isMIDIConnect());
    QVERIFY(!send(*ports.output, k_message));
    ports.close();
    QVERIFY(ports.open(0));
}

void CPlatformTest::openOfAVanishedSourceFails()
{
    plugOne();
    const Ports ports;
    m_rig->unplug(0);
    QVERIFY(!ports.input->openPort(0));
    QVERIFY(!ports.input->isMIDIConnect());
}

void CPlatformTest::openOfAVanishedDestinationFails()
{
    if (!m_rig->noticesLostDestinations())
        QSKIP("Destinations of this system cannot be taken away.");
    plugOne();
    const Ports ports;
    m_rig->unplug(0);
    QVERIFY(!ports.output->openPort(0));
    QVERIFY(!ports.output->isMIDIConnect());
}

void CPlatformTest::messageIsCutIntoPackets_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("packets");
    QTest::newRow("one byte") << 1 << QList{1};
    QTest::newRow("a change of a knob") << 15 << QList{15};
    QTest::newRow("one less than a packet") << 255 << QList{255};
    QTest::newRow("exactly a packet") << 256 << QList{256};
    QTest::newRow("one more than a packet") << 257 << QList{256, 1};
    QTest::newRow("exactly two packets") << 512 << QList{256, 256};
    QTest::newRow("600 bytes") << 600 << QList{256, 256, 88};
}

void CPlatformTest::messageIsCutIntoPackets()
{
    QFETCH(int, size);
    QFETCH(QList<int>, packets);
    plugOne();
    const Ports ports;
    QVERIFY(ports.open(0));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(send(*ports.output, message(size)));
    QVERIFY(std::chrono::nanoseconds(timer.nsecsElapsed()) >= (packets.size() - 1) * CMIDIOutput::k_packetPause);
    QList<int> sizes;
    for (const QByteArray& packet : m_rig->heard(0))
        sizes.append(static_cast<int>(packet.size()));
    QCOMPARE(sizes, packets);
    QCOMPARE(m_rig->heard(0).join(), message(size));
}

void CPlatformTest::nothingIsSent_data()
{
    QTest::addColumn<bool>("opened");
    QTest::addColumn<bool>("connected");
    QTest::addColumn<bool>("hasData");
    QTest::addColumn<int>("size");
    QTest::newRow("closed") << false << false << true << 7;
    QTest::newRow("closed, flag set from outside") << false << true << true << 7;
    QTest::newRow("device lost") << true << false << true << 7;
    QTest::newRow("null data") << true << true << false << 7;
    QTest::newRow("size 0") << true << true << true << 0;
    QTest::newRow("negative size") << true << true << true << -1;
}

void CPlatformTest::nothingIsSent()
{
    QFETCH(bool, opened);
    QFETCH(bool, connected);
    QFETCH(bool, hasData);
    QFETCH(int, size);
    plugOne();
    const Ports ports;
    if (opened)
        QVERIFY(ports.open(0));
    ports.output->setMIDIConnection(connected);
    const auto* data = reinterpret_cast<const unsigned char*>(k_message.constData());
    QVERIFY(!ports.output->sendMessage(hasData ? data : nullptr, size));
    QVERIFY(m_rig->heard(0).isEmpty());
}

void CPlatformTest::vanishedDestinationFailsEverySend()
{
    if (!m_rig->noticesLostDestinations())
        QSKIP("Destinations of this system cannot be taken away.");
    plugOne();
    const Ports ports;
    QVERIFY(ports.open(0));
    QVERIFY(send(*ports.output, k_message));
    m_rig->unplug(0);
    QVERIFY(!send(*ports.output, k_message));
    QVERIFY(!send(*ports.output, k_message));
}

void CPlatformTest::recordsArriveWholeAndInOrderOnTheDeliveryThread()
{
    plugOne();
    const Ports ports;
    QVERIFY(ports.open(0));
    QByteArrayList messages;
    for (const int size : {2, 3, 11, 15, 255, 256, 257, 4096}) {
        messages.append(message(size));
        m_rig->say(0, messages.last());
    }
    QTRY_COMPARE(ports.observer.records(), messages);
    QVERIFY(qobject_cast<CMIDIThread*>(ports.observer.thread()) != nullptr);
}

void CPlatformTest::closedPortHearsNothing()
{
    plugOne();
    const Ports ports;
    QVERIFY(ports.open(0));
    ports.close();
    m_rig->say(0, message(9));
    QVERIFY(ports.open(0));
    m_rig->say(0, k_message);
    QTRY_COMPARE(ports.observer.records(), QByteArrayList{k_message});
}

void CPlatformTest::lossIsToldAfterWholeRecords()
{
    plugOne();
    Ports ports;
    QVERIFY(ports.open(0));
    ports.observer.hold();
    m_rig->say(0, k_message);
    ports.observer.entered();
    // More than the ring holds while nobody takes anything out of it.
    const QByteArray large = message(4096);
    for (int i = 0; i < 1200; ++i)
        m_rig->say(0, large);
    ports.observer.letGo();
    QTRY_VERIFY(ports.observer.records().contains(CRecordingObserver::k_overran));
    QVERIFY(qobject_cast<CMIDIThread*>(ports.observer.thread()) != nullptr);
    QByteArrayList records = ports.observer.records();
    QCOMPARE(records.takeFirst(), k_message);
    records.removeAll(CRecordingObserver::k_overran);
    QVERIFY(records.size() < 1200);
    QCOMPARE(records, QByteArrayList(records.size(), large));
}

void CPlatformTest::endIsToldAfterTheLastRecord()
{
    plugOne();
    const Ports ports;
    QVERIFY(ports.open(0));
    m_rig->say(0, k_message);
    QTRY_COMPARE(ports.observer.count(), 1);
    if (!m_rig->endReception())
        QSKIP("Reception has no end on this system.");
    QTRY_COMPARE(ports.observer.records(), QByteArrayList({k_message, CRecordingObserver::k_ended}));
    QVERIFY(qobject_cast<CMIDIThread*>(ports.observer.thread()) != nullptr);
}
