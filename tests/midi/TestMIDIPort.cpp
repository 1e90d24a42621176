#include "app/common/Constants.h"
#include "midi/CMIDIPortWrapper.h"
#include "tests/fakes/FakeMIDIPlatform.h"
#include "tests/support/CTestCase.h"

using FakeMIDIPlatform::g_destinations;
using FakeMIDIPlatform::g_sources;

namespace
{
const QString k_device = k_jxPortName;
const QString k_otherDevice = QStringLiteral("Other Maker");

/// Creates both lists of a directory; the results are kept for the test to look at.
struct Lists
{
    explicit Lists(CMIDIPort* port) : inputs(port->createInputPortList()), outputs(port->createOutputPortList()) {}

    int inputs;
    int outputs;
};
} // namespace

class TestMIDIPort : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void namingRule_data();
    void namingRule();
    void endpointZeroHasAnEmptyName();
    void namesFromTheSystemByIndex();
    void listsAreEmptyAfterConstruction();
    void noPortsAtAll();
    void genericListHoldsEveryPort();
    void wrapperKeepsOnlyTheDevicesPortsUnderTheirSystemIndexes();
    void filterIsCaseSensitive();
    void filterIsTheDeviceNameNotTheEditorPorts();
    void lastOfTwoPortsWithTheSameNameWins();
    void lookupIsExact_data();
    void lookupIsExact();
    void missingEndpointIsListedWithAnEmptyName();
    void listIsReplacedNotExtended();
    void listIsNotFollowed();
    void inputsAndOutputsAreSeparate();
};

void TestMIDIPort::init()
{
    CTestCase::init();
    g_sources.clear();
    g_destinations.clear();
}

void TestMIDIPort::namingRule_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("endpoint");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");

    QTest::newRow("device and endpoint") << k_device << "Port3" << 0 << "Trellwick KTZ-JX Port3";
    QTest::newRow("endpoint is the device") << k_device << k_device << 0 << "Trellwick KTZ-JX";
    QTest::newRow("endpoint begins with the device")
        << k_device << "Trellwick KTZ-JX Port1" << 0 << "Trellwick KTZ-JX Port1";
    QTest::newRow("endpoint contains the device") << "KTZ"
                                                  << "A KTZ port" << 0 << "A KTZ port";
    QTest::newRow("contains is case-sensitive") << "KTZ"
                                                << "ktz port" << 0 << "KTZ ktz port";
    QTest::newRow("no name, no device") << QString() << QString() << 2 << "Unknown Device Port #2";
    QTest::newRow("no name") << k_device << QString() << 12 << "Trellwick KTZ-JX Port #12";
    QTest::newRow("no device") << QString() << "Port3" << 0 << "Unknown Device Port3";
    QTest::newRow("empty endpoint name is a name") << k_device << "" << 1 << "Trellwick KTZ-JX ";
    QTest::newRow("empty device name is contained in any") << ""
                                                           << "Port3" << 1 << "Port3";
}

void TestMIDIPort::namingRule()
{
    QFETCH(QString, device);
    QFETCH(QString, endpoint);
    QFETCH(int, index);
    g_sources = {{device, endpoint}};
    QTEST(CMIDIPort::getPortName(MIDIPlatform::source(0), index), "name");
}

void TestMIDIPort::endpointZeroHasAnEmptyName()
{
    QCOMPARE(CMIDIPort::getPortName(0, 3), QString());
}

void TestMIDIPort::namesFromTheSystemByIndex()
{
    g_sources = {{k_device, "In"}, {QString(), QString()}};
    g_destinations = {{k_device, "Out"}};
    const CMIDIPort port;
    QCOMPARE(port.getInputPortNameFromSystemByIndex(0), "Trellwick KTZ-JX In");
    QCOMPARE(port.getInputPortNameFromSystemByIndex(1), "Unknown Device Port #1");
    QCOMPARE(port.getInputPortNameFromSystemByIndex(2), "");
    QCOMPARE(port.getOutputPortNameFromSystemByIndex(0), "Trellwick KTZ-JX Out");
    QCOMPARE(port.getOutputPortNameFromSystemByIndex(-1), "");
}

void TestMIDIPort::listsAreEmptyAfterConstruction()
{
    g_sources = {{k_device, "Port3"}};
    const CMIDIPort port;
    QCOMPARE(port.getTotalAvailableInputPorts(), 0);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 0);
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), -1);
    QCOMPARE(port.getTotalInputPorts(), 1);
    QCOMPARE(port.getTotalOutputPorts(), 0);
}

void TestMIDIPort::noPortsAtAll()
{
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 0);
    QCOMPARE(lists.outputs, 0);
    QCOMPARE(port.getTotalAvailableInputPorts(), 0);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 0);
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), -1);
    QCOMPARE(port.getOutputPortByName(k_jxEditorPortName), -1);
    QCOMPARE(port.getInputPortByName(QString()), -1);
}

void TestMIDIPort::genericListHoldsEveryPort()
{
    g_sources = {{k_otherDevice, "A"}, {k_device, "Port3"}};
    g_destinations = {{k_device, "Port3"}, {k_otherDevice, "A"}, {k_otherDevice, "B"}};
    CMIDIPort port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 2);
    QCOMPARE(lists.outputs, 3);
    QCOMPARE(port.getTotalAvailableInputPorts(), 2);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 3);
    QCOMPARE(port.getOutputPortByName("Other Maker B"), 2);
}

void TestMIDIPort::wrapperKeepsOnlyTheDevicesPortsUnderTheirSystemIndexes()
{
    g_sources = {{k_device, k_device}, {k_otherDevice, "Port3"}, {k_device, "Port3"}};
    g_destinations = {{k_otherDevice, "Port3"}, {k_device, k_device}, {k_device, "Port3"}};
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 3);
    QCOMPARE(lists.outputs, 3);
    QCOMPARE(port.getTotalInputPorts(), 3);
    QCOMPARE(port.getTotalAvailableInputPorts(), 2);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 2);
    QCOMPARE(port.getInputPortByName("Trellwick KTZ-JX"), 0);
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), 2);
    QCOMPARE(port.getInputPortByName("Other Maker Port3"), -1);
    QCOMPARE(port.getOutputPortByName("Trellwick KTZ-JX"), 1);
    QCOMPARE(port.getOutputPortByName(k_jxEditorPortName), 2);
}

void TestMIDIPort::filterIsCaseSensitive()
{
    g_sources = {{"trellwick ktz-jx", "Port3"}};
    g_destinations = g_sources;
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 1);
    QCOMPARE(port.getTotalAvailableInputPorts(), 0);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 0);
}

void TestMIDIPort::filterIsTheDeviceNameNotTheEditorPorts()
{
    g_sources = {{k_device, "Port1"}, {QString(), "My Trellwick KTZ-JX"}};
    g_destinations = g_sources;
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.outputs, 2);
    QCOMPARE(port.getTotalAvailableInputPorts(), 2);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 2);
    QCOMPARE(port.getOutputPortByName("Unknown Device My Trellwick KTZ-JX"), 1);
}

void TestMIDIPort::lastOfTwoPortsWithTheSameNameWins()
{
    g_sources = {{k_device, "Port3"}, {k_device, "Port3"}, {k_device, "Port1"}};
    g_destinations = {{k_device, "Port1"}, {k_device, "Port3"}, {k_device, "Port3"}};
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 3);
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), 1);
    QCOMPARE(port.getOutputPortByName(k_jxEditorPortName), 2);
}

void TestMIDIPort::lookupIsExact_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::newRow("whole name") << "Trellwick KTZ-JX Port3" << 0;
    QTest::newRow("prefix") << "Trellwick KTZ-JX Port" << -1;
    QTest::newRow("device alone") << "Trellwick KTZ-JX" << -1;
    QTest::newRow("longer") << "Trellwick KTZ-JX Port33" << -1;
    QTest::newRow("other case") << "trellwick KTZ-JX Port3" << -1;
    QTest::newRow("empty") << "" << -1;
}

void TestMIDIPort::lookupIsExact()
{
    QFETCH(QString, name);
    g_sources = {{k_device, "Port3"}};
    g_destinations = g_sources;
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 1);
    QTEST(port.getInputPortByName(name), "index");
    QTEST(port.getOutputPortByName(name), "index");
}

void TestMIDIPort::missingEndpointIsListedWithAnEmptyName()
{
    g_sources = {{k_device, "Port3", true}, {k_device, "Port3"}};
    CMIDIPort everything;
    QCOMPARE(everything.createInputPortList(), 2);
    QCOMPARE(everything.getTotalAvailableInputPorts(), 2);
    QCOMPARE(everything.getInputPortByName(QString()), 0);

    CMIDIPortWrapper filtered;
    QCOMPARE(filtered.createInputPortList(), 2);
    QCOMPARE(filtered.getTotalAvailableInputPorts(), 1);
    QCOMPARE(filtered.getInputPortByName(QString()), -1);
}

void TestMIDIPort::listIsReplacedNotExtended()
{
    g_sources = {{k_device, "Port1"}, {k_device, "Port3"}};
    g_destinations = g_sources;
    CMIDIPortWrapper port;
    const Lists before(&port);
    QCOMPARE(before.inputs, 2);
    g_sources.clear();
    g_destinations = {{k_device, "Port3"}};
    const Lists after(&port);
    QCOMPARE(after.inputs, 0);
    QCOMPARE(after.outputs, 1);
    QCOMPARE(port.getTotalAvailableInputPorts(), 0);
    QCOMPARE(port.getTotalAvailableOutputPorts(), 1);
    QCOMPARE(port.getOutputPortByName(k_jxEditorPortName), 0);
}

void TestMIDIPort::listIsNotFollowed()
{
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.inputs, 0);
    g_sources = {{k_device, "Port3"}};
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), -1);
}

void TestMIDIPort::inputsAndOutputsAreSeparate()
{
    g_sources = {{k_device, "Port3"}};
    CMIDIPortWrapper port;
    const Lists lists(&port);
    QCOMPARE(lists.outputs, 0);
    QCOMPARE(port.getInputPortByName(k_jxEditorPortName), 0);
    QCOMPARE(port.getOutputPortByName(k_jxEditorPortName), -1);
}

KTZ_TEST(QCoreApplication, TestMIDIPort)
#include "TestMIDIPort.moc"
