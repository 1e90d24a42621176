#include "midi/CMIDIThread.h"
#include "midi/MIDIPlatform.h"
#include "midi/alsa/CMIDIInput_ALSA.h"
#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/midi/CRecordingObserver.h"
#include "tests/support/CTestCase.h"

#include <QDir>
#include <QTemporaryFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
/// Closes itself, so that a test that fails leaves no thread behind.
class CTestedInput : public CMIDIInput_ALSA
{
  public:
    ~CTestedInput() override
    {
        CMIDIInput_ALSA::closePort();
    }
};

/// A message of 11 bytes, as the device sends it for a turned knob.
QByteArray noticeOf(int number)
{
    QByteArray message("\xF0\x01\x02\x03\x04\x05\x06\x07\x08\x09\xF7");
    message[3] = static_cast<char>(number / 128);
    message[4] = static_cast<char>(number % 128);
    return message;
}

QByteArrayList notices(int count)
{
    QByteArrayList messages;
    for (int i = 0; i < count; ++i)
        messages.append(noticeOf(i));
    return messages;
}

/// Takes what the process writes to its standard error for as long as it lives.
class CCapturedErrors
{
  public:
    CCapturedErrors() : m_standardError(dup(STDERR_FILENO))
    {
        if (m_file.open())
            dup2(m_file.handle(), STDERR_FILENO);
    }

    ~CCapturedErrors()
    {
        dup2(m_standardError, STDERR_FILENO);
        close(m_standardError);
    }

    Q_DISABLE_COPY_MOVE(CCapturedErrors)

    QByteArray text()
    {
        m_file.seek(0);
        return m_file.readAll();
    }

  private:
    QTemporaryFile m_file;
    int m_standardError;
};

/// Sends a signal to each of this process's threads but this one.
void interruptTheOtherThreads()
{
    for (const QString& task : QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (task.toLong() != syscall(SYS_gettid))
            syscall(SYS_tgkill, getpid(), task.toLong(), SIGUSR1);
    }
}
} // namespace

class TestALSAInput : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void ownClientAndPortHaveTheirNames();
    void queueAndBufferAreTheLargest();
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
    void overrunQueueGoesOnWithTheNextMessage();
    void overrunPrintsNothing();
    void passingReadErrorsDoNotEndTheReading_data();
    void passingReadErrorsDoNotEndTheReading();
    void lastingReadErrorEndsTheReading_data();
    void lastingReadErrorEndsTheReading();
    void hangUpEndsTheReading();
    void signalDoesNotEndTheReading();
    void sleepsWhileNothingComes();
    void deliversOnTheDeliveryThread();
    void openOfAnOpenPortChangesNothing();
    void openWithoutASourceFails();
    void everyFailureOfInitializeLeavesItClosed_data();
    void everyFailureOfInitializeLeavesItClosed();
    void everyFailureOfOpenGivesFalse_data();
    void everyFailureOfOpenGivesFalse();
    void openWithoutFileDescriptorsFails();
    void sourceGoneBeforeOpeningGivesFalse();
    void pulledCableIsSilence();
    void flowsAgainAfterCloseAndOpen();
    void nothingArrivesWhenClosed();
    void nobodyElseCanSubscribe();
    void hundredThousandMessages();

  private:
    /// Opens the port to the device of init(), for the observer.
    void open(CMIDIInput_ALSA* input, CRecordingObserver* observer);

    void send(const QByteArray& message) const
    {
        FakeALSA::send(m_device, m_port, message);
    }

    int m_device = 0;
    int m_port = 0;
};

void TestALSAInput::init()
{
    CTestCase::init();
    FakeALSA::reset();
    m_device = FakeALSA::addClient("Trellwick KTZ-JX");
    m_port = FakeALSA::addPort(m_device, "Trellwick KTZ-JX MIDI 1");
    QCOMPARE(MIDIPlatform::sourceCount(), 1);
}

void TestALSAInput::open(CMIDIInput_ALSA* input, CRecordingObserver* observer)
{
    QCOMPARE(input->initialize(), 0);
    input->registerObserver(observer);
    QVERIFY(input->openPort(0));
    QVERIFY(input->isMIDIConnect());
}

void TestALSAInput::ownClientAndPortHaveTheirNames()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::clientName(client), "MIDI Client");
    QCOMPARE(FakeALSA::portName(client, 0), "Input port");
}

void TestALSAInput::queueAndBufferAreTheLargest()
{
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::queueCells(client), 2000);
    QCOMPARE(FakeALSA::inputBufferSize(client), 2000 * sizeof(snd_seq_event_t));
}

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
    send(longest);
    send("\xF0\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList({longest, "\xF0\xF7"}));
}

void TestALSAInput::burstIsReadInOneBatch()
{
    CRecordingObserver observer;
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    input.registerObserver(&observer);
    // Before the reading begins, a burst of the size that comes while the process is held up.
    FakeALSA::holdReading();
    QVERIFY(input.openPort(0));
    for (const QByteArray& message : notices(760))
        send(message);
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), notices(760));
    QCOMPARE(FakeALSA::fetches(), 1);
}

void TestALSAInput::thousandMessagesFitIntoTheQueue()
{
    CRecordingObserver observer;
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    input.registerObserver(&observer);
    FakeALSA::holdReading();
    QVERIFY(input.openPort(0));
    for (const QByteArray& message : notices(1000))
        send(message);
    QCOMPARE(FakeALSA::queuedCells(FakeALSA::newestOpenClient()), 2000);
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), notices(1000));
}

void TestALSAInput::overrunQueueGoesOnWithTheNextMessage()
{
    CRecordingObserver observer;
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    input.registerObserver(&observer);
    FakeALSA::holdReading();
    QVERIFY(input.openPort(0));
    for (const QByteArray& message : notices(1001))
        send(message);
    FakeALSA::continueReading();
    QTRY_COMPARE(FakeALSA::queuedCells(FakeALSA::newestOpenClient()), 0);
    // All that the queue held is lost; what comes now is not.
    send("\xF0\x55\xF7");
    send("\xF0\x56\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList({"\xF0\x55\xF7", "\xF0\x56\xF7"}));
}

void TestALSAInput::overrunPrintsNothing()
{
    CCapturedErrors errors;
    std::fputs("captured\n", stderr);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::failNext("snd_seq_event_input", -ENOSPC);
    send(noticeOf(1));
    QTRY_COMPARE(observer.records(), notices(2).mid(1));
    QCOMPARE(errors.text(), "captured\n");
}

void TestALSAInput::passingReadErrorsDoNotEndTheReading_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("nothing there after all") << -EAGAIN;
    QTest::newRow("interrupted") << -EINTR;
    QTest::newRow("overrun") << -ENOSPC;
}

void TestALSAInput::passingReadErrorsDoNotEndTheReading()
{
    QFETCH(int, status);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::failNext("snd_seq_event_input", status);
    send(noticeOf(1));
    send(noticeOf(2));
    QTRY_COMPARE(observer.records(), notices(3).mid(1));
}

void TestALSAInput::lastingReadErrorEndsTheReading_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("device gone") << -ENODEV;
    QTest::newRow("bad state") << -EBADFD;
    QTest::newRow("cut event") << -EINVAL;
}

void TestALSAInput::lastingReadErrorEndsTheReading()
{
    QFETCH(int, status);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::failAlways("snd_seq_event_input", status);
    send(noticeOf(1));
    QTRY_COMPARE(FakeALSA::calls("snd_seq_event_input"), 1);
    QTest::qWait(20); // gives a loop that tries again and again the time to show
    QCOMPARE(FakeALSA::calls("snd_seq_event_input"), 1);
    input.closePort();
    QVERIFY(observer.records().isEmpty());
}

void TestALSAInput::hangUpEndsTheReading()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::hangUp(FakeALSA::newestOpenClient());
    QTest::qWait(20); // gives a loop the time to show
    QCOMPARE(FakeALSA::calls("snd_seq_event_input"), 0);
}

void TestALSAInput::signalDoesNotEndTheReading()
{
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    struct sigaction before = {};
    QCOMPARE(sigaction(SIGUSR1, &action, &before), 0);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send(noticeOf(0));
    QTRY_COMPARE(observer.records().size(), 1);
    for (int i = 1; i < 50; ++i) {
        interruptTheOtherThreads();
        send(noticeOf(i));
    }
    QTRY_COMPARE(observer.records(), notices(50));
    input.closePort();
    QCOMPARE(sigaction(SIGUSR1, &before, nullptr), 0);
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

void TestALSAInput::deliversOnTheDeliveryThread()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    send(noticeOf(1));
    QTRY_COMPARE(observer.records().size(), 1);
    QVERIFY(qobject_cast<CMIDIThread*>(observer.thread()) != nullptr);
}

void TestALSAInput::openOfAnOpenPortChangesNothing()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    QVERIFY(input.openPort(0));
    QVERIFY(input.openPort(77));
    QCOMPARE(FakeALSA::calls("snd_seq_create_simple_port"), 1);
    QCOMPARE(FakeALSA::subscriptions(), 1);
}

void TestALSAInput::openWithoutASourceFails()
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

void TestALSAInput::everyFailureOfInitializeLeavesItClosed_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("decoder") << QByteArray("snd_midi_event_new");
    QTest::newRow("client") << QByteArray("snd_seq_open");
    QTest::newRow("client's name") << QByteArray("snd_seq_set_client_name");
    QTest::newRow("queue") << QByteArray("snd_seq_set_client_pool_input");
    QTest::newRow("read buffer") << QByteArray("snd_seq_set_input_buffer_size");
}

void TestALSAInput::everyFailureOfInitializeLeavesItClosed()
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

void TestALSAInput::everyFailureOfOpenGivesFalse_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("port") << QByteArray("snd_seq_create_simple_port");
    QTest::newRow("subscription") << QByteArray("snd_seq_connect_from");
}

void TestALSAInput::everyFailureOfOpenGivesFalse()
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

void TestALSAInput::openWithoutFileDescriptorsFails()
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

void TestALSAInput::sourceGoneBeforeOpeningGivesFalse()
{
    CTestedInput input;
    QCOMPARE(input.initialize(), 0);
    FakeALSA::removeClient(m_device);
    QVERIFY(!input.openPort(0));
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

void TestALSAInput::nothingArrivesWhenClosed()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    input.closePort();
    send(noticeOf(0));
    QVERIFY(input.openPort(0));
    send(noticeOf(1));
    QTRY_COMPARE(observer.records(), QByteArrayList{noticeOf(1)});
}

void TestALSAInput::nobodyElseCanSubscribe()
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

QTEST_GUILESS_MAIN(TestALSAInput)
#include "TestALSAInput.moc"
