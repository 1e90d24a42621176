#include "midi/CMIDIOutput.h"
#include "tests/support/CTestCase.h"

#include <chrono>
#include <numeric>

using std::chrono::steady_clock;

namespace
{
/// An output whose system notes each packet and the time at which it got it, and can refuse one.
class CRecordingOutput : public CMIDIOutput
{
  public:
    bool openPort(int /*index*/) override
    {
        setMIDIConnection(true);
        return true;
    }

    void closePort() override
    {
        setMIDIConnection(false);
    }

    bool sendMessage(const unsigned char* data, int size) override
    {
        return sendInPackets(data, size, [this](const unsigned char* packet, int n) {
            m_times.append(steady_clock::now());
            m_packets.append(QByteArray(reinterpret_cast<const char*>(packet), n));
            return m_packets.size() != m_refused;
        });
    }

    QByteArrayList m_packets;
    QList<steady_clock::time_point> m_times;
    qsizetype m_refused = 0; ///< number of the packet to refuse, counted from 1
};

QByteArray messageOf(int size)
{
    QByteArray message;
    for (int i = 0; i < size; ++i)
        message.append(static_cast<char>(i * 7));
    return message;
}

bool send(CMIDIOutput* output, const QByteArray& message)
{
    return output->sendMessage(reinterpret_cast<const unsigned char*>(message.constData()),
                               static_cast<int>(message.size()));
}
} // namespace

class TestMIDIOutput : public CTestCase
{
    Q_OBJECT

  private slots:
    void initializeOfTheBaseDoesNothing();
    void notConnectedAfterConstruction();
    void connectedFlagCanBeSetFromOutside();
    void messageIsCutIntoPackets_data();
    void messageIsCutIntoPackets();
    void pausesBetweenPackets();
    void noPauseAfterTheLastPacket();
    void sizeZeroSendsNothing();
    void negativeSizeSendsNothing();
    void nullDataSendsNothing();
    void closedOutputSendsNothing();
    void refusedPacketEndsTheMessage_data();
    void refusedPacketEndsTheMessage();
};

void TestMIDIOutput::initializeOfTheBaseDoesNothing()
{
    CRecordingOutput output;
    QCOMPARE(output.initialize(), 0);
    QVERIFY(!output.isMIDIConnect());
}

void TestMIDIOutput::notConnectedAfterConstruction()
{
    const CRecordingOutput output;
    QVERIFY(!output.isMIDIConnect());
}

void TestMIDIOutput::connectedFlagCanBeSetFromOutside()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    output.setMIDIConnection(false);
    QVERIFY(!output.isMIDIConnect());
    QVERIFY(!send(&output, messageOf(3)));
    output.setMIDIConnection(true);
    QVERIFY(output.isMIDIConnect());
    QVERIFY(send(&output, messageOf(3)));
    QCOMPARE(output.m_packets.size(), 1);
}

void TestMIDIOutput::messageIsCutIntoPackets_data()
{
    QTest::addColumn<QList<int>>("packets");
    QTest::newRow("one byte") << QList<int>{1};
    QTest::newRow("15 bytes") << QList<int>{15};
    QTest::newRow("one below the limit") << QList<int>{255};
    QTest::newRow("exactly the limit: one packet") << QList<int>{256};
    QTest::newRow("one above the limit") << QList<int>{256, 1};
    QTest::newRow("twice the limit") << QList<int>{256, 256};
    QTest::newRow("600 bytes") << QList<int>{256, 256, 88};
}

void TestMIDIOutput::messageIsCutIntoPackets()
{
    QFETCH(QList<int>, packets);
    const QByteArray message = messageOf(std::accumulate(packets.begin(), packets.end(), 0));
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    QVERIFY(send(&output, message));

    QList<int> sizes;
    for (const QByteArray& packet : std::as_const(output.m_packets))
        sizes.append(static_cast<int>(packet.size()));
    QCOMPARE(sizes, packets);
    QCOMPARE(output.m_packets.join(), message);
}

void TestMIDIOutput::pausesBetweenPackets()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    QVERIFY(send(&output, messageOf(600)));
    QCOMPARE(output.m_times.size(), 3);
    constexpr auto pause = CMIDIOutput::k_packetPause;
    QVERIFY(output.m_times[1] - output.m_times[0] >= pause);
    QVERIFY(output.m_times[2] - output.m_times[1] >= pause);
}

void TestMIDIOutput::noPauseAfterTheLastPacket()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    // A pause lasts at least its time, so one call of many that takes less proves that there is none.
    auto shortest = steady_clock::duration::max();
    for (int i = 0; i < 1000; ++i) {
        const auto begin = steady_clock::now();
        QVERIFY(send(&output, messageOf(256)));
        shortest = std::min(shortest, steady_clock::now() - begin);
    }
    QVERIFY(shortest < CMIDIOutput::k_packetPause);
    QCOMPARE(output.m_packets.size(), 1000);
}

void TestMIDIOutput::sizeZeroSendsNothing()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    QVERIFY(!send(&output, QByteArray("")));
    QVERIFY(output.m_packets.isEmpty());
}

void TestMIDIOutput::negativeSizeSendsNothing()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    const unsigned char data[] = {1, 2};
    QVERIFY(!output.sendMessage(data, -1));
    QVERIFY(output.m_packets.isEmpty());
}

void TestMIDIOutput::nullDataSendsNothing()
{
    CRecordingOutput output;
    QVERIFY(output.openPort(0));
    QVERIFY(!output.sendMessage(nullptr, 5));
    QVERIFY(output.m_packets.isEmpty());
}

void TestMIDIOutput::closedOutputSendsNothing()
{
    CRecordingOutput output;
    QVERIFY(!send(&output, messageOf(5)));
    QVERIFY(output.openPort(0));
    output.closePort();
    QVERIFY(!send(&output, messageOf(5)));
    QVERIFY(output.m_packets.isEmpty());
}

void TestMIDIOutput::refusedPacketEndsTheMessage_data()
{
    QTest::addColumn<int>("refused");
    QTest::newRow("first packet") << 1;
    QTest::newRow("second packet") << 2;
    QTest::newRow("last packet") << 3;
}

void TestMIDIOutput::refusedPacketEndsTheMessage()
{
    QFETCH(int, refused);
    CRecordingOutput output;
    output.m_refused = refused;
    QVERIFY(output.openPort(0));
    QVERIFY(!send(&output, messageOf(600)));
    QCOMPARE(output.m_packets.size(), refused);
}

KTZ_TEST(QCoreApplication, TestMIDIOutput)
#include "TestMIDIOutput.moc"
