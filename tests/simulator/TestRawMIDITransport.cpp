#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CRawMIDITransport.h"
#include "tests/simulator/FakeRawMIDI.h"
#include "tests/support/CTestCase.h"

#include <cerrno>

using namespace DeviceMessages;

class TestRawMIDITransport : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void opensBothDirections();
    void deviceThatIsNotThereGivesOneLine();
    void nameThatWouldBreakALineIsMadePrintable();
    void messageIsAnswered();
    void unansweredRoomIsWaitedFor();
    void moreThanCanBeKeptIsDroppedInWholePackets();
    void readErrorIsTheEnd();
    void writeErrorIsTheEnd();
    void unplugClosesBothDirections();
    void destructorUnplugsTheDevice();
};

void TestRawMIDITransport::init()
{
    CTestCase::init();
    FakeRawMIDI::reset();
}

void TestRawMIDITransport::opensBothDirections()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QVERIFY(transport.descriptors().empty());
    QCOMPARE(transport.open(device), QString());
    QCOMPARE(transport.description(), "raw MIDI device hw:0,0,2");
    QCOMPARE(FakeRawMIDI::openPorts(), 2);
    QVERIFY(device.isPlugged());
    QCOMPARE(transport.descriptors().size(), 1u);
}

void TestRawMIDITransport::deviceThatIsNotThereGivesOneLine()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:9,0,0");
    QCOMPARE(transport.open(device), "cannot open raw MIDI device hw:9,0,0: No such device");
    QVERIFY(!device.isPlugged());
    QCOMPARE(FakeRawMIDI::openPorts(), 0);
}

void TestRawMIDITransport::nameThatWouldBreakALineIsMadePrintable()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:9\n\x1b[2J");
    QCOMPARE(transport.open(device), "cannot open raw MIDI device hw:9??[2J: No such device");
    QCOMPARE(transport.description(), "raw MIDI device hw:9??[2J");
}

void TestRawMIDITransport::messageIsAnswered()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::send(start().left(4));
    QVERIFY(transport.process());
    QCOMPARE(FakeRawMIDI::taken(), QByteArray());
    FakeRawMIDI::send(start().mid(4) + keep());
    QVERIFY(transport.process());
    QCOMPARE(FakeRawMIDI::taken(), start() + keep());
}

void TestRawMIDITransport::unansweredRoomIsWaitedFor()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::setRoom(4);
    device.turn(1, 2);
    QCOMPARE(FakeRawMIDI::taken(), noticeValue(1, 2).left(4));
    QCOMPARE(transport.descriptors().size(), 2u);
    QVERIFY(transport.process());
    QCOMPARE(FakeRawMIDI::taken(), QByteArray());
    FakeRawMIDI::setRoom(-1);
    QVERIFY(transport.process());
    QCOMPARE(FakeRawMIDI::taken(), noticeValue(1, 2).mid(4));
    QCOMPARE(transport.descriptors().size(), 1u);
}

void TestRawMIDITransport::moreThanCanBeKeptIsDroppedInWholePackets()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::setRoom(0);
    const qsizetype kept = CRawMIDITransport::k_mostKept / noticeValue(0, 0).size();
    for (qsizetype i = 0; i < kept + 5; ++i)
        device.turn(0, static_cast<int>(i % 128));
    FakeRawMIDI::setRoom(-1);
    QVERIFY(transport.process());
    const QByteArray taken = FakeRawMIDI::taken();
    QCOMPARE(taken.size(), kept * noticeValue(0, 0).size());
    QVERIFY(taken.endsWith(noticeValue(0, static_cast<int>((kept - 1) % 128))));
}

void TestRawMIDITransport::readErrorIsTheEnd()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::failReading(-ENODEV);
    QVERIFY(!transport.process());
}

void TestRawMIDITransport::writeErrorIsTheEnd()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::failWriting(-ENODEV);
    device.turn(1, 2);
    QVERIFY(!transport.process());
}

void TestRawMIDITransport::unplugClosesBothDirections()
{
    CSimulatedDevice device;
    CRawMIDITransport transport("hw:0,0,2");
    QCOMPARE(transport.open(device), QString());
    FakeRawMIDI::setRoom(0);
    device.turn(1, 2);
    device.unplug();
    QCOMPARE(FakeRawMIDI::openPorts(), 0);
    QVERIFY(transport.descriptors().empty());
    FakeRawMIDI::send(keep());
    QVERIFY(transport.process());
    QVERIFY(device.received().isEmpty());
}

void TestRawMIDITransport::destructorUnplugsTheDevice()
{
    CSimulatedDevice device;
    {
        CRawMIDITransport transport("hw:0,0,2");
        QCOMPARE(transport.open(device), QString());
    }
    QVERIFY(!device.isPlugged());
    QCOMPARE(FakeRawMIDI::openPorts(), 0);
}

KTZ_TEST(QCoreApplication, TestRawMIDITransport)
#include "TestRawMIDITransport.moc"
