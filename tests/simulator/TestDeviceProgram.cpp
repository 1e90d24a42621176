#include "tests/support/CTestCase.h"

#include <QProcess>

/// The program itself, on a system that may or may not have a sequencer.
class TestDeviceProgram : public CTestCase
{
    Q_OBJECT

  private slots:
    void helpGoesToStandardOutput();
    void versionGoesToStandardOutput();
    void wrongArgumentsGetOneLineAndStatus2_data();
    void wrongArgumentsGetOneLineAndStatus2();
    void deviceThatDoesNotExistGetsOneLineAndStatus1();
};

namespace
{
struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

Outcome runProgram(const QStringList& arguments)
{
    QProcess process;
    process.start(KTZ_JX_DEVICE, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}
} // namespace

void TestDeviceProgram::helpGoesToStandardOutput()
{
    const Outcome outcome = runProgram({"--help"});
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.startsWith("Usage: "));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestDeviceProgram::versionGoesToStandardOutput()
{
    for (const char* const option : {"--version", "-v"}) {
        const Outcome outcome = runProgram({option});
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.output.startsWith("ktz-jx-device (KTZ-JX Editor) " KTZ_PROJECT_VERSION "\n"));
        QCOMPARE(outcome.errors, QByteArray());
    }
}

void TestDeviceProgram::wrongArgumentsGetOneLineAndStatus2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("errors");
    QTest::newRow("unknown") << QStringList{"--usb"}
                             << QByteArray("ktz-jx-device: unknown argument \"--usb\"; --help lists them\n");
    QTest::newRow("--raw alone") << QStringList{"--raw"}
                                 << QByteArray("ktz-jx-device: --raw needs a raw MIDI device, such as hw:0,0,2\n");
}

void TestDeviceProgram::wrongArgumentsGetOneLineAndStatus2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, errors);
    const Outcome outcome = runProgram(arguments);
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors, errors);
}

void TestDeviceProgram::deviceThatDoesNotExistGetsOneLineAndStatus1()
{
    const Outcome outcome = runProgram({"--raw", "hw:31,31,31"});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY(outcome.errors.startsWith("ktz-jx-device: cannot open raw MIDI device hw:31,31,31: "));
    QCOMPARE(outcome.errors.count('\n'), 1);
}

KTZ_TEST(QCoreApplication, TestDeviceProgram)
#include "TestDeviceProgram.moc"
