#include "device/CMemAPIWrapper.h"
#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPortWrapper.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "tests/support/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

#include <thread>

using namespace DeviceMessages;

namespace
{
CSimulatedSystem& simulatedSystem()
{
    return CSimulatedSystem::instance();
}

/// The editor's port pair, opened by name as the editor does.
struct EditorPorts
{
    EditorPorts() : input(MIDIPlatform::createInput()), output(MIDIPlatform::createOutput())
    {
        static_cast<void>(directory.createInputPortList());
        static_cast<void>(directory.createOutputPortList());
        initialized = input->initialize() == 0 && output->initialize() == 0;
        input->registerObserver(&observer);
    }

    ~EditorPorts()
    {
        input->closePort();
        output->closePort();
    }

    bool open()
    {
        return initialized && input->openPort(directory.getInputPortByName(k_jxEditorPortName)) &&
               output->openPort(directory.getOutputPortByName(k_jxEditorPortName));
    }

    bool send(const QByteArray& message)
    {
        return output->sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                                   static_cast<int>(message.size()));
    }

    CRecordingObserver observer;
    CMIDIPortWrapper directory;
    std::unique_ptr<CMIDIInput> input;
    std::unique_ptr<CMIDIOutput> output;
    bool initialized = false;
};
} // namespace

class TestSimulatedSystem : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    // the list
    void emptySystemHasNoPorts();
    void pluggedDeviceHasThreePortPairs();
    void deviceWithTwoCablesHasTwoPortPairs();
    void memoryFindsTheDeviceOfAnyCables_data();
    void memoryFindsTheDeviceOfAnyCables();
    void editorPortIsFoundByNameAmongOthers();
    void ofTwoDevicesTheLastIsFound();
    void listStaysUntilItIsMadeAgain();
    void countingMovesNoIndex();
    void vanishedEndpointHasNoName();
    void namesThatAreMissingAreNull();
    void endpointIsNeverUsedTwice();

    // opening and closing
    void inputThatWasNotInitialisedDoesNotOpen();
    void refusedOpenIsRefusedOnce();
    void openInputOfADestroyedObjectIsForgotten();

    // sending and receiving
    void messageReachesTheDeviceAndItsAnswerTheObserver();
    void sendToAnotherPortIsRecordedAndGoesNowhere();
    void packetCarriesTheDevicesTime();
    void refusedSendIsRecordedAsRefused();
    void unpluggedDeviceRefusesSends();
    void deviceThatIsPluggedAgainHasNewPorts();
    void twoInputsOfOneSourceBothReceive();
    void onlyTheDeviceThatSpeaksIsHeard();
    void hugePacketArrivesInRecords();
    void inputsHearOfWhatTheSystemLost();
    void recordOfPacketsIsBounded();
    void resetLeavesAnEmptySystem();
    void floodWhileTheKeepThreadSends();
    void deviceIsDestroyedWhileTheEditorSends();
};

void TestSimulatedSystem::init()
{
    CTestCase::init();
    simulatedSystem().reset();
}

void TestSimulatedSystem::cleanup()
{
    simulatedSystem().reset();
}

void TestSimulatedSystem::emptySystemHasNoPorts()
{
    QCOMPARE(MIDIPlatform::listSources(), 0);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
    QCOMPARE(MIDIPlatform::source(0), 0u);
    QCOMPARE(MIDIPlatform::destination(0), 0u);
}

void TestSimulatedSystem::pluggedDeviceHasThreePortPairs()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QCOMPARE(MIDIPlatform::listDestinations(), 3);
    for (int index = 0; index < 3; ++index) {
        const QString name = QStringLiteral("Port%1").arg(index + 1);
        QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::source(index)), name);
        QCOMPARE(MIDIPlatform::endpointName(MIDIPlatform::destination(index)), name);
        QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::source(index)), k_jxPortName);
        QCOMPARE(MIDIPlatform::deviceName(MIDIPlatform::destination(index)), k_jxPortName);
    }
    QCOMPARE(MIDIPlatform::source(3), 0u);
    QCOMPARE(MIDIPlatform::source(-1), 0u);
}

void TestSimulatedSystem::deviceWithTwoCablesHasTwoPortPairs()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device, k_jxPortName, CSimulatedSystem::twoCables());
    CMIDIPortWrapper directory;
    QCOMPARE(directory.createInputPortList(), 2);
    QCOMPARE(directory.createOutputPortList(), 2);
    QCOMPARE(directory.getInputPortNameFromSystemByIndex(0), k_jxPortName);
    QCOMPARE(directory.getOutputPortNameFromSystemByIndex(0), k_jxPortName);
    QCOMPARE(directory.getInputPortByName(k_jxEditorPortName), 1);
    QCOMPARE(directory.getOutputPortByName(k_jxEditorPortName), 1);
}

void TestSimulatedSystem::memoryFindsTheDeviceOfAnyCables_data()
{
    QTest::addColumn<QStringList>("cables");
    QTest::newRow("one") << QStringList{"Port3"};
    QTest::newRow("two") << CSimulatedSystem::twoCables();
    QTest::newRow("three") << CSimulatedSystem::threeCables();
}

void TestSimulatedSystem::memoryFindsTheDeviceOfAnyCables()
{
    QFETCH(QStringList, cables);
    CSimulatedDevice device;
    device.setSetting(2, &KnobSettings::cc, 99);
    simulatedSystem().plug(device, k_jxPortName, cables);
    CMemAPIWrapper memory;
    memory.initialize();
    for (const int category : {1100, 1200, 1300, 1400, 1500})
        memory.setParam(category + 2, 0); // a report falls on settings that are there
    QVERIFY(memory.isConnectOutput());
    QVERIFY(memory.requestAllParam());
    QTRY_COMPARE(memory.getParam(1102), 99);
    memory.closeInput(k_jxEditorPortName);
    memory.closeOutput(k_jxEditorPortName);
}

void TestSimulatedSystem::editorPortIsFoundByNameAmongOthers()
{
    simulatedSystem().addSource("Other Maker", "Keyboard");
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    simulatedSystem().addDestination("Other Maker", "Synth");
    EditorPorts ports;
    QCOMPARE(ports.directory.getTotalAvailableInputPorts(), 3);
    QCOMPARE(ports.directory.getInputPortByName(k_jxEditorPortName), 3);
    QCOMPARE(ports.directory.getOutputPortByName(k_jxEditorPortName), 2);
}

void TestSimulatedSystem::ofTwoDevicesTheLastIsFound()
{
    CSimulatedDevice first;
    CSimulatedDevice second;
    simulatedSystem().plug(first);
    simulatedSystem().plug(second);
    EditorPorts ports;
    QVERIFY(ports.open());
    QVERIFY(ports.send(keep()));
    QVERIFY(first.received().isEmpty());
    QCOMPARE(second.received(), QList{keep()});
}

void TestSimulatedSystem::listStaysUntilItIsMadeAgain()
{
    const MIDIEndpoint first = simulatedSystem().addSource("A", "1");
    const MIDIEndpoint second = simulatedSystem().addSource("A", "2");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    simulatedSystem().removePort(first);
    simulatedSystem().addSource("A", "3");
    QCOMPARE(MIDIPlatform::source(0), first);
    QCOMPARE(MIDIPlatform::source(1), second);
    QCOMPARE(MIDIPlatform::source(2), 0u);
    QCOMPARE(MIDIPlatform::listSources(), 2);
    QCOMPARE(MIDIPlatform::source(0), second);
}

void TestSimulatedSystem::countingMovesNoIndex()
{
    const MIDIEndpoint early = simulatedSystem().addSource("A", "1");
    simulatedSystem().addDestination("A", "1");
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    simulatedSystem().removePort(early);
    simulatedSystem().addDestination("A", "2");
    QCOMPARE(ports.directory.getTotalInputPorts(), 3);
    QCOMPARE(ports.directory.getTotalOutputPorts(), 5);
    QVERIFY(ports.open());
    QVERIFY(ports.send(start()));
    QTRY_COMPARE(ports.observer.records(), QList{start()});
}

void TestSimulatedSystem::vanishedEndpointHasNoName()
{
    const MIDIEndpoint endpoint = simulatedSystem().addSource("A", "1");
    simulatedSystem().removePort(endpoint);
    QVERIFY(MIDIPlatform::endpointName(endpoint).isNull());
    QVERIFY(MIDIPlatform::deviceName(endpoint).isNull());
    QVERIFY(MIDIPlatform::endpointName(0).isNull());
}

void TestSimulatedSystem::namesThatAreMissingAreNull()
{
    const MIDIEndpoint endpoint = simulatedSystem().addDestination({}, {});
    QVERIFY(MIDIPlatform::endpointName(endpoint).isNull());
    QVERIFY(MIDIPlatform::deviceName(endpoint).isNull());
}

void TestSimulatedSystem::endpointIsNeverUsedTwice()
{
    const MIDIEndpoint first = simulatedSystem().addSource("A", "1");
    simulatedSystem().reset();
    QVERIFY(simulatedSystem().addSource("A", "1") != first);
}

void TestSimulatedSystem::inputThatWasNotInitialisedDoesNotOpen()
{
    simulatedSystem().addSource("A", "1");
    QCOMPARE(MIDIPlatform::listSources(), 1);
    const std::unique_ptr<CMIDIInput> input = MIDIPlatform::createInput();
    QVERIFY(!input->openPort(0));
    input->closePort();
}

void TestSimulatedSystem::refusedOpenIsRefusedOnce()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    simulatedSystem().refuseOpens(2);
    QVERIFY(!ports.input->openPort(2));
    QVERIFY(!ports.output->openPort(2));
    QVERIFY(ports.open());
}

void TestSimulatedSystem::openInputOfADestroyedObjectIsForgotten()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    {
        EditorPorts ports;
        QVERIFY(ports.open());
    }
    device.turn(0, 1);
    QCOMPARE(device.trafficSince(0).size(), 1);
}

void TestSimulatedSystem::messageReachesTheDeviceAndItsAnswerTheObserver()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    QVERIFY(ports.send(start()));
    QCOMPARE(device.received(), QList{start()});
    QTRY_COMPARE(ports.observer.records(), QList{start()});
    device.turn(3, 64);
    QTRY_COMPARE(ports.observer.records(), QList({start(), noticeValue(3, 64)}));
}

void TestSimulatedSystem::sendToAnotherPortIsRecordedAndGoesNowhere()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.output->openPort(0));
    QVERIFY(ports.send(keep()));
    QVERIFY(device.received().isEmpty());
    const QList<SentPacket> packets = simulatedSystem().packets();
    QCOMPARE(packets.size(), 1);
    QCOMPARE(packets.first().destination, MIDIPlatform::destination(0));
    QCOMPARE(packets.first().bytes, keep());
    QVERIFY(packets.first().taken);
    simulatedSystem().clearPackets();
    QVERIFY(simulatedSystem().packets().isEmpty());
}

void TestSimulatedSystem::packetCarriesTheDevicesTime()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    QVERIFY(ports.send(start()));
    device.advance(2000);
    QVERIFY(ports.send(keep()));
    const QList<SentPacket> packets = simulatedSystem().packets();
    QCOMPARE(packets.size(), 2);
    QCOMPARE(packets.at(0).time, 0);
    QCOMPARE(packets.at(1).time, 2000);
}

void TestSimulatedSystem::refusedSendIsRecordedAsRefused()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    device.refuseSend(2);
    QVERIFY(ports.send(start()));
    QVERIFY(!ports.send(keep()));
    QVERIFY(ports.send(end()));
    QCOMPARE(device.received(), QList({start(), end()}));
    const QList<SentPacket> packets = simulatedSystem().packets();
    QCOMPARE(packets.size(), 3);
    QVERIFY(!packets.at(1).taken);

    device.refuseSend(2);
    QVERIFY(!ports.send(QByteArray(600, '\x01')));
    QCOMPARE(simulatedSystem().packets().size(), 5);
}

void TestSimulatedSystem::unpluggedDeviceRefusesSends()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    simulatedSystem().addSource("Other Maker", "Keyboard");
    EditorPorts ports;
    QVERIFY(ports.open());
    device.unplug();
    QVERIFY(!ports.send(keep()));
    QVERIFY(device.received().isEmpty());
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
    QVERIFY(ports.output->isMIDIConnect());
}

void TestSimulatedSystem::deviceThatIsPluggedAgainHasNewPorts()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts old;
    QVERIFY(old.open());
    simulatedSystem().plug(device);
    QCOMPARE(MIDIPlatform::listSources(), 3);
    QVERIFY(!old.send(keep()));
    EditorPorts ports;
    QVERIFY(ports.open());
    QVERIFY(ports.send(keep()));
    QTRY_COMPARE(ports.observer.records(), QList{keep()});
    QVERIFY(old.observer.records().isEmpty());
}

void TestSimulatedSystem::twoInputsOfOneSourceBothReceive()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts first;
    EditorPorts second;
    QVERIFY(first.open());
    QVERIFY(second.open());
    device.turn(0, 2);
    QTRY_COMPARE(first.observer.records(), QList{noticeValue(0, 2)});
    QTRY_COMPARE(second.observer.records(), QList{noticeValue(0, 2)});
}

void TestSimulatedSystem::onlyTheDeviceThatSpeaksIsHeard()
{
    CSimulatedDevice first;
    CSimulatedDevice second;
    simulatedSystem().plug(first);
    simulatedSystem().plug(second, "Other Device");
    EditorPorts ports;
    QVERIFY(ports.open());
    second.turn(1, 1);
    first.turn(2, 2);
    QTRY_COMPARE(ports.observer.records(), QList{noticeValue(2, 2)});
}

void TestSimulatedSystem::hugePacketArrivesInRecords()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    const QByteArray largest(CMIDIInput::k_largestRecord, '\x01');
    device.send(largest);
    device.send(largest + "\x02\x03");
    QTRY_COMPARE(ports.observer.records(), QList({largest, largest, QByteArray("\x02\x03")}));
}

void TestSimulatedSystem::inputsHearOfWhatTheSystemLost()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    simulatedSystem().overrunInputs();
    QByteArrayList expected{CRecordingObserver::k_overran};
    QTRY_COMPARE(ports.observer.records(), expected);
    device.turn(0, 2);
    expected.append(noticeValue(0, 2));
    QTRY_COMPARE(ports.observer.records(), expected);

    simulatedSystem().endReception();
    expected.append(CRecordingObserver::k_ended);
    QTRY_COMPARE(ports.observer.records(), expected);
    device.turn(0, 3);
    ports.input->closePort();
    QCOMPARE(ports.observer.records(), expected);
}

void TestSimulatedSystem::recordOfPacketsIsBounded()
{
    const MIDIEndpoint endpoint = simulatedSystem().addDestination("A", "1");
    for (int i = 0; i < CSimulatedSystem::k_packetLimit + 1; ++i)
        QVERIFY(simulatedSystem().send(endpoint, QByteArray::number(i)));
    const QList<SentPacket> packets = simulatedSystem().packets();
    QCOMPARE(packets.size(), CSimulatedSystem::k_packetLimit);
    QCOMPARE(packets.first().bytes, QByteArray("1"));
}

void TestSimulatedSystem::resetLeavesAnEmptySystem()
{
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    simulatedSystem().addSource("A", "1");
    EditorPorts ports;
    QVERIFY(ports.open());
    QVERIFY(ports.send(keep()));
    simulatedSystem().refuseOpens(1);
    simulatedSystem().reset();
    QVERIFY(!device.isPlugged());
    QVERIFY(simulatedSystem().packets().isEmpty());
    QCOMPARE(MIDIPlatform::listSources(), 0);
    QVERIFY(!ports.send(keep()));
    simulatedSystem().plug(device);
    EditorPorts again;
    QVERIFY(again.open());
}

void TestSimulatedSystem::floodWhileTheKeepThreadSends()
{
    constexpr int k_turns = 20'000;
    constexpr int k_keeps = 500;
    CSimulatedDevice device;
    simulatedSystem().plug(device);
    EditorPorts ports;
    QVERIFY(ports.open());
    std::thread keepThread([&ports] {
        for (int i = 0; i < k_keeps; ++i) {
            if (!ports.send(keep()))
                return;
        }
    });
    for (int i = 0; i < k_turns; ++i)
        device.turn(i / 128 % 8, i % 128);
    keepThread.join();
    QTRY_COMPARE_WITH_TIMEOUT(ports.observer.records().size(), k_turns + k_keeps, 60'000);
    int turns = 0;
    for (const QByteArray& record : ports.observer.records()) {
        if (record != keep()) {
            QCOMPARE(record, noticeValue(turns / 128 % 8, turns % 128));
            ++turns;
        }
    }
    QCOMPARE(turns, k_turns);
}

void TestSimulatedSystem::deviceIsDestroyedWhileTheEditorSends()
{
    for (int round = 0; round < 20; ++round) {
        auto device = std::make_unique<CSimulatedDevice>();
        simulatedSystem().plug(*device);
        EditorPorts ports;
        QVERIFY(ports.open());
        std::thread keepThread([&ports] {
            while (ports.send(keep())) {
            }
        });
        QTRY_VERIFY(!device->received().isEmpty());
        device.reset();
        keepThread.join();
    }
}

KTZ_TEST(QCoreApplication, TestSimulatedSystem)
#include "TestSimulatedSystem.moc"
