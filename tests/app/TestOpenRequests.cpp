#include "tests/app/CEditorProcess.h"
#include "tests/app/CTestBus.h"
#include "tests/app/StageFile.h"
#include "tests/support/CTestCase.h"

#include <QCoreApplication>

#include <memory>

/// What becomes of a file that a second start hands over while the editor is busy with something else.
class TestOpenRequests : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void startBeforeTheWindowIsThere();
    void startDuringTheSplash();
    void startWhileTheStartUpTellsAFailure();
    void startsWhileTheSaveQuestionIsOpen_data();
    void startsWhileTheSaveQuestionIsOpen();
    void startWhileAnotherQuestionIsOpen();
    void startWhileAMenuIsOpen();
    void startWhileTheClosingQuestionIsOpen();

  private:
    /// The editor that is there first. The file is what it is started with.
    CEditorProcess& start(const QString& file = {}, CEditorProcess::Hold hold = CEditorProcess::Hold::Nowhere);
    /// A second start, with a file in which the CC number of knob 3 is this one.
    void handOver(int value) const;

    std::unique_ptr<CTestBus> m_bus;
    std::unique_ptr<CEditorProcess> m_first;
    const QTemporaryDir m_folder;
};

void TestOpenRequests::init()
{
    CTestCase::init();
    m_bus = std::make_unique<CTestBus>();
    QVERIFY(m_bus->isRunning());
}

void TestOpenRequests::cleanup()
{
    m_first.reset();
    m_bus.reset();
}

CEditorProcess& TestOpenRequests::start(const QString& file, CEditorProcess::Hold hold)
{
    m_first = std::make_unique<CEditorProcess>(m_bus->address(), file, hold);
    [this] { QVERIFY(m_first->becameEditor()); }();
    return *m_first;
}

void TestOpenRequests::handOver(int value) const
{
    const QByteArray name = QByteArray::number(value) + ".CJX";
    CEditorProcess second(m_bus->address(), QString::fromUtf8(knobFile(m_folder, name, value)));
    QCOMPARE(second.silentEnd(), 0);
}

void TestOpenRequests::startBeforeTheWindowIsThere()
{
    CEditorProcess& first = start({}, CEditorProcess::Hold::BeforeTheWindow);
    // Its GUI thread does nothing now, as during the handshake with a device.
    handOver(55);
    first.go();
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startDuringTheSplash()
{
    CEditorProcess& first = start(QString::fromUtf8(knobFile(m_folder, "own.CJX", 44)));
    handOver(55);
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileTheStartUpTellsAFailure()
{
    CEditorProcess& first = start(QStringLiteral("/nowhere.CJX"));
    QCOMPARE(first.ask("end splash &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("box"), QByteArray("Failed to open the data."));
    handOver(55);
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
    CEditorProcess& first = start();
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    for (const int cc : {55, 66}) {
        handOver(cc);
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
    CEditorProcess& first = start();
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    QCOMPARE(first.ask("revert &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("boxes"), QByteArray("1"));
    const QByteArray question = first.ask("box");
    handOver(55);
    QCOMPARE(first.ask("boxes"), QByteArray("1"));
    QCOMPARE(first.ask("box"), question);
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("box"), QByteArray("The parameter is modified."));
    QCOMPARE(first.ask("no"), QByteArray("answered"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileAMenuIsOpen()
{
    CEditorProcess& first = start();
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("menu"), QByteArray("opened"));
    handOver(55);
    QCOMPARE(first.ask("value"), QByteArray("7"));
    QCOMPARE(first.ask("escape"), QByteArray("closed"));
    QTRY_COMPARE(first.ask("value"), QByteArray("55"));
}

void TestOpenRequests::startWhileTheClosingQuestionIsOpen()
{
    CEditorProcess& first = start();
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QCOMPARE(first.ask("edit"), QByteArray("edited"));
    QCOMPARE(first.ask("close &"), QByteArray("begun"));
    QTRY_COMPARE(first.ask("boxes"), QByteArray("1"));
    handOver(55);
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
