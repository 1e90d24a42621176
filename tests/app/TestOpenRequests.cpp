#include "tests/app/CEditorProcess.h"
#include "tests/app/CTestBus.h"
#include "tests/app/StageFile.h"
#include "tests/support/CTestCase.h"

#include <QCoreApplication>

/// What becomes of a file that a second start hands over while the editor is busy with something else.
class TestOpenRequests : public CTestCase
{
    Q_OBJECT

  private slots:
    void startBeforeTheWindowIsThere();
    void startDuringTheSplash();
    void startWhileTheStartUpTellsAFailure();
    void startsWhileTheSaveQuestionIsOpen_data();
    void startsWhileTheSaveQuestionIsOpen();
    void startWhileAnotherQuestionIsOpen();
    void startWhileAMenuIsOpen();
    void startWhileTheClosingQuestionIsOpen();
};

void TestOpenRequests::startBeforeTheWindowIsThere()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address(), {}, CEditorProcess::Hold::BeforeTheWindow);
    QVERIFY(first.becameEditor());
    // Its GUI thread does nothing now, as during the handshake with a device.
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    first.go();
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startDuringTheSplash()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address(), QString::fromUtf8(knobFile(folder, "own.CJX", 44)));
    QVERIFY(first.becameEditor());
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileTheStartUpTellsAFailure()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address(), QStringLiteral("/nowhere.CJX"));
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("box"), QByteArray("Failed to open the data."));
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    QCOMPARE(first.ask("boxes"), QByteArray("1"));
    QCOMPARE(first.ask("ok"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
    QCOMPARE(first.ask("boxes"), QByteArray("0"));
}

void TestOpenRequests::startsWhileTheSaveQuestionIsOpen_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("No drops the changes for the last file") << QByteArray("no") << QByteArray("66");
    QTest::newRow("Cancel keeps them, whichever file they were to go for") << QByteArray("cancel") << QByteArray("9");
}

void TestOpenRequests::startsWhileTheSaveQuestionIsOpen()
{
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, value);
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    for (const int cc : {55, 66}) {
        CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, QByteArray::number(cc) + ".CJX", cc)));
        QCOMPARE(second.silentEnd(), 0);
        QTRY_COMPARE(first.ask("boxes"), QByteArray("1"));
    }
    QCOMPARE(first.ask("box"), QByteArray("The parameter is modified."));
    QCOMPARE(first.ask("value"), QByteArray("9"));
    QCOMPARE(first.ask(answer), QByteArray("answered"));
    QTRY_COMPARE(first.ask("value"), value);
    // Nothing is asked or opened a second time.
    for (int turn = 0; turn < 5; ++turn)
        QCOMPARE(first.ask("boxes"), QByteArray("0"));
    QCOMPARE(first.ask("value"), value);
}

void TestOpenRequests::startWhileAnotherQuestionIsOpen()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    QCOMPARE(first.ask("revert &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("boxes"), QByteArray("1"));
    const QByteArray question = first.ask("box");
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    QCOMPARE(first.ask("boxes"), QByteArray("1"));
    QCOMPARE(first.ask("box"), question);
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("box"), QByteArray("The parameter is modified."));
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileAMenuIsOpen()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("menu"), QByteArray("opened"));
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("escape"), QByteArray("closed"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileTheClosingQuestionIsOpen()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    QCOMPARE(first.ask("close &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("boxes"), QByteArray("1"));
    CEditorProcess second(bus.address(), QString::fromUtf8(knobFile(folder, "stage.CJX", 55)));
    QCOMPARE(second.silentEnd(), 0);
    QCOMPARE(first.ask("boxes"), QByteArray("1"));
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("box"), QByteArray("The parameter is modified."));
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
    QCOMPARE(first.ask("close &"), QByteArray("begun"));
    QCOMPARE(first.silentEnd(), 0);
}

KTZ_TEST_MAIN(TestOpenRequests)(int argc, char** argv)
{
    if (CEditorProcess::isEditor())
        return CEditorProcess::run(argc, argv);
    const QCoreApplication application(argc, argv);
    TestOpenRequests test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestOpenRequests.moc"
