#include "tests/midi/CALSAInputTest.h"

#include <QDir>
#include <QTemporaryFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
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

/// Reading when the sequencer reports an error, or a signal comes between.
class TestALSAInputErrors : public CALSAInputTest
{
    Q_OBJECT

  private slots:
    void overrunQueueGoesOnWithTheNextMessage();
    void overrunPrintsNothing();
    void passingReadErrorsDoNotEndTheReading_data();
    void passingReadErrorsDoNotEndTheReading();
    void lastingReadErrorEndsTheReading_data();
    void lastingReadErrorEndsTheReading();
    void hangUpEndsTheReading();
    void closingIsNoEnd();
    void portThatEndedOpensAgain();
    void signalDoesNotEndTheReading();
};

void TestALSAInputErrors::overrunQueueGoesOnWithTheNextMessage()
{
    CRecordingObserver observer;
    CTestedInput input;
    openUnread(&input, &observer, notices(1001));
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), QByteArrayList{CRecordingObserver::k_overran});
    // All that the queue held is lost; what comes now is not.
    send("\xF0\x55\xF7");
    send("\xF0\x56\xF7");
    QTRY_COMPARE(observer.records(), QByteArrayList({CRecordingObserver::k_overran, "\xF0\x55\xF7", "\xF0\x56\xF7"}));
}

void TestALSAInputErrors::overrunPrintsNothing()
{
    CCapturedErrors errors;
    std::fputs("captured\n", stderr);
    CRecordingObserver observer;
    CTestedInput input;
    openUnread(&input, &observer, notices(1001));
    FakeALSA::continueReading();
    QTRY_COMPARE(observer.records(), QByteArrayList{CRecordingObserver::k_overran});
    QCOMPARE(errors.text(), "captured\n");
    QCOMPARE(FakeALSA::printedMessages(), 0);
}

void TestALSAInputErrors::passingReadErrorsDoNotEndTheReading_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("loses"); // whether an event may have gone with the error
    QTest::newRow("nothing there after all") << -EAGAIN << false;
    QTest::newRow("interrupted") << -EINTR << false;
    QTest::newRow("overrun") << -ENOSPC << true;
    QTest::newRow("cut event") << -EINVAL << true;
    QTest::newRow("no memory for it") << -ENOMEM << true;
}

void TestALSAInputErrors::passingReadErrorsDoNotEndTheReading()
{
    QFETCH(int, status);
    QFETCH(bool, loses);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    // More errors in the life of a port than would end it in a row.
    for (int i = 0; i <= CMIDIInput_ALSA::k_readAttempts; ++i) {
        FakeALSA::failNext("snd_seq_event_input", status);
        send(noticeOf(i));
        QTRY_VERIFY(observer.records().contains(noticeOf(i)));
    }
    QTRY_COMPARE(observer.records().contains(CRecordingObserver::k_overran), loses);
    QVERIFY(!observer.records().contains(CRecordingObserver::k_ended));
}

void TestALSAInputErrors::lastingReadErrorEndsTheReading_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("device gone") << -ENODEV;
    QTest::newRow("bad state") << -EBADFD;
    QTest::newRow("cut event") << -EINVAL;
}

void TestALSAInputErrors::lastingReadErrorEndsTheReading()
{
    QFETCH(int, status);
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::failAlways("snd_seq_event_input", status);
    send(noticeOf(1));
    QTRY_VERIFY(observer.records().contains(CRecordingObserver::k_ended));
    QTest::qWait(20); // gives a loop that tries again and again the time to show
    QCOMPARE(FakeALSA::calls("snd_seq_event_input"), CMIDIInput_ALSA::k_readAttempts);
    input.closePort();
    QCOMPARE(observer.records().last(), CRecordingObserver::k_ended);
    QCOMPARE(observer.records().count(CRecordingObserver::k_ended), 1);
}

void TestALSAInputErrors::hangUpEndsTheReading()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::hangUp(FakeALSA::newestOpenClient());
    QTRY_COMPARE(observer.records(), QByteArrayList{CRecordingObserver::k_ended});
    QTest::qWait(20); // gives a loop the time to show
    QCOMPARE(FakeALSA::calls("snd_seq_event_input"), 0);
}

void TestALSAInputErrors::closingIsNoEnd()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    input.closePort();
    QVERIFY(observer.records().isEmpty());
}

void TestALSAInputErrors::portThatEndedOpensAgain()
{
    CRecordingObserver observer;
    CTestedInput input;
    open(&input, &observer);
    FakeALSA::failAlways("snd_seq_event_input", -ENODEV);
    send(noticeOf(1));
    QTRY_VERIFY(observer.records().contains(CRecordingObserver::k_ended));
    input.closePort();
    FakeALSA::failAlways("snd_seq_event_input", 0);
    QVERIFY(input.openPort(0));
    QTRY_COMPARE(observer.records().last(), noticeOf(1));
    QVERIFY(input.isMIDIConnect());
}

void TestALSAInputErrors::signalDoesNotEndTheReading()
{
    // For as long as the process runs: the last signal may reach its thread after this test's end.
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    QCOMPARE(sigaction(SIGUSR1, &action, nullptr), 0);
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
}

KTZ_TEST(QCoreApplication, TestALSAInputErrors)
#include "TestALSAInputErrors.moc"
