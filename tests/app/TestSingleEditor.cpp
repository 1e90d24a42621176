#include "app/linux/CSingleEditorOnBus.h"
#include "tests/app/CDeafSocket.h"
#include "tests/app/CEditorProcess.h"
#include "tests/app/CTestBus.h"
#include "tests/app/StageFile.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>
#include <sys/wait.h>

namespace
{
constexpr int k_libraryPatience = 25000;       // ms that the bus library waits by itself
constexpr std::chrono::seconds k_patience(20); // under load the bus must not be taken for one that does not answer
} // namespace

class TestSingleEditor : public CTestCase
{
    Q_OBJECT

  private slots:
    void withoutABusEachStartIsAnEditor();
    void busThatDoesNotAnswerCostsAMoment_data();
    void busThatDoesNotAnswerCostsAMoment();
    void secondStartHandsItsFileOver_data();
    void secondStartHandsItsFileOver();
    void busOfALoginIsFoundWithoutAnAddress();
    void ofTwoStartsInTheSameInstantOneIsTheEditor();
    void startWhileTheEditorEnds();
    void stoppedEditorIsNotWaitedForForEver();
    void demoIsNoEditorOfTheSession();
};

void TestSingleEditor::withoutABusEachStartIsAnEditor()
{
    CEditorProcess first(QString{});
    CEditorProcess second(QString{});
    QVERIFY(first.becameEditor());
    QVERIFY(second.becameEditor());
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(second.ask("value"), QByteArray("7"));
}

void TestSingleEditor::busThatDoesNotAnswerCostsAMoment_data()
{
    QTest::addColumn<int>("waitingRoom");
    QTest::addColumn<bool>("full");
    QTest::addColumn<bool>("answersLate");
    QTest::newRow("never") << 5 << false << false;
    QTest::newRow("never, and who connects blocks") << 0 << true << false;
    QTest::newRow("late") << 5 << false << true;
}

void TestSingleEditor::busThatDoesNotAnswerCostsAMoment()
{
    QFETCH(int, waitingRoom);
    QFETCH(bool, full);
    QFETCH(bool, answersLate);
    CDeafSocket bus(waitingRoom);
    QVERIFY(bus.listens());
    if (full)
        QVERIFY(bus.fill());
    QElapsedTimer time;
    time.start();
    CEditorProcess editor(bus.address());
    QVERIFY(editor.becameEditor());
    if (answersLate)
        bus.answerFirst();
    // The toolkit's own look for the bus comes with the window.
    QCOMPARE(editor.ask("value"), QByteArray("7"));
    QVERIFY2(time.elapsed() < k_libraryPatience / 2, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(editor.ask("end splash"), QByteArray("ended"));
    QCOMPARE(editor.ask("close &"), QByteArray("begun"));
    QCOMPARE(editor.silentEnd(), 0);
    QVERIFY2(time.elapsed() < k_libraryPatience / 2, qPrintable(QString::number(time.elapsed())));
}

void TestSingleEditor::secondStartHandsItsFileOver_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("relative");
    QTest::newRow("absolute path") << QByteArray("stage.CJX") << false;
    QTest::newRow("relative path") << QByteArray("stage.CJX") << true;
    QTest::newRow("signs that mean something in a URI") << QByteArray("a %41#b?c;d&e.CJX") << false;
    QTest::newRow("umlauts") << QByteArray("B\u00fchne.CJX") << true;
    QTest::newRow("no UTF-8") << QByteArray("B\xfchne.CJX") << false;
    QTest::newRow("no UTF-8, relative") << QByteArray("B\xfchne \xff.CJX") << true;
}

void TestSingleEditor::secondStartHandsItsFileOver()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, relative);
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    const QByteArray path = knobFile(folder, name, 55);
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));

    CEditorProcess second(CEditorProcess::environmentFor(bus.address()), relative ? name : path, folder.path());
    QCOMPARE(second.silentEnd(), 0);
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
    QCOMPARE(first.ask("boxes"), QByteArray("0"));
    // The folder can't remove what it can't name.
    QCOMPARE(std::remove(path.constData()), 0);
}

void TestSingleEditor::busOfALoginIsFoundWithoutAnAddress()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QProcessEnvironment environment = CEditorProcess::environmentFor({});
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), bus.folder());
    CEditorProcess second(environment, {});
    QCOMPARE(second.silentEnd(), 0);
}

void TestSingleEditor::ofTwoStartsInTheSameInstantOneIsTheEditor()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess one(bus.address());
    CEditorProcess other(bus.address());
    CEditorProcess third(bus.address());
    int editors = 0;
    int ends = 0;
    for (CEditorProcess* start : {&one, &other, &third}) {
        if (start->becameEditor())
            ++editors;
        else if (start->silentEnd() == 0)
            ++ends;
    }
    QCOMPARE(editors, 1);
    QCOMPARE(ends, 2);
}

void TestSingleEditor::startWhileTheEditorEnds()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address(), {}, CEditorProcess::Hold::AtTheEnd);
    QVERIFY(first.becameEditor());
    QVERIFY(first.waitForReadyRead());
    QCOMPARE(first.readLine(), QByteArray("ending\n"));
    CEditorProcess second(bus.address());
    // It neither ends with its wish lost nor takes the device that the first one may still hold.
    QVERIFY(!second.waitForReadyRead(100));
    QCOMPARE(second.state(), QProcess::Running);
    first.go();
    QVERIFY(second.becameEditor());
    QCOMPARE(second.ask("value"), QByteArray("7"));
}

void TestSingleEditor::stoppedEditorIsNotWaitedForForEver()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    kill(pid_t(first.processId()), SIGSTOP);
    siginfo_t stopped{}; // by then all of its threads stand still
    QCOMPARE(waitid(P_PID, id_t(first.processId()), &stopped, WSTOPPED), 0);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLocal8Bit());
    {
        CSingleEditorOnBus second({.bus = k_patience, .handOver = std::chrono::milliseconds(50)});
        QCOMPARE(second.start({}, {}), CSingleEditor::Start::Unanswered);
    }
    kill(pid_t(first.processId()), SIGCONT);
    {
        CSingleEditorOnBus second({.bus = k_patience, .handOver = k_patience});
        QCOMPARE(second.start({}, {}), CSingleEditor::Start::HandedOver);
    }
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void TestSingleEditor::demoIsNoEditorOfTheSession()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    QProcess demo;
    const QString log = folder.filePath(QStringLiteral("log"));
    demo.setProcessEnvironment(CEditorProcess::environmentFor(bus.address()));
    demo.start(QStringLiteral(KTZ_DEMO), {QStringLiteral("--log"), log});
    // Its window is there once messages have passed, and the name has long been asked for.
    QTRY_VERIFY(QFileInfo(log).size() > 0);
    QVERIFY(!bus.hasOwner(k_busName));

    CEditorProcess editor(bus.address());
    QVERIFY(editor.becameEditor());
    QVERIFY(bus.hasOwner(k_busName));
    QProcess second;
    const QString secondLog = folder.filePath(QStringLiteral("second log"));
    second.setProcessEnvironment(CEditorProcess::environmentFor(bus.address()));
    second.start(QStringLiteral(KTZ_DEMO), {QStringLiteral("--log"), secondLog});
    QTRY_VERIFY(QFileInfo(secondLog).size() > 0);
    for (QProcess* process : {&demo, &second}) {
        process->kill();
        process->waitForFinished();
    }
}

KTZ_TEST_MAIN(TestSingleEditor)(int argc, char** argv)
{
    if (CEditorProcess::isEditor())
        return CEditorProcess::run(argc, argv);
    QApplication application(argc, argv);
    TestSingleEditor test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSingleEditor.moc"
