#include "midi/MIDIPlatform.h"
#include "midi/alsa/CMIDIOutput_ALSA.h"
#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/support/CTestCase.h"

#include <cerrno>

namespace
{
bool send(CMIDIOutput* output, const QByteArray& message)
{
    return output->sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                               static_cast<int>(message.size()));
}

const QByteArray k_message = "\xF0\x01\x02\xF7";
} // namespace

class TestALSAOutput : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void ownClientAndPortHaveTheirNames();
    void messageReachesTheDestination();
    void openOfAnOpenPortChangesNothing();
    void openWithoutADestinationFails();
    void everyFailureOfInitializeLeavesItClosed_data();
    void everyFailureOfInitializeLeavesItClosed();
    void everyFailureOfOpenGivesFalse_data();
    void everyFailureOfOpenGivesFalse();
    void sendOnAClosedPortFails();
    void refusedEventFailsTheMessage();
    void pulledCableFailsEverySendFromThenOn_data();
    void pulledCableFailsEverySendFromThenOn();
    void closeEndsTheSubscription();
    void nobodyElseCanSubscribe();
    void destructionClosesTheClient();

  private:
    /// Opens the port to the device of init().
    void open(CMIDIOutput_ALSA* output);

    int m_device = 0;
    int m_port = 0;
};

void TestALSAOutput::init()
{
    CTestCase::init();
    FakeALSA::reset();
    m_device = FakeALSA::addClient("Trellwick KTZ-JX");
    m_port = FakeALSA::addPort(m_device, "Trellwick KTZ-JX MIDI 1");
    QCOMPARE(MIDIPlatform::listDestinations(), 1);
}

void TestALSAOutput::open(CMIDIOutput_ALSA* output)
{
    QCOMPARE(output->initialize(), 0);
    QVERIFY(output->openPort(0));
    QVERIFY(output->isMIDIConnect());
}

void TestALSAOutput::ownClientAndPortHaveTheirNames()
{
    CMIDIOutput_ALSA output;
    open(&output);
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::clientName(client), "KTZ-JX Editor");
    QCOMPARE(FakeALSA::portName(client, 0), "Output port");
}

void TestALSAOutput::messageReachesTheDestination()
{
    CMIDIOutput_ALSA output;
    open(&output);
    QVERIFY(send(&output, k_message));
    QVERIFY(send(&output, "\xF0\xF7"));
    QCOMPARE(FakeALSA::received(m_device, m_port), QByteArrayList({k_message, "\xF0\xF7"}));
}

void TestALSAOutput::openOfAnOpenPortChangesNothing()
{
    CMIDIOutput_ALSA output;
    open(&output);
    QVERIFY(output.openPort(0));
    QVERIFY(output.openPort(77));
    QCOMPARE(FakeALSA::calls("snd_seq_create_simple_port"), 1);
    QCOMPARE(FakeALSA::subscriptions(), 1);
    QVERIFY(send(&output, k_message));
}

void TestALSAOutput::openWithoutADestinationFails()
{
    CMIDIOutput_ALSA output;
    QCOMPARE(output.initialize(), 0);
    for (const int index : {-1, 1}) {
        QVERIFY(!output.openPort(index));
        QVERIFY(!output.isMIDIConnect());
        QVERIFY(!send(&output, k_message));
        output.closePort();
    }
    QCOMPARE(FakeALSA::subscriptions(), 0);
}

void TestALSAOutput::everyFailureOfInitializeLeavesItClosed_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("client") << QByteArray("snd_seq_open");
    QTest::newRow("client's name") << QByteArray("snd_seq_set_client_name");
}

void TestALSAOutput::everyFailureOfInitializeLeavesItClosed()
{
    QFETCH(QByteArray, function);
    FakeALSA::failNext(function.constData(), -ENOMEM);
    CMIDIOutput_ALSA output;
    QCOMPARE(output.initialize(), -ENOMEM);
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QVERIFY(!output.openPort(0));
    QVERIFY(!output.isMIDIConnect());
    QVERIFY(!send(&output, k_message));
    output.closePort();
    QCOMPARE(FakeALSA::printedMessages(), 0);
}

void TestALSAOutput::everyFailureOfOpenGivesFalse_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("port") << QByteArray("snd_seq_create_simple_port");
    QTest::newRow("subscription") << QByteArray("snd_seq_connect_to");
}

void TestALSAOutput::everyFailureOfOpenGivesFalse()
{
    QFETCH(QByteArray, function);
    CMIDIOutput_ALSA output;
    QCOMPARE(output.initialize(), 0);
    FakeALSA::failNext(function.constData(), -EBUSY);
    QVERIFY(!output.openPort(0));
    QVERIFY(!output.isMIDIConnect());
    QVERIFY(!send(&output, k_message));
    output.closePort();
    QVERIFY(output.openPort(0));
    QVERIFY(send(&output, k_message));
}

void TestALSAOutput::sendOnAClosedPortFails()
{
    CMIDIOutput_ALSA output;
    QVERIFY(!send(&output, k_message));
    open(&output);
    output.closePort();
    QVERIFY(!output.isMIDIConnect());
    QVERIFY(!send(&output, k_message));
    QVERIFY(FakeALSA::received(m_device, m_port).isEmpty());
}

void TestALSAOutput::refusedEventFailsTheMessage()
{
    CMIDIOutput_ALSA output;
    open(&output);
    FakeALSA::failNext("snd_seq_event_output_direct", -EAGAIN);
    QVERIFY(!send(&output, k_message));
    QVERIFY(FakeALSA::received(m_device, m_port).isEmpty());
    QVERIFY(send(&output, k_message));
}

// The sequencer reports success for what it sends to a port that is gone.
void TestALSAOutput::pulledCableFailsEverySendFromThenOn_data()
{
    QTest::addColumn<bool>("wholeClient");
    QTest::newRow("port") << false;
    QTest::newRow("client") << true;
}

void TestALSAOutput::pulledCableFailsEverySendFromThenOn()
{
    QFETCH(bool, wholeClient);
    CMIDIOutput_ALSA output;
    open(&output);
    QVERIFY(send(&output, k_message));
    if (wholeClient)
        FakeALSA::removeClient(m_device);
    else
        FakeALSA::removePort(m_device, m_port);
    QVERIFY(!send(&output, k_message));
    QVERIFY(!send(&output, k_message));

    // The device comes back under its old address: it is another connection, which nobody has opened.
    const int device = wholeClient ? FakeALSA::addClient("Trellwick KTZ-JX") : m_device;
    QCOMPARE(device, m_device);
    QCOMPARE(FakeALSA::addPort(device, "Trellwick KTZ-JX MIDI 1"), m_port);
    QVERIFY(!send(&output, k_message));
    QVERIFY(FakeALSA::received(m_device, m_port).isEmpty());
}

void TestALSAOutput::closeEndsTheSubscription()
{
    CMIDIOutput_ALSA output;
    open(&output);
    QCOMPARE(FakeALSA::subscriptions(), 1);
    output.closePort();
    output.closePort();
    QCOMPARE(FakeALSA::subscriptions(), 0);
}

void TestALSAOutput::nobodyElseCanSubscribe()
{
    CMIDIOutput_ALSA output;
    open(&output);
    const int client = FakeALSA::newestOpenClient();
    snd_seq_t* other = nullptr;
    QCOMPARE(snd_seq_open(&other, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK), 0);
    const int port = FakeALSA::addPort(FakeALSA::newestOpenClient(), "Other");
    QCOMPARE(snd_seq_connect_from(other, port, client, 0), -EPERM);
    snd_seq_close(other);
}

void TestALSAOutput::destructionClosesTheClient()
{
    {
        CMIDIOutput_ALSA output;
        open(&output);
    }
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QCOMPARE(FakeALSA::subscriptions(), 0);
}

KTZ_TEST(QCoreApplication, TestALSAOutput)
#include "TestALSAOutput.moc"
