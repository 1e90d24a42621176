#include "tests/support/CTestCase.h"

#include <QProcess>
#include <QTemporaryDir>

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
    void hasNothingOfWindowsInIt();
    void panelIsAnotherProgramUnderItsName();
    void panelThatIsNotInstalledGetsOneLineAndStatus2();
};

namespace
{
struct Outcome
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

Outcome runProgram(const QStringList& arguments, const QString& program = QStringLiteral(KTZ_JX_DEVICE))
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
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
    QTest::newRow("--panel with --raw") << QStringList{"--panel", "--raw", "hw:0,0,2"}
                                        << QByteArray("ktz-jx-device: --panel and --raw exclude each other\n");
    QTest::newRow("--panel with too many cables") << QStringList{"--panel", "--cables", "4"}
                                                  << QByteArray("ktz-jx-device: --cables needs a number from 1 to 3\n");
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

void TestDeviceProgram::hasNothingOfWindowsInIt()
{
    const Outcome outcome = runProgram({KTZ_JX_DEVICE}, QStringLiteral("ldd"));
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.contains("libQt6Core.so"));
    for (const char* const library : {"Qt6Gui", "Qt6Widgets", "libX11", "libxcb"})
        QVERIFY2(!outcome.output.contains(library), library);
}

void TestDeviceProgram::panelIsAnotherProgramUnderItsName()
{
    const Outcome outcome = runProgram({"--panel", "--cables", "2"});
    QCOMPARE(outcome.errors, QByteArray("ktz-jx-device: there is no display\n"));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
}

void TestDeviceProgram::panelThatIsNotInstalledGetsOneLineAndStatus2()
{
    const QTemporaryDir folder;
    const QString alone = folder.filePath(QStringLiteral("ktz-jx-device"));
    QVERIFY(QFile::copy(QStringLiteral(KTZ_JX_DEVICE), alone));
    const Outcome outcome = runProgram({"--panel"}, alone);
    QCOMPARE(outcome.errors,
             QByteArray("ktz-jx-device: --panel needs ktz-jx-demo beside this program: No such file or directory\n"));
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QByteArray());
}

KTZ_TEST(QCoreApplication, TestDeviceProgram)
#include "TestDeviceProgram.moc"
