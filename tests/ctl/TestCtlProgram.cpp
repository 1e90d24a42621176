#include "tests/support/CTestCase.h"

#include <QProcess>

#include <csignal>

/// The program itself, on a system that may or may not have a sequencer.
class TestCtlProgram : public CTestCase
{
    Q_OBJECT

  private slots:
    void helpGoesToStandardOutput();
    void wrongUseGetsOneLineAndStatus2();
    void linksNoWindows();
    void outputIsFull();
    void readerThatHasGoneIsNoError();
    void signalEndsAWait_data();
    void signalEndsAWait();
};

namespace
{
struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

Outcome runShell(const QString& command)
{
    QProcess process;
    process.start("/bin/sh", {"-c", command, KTZ_JXCTL});
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
} // namespace

void TestCtlProgram::helpGoesToStandardOutput()
{
    const Outcome outcome = runShell("\"$0\" --help");
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.startsWith("Usage: ktz-jxctl "));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCtlProgram::wrongUseGetsOneLineAndStatus2()
{
    const Outcome outcome = runShell("\"$0\" get 0.cc");
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors, QByteArray("ktz-jxctl: \"0\" is no knob: 1 to 8, such as 3, 1-4 or all\n"));
}

void TestCtlProgram::linksNoWindows()
{
#ifdef Q_OS_LINUX
    const QByteArray libraries = runShell("ldd \"$0\"").output;
    QVERIFY(libraries.contains("Qt6Core"));
    for (const char* library : {"Qt6Gui", "Qt6Widgets", "Qt6DBus", "libX11", "libxcb", "libGL"})
        QVERIFY2(!libraries.contains(library), library);
#endif
}

void TestCtlProgram::outputIsFull()
{
    const Outcome outcome = runShell("\"$0\" show factory >/dev/full");
    QCOMPARE(outcome.status, 6);
    QCOMPARE(outcome.errors, QByteArray("ktz-jxctl: standard output: No space left on device\n"));
}

void TestCtlProgram::readerThatHasGoneIsNoError()
{
    const Outcome outcome = runShell("{ sleep 0.1; \"$0\" show factory; echo $? >&2; } | true");
    QCOMPARE(outcome.errors, QByteArray("0\n"));
}

void TestCtlProgram::signalEndsAWait_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestCtlProgram::signalEndsAWait()
{
    QFETCH(int, number);
    QProcess process;
    process.start(KTZ_JXCTL, {"show", "--port", "No such port", "--wait", "3600"});
    QVERIFY(process.waitForStarted());
    // Sooner or later it listens; a signal before that ends it otherwise, which is not what is asked here.
    QTest::qWait(300);
    QCOMPARE(kill(pid_t(process.processId()), number), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + number);
    QCOMPARE(process.readAllStandardError(), QByteArray("ktz-jxctl: interrupted\n"));
}

KTZ_TEST(QCoreApplication, TestCtlProgram)
#include "TestCtlProgram.moc"
