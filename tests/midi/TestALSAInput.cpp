#include "tests/midi/CALSAInputTest.h"

#include <sys/resource.h>

/// What becomes of the events that come in.
class TestALSAInput : public CALSAInputTest
{
    Q_OBJECT

  private slots:
    void sysExBecomesARecord();
    void sysExInPiecesArrivesInPieces();
    void otherEventsBecomeBytes_data();
    void otherEventsBecomeBytes();
    void statusByteIsNeverLeftOut();
    void eventThatIsNoMIDIMakesNoRecord();
    void emptySysExMakesNoRecord();
    void eventLongerThanARecordIsDroppedWhole();
    void burstIsReadInOneBatch();
    void thousandMessagesFitIntoTheQueue();
    void sleepsWhileNothingComes();
    void pulledCableIsSilence();
    void flowsAgainAfterCloseAndOpen();
    void hundredThousandMessages();
};

void TestALSAInput::sysExBecomesARecord()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send(noticeOf(1));
    QTRY_COMPARE(observer.records(), QByteArrayList{noticeOf(1)});
}

void TestALSAInput::sysExInPiecesArrivesInPieces()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    const QByteArrayList pieces{"\xF0\x01\x02", "\x03", "\x04\xF7\xF0", QByteArray(256, 'x'), "\xF7"};
    for (const QByteArray& piece : pieces)
        send(piece);
    QTRY_COMPARE(observer.records(), pieces);
}

void TestALSAInput::otherEventsBecomeBytes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("param");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("control change") << int{SND_SEQ_EVENT_CONTROLLER} << 2 << 7 << 100 << QByteArray("\xB2\x07\x64");
    QTest::newRow("program change") << int{SND_SEQ_EVENT_PGMCHANGE} << 15 << 0 << 3 << QByteArray("\xCF\x03");
    QTest::newRow("channel pressure") << int{SND_SEQ_EVENT_CHANPRESS} << 1 << 0 << 9 << QByteArray("\xD1\x09");
    QTest::newRow("pitch bend, middle") << int{SND_SEQ_EVENT_PITCHBEND} << 3 << 0 << 0 << QByteArray("\xE3\x00\x40", 3);
    QTest::newRow("14-bit control change: two messages, one record")
        << int{SND_SEQ_EVENT_CONTROL14} << 0 << 1 << 129 << QByteArray("\xB0\x01\x01\xB0\x21\x01");
    QTest::newRow("parameter number: four messages, one record")
        << int{SND_SEQ_EVENT_NONREGPARAM} << 0 << 130 << 131
        << QByteArray("\xB0\x63\x01\xB0\x62\x02\xB0\x06\x01\xB0\x26\x03");
    QTest::newRow("clock") << int{SND_SEQ_EVENT_CLOCK} << 0 << 0 << 0 << QByteArray("\xF8");
    QTest::newRow("active sensing") << int{SND_SEQ_EVENT_SENSING} << 0 << 0 << 0 << QByteArray("\xFE");
}

void TestALSAInput::otherEventsBecomeBytes()
{
    QFETCH(int, type);
    QFETCH(int, channel);
    QFETCH(int, param);
    QFETCH(int, value);
    QFETCH(QByteArray, bytes);
    snd_seq_event_t event;
    snd_seq_ev_clear(&event);
    event.type = static_cast<unsigned char>(type);
    event.data.control.channel = static_cast<unsigned char>(channel);
    event.data.control.param = static_cast<unsigned int>(param);
    event.data.control.value = value;

    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::send(m_device, m_port, event);
    QTRY_COMPARE(observer.records(), QByteArrayList{bytes});
}

void TestALSAInput::statusByteIsNeverLeftOut()
{
    snd_seq_event_t note;
    snd_seq_ev_clear(&note);
    snd_seq_ev_set_noteon(&note, 4, 60, 64);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::send(m_device, m_port, note);
    FakeALSA::send(m_device, m_port, note);
    send(noticeOf(1));
    FakeALSA::send(m_device, m_port, note);
    const QByteArray bytes("\x94\x3C\x40");
    QTRY_COMPARE(observer.records(), QByteArrayList({bytes, bytes, noticeOf(1), bytes}));
}

void TestALSAInput::eventThatIsNoMIDIMakesNoRecord()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    for (const int type : {SND_SEQ_EVENT_ECHO, SND_SEQ_EVENT_PORT_SUBSCRIBED, SND_SEQ_EVENT_NONE}) {
        snd_seq_event_t event;
        snd_seq_ev_clear(&event);
        event.type = static_cast<unsigned char>(type);
        FakeALSA::send(m_device, m_port, event);
    }
    send("\xF0\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList{"\xF0\xF7"});
}

void TestALSAInput::emptySysExMakesNoRecord()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send("");
    send("\xF0\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList{"\xF0\xF7"});
}

void TestALSAInput::eventLongerThanARecordIsDroppedWhole()
{
    const QByteArray tooLong(0x10000, 'x');
    const QByteArray longest(0xFFFF, 'y');
    CTestedInput input;
    CRecordingObserver observer;
    open(&input, &observer);
    FakeALSA::enlargeQueue(FakeALSA::newestOpenClient(), 10'000);
    send(tooLong);
    QTRY_COMPARE(observer.records(), QByteArrayList{CRecordingObserver::k_overran});
    send(longest);
    send("\xF0\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList({CRecordingObserver::k_overran, longest, "\xF0\xF7"}));
}

void TestALSAInput::burstIsReadInOneBatch()
{
    CRecordingObserver observer;
    CTestedInput input;
    // A burst of the size that comes while the process is held up.
    openUnread(&input, &observer, notices(760));
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), notices(760));
    QCOMPARE(FakeALSA::fetches(), 1);
}

void TestALSAInput::thousandMessagesFitIntoTheQueue()
{
    CRecordingObserver observer;
    CTestedInput input;
    openUnread(&input, &observer, notices(1000));
    QCOMPARE(FakeALSA::queuedCells(FakeALSA::newestOpenClient()), 2000);
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), notices(1000));
}

void TestALSAInput::sleepsWhileNothingComes()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send(noticeOf(1));
    QTRY_COMPARE(observer.records().size(), 1);
    const int reads = FakeALSA::calls("snd_seq_event_input");
    QTest::qWait(20); // gives a loop that polls the time to show
    QCOMPARE(FakeALSA::calls("snd_seq_event_input"), reads);
}

void TestALSAInput::pulledCableIsSilence()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send(noticeOf(0));
    FakeALSA::removeClient(m_device);
    QTRY_COMPARE(observer.records(), notices(1));
    QVERIFY(input.isMIDIConnect());
    input.closePort();
    QVERIFY(!input.isMIDIConnect());
}

void TestALSAInput::flowsAgainAfterCloseAndOpen()
{
    CRecordingObserver observer;
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    input.registerObserver(&observer);
    for (int round = 0; round < 20; ++round) {
        QVERIFY(input.openPort(0));
        send(noticeOf(round));
        QTRY_COMPARE(observer.records(), notices(round + 1));
        input.closePort();
        QVERIFY(!input.isMIDIConnect());
        QCOMPARE(FakeALSA::subscriptions(), 0);
    }
}

void TestALSAInput::hundredThousandMessages()
{
    constexpr int total = 100'000;
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    const int client = FakeALSA::newestOpenClient();
    for (int i = 0; i < total; ++i) {
        while (FakeALSA::queuedCells(client) > 1900)
            QThread::yieldCurrentThread();
        send(noticeOf(i % 16384));
    }
    QTRY_COMPARE_WITH_TIMEOUT(observer.count(), total, 60000);
    const QByteArrayList records = observer.records();
    for (int i = 0; i < total; ++i)
        QCOMPARE(records[i], noticeOf(i % 16384));
}

KTZ_TEST(QCoreApplication, TestALSAInput)
#include "TestALSAInput.moc"
