#include "tests/midi/CALSAInputTest.h"

#include <cerrno>
#include <sys/resource.h>

/// The port and its client, opened or not.
class TestALSAInputOpening : public CALSAInputTest
{
    Q_OBJECT

  private slots:
    void ownClientAndPortHaveTheirNames();
    void queueAndBufferAreTheLargest();
    void openOfAnOpenPortChangesNothing();
    void openWithoutASourceFails();
    void everyFailureOfInitializeLeavesItClosed_data();
    void everyFailureOfInitializeLeavesItClosed();
    void everyFailureOfOpenGivesFalse_data();
    void everyFailureOfOpenGivesFalse();
    void openWithoutFileDescriptorsFails();
    void nobodyElseCanSubscribe();
};

void TestALSAInputOpening::ownClientAndPortHaveTheirNames()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::clientName(client), "KTZ-JX Editor");
    QCOMPARE(FakeALSA::portName(client, 0), "Input port");
}

void TestALSAInputOpening::queueAndBufferAreTheLargest()
{
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::queueCells(client), 2000);
    QCOMPARE(FakeALSA::inputBufferSize(client), 2000 * sizeof(snd_seq_event_t));
}

void TestALSAInputOpening::openOfAnOpenPortChangesNothing()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    QVERIFY(input.openPort(0));
    QVERIFY(input.openPort(77));
    QCOMPARE(FakeALSA::calls("snd_seq_create_simple_port"), 1);
    QCOMPARE(FakeALSA::subscriptions(), 1);
}

void TestALSAInputOpening::openWithoutASourceFails()
{
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    for (const int index : {-1, 1}) {
        QVERIFY(!input.openPort(index));
        QVERIFY(!input.isMIDIConnect());
        input.closePort();
    }
    QCOMPARE(FakeALSA::subscriptions(), 0);
}

void TestALSAInputOpening::everyFailureOfInitializeLeavesItClosed_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("decoder") << QByteArray("snd_midi_event_new");
    QTest::newRow("client") << QByteArray("snd_seq_open");
    QTest::newRow("client's name") << QByteArray("snd_seq_set_client_name");
    QTest::newRow("queue") << QByteArray("snd_seq_set_client_pool_input");
    QTest::newRow("read buffer") << QByteArray("snd_seq_set_input_buffer_size");
}

void TestALSAInputOpening::everyFailureOfInitializeLeavesItClosed()
{
    QFETCH(QByteArray, function);
    FakeALSA::failNext(function.constData(), -ENOMEM);
    CTestedInput input;
    QCOMPARE(input.initialize(), -ENOMEM);
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QVERIFY(!input.openPort(0));
    QVERIFY(!input.isMIDIConnect());
    input.closePort();
    QCOMPARE(FakeALSA::printedMessages(), 0);
}

void TestALSAInputOpening::everyFailureOfOpenGivesFalse_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("port") << QByteArray("snd_seq_create_simple_port");
    QTest::newRow("subscription") << QByteArray("snd_seq_connect_from");
}

void TestALSAInputOpening::everyFailureOfOpenGivesFalse()
{
    QFETCH(QByteArray, function);
    CRecordingObserver observer;
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    input.registerObserver(&observer);
    FakeALSA::failNext(function.constData(), -EBUSY);
    QVERIFY(!input.openPort(0));
    QVERIFY(!input.isMIDIConnect());
    input.closePort();
    QVERIFY(input.openPort(0));
    send(noticeOf(1));
    QTRY_COMPARE(observer.records().size(), 1);
}

void TestALSAInputOpening::openWithoutFileDescriptorsFails()
{
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
    const bool opened = input.openPort(0);
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QVERIFY(!opened);
    QVERIFY(!input.isMIDIConnect());
    input.closePort();
    QCOMPARE(FakeALSA::subscriptions(), 0);
}

void TestALSAInputOpening::nobodyElseCanSubscribe()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    const int client = FakeALSA::newestOpenClient();
    snd_seq_t* other = nullptr;
    QCOMPARE(snd_seq_open(&other, "default", SND_SEQ_OPEN_OUTPUT, SND_SEQ_NONBLOCK), 0);
    const int port = FakeALSA::addPort(FakeALSA::newestOpenClient(), "Other");
    QCOMPARE(snd_seq_connect_to(other, port, client, 0), -EPERM);
    snd_seq_close(other);
}

KTZ_TEST(QCoreApplication, TestALSAInputOpening)
#include "TestALSAInputOpening.moc"
