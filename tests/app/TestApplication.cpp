#include "app/CApplication.h"
#include "app/RunEditor.h"
#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"

#include <QFileOpenEvent>
#include <QProcess>
#include <QTemporaryDir>

namespace
{
QString settingsFile(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("one.CJX"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview><key3><key1103>55</key1103>"
                   "<key1203>1</key1203><key1303>2</key1303><key1403>3</key1403><key1503>1</key1503></key3>"
                   "</controlview></parameters>");
    return path;
}
} // namespace

class TestApplication : public CTestCase
{
    Q_OBJECT

  private slots:
    void cleanup();

    void fileOpenBeforeTheWindowIsSetGoesToTheToolkit();
    void fileOpenDuringTheSplashOnlyRecordsThePath();
    void fileOpenRestoresAMinimisedWindow();
    void fileOpenOpensTheFile();
    void otherEventsGoToTheToolkit();
    void exitStatus_data();
    void exitStatus();
    void argumentIsOpened();
};

void TestApplication::cleanup()
{
    g_mainWindow = nullptr;
}

void TestApplication::fileOpenBeforeTheWindowIsSetGoesToTheToolkit()
{
    QFileOpenEvent event(QStringLiteral("/nowhere.CJX"));
    QVERIFY(!QCoreApplication::sendEvent(qApp, &event));
}

void TestApplication::fileOpenDuringTheSplashOnlyRecordsThePath()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    g_mainWindow = &fixture.start();
    QFileOpenEvent event(settingsFile(folder));
    QVERIFY(QCoreApplication::sendEvent(qApp, &event));
    QCOMPARE(fixture.editor(1103)->getValue(), 7);
    fixture.finishSplash();
    QCOMPARE(fixture.editor(1103)->getValue(), 55);
}

void TestApplication::fileOpenRestoresAMinimisedWindow()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    g_mainWindow = &fixture.startWhole();
    fixture.window->showMinimized();
    QVERIFY(fixture.window->isMinimized());
    QFileOpenEvent event(settingsFile(folder));
    QVERIFY(QCoreApplication::sendEvent(qApp, &event));
    QVERIFY(!fixture.window->isMinimized());
    QCOMPARE(fixture.editor(1103)->getValue(), 55);
}

void TestApplication::fileOpenOpensTheFile()
{
    const QTemporaryDir folder;
    EditorFixture fixture;
    g_mainWindow = &fixture.startWhole();
    QFileOpenEvent event(settingsFile(folder));
    QVERIFY(QCoreApplication::sendEvent(qApp, &event));
    QCOMPARE(fixture.editor(1103)->getValue(), 55);
}

void TestApplication::otherEventsGoToTheToolkit()
{
    EditorFixture fixture;
    g_mainWindow = &fixture.start();
    QEvent event(QEvent::ToolBarChange);
    QVERIFY(!QCoreApplication::sendEvent(qApp, &event));
}

void TestApplication::exitStatus_data()
{
    QTest::addColumn<int>("loopResult");
    QTest::addColumn<int>("status");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("7") << 7 << 1;
    QTest::newRow("-1") << -1 << 1;
}

void TestApplication::exitStatus()
{
    QFETCH(int, loopResult);
    QFETCH(int, status);
    // This program again, as the editor whose event loop ends with that result.
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KTZ_TEST_LOOP_RESULT"), QString::number(loopResult));
    editor.setProcessEnvironment(environment);
    editor.start(QCoreApplication::applicationFilePath(), {});
    QVERIFY(editor.waitForFinished());
    QCOMPARE(editor.exitStatus(), QProcess::NormalExit);
    QCOMPARE(editor.exitCode(), status);
    QCOMPARE(editor.readAllStandardOutput(), QByteArray());
}

void TestApplication::argumentIsOpened()
{
    const QTemporaryDir folder;
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KTZ_TEST_ARGUMENT"), QStringLiteral("1"));
    editor.setProcessEnvironment(environment);
    editor.start(QCoreApplication::applicationFilePath(), {settingsFile(folder)});
    QVERIFY(editor.waitForFinished());
    QCOMPARE(editor.exitCode(), 0);
    QCOMPARE(editor.readAllStandardOutput(), QByteArray("before 7, after 55\n"));
}

namespace
{
/// The whole editor, left by its event loop with the given result.
int runWithLoopResult(int argc, char** argv, int result)
{
    return runEditor(argc, argv, [result] {
        QTimer::singleShot(0, qApp, [result] { QCoreApplication::exit(result); });
        return nullptr;
    });
}

/// The whole editor with a file as its argument; tells what the splash's end changed, then closes the window.
int runWithArgument(int argc, char** argv)
{
    return runEditor(argc, argv, [] {
        QTimer::singleShot(0, qApp, [] {
            const auto value = [] {
                const QList<CSlideEditor*> editors = g_mainWindow->findChildren<CSlideEditor*>();
                for (CSlideEditor* editor : editors) {
                    if (editor->controllerID() == 1103)
                        return editor->getValue();
                }
                return -1;
            };
            const int before = value();
            auto* splash = g_mainWindow->findChild<CSplashView*>();
            splash->timeout();
            std::printf("before %d, after %d\n", before, value());
            g_mainWindow->close();
        });
        return nullptr;
    });
}
} // namespace

KTZ_TEST_MAIN(TestApplication)(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("KTZ_TEST_LOOP_RESULT"))
        return runWithLoopResult(argc, argv, qEnvironmentVariableIntValue("KTZ_TEST_LOOP_RESULT"));
    if (qEnvironmentVariableIsSet("KTZ_TEST_ARGUMENT"))
        return runWithArgument(argc, argv);
    CApplication application(argc, argv);
    TestApplication test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestApplication.moc"
