#include "app/common/Constants.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPortWrapper.h"
#include "midi/MIDIPlatform.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CALSADeviceTransport.h"
#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/simulator/COtherClient.h"
#include "tests/support/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

#include <cerrno>

using namespace DeviceMessages;

namespace
{
/// The device on an open transport.
struct OpenDevice
{
    OpenDevice() : error(transport.open(device)), client(FakeALSA::newestOpenClient()) {}

    CSimulatedDevice device;
    CALSADeviceTransport transport{3};
    QString error;
    int client;
};
} // namespace

class TestALSADeviceTransport : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void isAClientWithThreePorts();
    void editorFindsThePortThatSpeaks_data();
    void editorFindsThePortThatSpeaks();
    void everyFailureToOpenGivesOneLine_data();
    void everyFailureToOpenGivesOneLine();
    void editorFindsItAndIsAnswered();
    void onlyTheThirdPortIsHeard();
    void otherEventsReachTheDeviceAsBytes();
    void overrunQueueGoesOn();
    void readErrorIsTheEnd();
    void sendThatIsRefusedIsDropped();
    void listenerWithoutRoomLosesTheMessageAlone();
    void unplugRemovesTheClient();
    void destructorUnplugsTheDevice();
};

void TestALSADeviceTransport::init()
{
    CTestCase::init();
    FakeALSA::reset();
}

void TestALSADeviceTransport::isAClientWithThreePorts()
{
    CSimulatedDevice device;
    CALSADeviceTransport transport{3};
    QVERIFY(transport.descriptors().empty());
    QCOMPARE(transport.open(device), QString());
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(transport.description(),
             QStringLiteral("ALSA sequencer client \"Trellwick KTZ-JX\", port %1:2").arg(client));
    QCOMPARE(FakeALSA::clientName(client), QByteArray("Trellwick KTZ-JX"));
    QCOMPARE(FakeALSA::portName(client, 0), QByteArray("Port1"));
    QCOMPARE(FakeALSA::portName(client, 1), QByteArray("Port2"));
    QCOMPARE(FakeALSA::portName(client, 2), QByteArray("Port3"));
    QCOMPARE(FakeALSA::queueCells(client), 2000);
    QCOMPARE(transport.descriptors().size(), 1u);
    QVERIFY(device.isPlugged());
}

void TestALSADeviceTransport::editorFindsThePortThatSpeaks_data()
{
    QTest::addColumn<int>("cables");
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
}

void TestALSADeviceTransport::editorFindsThePortThatSpeaks()
{
    QFETCH(int, cables);
    CSimulatedDevice device;
    CALSADeviceTransport transport(cables);
    QCOMPARE(transport.open(device), QString());
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createOutputPortList(), cables);
    const std::unique_ptr<CMIDIOutput> output = MIDIPlatform::createOutput();
    QCOMPARE(output->initialize(), 0);
    QVERIFY(output->openPort(directory.getOutputPortByName(k_jxEditorPortName)));
    const QByteArray message = start();
    QVERIFY(output->sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                                static_cast<int>(message.size())));
    QVERIFY(transport.process());
    QCOMPARE(device.received(), QList{start()});
    output->closePort();
}

void TestALSADeviceTransport::everyFailureToOpenGivesOneLine_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QString>("error");
    QTest::newRow("no sequencer") << QByteArray("snd_seq_open") << "cannot open the ALSA sequencer: No such device";
    QTest::newRow("no coder") << QByteArray("snd_midi_event_new") << "cannot create an ALSA MIDI coder: No such device";
    QTest::newRow("no name") << QByteArray("snd_seq_set_client_name")
                             << "cannot open the ALSA sequencer: No such device";
    QTest::newRow("no larger queue") << QByteArray("snd_seq_set_client_pool_input")
                                     << "cannot open the ALSA sequencer: No such device";
    QTest::newRow("no port") << QByteArray("snd_seq_create_simple_port")
                             << "cannot create an ALSA port: No such device";
}

void TestALSADeviceTransport::everyFailureToOpenGivesOneLine()
{
    QFETCH(QByteArray, function);
    QFETCH(QString, error);
    CSimulatedDevice device;
    CALSADeviceTransport transport{3};
    FakeALSA::failNext(function.constData(), -ENODEV);
    QCOMPARE(transport.open(device), error);
    QVERIFY(!device.isPlugged());
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QCOMPARE(FakeALSA::printedMessages(), 0);
    QVERIFY(transport.descriptors().empty());
    QVERIFY(transport.process());
}

void TestALSADeviceTransport::editorFindsItAndIsAnswered()
{
    CSimulatedDevice device;
    CALSADeviceTransport transport{3};
    QCOMPARE(transport.open(device), QString());

    CMIDIPortWrapper directory;
    QVERIFY(directory.createInputPortList() > 0);
    QVERIFY(directory.createOutputPortList() > 0);
    CRecordingObserver answers;
    const std::unique_ptr<CMIDIInput> input = MIDIPlatform::createInput();
    const std::unique_ptr<CMIDIOutput> output = MIDIPlatform::createOutput();
    QCOMPARE(input->initialize(), 0);
    QCOMPARE(output->initialize(), 0);
    input->registerObserver(&answers);
    QVERIFY(input->openPort(directory.getInputPortByName(k_jxEditorPortName)));
    QVERIFY(output->openPort(directory.getOutputPortByName(k_jxEditorPortName)));

    for (const QByteArray& message : {start(), keep(), requestAll()}) {
        QVERIFY(output->sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                                    static_cast<int>(message.size())));
    }
    QVERIFY(transport.process());
    QCOMPARE(device.received(), QList({start(), keep(), requestAll()}));
    QByteArray expected = start() + keep();
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        expected += changeParameter(knob, device.settings(knob)) + noticeValue(knob, 0);
    QTRY_COMPARE(answers.records().join(), expected);

    device.unplug();
    input->closePort();
    output->closePort();
}

void TestALSADeviceTransport::onlyTheThirdPortIsHeard()
{
    OpenDevice our;
    const COtherClient first(our.client, 0);
    const COtherClient third(our.client, k_editorPort);
    QVERIFY(first.connected && third.connected);
    FakeALSA::send(first.client, first.port, start());
    FakeALSA::send(third.client, third.port, keep());
    QVERIFY(our.transport.process());
    QCOMPARE(our.device.received(), QList{keep()});
    QCOMPARE(first.received(), QByteArrayList());
    QCOMPARE(third.received(), QByteArrayList{keep()});
}

void TestALSADeviceTransport::otherEventsReachTheDeviceAsBytes()
{
    OpenDevice our;
    const COtherClient other(our.client, k_editorPort);
    QVERIFY(other.connected);
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    snd_seq_ev_set_controller(&event, 1, 74, 64);
    FakeALSA::send(other.client, other.port, event);
    snd_seq_ev_clear(&event);
    event.type = SND_SEQ_EVENT_PORT_SUBSCRIBED; // has no bytes
    FakeALSA::send(other.client, other.port, event);
    QVERIFY(our.transport.process());
    QCOMPARE(our.device.received(), QList{QByteArray::fromHex("b14a40")});
}

void TestALSADeviceTransport::overrunQueueGoesOn()
{
    OpenDevice our;
    const COtherClient other(our.client, k_editorPort);
    QVERIFY(other.connected);
    for (int i = 0; i < 3000; ++i)
        FakeALSA::send(other.client, other.port, keep());
    QVERIFY(our.transport.process());
    FakeALSA::send(other.client, other.port, start());
    QVERIFY(our.transport.process());
    QCOMPARE(our.device.received().last(), start());
}

void TestALSADeviceTransport::readErrorIsTheEnd()
{
    OpenDevice our;
    FakeALSA::failNext("snd_seq_event_input", -ENODEV);
    QVERIFY(!our.transport.process());
}

void TestALSADeviceTransport::sendThatIsRefusedIsDropped()
{
    OpenDevice our;
    const COtherClient other(our.client, k_editorPort);
    QVERIFY(other.connected);
    FakeALSA::failNext("snd_seq_event_output_direct", -ENOMEM);
    our.device.turn(1, 2);
    our.device.turn(1, 3);
    QCOMPARE(other.received(), QByteArrayList{noticeValue(1, 3)});
}

void TestALSADeviceTransport::listenerWithoutRoomLosesTheMessageAlone()
{
    OpenDevice our;
    const COtherClient reads(our.client, k_editorPort);
    const COtherClient doesNotRead(our.client, k_editorPort);
    QVERIFY(reads.connected && doesNotRead.connected);
    constexpr int total = 1000; // one queue holds 2000 cells, two for a message; the other holds 100 messages
    FakeALSA::enlargeQueue(reads.client, 2 * total);
    QByteArrayList sent;
    for (int i = 0; i < total; ++i) {
        our.device.turn(1, i % 128);
        sent.append(noticeValue(1, i % 128));
    }
    QCOMPARE(reads.received(), sent);
    QCOMPARE(doesNotRead.received(), sent.first(100));
    QCOMPARE(FakeALSA::calls("snd_seq_event_output_direct"), total);
}

void TestALSADeviceTransport::unplugRemovesTheClient()
{
    OpenDevice our;
    our.device.unplug();
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QVERIFY(our.transport.descriptors().empty());
    QVERIFY(our.transport.process());
}

void TestALSADeviceTransport::destructorUnplugsTheDevice()
{
    CSimulatedDevice device;
    {
        CALSADeviceTransport transport{3};
        QCOMPARE(transport.open(device), QString());
    }
    QVERIFY(!device.isPlugged());
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

KTZ_TEST(QCoreApplication, TestALSADeviceTransport)
#include "TestALSADeviceTransport.moc"
