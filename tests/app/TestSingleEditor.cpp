#include "app/CDesktopInterface.h"
#include "app/CSingleEditor.h"
#include "tests/app/CDeafSocket.h"
#include "tests/app/CEditorProcess.h"
#include "tests/app/CTestBus.h"
#include "tests/app/StageFile.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>

namespace
{
constexpr QLatin1StringView k_name("org.ktzjx.Editor");
constexpr QLatin1StringView k_path("/org/ktzjx/Editor");
constexpr int k_libraryPatience = 25000; // ms that the bus library waits by itself

/// The test in the place of the running editor.
class CStandIn : public QObject
{
  public:
    explicit CStandIn(const QString& bus) : m_connection(QDBusConnection::connectToBus(bus, k_name))
    {
        connect(&m_interface, &CDesktopInterface::requested, this, [this](const QByteArray& path, const auto& token) {
            m_path = path;
            m_token = token;
            ++m_requests;
        });
        m_owner = m_connection.registerObject(k_path, &m_interface, QDBusConnection::ExportScriptableSlots) &&
                  m_connection.registerService(k_name);
    }
    ~CStandIn() override
    {
        QDBusConnection::disconnectFromBus(k_name);
    }
    CStandIn(const CStandIn&) = delete;
    CStandIn& operator=(const CStandIn&) = delete;

    QDBusConnection m_connection;
    CDesktopInterface m_interface;
    bool m_owner = false;
    QByteArray m_path;
    ActivationToken m_token;
    int m_requests = 0;
};
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
    void secondStartWithoutAFileBringsTheWindowToTheFront();
    void busOfALoginIsFoundWithoutAnAddress();
    void ofTwoStartsInTheSameInstantOneIsTheEditor();
    void startWhileTheEditorEnds();
    void stoppedEditorIsNotWaitedForForEver();
    void desktopsTokenIsPassedOn_data();
    void desktopsTokenIsPassedOn();
    void callsOfADesktop();
    void editorComesWhenTheBusStartsIt();
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

void TestSingleEditor::secondStartWithoutAFileBringsTheWindowToTheFront()
{
    QProcess manager;
    manager.start(QStringLiteral("openbox"), {});
    const auto manages = [] {
        QProcess look;
        look.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
        return look.waitForFinished() && look.readAllStandardOutput().contains("window id");
    };
    QTRY_VERIFY(manages());
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));

    QWidget other;
    other.setWindowTitle(QStringLiteral("other"));
    other.setGeometry(0, 0, 1200, 900);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    // The user goes on in another program, later than all that he did in the editor.
    QProcess pointer;
    pointer.start(QStringLiteral("xdotool"),
                  {QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
                   QStringLiteral("^other$"), QStringLiteral("windowactivate"), QStringLiteral("mousemove"),
                   QStringLiteral("600"), QStringLiteral("800"), QStringLiteral("click"), QStringLiteral("1")});
    QVERIFY(pointer.waitForFinished());
    QTRY_VERIFY(other.isActiveWindow());
    QTRY_COMPARE(first.ask("state"), QByteArray("behind"));

    CEditorProcess second(bus.address());
    QCOMPARE(second.silentEnd(), 0);
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));
    QTRY_VERIFY(!other.isActiveWindow());

    QCOMPARE(first.ask("minimise"), QByteArray("minimised"));
    QTRY_COMPARE(first.ask("state"), QByteArray("minimised"));
    CEditorProcess third(bus.address());
    QCOMPARE(third.silentEnd(), 0);
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));
    manager.kill();
    manager.waitForFinished();
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
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLocal8Bit());
    {
        CSingleEditor second({.handOver = std::chrono::milliseconds(50)});
        QCOMPARE(second.start({}, {}), CSingleEditor::Start::Unanswered);
    }
    kill(pid_t(first.processId()), SIGCONT);
    {
        CSingleEditor second;
        QCOMPARE(second.start({}, {}), CSingleEditor::Start::HandedOver);
    }
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void TestSingleEditor::desktopsTokenIsPassedOn_data()
{
    QTest::addColumn<QString>("activation");
    QTest::addColumn<QString>("startupId");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("Wayland's") << QStringLiteral("abc") << QString();
    QTest::newRow("X11's") << QString() << QStringLiteral("panel-1_TIME4711");
    QTest::newRow("both") << QStringLiteral("abc") << QStringLiteral("panel-1_TIME4711");
}

void TestSingleEditor::desktopsTokenIsPassedOn()
{
    QFETCH(QString, activation);
    QFETCH(QString, startupId);
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    QProcessEnvironment environment = CEditorProcess::environmentFor(bus.address());
    if (!activation.isEmpty())
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), activation);
    if (!startupId.isEmpty())
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupId);
    {
        CStandIn standIn(bus.address());
        QVERIFY(standIn.m_owner);
        CEditorProcess second(environment, "/stage.CJX");
        QTRY_COMPARE(standIn.m_requests, 1);
        QCOMPARE(second.silentEnd(), 0);
        QCOMPARE(standIn.m_path, QByteArray("/stage.CJX"));
        QCOMPARE(standIn.m_token.activation, activation);
        QCOMPARE(standIn.m_token.startupId, startupId);
    }
    // Nobody is there now; the token is still nothing for programs that the editor starts.
    CEditorProcess editor(environment, {});
    QVERIFY(editor.becameEditor());
    QCOMPARE(editor.ask("tokens"), QByteArray("none"));
}

void TestSingleEditor::callsOfADesktop()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    const QString uri = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "stage.CJX", 55));
    const QString before = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "before.CJX", 44));
    CEditorProcess editor(bus.address());
    QVERIFY(editor.becameEditor());
    QCOMPARE(editor.ask("end splash"), QByteArray("ended"));

    QDBusConnection desktop = QDBusConnection::connectToBus(bus.address(), QStringLiteral("desktop"));
    const auto call = [&](const QString& method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(k_name, k_path, QStringLiteral("org.freedesktop.Application"), method);
        message.setArguments(arguments);
        return desktop.call(message).type();
    };
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("abc")},
                           {QStringLiteral("something-new"), 1}};
    QCOMPARE(call(QStringLiteral("Activate"), {data}), QDBusMessage::ReplyMessage);
    QCOMPARE(call(QStringLiteral("ActivateAction"), {QStringLiteral("new"), QVariantList(), data}),
             QDBusMessage::ReplyMessage);
    QCOMPARE(call(QStringLiteral("Open"), {QStringList(), data}), QDBusMessage::ReplyMessage);
    QCOMPARE(editor.ask("value"), QByteArray("7"));
    QCOMPARE(editor.ask("tokens"), QByteArray("none"));
    QCOMPARE(call(QStringLiteral("Open"), {QStringList({before, uri}), data}), QDBusMessage::ReplyMessage);
    QTRY_COMPARE(editor.ask("value"), QByteArray("55"));
    QCOMPARE(call(QStringLiteral("Open"), {QStringList(QStringLiteral("sftp://far/away.CJX")), data}),
             QDBusMessage::ReplyMessage);
    QTRY_COMPARE(editor.ask("box"), QByteArray("Failed to open the data."));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
}

void TestSingleEditor::editorComesWhenTheBusStartsIt()
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report"));
    QProcessEnvironment environment = CEditorProcess::environmentFor({});
    environment.insert(QStringLiteral("KTZ_TEST_REPORT"), report);
    const CTestBus bus(environment);
    QVERIFY(bus.isRunning());
    QVERIFY(bus.addService(k_name, QCoreApplication::applicationFilePath()));
    const QString uri = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "stage.CJX", 55));

    QDBusConnection desktop = QDBusConnection::connectToBus(bus.address(), QStringLiteral("desktop"));
    QDBusMessage open = QDBusMessage::createMethodCall(k_name, k_path, QStringLiteral("org.freedesktop.Application"),
                                                       QStringLiteral("Open"));
    open << QStringList(uri) << QVariantMap();
    const QDBusMessage answer = desktop.call(open);
    QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
    QFile opened(report);
    QTRY_VERIFY(opened.exists() && opened.size() > 0);
    QVERIFY(opened.open(QIODevice::ReadOnly));
    QCOMPARE(opened.readAll(), QByteArray("55"));
    QTRY_VERIFY(!bus.hasOwner(k_name));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
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
    QVERIFY(!bus.hasOwner(k_name));

    CEditorProcess editor(bus.address());
    QVERIFY(editor.becameEditor());
    QVERIFY(bus.hasOwner(k_name));
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

int main(int argc, char** argv)
{
    if (CEditorProcess::isEditor())
        return CEditorProcess::run(argc, argv);
    QApplication application(argc, argv);
    TestSingleEditor test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSingleEditor.moc"
