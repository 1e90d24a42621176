#include "midi/CMIDIInput.h"
#include "midi/CMIDIOutput.h"
#include "midi/CMIDIPortWrapper.h"
#include "midi/MIDIPlatform.h"
#include "midi/mac/CPortList_Mac.h"
#include "tests/fakes/coremidi/CFakeCoreMIDI.h"
#include "tests/support/CTestCase.h"

#include <optional>

class TestMacPorts : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void convertsStrings_data();
    void convertsStrings();
    void namesPorts_data();
    void namesPorts();
    void namesPortsWhenACallFails_data();
    void namesPortsWhenACallFails();
    void namingAsksInOrder();
    void aMissingEndpointHasNoName();
    void noPortsAtAll();
    void onlyTheDevicesPortsAreListed();
    void destinationsAreAListOfTheirOwn();
    void anIndexMeansTheSamePortUntilTheNextList();
    void theFactoriesGiveClosedPorts();

  private:
    std::optional<CFakeCoreMIDI> m_fake;
};

void TestMacPorts::init()
{
    CTestCase::init();
    m_fake.emplace();
}

void TestMacPorts::cleanup()
{
    QCOMPARE(m_fake->heldStrings(), 0);
    QCOMPARE(m_fake->overReleasedStrings(), 0);
    QCOMPARE(m_fake->openClients(), 0);
}

void TestMacPorts::convertsStrings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("direct");
    QTest::addColumn<QString>("text");
    QTest::newRow("direct") << QByteArray("Port3") << true << QString("Port3");
    QTest::newRow("copied") << QByteArray("Port3") << false << QString("Port3");
    QTest::newRow("empty, direct") << QByteArray("") << true << QString("");
    QTest::newRow("empty, copied") << QByteArray("") << false << QString("");
    QTest::newRow("a byte above 127 is taken as it is") << QByteArray("P\xE9") << true << QString::fromUtf8("P\u00E9");
    QTest::newRow("255 bytes, copied") << QByteArray(255, 'x') << false << QString(255, 'x');
    QTest::newRow("256 bytes, copied") << QByteArray(256, 'x') << false << QString("");
    QTest::newRow("256 bytes, direct") << QByteArray(256, 'x') << true << QString(256, 'x');
}

void TestMacPorts::convertsStrings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, direct);
    if (!direct)
        m_fake->hideDirectPointers();
    const CFStringRef string = m_fake->createString(bytes);
    QTEST(CFStringToQString(string), "text");
    QVERIFY(!CFStringToQString(string).isNull());
    CFRelease(string);
    QVERIFY(CFStringToQString(nullptr).isNull());
}

void TestMacPorts::namesPorts_data()
{
    QTest::addColumn<QByteArray>("endpoint");
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QString>("name");

    const QByteArray none;
    const QByteArray jx = "Trellwick KTZ-JX";
    QTest::newRow("device and endpoint") << QByteArray("Port3") << jx << QString("Trellwick KTZ-JX Port3");
    QTest::newRow("endpoint named as the device") << jx << jx << QString("Trellwick KTZ-JX");
    QTest::newRow("endpoint contains the device")
        << QByteArray("My Trellwick KTZ-JX 2") << jx << QString("My Trellwick KTZ-JX 2");
    QTest::newRow("the substring test is case-sensitive")
        << QByteArray("trellwick ktz-jx") << jx << QString("Trellwick KTZ-JX trellwick ktz-jx");
    QTest::newRow("neither has a name") << none << none << QString("Unknown Device Port #2");
    QTest::newRow("endpoint without a name") << none << jx << QString("Trellwick KTZ-JX Port #2");
    QTest::newRow("no entity") << QByteArray("Port3") << none << QString("Unknown Device Port3");
    QTest::newRow("endpoint with an empty name") << QByteArray("") << jx << QString("Trellwick KTZ-JX ");
    QTest::newRow("device with an empty name") << QByteArray("Port3") << QByteArray("") << QString("Port3");
    QTest::newRow("endpoint with an unreadable name") << QByteArray(256, 'x') << jx << QString("Trellwick KTZ-JX ");
}

void TestMacPorts::namesPorts()
{
    QFETCH(QByteArray, endpoint);
    QFETCH(QByteArray, device);
    m_fake->hideDirectPointers();
    QTEST(CMIDIPort::getPortName(m_fake->addSource(endpoint, device), 2), "name");
}

void TestMacPorts::namesPortsWhenACallFails_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("name");
    QTest::newRow("endpoint's name") << "MIDIObjectGetStringProperty" << 1 << "Trellwick KTZ-JX Port #7";
    QTest::newRow("entity") << "MIDIEndpointGetEntity" << 1 << "Unknown Device Port3";
    QTest::newRow("device") << "MIDIEntityGetDevice" << 1 << "Unknown Device Port3";
    QTest::newRow("device's name") << "MIDIObjectGetStringProperty" << 2 << "Unknown Device Port3";
    QTest::newRow("endpoint's text, no pointer") << "CFStringGetCStringPtr" << 1 << "Trellwick KTZ-JX Port3";
    QTest::newRow("device's text, no pointer") << "CFStringGetCStringPtr" << 2 << "Trellwick KTZ-JX Port3";
}

void TestMacPorts::namesPortsWhenACallFails()
{
    QFETCH(QString, call);
    QFETCH(int, n);
    const MIDIEndpointRef source = m_fake->addSource("Port3", "Trellwick KTZ-JX");
    m_fake->failCall(call, n);
    QTEST(CMIDIPort::getPortName(source, 7), "name");
}

void TestMacPorts::namingAsksInOrder()
{
    const MIDIEndpointRef source = m_fake->addSource("Port3", "Trellwick KTZ-JX");
    QCOMPARE(CMIDIPort::getPortName(source, 0), QString("Trellwick KTZ-JX Port3"));
    const QStringList expected{"MIDIObjectGetStringProperty(301, name)", "MIDIEndpointGetEntity(301)",
                               "MIDIEntityGetDevice(501)", "MIDIObjectGetStringProperty(601, name)"};
    QCOMPARE(m_fake->takeCalls(), expected);
}

void TestMacPorts::aMissingEndpointHasNoName()
{
    QCOMPARE(CMIDIPort::getPortName(0, 2), QString());
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacPorts::noPortsAtAll()
{
    CMIDIPortWrapper ports;
    QCOMPARE(ports.createInputPortList(), 0);
    QCOMPARE(ports.createOutputPortList(), 0);
    QCOMPARE(ports.getTotalAvailableInputPorts(), 0);
    QCOMPARE(ports.getInputPortByName("Trellwick KTZ-JX Port3"), -1);
    QCOMPARE(ports.getOutputPortByName("Trellwick KTZ-JX Port3"), -1);
    QCOMPARE(ports.getInputPortNameFromSystemByIndex(0), QString());
    const QStringList expected{"MIDIGetNumberOfSources()", "MIDIGetNumberOfDestinations()"};
    QCOMPARE(m_fake->takeCalls(), expected);
}

void TestMacPorts::onlyTheDevicesPortsAreListed()
{
    m_fake->addSource("Trellwick KTZ-JX", "Trellwick KTZ-JX");
    m_fake->addSource("Keys", "Another maker");
    m_fake->addSource("Port3", "Trellwick KTZ-JX");
    m_fake->addSource("Port3", "trellwick ktz-jx");
    CMIDIPortWrapper ports;
    QCOMPARE(ports.createInputPortList(), 4);
    QCOMPARE(ports.getTotalInputPorts(), 4);
    QCOMPARE(ports.getTotalAvailableInputPorts(), 2);
    QCOMPARE(ports.getInputPortByName("Trellwick KTZ-JX"), 0);
    QCOMPARE(ports.getInputPortByName("Trellwick KTZ-JX Port3"), 2);
    QCOMPARE(ports.getInputPortByName("Another maker Keys"), -1);
}

void TestMacPorts::destinationsAreAListOfTheirOwn()
{
    m_fake->addSource("Port3", "Trellwick KTZ-JX");
    m_fake->addDestination("Speaker", "Another maker");
    m_fake->addDestination("Port3", "Trellwick KTZ-JX");
    CMIDIPortWrapper ports;
    QCOMPARE(ports.createInputPortList(), 1);
    QCOMPARE(ports.createOutputPortList(), 2);
    QCOMPARE(ports.getInputPortByName("Trellwick KTZ-JX Port3"), 0);
    QCOMPARE(ports.getOutputPortByName("Trellwick KTZ-JX Port3"), 1);
}

void TestMacPorts::anIndexMeansTheSamePortUntilTheNextList()
{
    m_fake->addSource("Keys", "Another maker");
    const MIDIEndpointRef port3 = m_fake->addSource("Port3", "Trellwick KTZ-JX");
    QCOMPARE(MIDIPlatform::listSources(), 2);
    m_fake->removeSource(0);
    QCOMPARE(MIDIPlatform::sourceCount(), 1); // counting moves nothing
    QCOMPARE(MIDIPlatform::source(1), port3);
    QCOMPARE(MIDIPlatform::listSources(), 1);
    QCOMPARE(MIDIPlatform::source(0), port3);
    QCOMPARE(MIDIPlatform::source(1), 0u);
    QCOMPARE(MIDIPlatform::source(-1), 0u);
    QCOMPARE(MIDIPlatform::listDestinations(), 0);
    QCOMPARE(MIDIPlatform::destination(0), 0u);
}

void TestMacPorts::theFactoriesGiveClosedPorts()
{
    m_fake->addSource("Port3", "Trellwick KTZ-JX");
    m_fake->addDestination("Port3", "Trellwick KTZ-JX");
    const auto input = MIDIPlatform::createInput();
    const auto output = MIDIPlatform::createOutput();
    QVERIFY(!input->isMIDIConnect());
    QVERIFY(!output->isMIDIConnect());
    QCOMPARE(m_fake->takeCalls(), QStringList());
    QCOMPARE(input->initialize(), 0);
    QCOMPARE(output->initialize(), 0);
    QVERIFY(input->openPort(0));
    QVERIFY(output->openPort(0));
    input->closePort();
    output->closePort();
}

KTZ_TEST(QCoreApplication, TestMacPorts)
#include "TestMacPorts.moc"
