#include "app/CFatalMessageGuard.h"
#include "app/RunEditor.h"
#include "tests/support/CTestCase.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

class TestFatalMessageGuard : public CTestCase
{
    Q_OBJECT

  private slots:
    void startWithoutADisplayEndsWithOneLine_data();
    void startWithoutADisplayEndsWithOneLine();
    void silentHandlerIsSilent();
};

void TestFatalMessageGuard::startWithoutADisplayEndsWithOneLine_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("settings");
    QTest::addColumn<QByteArray>("line");
    const QByteArray noDisplay = "ktz-jx-editor: there is no display\n";
    QTest::newRow("nothing set") << "ktz-jx-editor" << QStringList() << noDisplay;
    QTest::newRow("the demo") << "ktz-jx-demo" << QStringList() << QByteArray("ktz-jx-demo: there is no display\n");
    QTest::newRow("empty") << "ktz-jx-editor" << QStringList{"DISPLAY="} << noDisplay;
    QTest::newRow("no answer") << "ktz-jx-editor" << QStringList{"DISPLAY=:4711"} << noDisplay;
    QTest::newRow("neither of two answers")
        << "ktz-jx-editor" << QStringList{"DISPLAY=:4711", "WAYLAND_DISPLAY=nobody", "XDG_SESSION_TYPE=wayland"}
        << noDisplay;
    QTest::newRow("a platform that Qt does not have")
        << "ktz-jx-editor" << QStringList{"QT_QPA_PLATFORM=nonsense"}
        << QByteArray("ktz-jx-editor: This application failed to start because no Qt platform plugin could be "
                      "initialized. Reinstalling the application may fix this problem.\n");
}

void TestFatalMessageGuard::startWithoutADisplayEndsWithOneLine()
{
    QFETCH(QString, program);
    QFETCH(QStringList, settings);
    QFETCH(QByteArray, line);
    // This program again, under the name of the one that a user starts.
    const QTemporaryDir folder;
    QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), folder.filePath(program)));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "XDG_SESSION_TYPE", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    for (const QString& setting : settings)
        environment.insert(setting.section(u'=', 0, 0), setting.section(u'=', 1));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    environment.insert(QStringLiteral("KTZ_TEST_START"), QStringLiteral("1"));
    QProcess editor;
    editor.setProcessEnvironment(environment);
    editor.start(folder.filePath(program), {});
    QVERIFY(editor.waitForFinished());
    QCOMPARE(editor.readAllStandardError(), line);
    QCOMPARE(editor.readAllStandardOutput(), QByteArray());
    QCOMPARE(editor.exitStatus(), QProcess::NormalExit);
    QCOMPARE(editor.exitCode(), 1);
}

void TestFatalMessageGuard::silentHandlerIsSilent()
{
    const QtMessageHandler previous = qInstallMessageHandler(doNotOutputMessage);
    qWarning("nobody reads this");
    QVERIFY(qInstallMessageHandler(previous) == &doNotOutputMessage);
}

KTZ_TEST_MAIN(TestFatalMessageGuard)(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("KTZ_TEST_START"))
        return runEditor(argc, argv);
    QCoreApplication application(argc, argv);
    TestFatalMessageGuard test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestFatalMessageGuard.moc"
