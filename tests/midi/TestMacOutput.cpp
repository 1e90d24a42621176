#include "midi/mac/CMIDIOutput_Mac.h"
#include "tests/fakes/coremidi/CFakeCoreMIDI.h"
#include "tests/support/CTestCase.h"

#include <optional>

namespace
{
/// size bytes, no two neighbours alike.
QByteArray message(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7);
    return bytes;
}

bool send(CMIDIOutput& output, const QByteArray& bytes)
{
    return output.sendMessage(reinterpret_cast<const unsigned char*>(bytes.constData()),
                              static_cast<int>(bytes.size()));
}
} // namespace

class TestMacOutput : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void initializeCreatesTheClient();
    void initializeGivesTheStatusAndLeavesNoClient();
    void openPortCallsInOrder();
    void openPortWithoutClientIsRefused();
    void openPortOnAnOpenOutputChangesNothing();
    void openPortOutsideTheDestinations_data();
    void openPortOutsideTheDestinations();
    void openPortFails_data();
    void openPortFails();
    void closePortCallsInOrder();
    void closePortIgnoresWhatTheSystemRefuses();
    void destructorDisposesTheClient();
    void everyObjectHasAClientOfItsOwn();

    void sendMessagePausesBetweenPackets();
    void sendMessageSendsOnePacketAtOnceToTheDestination();
    void sendMessageStopsAtTheFirstRefusedPacket_data();
    void sendMessageStopsAtTheFirstRefusedPacket();

  private:
    /// An initialized output; the calls so far are forgotten.
    std::unique_ptr<CMIDIOutput_Mac> initializedOutput();

    std::optional<CFakeCoreMIDI> m_fake;
};

void TestMacOutput::init()
{
    CTestCase::init();
    m_fake.emplace();
    m_fake->addDestination("Port3", "Trellwick KTZ-JX");
}

void TestMacOutput::cleanup()
{
    QCOMPARE(m_fake->openClients(), 0);
    QCOMPARE(m_fake->openPorts(), 0);
    QCOMPARE(m_fake->heldStrings(), 0);
    QCOMPARE(m_fake->overReleasedStrings(), 0);
}

std::unique_ptr<CMIDIOutput_Mac> TestMacOutput::initializedOutput()
{
    auto output = std::make_unique<CMIDIOutput_Mac>();
    [&] { QCOMPARE(output->initialize(), noErr); }();
    m_fake->takeCalls();
    return output;
}

void TestMacOutput::initializeCreatesTheClient()
{
    CMIDIOutput_Mac output;
    QVERIFY(!output.isMIDIConnect());
    QCOMPARE(output.initialize(), noErr);
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIClientCreate(MIDI Client, null, null)"});
    QVERIFY(!output.isMIDIConnect());
}

void TestMacOutput::initializeGivesTheStatusAndLeavesNoClient()
{
    m_fake->failCall("MIDIClientCreate", 1, -10839);
    {
        CMIDIOutput_Mac output;
        QCOMPARE(output.initialize(), -10839);
        m_fake->takeCalls();
        QVERIFY(!output.openPort(0));
    }
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacOutput::openPortCallsInOrder()
{
    const auto output = initializedOutput();
    QVERIFY(output->openPort(0));
    QVERIFY(output->isMIDIConnect());
    const QStringList expected{"MIDIOutputPortCreate(101, Output port)", "MIDIGetDestination(0)"};
    QCOMPARE(m_fake->takeCalls(), expected);
}

void TestMacOutput::openPortWithoutClientIsRefused()
{
    CMIDIOutput_Mac output;
    QVERIFY(!output.openPort(0));
    QVERIFY(!output.isMIDIConnect());
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacOutput::openPortOnAnOpenOutputChangesNothing()
{
    m_fake->addDestination("Port4", "Trellwick KTZ-JX");
    const auto output = initializedOutput();
    QVERIFY(output->openPort(0));
    m_fake->takeCalls();
    QVERIFY(output->openPort(1));
    QCOMPARE(m_fake->takeCalls(), QStringList());

    // Not even the connected flag that was cleared because the device is lost.
    output->setMIDIConnection(false);
    QVERIFY(output->openPort(0));
    QVERIFY(!output->isMIDIConnect());
}

void TestMacOutput::openPortOutsideTheDestinations_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("one past the last") << 1;
    QTest::newRow("not found by name") << -1;
}

void TestMacOutput::openPortOutsideTheDestinations()
{
    QFETCH(int, index);
    const auto output = initializedOutput();
    QVERIFY(!output->openPort(index));
    QVERIFY(!output->isMIDIConnect());
    QVERIFY(!send(*output, message(10)));
    QCOMPARE(m_fake->openPorts(), 1); // until closePort()
    output->closePort();
    QCOMPARE(m_fake->openPorts(), 0);
}

void TestMacOutput::openPortFails_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("callsOfOpen");
    QTest::addColumn<QStringList>("callsOfClose");

    const QString create = "MIDIOutputPortCreate(101, Output port)";
    QTest::newRow("no port") << "MIDIOutputPortCreate" << QStringList{create} << QStringList();
    QTest::newRow("no destination") << "MIDIGetDestination" << QStringList{create, "MIDIGetDestination(0)"}
                                    << QStringList{"MIDIPortDispose(201)"};
}

void TestMacOutput::openPortFails()
{
    QFETCH(QString, call);
    const auto output = initializedOutput();
    m_fake->failCall(call);
    QVERIFY(!output->openPort(0));
    QVERIFY(!output->isMIDIConnect());
    QTEST(m_fake->takeCalls(), "callsOfOpen");
    output->closePort();
    QTEST(m_fake->takeCalls(), "callsOfClose");

    // Nothing of the failure is left.
    QVERIFY(output->openPort(0));
    QVERIFY(send(*output, message(10)));
}

void TestMacOutput::closePortCallsInOrder()
{
    const auto output = initializedOutput();
    output->closePort();
    QCOMPARE(m_fake->takeCalls(), QStringList());
    QVERIFY(output->openPort(0));
    m_fake->takeCalls();
    output->closePort();
    QVERIFY(!output->isMIDIConnect());
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIPortDispose(201)"});
    output->closePort();
    QCOMPARE(m_fake->takeCalls(), QStringList());
}

void TestMacOutput::closePortIgnoresWhatTheSystemRefuses()
{
    const auto output = initializedOutput();
    QVERIFY(output->openPort(0));
    m_fake->failCall("MIDIPortDispose");
    output->closePort();
    QVERIFY(!output->isMIDIConnect());
    QVERIFY(output->openPort(0));
}

void TestMacOutput::destructorDisposesTheClient()
{
    {
        const auto output = initializedOutput();
    }
    QCOMPARE(m_fake->takeCalls(), QStringList{"MIDIClientDispose(101)"});
}

void TestMacOutput::everyObjectHasAClientOfItsOwn()
{
    const auto first = initializedOutput();
    const auto second = initializedOutput();
    QCOMPARE(m_fake->openClients(), 2);
    QVERIFY(second->openPort(0));
    QCOMPARE(m_fake->takeCalls().first(), QString("MIDIOutputPortCreate(102, Output port)"));
}

void TestMacOutput::sendMessagePausesBetweenPackets()
{
    const auto output = initializedOutput();
    QVERIFY(output->openPort(0));
    QVERIFY(send(*output, message(600)));
    const QList<qint64> times = m_fake->sendTimes();
    QCOMPARE(times.size(), 3);
    for (int i = 1; i < times.size(); ++i)
        QVERIFY(times.at(i) - times.at(i - 1) >= 100'000); // nanoseconds
}

void TestMacOutput::sendMessageSendsOnePacketAtOnceToTheDestination()
{
    m_fake->addDestination("Port4", "Trellwick KTZ-JX");
    const auto output = initializedOutput();
    QVERIFY(output->openPort(1));
    m_fake->takeCalls();
    QVERIFY(send(*output, message(300)));
    // port, destination, packets in the list, time stamp (0 is now), bytes
    const QStringList expected{"MIDISend(201, 402, 1, 0, 256)", "MIDISend(201, 402, 1, 0, 44)"};
    QCOMPARE(m_fake->takeCalls(), expected);
}

void TestMacOutput::sendMessageStopsAtTheFirstRefusedPacket_data()
{
    QTest::addColumn<int>("refused");
    for (int i = 1; i <= 3; ++i)
        QTest::addRow("packet %d", i) << i;
}

void TestMacOutput::sendMessageStopsAtTheFirstRefusedPacket()
{
    QFETCH(int, refused);
    const auto output = initializedOutput();
    QVERIFY(output->openPort(0));
    m_fake->failCall("MIDISend", refused);
    const QByteArray bytes = message(600);
    QVERIFY(!send(*output, bytes));
    QCOMPARE(m_fake->sentPackets().join(), bytes.left(256 * (refused - 1)));
    QCOMPARE(m_fake->sendTimes().size(), refused); // no retry, and nothing after it
    QVERIFY(output->isMIDIConnect());
    QVERIFY(send(*output, message(10)));
}

KTZ_TEST(QCoreApplication, TestMacOutput)
#include "TestMacOutput.moc"
